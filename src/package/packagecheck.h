#pragma once

#include "package/packagefinding.h"
#include "package/packagesounds.h"

#include <QList>
#include <QString>
#include <cstdint>

namespace tavik {

// An announcement as a load would enter it in the table: services are checked against these.
struct CheckedAnnouncement {
    QString Key;
    std::int32_t Length = 0;
    bool Measured = false;
    int Position = 0;  // "INDEX" position, from 1
    QString SoundPath; // the sound file, when one was measured
};

struct IndexCheck {
    // False when there is no package to check: no folder, or no index file that is one.
    bool readable = true;
    // Whether the editor would open the index at all; services are checked only then.
    bool opened = false;
    QList<Finding> findings;
    QList<CheckedAnnouncement> announcements;
    // The folder's files as ListFiles gives them, listed once for the whole check.
    QStringList files;
};

// Checks what a load of the package folder would meet: the index file, its entries, keys,
// settings and texts, every announcement's sound, the files no entry names and links. Each
// sound is opened through `sounds` under an alias of the check's own, measured and closed.
IndexCheck CheckPackageIndex(const QString& packageFolder, PackageSounds& sounds);

// Why a text read from a package is not what its author wrote in code page 1252: a byte the
// code page leaves undefined, or non-ASCII text that is really UTF-8. "" when neither.
QString CodePageProblem(const QString& text);

} // namespace tavik
