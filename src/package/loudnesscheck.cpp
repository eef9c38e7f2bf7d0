#include "package/loudnesscheck.h"

#include "package/findingdetail.h"

#include <QFileInfo>
#include <QSet>
#include <cmath>

namespace tavik {

QList<const CheckedAnnouncement*> SoundsToMeasure(const QList<CheckedAnnouncement>& announcements) {
    QList<const CheckedAnnouncement*> measured;
    QSet<QString> seen;
    for (const CheckedAnnouncement& a : announcements) {
        if (!a.Measured || a.SoundPath.isEmpty() || seen.contains(a.Key))
            continue;
        seen.insert(a.Key);
        measured << &a;
    }
    return measured;
}

LoudnessCheck CheckLoudness(const QList<CheckedAnnouncement>& announcements, LoudnessMeter& meter) {
    const QList<const CheckedAnnouncement*> measured = SoundsToMeasure(announcements);
    QStringList paths;
    for (const CheckedAnnouncement* a : measured)
        paths << a->SoundPath;
    const QList<std::optional<Loudness>> figures = meter.Measure(paths);

    LoudnessCheck result;
    QStringList keys;
    QList<Loudness> sounds;
    for (qsizetype i = 0; i < measured.size() && i < figures.size(); ++i) {
        if (!figures[i])
            continue;
        const CheckedAnnouncement& a = *measured[i];
        result.announcements << AnnouncementLoudness{
            a.Key, a.Position, QFileInfo(a.SoundPath).fileName(), *figures[i]};
        keys << a.Key;
        sounds << *figures[i];
    }
    result.medianLufs = MedianLoudness(sounds);
    const QList<LoudnessVerdict> verdicts = JudgeLoudness(keys, sounds);
    for (qsizetype i = 0; i < verdicts.size(); ++i) {
        const AnnouncementLoudness& a = result.announcements[i];
        const Loudness& l = a.loudness;
        if (verdicts[i].farFromMedian) {
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
        if (verdicts[i].peakTooHigh)
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
