#pragma once

#include "audio/preparedsound.h"
#include "audio/soundfile.h"

#include <QString>
#include <functional>
#include <memory>

namespace tavik {

// Where playing sounds are heard. Every started voice sounds together with the others until
// it is stopped or ends, so overlapping announcements mix.
class SoundOutput {
public:
    virtual ~SoundOutput() = default;
    // Called when a sound is opened: what its plays will need, made ready ahead of them.
    // Nothing for an output that plays by the clock alone.
    virtual std::shared_ptr<const PreparedSound> prepare(const QString& path,
                                                         const SoundInfo& info) {
        Q_UNUSED(path);
        Q_UNUSED(info);
        return {};
    }
    // Takes effect at the moment of the call (plus the output's one fixed latency).
    virtual void start(int voice, std::shared_ptr<const PreparedSound> sound, qint64 fromMs) = 0;
    virtual void stop(int voice) = 0;
    // Returns once what was started so far has been heard to its stop or end.
    virtual void drain() {}
    // How often, since it started, the device ran dry or its stream jumped (a machine too busy
    // for the output's thread): sound around such a moment is not where its command put it.
    virtual int interruptions() const { return 0; }
};

// Hears nothing; the emulator keeps the same timing and state without it.
class NullSoundOutput : public SoundOutput {
public:
    void start(int, std::shared_ptr<const PreparedSound>, qint64) override {}
    void stop(int) override {}
};

// The default output device, or the null output when there is none or TAVIK_AUDIO is "null".
// A device that cannot be opened is reported on `log` (one line) before the null output is
// taken.
std::shared_ptr<SoundOutput> createSoundOutput(const std::function<void(const QString&)>& log);

} // namespace tavik
