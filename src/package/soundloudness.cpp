#include "package/soundloudness.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tavik {

std::optional<double> MedianLoudness(const QList<Loudness>& sounds) {
    std::vector<double> values;
    for (const Loudness& l : sounds) {
        if (l.integratedLufs)
            values.push_back(*l.integratedLufs);
    }
    if (values.empty())
        return std::nullopt;
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2.0;
}

QList<LoudnessVerdict> JudgeLoudness(const QList<QString>& keys, const QList<Loudness>& sounds) {
    const std::optional<double> median = MedianLoudness(sounds);
    QList<LoudnessVerdict> verdicts;
    for (qsizetype i = 0; i < sounds.size() && i < keys.size(); ++i) {
        LoudnessVerdict v{keys[i], sounds[i]};
        v.farFromMedian = median && sounds[i].integratedLufs &&
                          std::abs(*sounds[i].integratedLufs - *median) > kLoudnessSpreadLu;
        v.peakTooHigh = sounds[i].truePeakDbtp > kLoudnessPeakLimitDbtp;
        verdicts << v;
    }
    return verdicts;
}

QString LoudnessFigure(double value) {
    if (!std::isfinite(value) || value <= -200.0)
        return QStringLiteral("-inf");
    // Rounded first, so that -0.04 reads "0.0" and not "-0.0".
    const double rounded = std::round(value * 10.0) / 10.0;
    return QString::number(rounded == 0.0 ? 0.0 : rounded, 'f', 1);
}

} // namespace tavik
