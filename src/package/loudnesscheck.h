#pragma once

#include "package/packagecheck.h"
#include "package/soundloudness.h"

#include <QList>
#include <QString>
#include <optional>

namespace tavik {

// One announcement's measured loudness, where the check found it.
struct AnnouncementLoudness {
    QString key;
    int position = 0;  // "INDEX" position, from 1
    QString file;      // the sound file's name in the package folder
    Loudness loudness; // only for sounds that could be measured
};

struct LoudnessCheck {
    std::optional<double> medianLufs;
    QList<AnnouncementLoudness> announcements;
    QList<Finding> findings;
};

// The announcements whose sound the check opened, each key once, at its first place: what
// CheckLoudness measures.
QList<const CheckedAnnouncement*> SoundsToMeasure(const QList<CheckedAnnouncement>& announcements);

// Measures every announcement whose sound the check opened (each key once, at its first
// place) and warns where one lies far from the package's median or peaks too high.
LoudnessCheck CheckLoudness(const QList<CheckedAnnouncement>& announcements, LoudnessMeter& meter);

} // namespace tavik
