#include "sentencerender.h"

#include <algorithm>
#include <cstring>
#include <sndfile.h>
#include <vector>

namespace tavik {

namespace {

// libsndfile writes the file image into memory, so it can be saved like every other file.
struct MemoryFile {
    QByteArray bytes;
    sf_count_t position = 0;

    static MemoryFile& of(void* data) { return *static_cast<MemoryFile*>(data); }
    static sf_count_t length(void* data) { return of(data).bytes.size(); }
    static sf_count_t seek(sf_count_t offset, int whence, void* data) {
        MemoryFile& f = of(data);
        const sf_count_t base = whence == SEEK_CUR   ? f.position
                                : whence == SEEK_END ? f.bytes.size()
                                                     : 0;
        f.position = std::max<sf_count_t>(0, base + offset);
        return f.position;
    }
    static sf_count_t read(void* out, sf_count_t count, void* data) {
        MemoryFile& f = of(data);
        const sf_count_t n = std::clamp<sf_count_t>(f.bytes.size() - f.position, 0, count);
        if (n > 0)
            std::memcpy(out, f.bytes.constData() + f.position, static_cast<std::size_t>(n));
        f.position += n;
        return n;
    }
    static sf_count_t write(const void* in, sf_count_t count, void* data) {
        MemoryFile& f = of(data);
        if (f.position + count > f.bytes.size())
            f.bytes.resize(static_cast<qsizetype>(f.position + count));
        std::memcpy(f.bytes.data() + f.position, in, static_cast<std::size_t>(count));
        f.position += count;
        return count;
    }
    static sf_count_t tell(void* data) { return of(data).position; }
};

} // namespace

qint64 frameOfMs(qint64 ms, int sampleRate) {
    return (ms * sampleRate + 500) / 1000;
}

QByteArray RenderSentenceWave(const AnnouncementTable& table, const SatzRecord& sentence,
                              OutputFormat format) {
    const QList<ScheduledEntry> entries = ScheduleSentence(table, sentence);
    const int channels = format.channels;
    const qint64 total =
        entries.isEmpty() ? 0 : frameOfMs(entries.last().stopMs, format.sampleRate);
    std::vector<float> mix(static_cast<std::size_t>(total * channels), 0.0f);
    std::vector<float> block(static_cast<std::size_t>(4096 * channels));
    for (const ScheduledEntry& entry : entries) {
        if (entry.path.isEmpty())
            continue;
        SoundReader reader(entry.path, format);
        qint64 at = frameOfMs(entry.startMs, format.sampleRate);
        const qint64 stop = frameOfMs(entry.stopMs, format.sampleRate);
        while (at < stop) {
            const qint64 got = reader.read(block.data(), std::min<qint64>(4096, stop - at));
            if (got == 0)
                break;
            float* dst = mix.data() + at * channels;
            for (qint64 k = 0; k < got * channels; ++k)
                dst[k] += block[static_cast<std::size_t>(k)];
            at += got;
        }
    }

    MemoryFile file;
    SF_VIRTUAL_IO io{&MemoryFile::length, &MemoryFile::seek, &MemoryFile::read, &MemoryFile::write,
                     &MemoryFile::tell};
    SF_INFO info{};
    info.samplerate = format.sampleRate;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* out = sf_open_virtual(&io, SFM_WRITE, &info, &file);
    if (!out)
        return {};
    sf_command(out, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    sf_writef_float(out, mix.data(), total);
    sf_close(out);
    return file.bytes;
}

} // namespace tavik
