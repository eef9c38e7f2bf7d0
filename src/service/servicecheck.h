#pragma once

#include "package/packagecheck.h"

namespace tavik {

// The findings of one service file of a package, against the announcements a load enters.
QList<Finding> CheckServiceFile(const QString& path, const QList<CheckedAnnouncement>& table);

struct PackageCheck {
    // False when there is no package to check (no folder, no index file that is one).
    bool readable = true;
    QList<Finding> findings;
};

// Everything that would make the editor or the add-on trip over the package or hide part of
// it: the index and its sounds, then every service file ("*._") in the folder.
PackageCheck CheckPackage(const QString& packageFolder, PackageSounds& sounds);

} // namespace tavik
