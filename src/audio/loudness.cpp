#include "audio/loudness.h"

#include "audio/soundfile.h"
#include "audio/soundreader.h"

#include <algorithm>
#include <cmath>
#include <ebur128.h>
#include <memory>
#include <vector>

namespace tavik {

std::optional<Loudness> MeasureLoudness(const QString& path) {
    const std::optional<SoundInfo> info = probeSound(path);
    if (!info || info->sampleRate <= 0 || info->channels <= 0)
        return std::nullopt;
    // The sound at its own rate and channels: the meter filters and oversamples itself.
    SoundReader reader(path, OutputFormat{info->sampleRate, info->channels});
    if (!reader.isOpen())
        return std::nullopt;
    const std::unique_ptr<ebur128_state, void (*)(ebur128_state*)> meter(
        ebur128_init(static_cast<unsigned>(info->channels),
                     static_cast<unsigned long>(info->sampleRate),
                     EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK),
        [](ebur128_state* s) { ebur128_destroy(&s); });
    if (!meter)
        return std::nullopt;
    constexpr qint64 kChunk = 4096;
    std::vector<float> buffer(static_cast<std::size_t>(kChunk * info->channels));
    for (;;) {
        const qint64 got = reader.read(buffer.data(), kChunk);
        if (got <= 0)
            break;
        if (ebur128_add_frames_float(meter.get(), buffer.data(), static_cast<std::size_t>(got)) !=
            EBUR128_SUCCESS)
            return std::nullopt;
        if (got < kChunk)
            break;
    }
    Loudness result;
    double lufs = 0.0;
    if (ebur128_loudness_global(meter.get(), &lufs) == EBUR128_SUCCESS && std::isfinite(lufs))
        result.integratedLufs = lufs;
    double peak = 0.0;
    for (int c = 0; c < info->channels; ++c) {
        double channelPeak = 0.0;
        if (ebur128_true_peak(meter.get(), static_cast<unsigned>(c), &channelPeak) ==
            EBUR128_SUCCESS)
            peak = std::max(peak, channelPeak);
    }
    result.truePeakDbtp = peak > 0.0 ? 20.0 * std::log10(peak) : -200.0;
    return result;
}

} // namespace tavik
