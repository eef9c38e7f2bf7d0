#pragma once

#include <QString>

namespace tavik::test {

// Writes a sine tone of `frames` frames to `path` in the container the extension names
// ("wav", "flac", "ogg", "mp3"). Returns false when this system cannot write that format.
bool writeTone(const QString& path, long long frames, int sampleRate = 22050, int channels = 1);

} // namespace tavik::test
