#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace tavik {

// What a sound file holds, as the decoder reads it: exact frame counts, also for MP3.
struct SoundInfo {
    qint64 frames = 0;
    int sampleRate = 0;
    int channels = 0;
    bool wave = false; // a RIFF WAVE file

    // Whole milliseconds of play time.
    qint64 lengthMs() const { return sampleRate > 0 ? frames * 1000 / sampleRate : 0; }
};

// Reads the format of a sound file; nothing when the file cannot be read as sound.
std::optional<SoundInfo> probeSound(const QString& path);

// Decodes a whole sound file to interleaved floats.
struct DecodedSound {
    SoundInfo info;
    std::vector<float> samples;
};
std::optional<DecodedSound> decodeSound(const QString& path);

} // namespace tavik
