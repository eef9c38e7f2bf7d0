#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace tavik {

// A sound's loudness as broadcasters measure it (EBU R 128): its integrated loudness in LUFS
// and its true peak in dBTP. A silent sound has no integrated loudness.
struct Loudness {
    std::optional<double> integratedLufs;
    double truePeakDbtp = -200.0;
};

// One announcement's loudness against its package's.
struct LoudnessVerdict {
    QString key;
    Loudness loudness;
    bool farFromMedian = false; // more than kLoudnessSpreadLu from the package's median
    bool peakTooHigh = false;   // a true peak above kLoudnessPeakLimitDbtp
};

inline constexpr double kLoudnessSpreadLu = 3.0;
inline constexpr double kLoudnessPeakLimitDbtp = -1.0;

// The median of the integrated loudness of every sound that has one; nothing when none has.
std::optional<double> MedianLoudness(const QList<Loudness>& sounds);

// Judges each measured sound against the median of all of them.
QList<LoudnessVerdict> JudgeLoudness(const QList<QString>& keys, const QList<Loudness>& sounds);

// Figures as the check and the list show them: one decimal, a point for the decimal sign in
// every language (as meters show them), "-inf" for a sound without loudness.
QString LoudnessFigure(double value);

// Measures sounds for the package layer, which does not decode sound itself; the media layer
// implements it. One answer per path, in order; nothing for a file that is no sound.
class LoudnessMeter {
public:
    virtual ~LoudnessMeter() = default;
    virtual QList<std::optional<Loudness>> Measure(const QStringList& paths) = 0;
};

} // namespace tavik
