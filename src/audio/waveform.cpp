#include "audio/waveform.h"

#include "audio/soundreader.h"

#include <cmath>
#include <vector>

namespace tavik {

QList<float> WaveformPeaks(const QString& path, int bucketMs) {
    // A low rate is plenty for an outline a few pixels per bucket wide, and quick to make.
    constexpr int kRate = 8000;
    SoundReader reader(path, OutputFormat{kRate, 1});
    if (!reader.isOpen() || bucketMs <= 0)
        return {};
    const qint64 bucketFrames = std::max<qint64>(1, qint64(kRate) * bucketMs / 1000);
    std::vector<float> buffer(static_cast<std::size_t>(bucketFrames));
    QList<float> peaks;
    for (;;) {
        const qint64 got = reader.read(buffer.data(), bucketFrames);
        if (got <= 0)
            break;
        float peak = 0.0f;
        for (qint64 i = 0; i < got; ++i)
            peak = std::max(peak, std::fabs(buffer[static_cast<std::size_t>(i)]));
        peaks << std::min(peak, 1.0f);
        if (got < bucketFrames)
            break;
    }
    return peaks;
}

} // namespace tavik
