#include "soundfile.h"

#include "audio/sndfileopen.h"
#include "util/fileaccess.h"
#include "util/fileops.h"

#include <QByteArrayView>
#include <QFile>
#include <algorithm>
#include <cstring>
#include <memory>
#include <sndfile.h>

namespace tavik {

namespace {

struct SndCloser {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SndHandle = std::unique_ptr<SNDFILE, SndCloser>;

SndHandle openSound(const QString& path, SF_INFO& info) {
    info = {};
    return SndHandle(OpenSndFile(path, SFM_READ, &info));
}

bool plausible(const SF_INFO& info) {
    return info.frames >= 0 && info.samplerate > 0 && info.channels > 0 && info.channels <= 64;
}

bool isWave(const SF_INFO& info) {
    // The extensible header (what most tools write for 24- and 32-bit PCM) is a WAVE file too.
    const int type = info.format & SF_FORMAT_TYPEMASK;
    return type == SF_FORMAT_WAV || type == SF_FORMAT_WAVEX;
}

// A sound file that libsndfile reads through a buffer of ours. Reading a header, libsndfile
// asks for a few bytes at a time and for its position in between, each a system call when it
// reads the file itself: some twenty-five for a short WAVE file, where this needs one read.
class BufferedSoundFile {
public:
    BufferedSoundFile() = default;
    BufferedSoundFile(const BufferedSoundFile&) = delete;
    BufferedSoundFile& operator=(const BufferedSoundFile&) = delete;
    ~BufferedSoundFile() = default;

    // Only a plain file is taken: anything else is left to libsndfile's own way of opening.
    bool open(const QString& path) {
        file_.setFileName(path);
        if (!OpenToRead(file_))
            return false;
        size_ = file_.size();
        return true;
    }

    // Whether the file begins as a WAVE, Ogg or FLAC file does. libsndfile tells those from
    // their first bytes before it looks anywhere else; other files it may also tell by a
    // resource fork beside the file or by the name's extension, which only an open by name
    // finds.
    bool toldByItsBytes() {
        char head[12];
        if (read(head, sizeof head, this) != sizeof head)
            return false;
        pos_ = 0;
        const QByteArrayView h(head, sizeof head);
        return ((h.startsWith("RIFF") || h.startsWith("RIFX")) && h.sliced(8) == "WAVE") ||
               h.startsWith("OggS") || h.startsWith("fLaC");
    }

    SNDFILE* openSound(SF_INFO& info) {
        static SF_VIRTUAL_IO io = {&BufferedSoundFile::length, &BufferedSoundFile::seek,
                                   &BufferedSoundFile::read, &BufferedSoundFile::write,
                                   &BufferedSoundFile::tell};
        return sf_open_virtual(&io, SFM_READ, &info, this);
    }

private:
    static constexpr qint64 kBufferBytes = 64 * 1024;

    static BufferedSoundFile& self(void* user) { return *static_cast<BufferedSoundFile*>(user); }
    static sf_count_t length(void* user) { return self(user).size_; }
    static sf_count_t tell(void* user) { return self(user).pos_; }
    static sf_count_t write(const void*, sf_count_t, void*) { return 0; }

    static sf_count_t seek(sf_count_t offset, int whence, void* user) {
        BufferedSoundFile& f = self(user);
        const qint64 base = whence == SEEK_CUR ? f.pos_ : whence == SEEK_END ? f.size_ : 0;
        if (whence != SEEK_SET && whence != SEEK_CUR && whence != SEEK_END)
            return -1;
        if (base + offset < 0)
            return -1;
        f.pos_ = base + offset;
        return f.pos_;
    }

    static sf_count_t read(void* ptr, sf_count_t count, void* user) {
        BufferedSoundFile& f = self(user);
        auto* out = static_cast<char*>(ptr);
        sf_count_t done = 0;
        while (done < count) {
            const qint64 inBuffer = f.pos_ - f.bufferAt_;
            if (inBuffer >= 0 && inBuffer < f.buffered_) {
                const qint64 n = std::min<qint64>(f.buffered_ - inBuffer, count - done);
                std::memcpy(out + done, f.buffer_.get() + inBuffer, static_cast<std::size_t>(n));
                done += n;
                f.pos_ += n;
                continue;
            }
            // A read as large as the buffer goes straight to the caller.
            if (count - done >= kBufferBytes) {
                const qint64 got = f.readAt(f.pos_, out + done, count - done);
                if (got <= 0)
                    break;
                done += got;
                f.pos_ += got;
                continue;
            }
            if (!f.buffer_) {
                // No larger than the file: a short sound costs no more than its bytes.
                f.capacity_ = std::clamp<qint64>(f.size_, 512, kBufferBytes);
                f.buffer_ =
                    std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(f.capacity_));
            }
            f.bufferAt_ = f.pos_;
            f.buffered_ = std::max<qint64>(f.readAt(f.pos_, f.buffer_.get(), f.capacity_), 0);
            if (f.buffered_ == 0)
                break;
        }
        return done;
    }

    qint64 readAt(qint64 at, char* into, qint64 count) { return ReadAt(file_, at, into, count); }

    QFile file_;
    qint64 size_ = 0;
    qint64 pos_ = 0;
    std::unique_ptr<char[]> buffer_;
    qint64 capacity_ = 0;
    qint64 bufferAt_ = 0;
    qint64 buffered_ = 0;
};

} // namespace

std::optional<SoundInfo> probeSound(const QString& path) {
    SF_INFO info{};
    // Through our buffer when libsndfile knows the file by its first bytes alone; anything
    // else, and a file it then still refuses, is opened by name as before.
    BufferedSoundFile buffered;
    if (buffered.open(path) && buffered.toldByItsBytes()) {
        if (const SndHandle file{buffered.openSound(info)}) {
            if (!plausible(info))
                return std::nullopt;
            return SoundInfo{info.frames, info.samplerate, info.channels, isWave(info)};
        }
    }
    const SndHandle file = openSound(path, info);
    if (!file || !plausible(info))
        return std::nullopt;
    return SoundInfo{info.frames, info.samplerate, info.channels, isWave(info)};
}

std::optional<DecodedSound> decodeSound(const QString& path) {
    SF_INFO info;
    const SndHandle file = openSound(path, info);
    if (!file || !plausible(info))
        return std::nullopt;
    DecodedSound sound;
    sound.info = {info.frames, info.samplerate, info.channels, isWave(info)};
    // Read in blocks rather than trusting the header's frame count with one allocation.
    std::vector<float> block(4096 * static_cast<std::size_t>(info.channels));
    const sf_count_t blockFrames = 4096;
    for (;;) {
        const sf_count_t got = sf_readf_float(file.get(), block.data(), blockFrames);
        if (got <= 0)
            break;
        sound.samples.insert(sound.samples.end(), block.begin(),
                             block.begin() + got * info.channels);
    }
    sound.info.frames = static_cast<qint64>(sound.samples.size()) / info.channels;
    return sound;
}

} // namespace tavik
