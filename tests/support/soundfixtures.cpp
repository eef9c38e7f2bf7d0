#include "support/soundfixtures.h"

#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <sndfile.h>
#include <vector>

namespace tavik::test {

bool writeTone(const QString& path, long long frames, int sampleRate, int channels) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = channels;
    if (suffix == u"wav")
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    else if (suffix == u"flac")
        info.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    else if (suffix == u"ogg")
        info.format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    else if (suffix == u"mp3")
        info.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    else
        return false;
    const QByteArray name = QFile::encodeName(path);
    SNDFILE* file = sf_open(name.constData(), SFM_WRITE, &info);
    if (!file)
        return false;
    std::vector<float> samples(static_cast<std::size_t>(frames * channels));
    for (long long i = 0; i < frames; ++i)
        for (int c = 0; c < channels; ++c)
            samples[static_cast<std::size_t>(i * channels + c)] =
                0.3f * static_cast<float>(std::sin(2.0 * M_PI * 440.0 * i / sampleRate));
    const sf_count_t written = sf_writef_float(file, samples.data(), frames);
    sf_close(file);
    return written == frames;
}

} // namespace tavik::test
