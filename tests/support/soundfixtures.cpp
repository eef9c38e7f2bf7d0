#include "support/soundfixtures.h"

#include "audio/sndfileopen.h"
#include "audio/soundreader.h"

#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <numbers>
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
    SNDFILE* file = OpenSndFile(path, SFM_WRITE, &info);
    if (!file)
        return false;
    std::vector<float> samples(static_cast<std::size_t>(frames * channels));
    for (long long i = 0; i < frames; ++i)
        for (int c = 0; c < channels; ++c)
            samples[static_cast<std::size_t>(i * channels + c)] =
                0.3f *
                static_cast<float>(std::sin(2.0 * std::numbers::pi * 440.0 * i / sampleRate));
    const sf_count_t written = sf_writef_float(file, samples.data(), frames);
    sf_close(file);
    return written == frames;
}

namespace {

bool writeFrames(const QString& path, int format, int sampleRate, int channels,
                 const std::vector<float>& samples) {
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = channels;
    info.format = format;
    SNDFILE* file = OpenSndFile(path, SFM_WRITE, &info);
    if (!file)
        return false;
    const auto frames = static_cast<sf_count_t>(samples.size() / channels);
    const sf_count_t written = sf_writef_float(file, samples.data(), frames);
    sf_close(file);
    return written == frames;
}

} // namespace

bool writeLevels(const QString& path, long long frames, int sampleRate,
                 const std::vector<float>& levels, bool extensible) {
    const auto channels = static_cast<int>(levels.size());
    std::vector<float> samples;
    samples.reserve(static_cast<std::size_t>(frames * channels));
    for (long long i = 0; i < frames; ++i)
        samples.insert(samples.end(), levels.begin(), levels.end());
    const int format =
        extensible ? (SF_FORMAT_WAVEX | SF_FORMAT_PCM_24) : (SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    return writeFrames(path, format, sampleRate, channels, samples);
}

bool writeSine(const QString& path, long long frames, int sampleRate, double hz) {
    std::vector<float> samples(static_cast<std::size_t>(frames));
    for (long long i = 0; i < frames; ++i)
        samples[static_cast<std::size_t>(i)] =
            0.5f * static_cast<float>(
                       std::sin(2.0 * std::numbers::pi * hz * static_cast<double>(i) / sampleRate));
    return writeFrames(path, SF_FORMAT_WAV | SF_FORMAT_PCM_16, sampleRate, 1, samples);
}

QString writeLevelSine(const QString& path, double peakDbfs, int channels, double seconds,
                       int rate) {
    const double amplitude = peakDbfs <= -200 ? 0.0 : std::pow(10.0, peakDbfs / 20.0);
    const auto frames = static_cast<long long>(seconds * rate);
    std::vector<float> samples(static_cast<std::size_t>(frames * channels));
    for (long long f = 0; f < frames; ++f) {
        const auto v = static_cast<float>(
            amplitude * std::sin(2.0 * std::numbers::pi * 1000.0 * static_cast<double>(f) / rate));
        for (int c = 0; c < channels; ++c)
            samples[static_cast<std::size_t>(f * channels + c)] = v;
    }
    writeFrames(path, SF_FORMAT_WAV | SF_FORMAT_FLOAT, rate, channels, samples);
    return path;
}

std::vector<float> readSound(const QString& path, SoundInfo& info) {
    info = probeSound(path).value_or(SoundInfo{});
    SoundReader reader(path, {info.sampleRate, info.channels});
    std::vector<float> samples(static_cast<std::size_t>(info.frames * info.channels));
    reader.read(samples.data(), info.frames);
    return samples;
}

} // namespace tavik::test
