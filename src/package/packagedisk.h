#pragma once

#include "util/wholeread.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

namespace tavik {

// One file of a package as it was on disk: its stamp, and for the small files whose bytes the
// editor takes in whole (the index, service files) a hash of them, so that a file rewritten with
// the same size within one tick of the clock still counts as changed.
struct PackageFileState {
    FileStamp stamp;
    QByteArray hash;

    bool operator==(const PackageFileState&) const = default;
};

// The files of a package that the editor shows or writes: the index, the sound files (names
// beginning with a digit) and the service files, by file name. A hash, not a map: a package
// of thousands of sounds keeps one entry per sound for as long as it is open, and nothing
// needs them in order.
using PackageDiskState = QHash<QString, PackageFileState>;

// Whether `name` is a service file ("_*._"): the main window's list neither shows nor writes one.
bool IsServiceFileName(const QString& name);

// Whether `name` is one of the files PackageDiskState follows.
bool IsFollowedPackageFile(const QString& name);

// The state of the followed files of `packageFolder` now.
PackageDiskState ReadPackageDiskState(const QString& packageFolder);

// The state of one followed file now (a missing file has a stamp that does not exist).
PackageFileState ReadPackageFileState(const QString& packageFolder, const QString& name);

// Sets the entries of `names` in `state` to what they are on disk now: the program's own
// writes, so that they do not look like another program's.
void RefreshPackageFiles(PackageDiskState& state, const QString& packageFolder,
                         const QStringList& names);

// The file names that appeared, went or changed between `was` and `now`, sorted.
QStringList ChangedPackageFiles(const PackageDiskState& was, const PackageDiskState& now);

} // namespace tavik
