#pragma once

#include <QString>
#include <memory>

namespace tavik {

// What the output plays: interleaved floats at one rate and channel count.
struct OutputFormat {
    int sampleRate = 44100;
    int channels = 2;
};

// Reads a sound file as frames of an output format: decoded by libsndfile, its channels mixed
// to the output's (mono to many copies, many to mono averages), its rate converted by libsoxr.
class SoundReader {
public:
    SoundReader(const QString& path, OutputFormat format);
    ~SoundReader();
    SoundReader(const SoundReader&) = delete;
    SoundReader& operator=(const SoundReader&) = delete;

    bool isOpen() const;
    // Fills up to `frames` output frames; fewer only at the end of the sound.
    qint64 read(float* out, qint64 frames);
    // Skips output frames: decoded and dropped, so what follows is exactly what a reader
    // from the start gives there.
    qint64 skip(qint64 frames);

private:
    struct State;
    std::unique_ptr<State> d_;
};

// Mixes `frames` frames of `in` (inChannels interleaved) into `out` (outChannels).
void mapChannels(const float* in, int inChannels, float* out, int outChannels, qint64 frames);

} // namespace tavik
