#include "soundfile.h"

#include "audio/sndfileopen.h"

#include <QFile>
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

} // namespace

std::optional<SoundInfo> probeSound(const QString& path) {
    SF_INFO info;
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
