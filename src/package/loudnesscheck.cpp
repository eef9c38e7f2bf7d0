#include "package/loudnesscheck.h"

#include "package/findingdetail.h"

#include <QFileInfo>
#include <QSet>
#include <cmath>

namespace tavik {

LoudnessCheck CheckLoudness(const QList<CheckedAnnouncement>& announcements, LoudnessMeter& meter) {
    QList<const CheckedAnnouncement*> measured;
    QStringList paths;
    QSet<QString> seen;
    for (const CheckedAnnouncement& a : announcements) {
        if (!a.Measured || a.SoundPath.isEmpty() || seen.contains(a.Key))
            continue;
        seen.insert(a.Key);
        measured << &a;
        paths << a.SoundPath;
    }
    const QList<std::optional<Loudness>> figures = meter.Measure(paths);

    LoudnessCheck result;
    QList<Loudness> sounds;
    for (qsizetype i = 0; i < measured.size() && i < figures.size(); ++i) {
        if (!figures[i])
            continue;
        const CheckedAnnouncement& a = *measured[i];
        result.announcements << AnnouncementLoudness{
            a.Key, a.Position, QFileInfo(a.SoundPath).fileName(), *figures[i]};
        sounds << *figures[i];
    }
    result.medianLufs = MedianLoudness(sounds);
    for (const AnnouncementLoudness& a : std::as_const(result.announcements)) {
        const Loudness& l = a.loudness;
        if (result.medianLufs && l.integratedLufs &&
            std::abs(*l.integratedLufs - *result.medianLufs) > kLoudnessSpreadLu) {
            const double distance = *l.integratedLufs - *result.medianLufs;
            result.findings << Finding{
                Severity::Warning,
                FindingKind::LoudnessOffMedian,
                a.file,
                a.position,
                a.key,
                {},
                0,
                detailText(distance > 0 ? DetailText::LouderThanMedian
                                        : DetailText::QuieterThanMedian,
                           {LoudnessFigure(*l.integratedLufs), LoudnessFigure(std::abs(distance)),
                            LoudnessFigure(*result.medianLufs)})};
        }
        if (l.truePeakDbtp > kLoudnessPeakLimitDbtp)
            result.findings << Finding{
                Severity::Warning,
                FindingKind::TruePeakHigh,
                a.file,
                a.position,
                a.key,
                {},
                0,
                detailText(DetailText::TruePeak, {LoudnessFigure(l.truePeakDbtp)})};
    }
    return result;
}

} // namespace tavik
