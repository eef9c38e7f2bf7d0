#include "soundreader.h"

#include "audio/sndfileopen.h"

#include <QFile>
#include <algorithm>
#include <cmath>
#include <sndfile.h>
#include <soxr.h>
#include <span>
#include <vector>

namespace tavik {

namespace {

constexpr qint64 kBlockFrames = 2048;

} // namespace

void mapChannels(const float* in, int inChannels, float* out, int outChannels, qint64 frames) {
    if (inChannels == outChannels) {
        std::copy(in, in + frames * inChannels, out);
        return;
    }
    // Output channel c is the average of the input channels k with k mod outChannels == c;
    // an input with fewer channels is repeated.
    for (qint64 f = 0; f < frames; ++f) {
        const float* src = in + f * inChannels;
        float* dst = out + f * outChannels;
        for (int c = 0; c < outChannels; ++c) {
            if (inChannels < outChannels) {
                dst[c] = src[c % inChannels];
                continue;
            }
            float sum = 0;
            int count = 0;
            for (int k = c; k < inChannels; k += outChannels, ++count)
                sum += src[k];
            dst[c] = sum / static_cast<float>(count);
        }
    }
}

struct SoundReader::State {
    SNDFILE* file = nullptr;
    soxr_t resampler = nullptr;
    SF_INFO info{};
    OutputFormat format;
    std::vector<float> decoded; // a block as the file holds it
    std::vector<float> mapped;  // the same block in the output's channels
    qint64 mappedFrames = 0;    // frames of `mapped` not yet given to the resampler
    qint64 mappedAt = 0;
    bool endOfFile = false;
    bool flushed = false;

    ~State() {
        if (resampler)
            soxr_delete(resampler);
        if (file)
            sf_close(file);
    }

    bool refill() {
        if (endOfFile)
            return false;
        const sf_count_t got = sf_readf_float(file, decoded.data(), kBlockFrames);
        if (got <= 0) {
            endOfFile = true;
            return false;
        }
        // A float file may hold anything; a NaN or infinity would poison the whole mix.
        for (float& x : std::span(decoded.data(), static_cast<std::size_t>(got * info.channels)))
            x = std::isfinite(x) ? std::clamp(x, -1.0f, 1.0f) : 0.0f;
        mapChannels(decoded.data(), info.channels, mapped.data(), format.channels, got);
        mappedFrames = got;
        mappedAt = 0;
        return true;
    }
};

SoundReader::SoundReader(const QString& path, OutputFormat format) : d_(new State) {
    d_->format = format;
    d_->file = OpenSndFile(path, SFM_READ, &d_->info);
    if (!d_->file || d_->info.channels <= 0 || d_->info.channels > 64 || d_->info.samplerate <= 0 ||
        format.channels <= 0 || format.sampleRate <= 0) {
        d_.reset();
        return;
    }
    d_->decoded.resize(static_cast<std::size_t>(kBlockFrames * d_->info.channels));
    d_->mapped.resize(static_cast<std::size_t>(kBlockFrames * format.channels));
    if (d_->info.samplerate != format.sampleRate) {
        soxr_error_t error = nullptr;
        const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
        d_->resampler =
            soxr_create(d_->info.samplerate, format.sampleRate,
                        static_cast<unsigned>(format.channels), &error, nullptr, &quality, nullptr);
        if (error)
            d_.reset();
    }
}

SoundReader::~SoundReader() = default;

bool SoundReader::isOpen() const {
    return d_ != nullptr;
}

qint64 SoundReader::read(float* out, qint64 frames) {
    if (!d_)
        return 0;
    State& s = *d_;
    const int channels = s.format.channels;
    qint64 done = 0;
    while (done < frames) {
        if (s.mappedFrames == 0 && !s.refill() && !s.resampler)
            break;
        if (!s.resampler) {
            const qint64 n = std::min(frames - done, s.mappedFrames);
            std::copy_n(s.mapped.data() + s.mappedAt * channels, n * channels,
                        out + done * channels);
            s.mappedAt += n;
            s.mappedFrames -= n;
            done += n;
            continue;
        }
        if (s.flushed && s.endOfFile && s.mappedFrames == 0) {
            // Drains what the filter still holds; nothing more comes after that.
            size_t produced = 0;
            soxr_process(s.resampler, nullptr, 0, nullptr, out + done * channels,
                         static_cast<size_t>(frames - done), &produced);
            if (produced == 0)
                break;
            done += static_cast<qint64>(produced);
            continue;
        }
        size_t used = 0;
        size_t produced = 0;
        if (s.mappedFrames > 0) {
            soxr_process(s.resampler, s.mapped.data() + s.mappedAt * channels,
                         static_cast<size_t>(s.mappedFrames), &used, out + done * channels,
                         static_cast<size_t>(frames - done), &produced);
            s.mappedAt += static_cast<qint64>(used);
            s.mappedFrames -= static_cast<qint64>(used);
        } else {
            s.flushed = true; // the end of input: the next calls drain the filter
        }
        done += static_cast<qint64>(produced);
    }
    return done;
}

qint64 SoundReader::skip(qint64 frames) {
    if (!d_)
        return 0;
    std::vector<float> scratch(static_cast<std::size_t>(kBlockFrames * d_->format.channels));
    qint64 skipped = 0;
    while (skipped < frames) {
        const qint64 n = read(scratch.data(), std::min(kBlockFrames, frames - skipped));
        if (n == 0)
            break;
        skipped += n;
    }
    return skipped;
}

} // namespace tavik
