#pragma once

#include "audio/soundfile.h"

#include <memory>

namespace tavik {

// Where playing sounds are heard. Every started voice sounds together with the others until
// it is stopped or ends, so overlapping announcements mix.
class SoundOutput {
public:
    virtual ~SoundOutput() = default;
    virtual void start(int voice, std::shared_ptr<const DecodedSound> sound, qint64 fromMs) = 0;
    virtual void stop(int voice) = 0;
    // Whether started voices need their decoded samples; the null output plays by the clock.
    virtual bool needsSamples() const { return true; }
};

// Hears nothing; the emulator keeps the same timing and state without it.
class NullSoundOutput : public SoundOutput {
public:
    void start(int, std::shared_ptr<const DecodedSound>, qint64) override {}
    void stop(int) override {}
    bool needsSamples() const override { return false; }
};

// The default output device, or the null output when there is none or TAVIK_AUDIO is "null".
std::shared_ptr<SoundOutput> createSoundOutput();

} // namespace tavik
