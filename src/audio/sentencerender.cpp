#include "sentencerender.h"

#include "util/fileops.h"

#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace tavik {

namespace {

constexpr qint64 kHeaderBytes = 44;
constexpr qint64 kBlockFrames = 8192;
// The RIFF size field counts the file less its first 8 bytes in 32 bits.
constexpr qint64 kMaxDataBytes = 0xFFFFFFFFLL - (kHeaderBytes - 8);

qint64 dataBytesFor(const QList<ScheduledEntry>& entries, OutputFormat format) {
    if (entries.isEmpty())
        return 0;
    const qint64 frameBytes = 2LL * format.channels;
    const qint64 stopMs = entries.last().stopMs;
    // Checked in milliseconds first, so the frame count below cannot overflow.
    if (stopMs > (kMaxDataBytes / frameBytes) * 1000 / format.sampleRate + 1)
        return -1;
    const qint64 bytes = frameOfMs(stopMs, format.sampleRate) * frameBytes;
    return bytes > kMaxDataBytes ? -1 : bytes;
}

QByteArray waveHeader(OutputFormat format, qint64 dataBytes) {
    QByteArray h(kHeaderBytes, '\0');
    char* p = h.data();
    const auto u32 = [&](int at, quint32 v) { qToLittleEndian<quint32>(v, p + at); };
    const auto u16 = [&](int at, quint16 v) { qToLittleEndian<quint16>(v, p + at); };
    std::copy_n("RIFF", 4, p);
    u32(4, static_cast<quint32>(dataBytes + kHeaderBytes - 8));
    std::copy_n("WAVEfmt ", 8, p + 8);
    u32(16, 16);
    u16(20, 1); // PCM
    u16(22, static_cast<quint16>(format.channels));
    u32(24, static_cast<quint32>(format.sampleRate));
    u32(28, static_cast<quint32>(format.sampleRate * format.channels * 2));
    u16(32, static_cast<quint16>(format.channels * 2));
    u16(34, 16);
    std::copy_n("data", 4, p + 36);
    u32(40, static_cast<quint32>(dataBytes));
    return h;
}

// One entry while it is rendered: its reader lives from its start frame to its stop frame.
struct Voice {
    qint64 at;
    qint64 stop;
    QString path;
    std::unique_ptr<SoundReader> reader;
};

} // namespace

qint64 frameOfMs(qint64 ms, int sampleRate) {
    return (ms * sampleRate + 500) / 1000;
}

qint64 RenderedWaveBytes(const AnnouncementTable& table, const SatzRecord& sentence,
                         OutputFormat format) {
    const qint64 data = dataBytesFor(ScheduleSentence(table, sentence), format);
    return data < 0 ? -1 : data + kHeaderBytes;
}

bool RenderSentence(const AnnouncementTable& table, const SatzRecord& sentence, OutputFormat format,
                    const WaveSink& sink) {
    const QList<ScheduledEntry> entries = ScheduleSentence(table, sentence);
    const qint64 dataBytes = dataBytesFor(entries, format);
    if (dataBytes < 0)
        return false;
    const int channels = format.channels;
    const qint64 total = dataBytes / (2LL * channels);
    sink(waveHeader(format, dataBytes).constData(), kHeaderBytes);

    std::vector<Voice> voices;
    for (const ScheduledEntry& e : entries)
        voices.push_back({frameOfMs(e.startMs, format.sampleRate),
                          frameOfMs(e.stopMs, format.sampleRate), e.path, nullptr});
    std::vector<float> mix(static_cast<std::size_t>(kBlockFrames * channels));
    std::vector<float> piece(mix.size());
    std::vector<qint16> pcm(mix.size());
    std::size_t first = 0; // voices before it have ended
    for (qint64 from = 0; from < total; from += kBlockFrames) {
        const qint64 to = std::min(total, from + kBlockFrames);
        std::fill(mix.begin(), mix.end(), 0.0f);
        for (std::size_t v = first; v < voices.size() && voices[v].at < to; ++v) {
            Voice& voice = voices[v];
            const qint64 end = std::min(voice.stop, to);
            if (voice.at >= end || voice.path.isEmpty()) {
                voice.at = std::max(voice.at, end);
                continue;
            }
            if (!voice.reader)
                voice.reader = std::make_unique<SoundReader>(voice.path, format);
            const qint64 got = voice.reader->read(piece.data(), end - voice.at);
            float* dst = mix.data() + (voice.at - from) * channels;
            for (qint64 k = 0; k < got * channels; ++k)
                dst[k] += piece[static_cast<std::size_t>(k)];
            // A sound that ends before its stop leaves silence up to it.
            voice.at = got < end - voice.at ? voice.stop : end;
        }
        while (first < voices.size() && voices[first].at >= voices[first].stop) {
            voices[first].reader.reset();
            ++first;
        }
        const qint64 samples = (to - from) * channels;
        for (qint64 k = 0; k < samples; ++k) {
            const float x = std::clamp(mix[static_cast<std::size_t>(k)], -1.0f, 1.0f);
            pcm[static_cast<std::size_t>(k)] =
                qToLittleEndian(static_cast<qint16>(std::lrint(x * 32767.0f)));
        }
        sink(reinterpret_cast<const char*>(pcm.data()), samples * 2);
    }
    return true;
}

QByteArray RenderSentenceWave(const AnnouncementTable& table, const SatzRecord& sentence,
                              OutputFormat format) {
    QByteArray wave;
    if (!RenderSentence(table, sentence, format,
                        [&](const char* data, qint64 size) { wave.append(data, size); }))
        return {};
    return wave;
}

bool RenderSentenceToFile(const AnnouncementTable& table, const SatzRecord& sentence,
                          OutputFormat format, const QString& path) {
    // Made at the first piece: a sentence refused before it leaves no temporary behind.
    std::optional<AtomicFileWriter> file;
    if (!RenderSentence(table, sentence, format, [&](const char* data, qint64 size) {
            if (!file)
                file.emplace(path);
            file->write(data, size);
        }))
        return false;
    file->commit();
    return true;
}

} // namespace tavik
