#pragma once

#include "audio/soundfile.h"

#include <QMutex>
#include <map>
#include <memory>

namespace tavik {

// Mixes every started voice into one interleaved 16-bit stream at a fixed rate; each voice is
// resampled to that rate as it goes. Safe to feed from another thread than the one that
// starts and stops voices.
class Mixer {
public:
    Mixer(int sampleRate, int channels);

    void start(int voice, std::shared_ptr<const DecodedSound> sound, qint64 fromMs);
    void stop(int voice);
    int activeVoices() const;

    // Fills `frames` frames of output (silence where nothing plays).
    void mix(qint16* out, qint64 frames);

private:
    struct Voice {
        std::shared_ptr<const DecodedSound> sound;
        double position = 0; // in frames of the sound
        double step = 1;     // sound frames per output frame
    };

    int sampleRate_;
    int channels_;
    mutable QMutex mutex_;
    std::map<int, Voice> voices_;
};

} // namespace tavik
