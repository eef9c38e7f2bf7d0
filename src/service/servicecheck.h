#pragma once

#include "package/loudnesscheck.h"
#include "package/packagecheck.h"

#include <optional>

namespace tavik {

// The findings of one service file of a package, against the announcements a load enters.
QList<Finding> CheckServiceFile(const QString& path, const QList<CheckedAnnouncement>& table);

struct PackageCheck {
    // False when there is no package to check (no folder, no index file that is one).
    bool readable = true;
    QList<Finding> findings;
    // The announcements the index check opened, for measuring them afterwards.
    QList<CheckedAnnouncement> announcements;
    // Only when a meter was given.
    std::optional<LoudnessCheck> loudness;
};

// Everything that would make the editor or the add-on trip over the package or hide part of
// it: the index and its sounds, then every service file ("*._") in the folder; then, with a
// meter, the sounds' loudness.
PackageCheck CheckPackage(const QString& packageFolder, PackageSounds& sounds,
                          LoudnessMeter* meter = nullptr);

} // namespace tavik
