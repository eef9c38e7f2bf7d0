#pragma once

#include "audio/soundfile.h"

#include <QString>
#include <vector>

namespace tavik::test {

// Writes a sine tone of `frames` frames to `path` in the container the extension names
// ("wav", "flac", "ogg", "mp3"). Returns false when this system cannot write that format.
bool writeTone(const QString& path, long long frames, int sampleRate = 22050, int channels = 1);

// Writes a 16-bit WAVE file whose every frame holds `levels` (one value per channel, full
// scale 1.0); with `extensible` in the extensible header format and 24-bit samples.
bool writeLevels(const QString& path, long long frames, int sampleRate,
                 const std::vector<float>& levels, bool extensible = false);

// Writes a 16-bit mono WAVE file of a sine of `hz` at amplitude 0.5.
bool writeSine(const QString& path, long long frames, int sampleRate, double hz);

// Writes a float WAVE file of a 1 kHz sine whose peak is `peakDbfs` on every channel (silence
// at -200 and below): a stereo one at -23 dBFS measures -23 LUFS.
QString writeLevelSine(const QString& path, double peakDbfs, int channels, double seconds = 6.0,
                       int rate = 48000);

// Every frame of a sound file at its own rate and channels, interleaved; `info` says what the
// file holds (all zero when it cannot be opened).
std::vector<float> readSound(const QString& path, SoundInfo& info);

} // namespace tavik::test
