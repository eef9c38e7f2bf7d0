#pragma once

#include <QFile>
#include <QString>
#include <cmath>
#include <sndfile.h>
#include <vector>

namespace tavik::bench {

// Writes a quiet tone of `frames` mono frames in the libsndfile `format`.
inline bool writeTone(const QString& path, int format, qint64 frames, int rate) {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 1;
    info.format = format;
    const QByteArray name = QFile::encodeName(path);
    SNDFILE* file = sf_open(name.constData(), SFM_WRITE, &info);
    if (!file)
        return false;
    std::vector<float> samples(static_cast<std::size_t>(frames));
    for (qint64 i = 0; i < frames; ++i)
        samples[static_cast<std::size_t>(i)] = 0.3f * static_cast<float>(std::sin(i * 0.1));
    const bool ok = sf_writef_float(file, samples.data(), frames) == frames;
    sf_close(file);
    return ok;
}

} // namespace tavik::bench
