#pragma once

#include <QList>
#include <QString>

namespace tavik {

// A package found in the data folder: its name from the index and its folder.
struct PackageCandidate {
    QString Name;
    QString Folder;
};

// The packages below `dataFolder` (which ends in a separator), in the order of the directory
// listing. Every entry that is not a non-empty file counts as a candidate: a zero-length file
// lying there is deleted on the way. A candidate is listed when its "Package.io" opens as the
// store opens it and names the package under "INFO"/"Name". Only that key of each index is
// kept while it is looked at, so a data folder of big packages lists in little memory.
// Each folder is `dataFolder` + a separator + its name.
QList<PackageCandidate> ScanPackages(const QString& dataFolder);

// The index file of a package folder: the folder, a separator and "Package.io".
QString IndexFileOf(const QString& packageFolder);

// The folder part of a path chosen in the file dialog, up to and including its last separator.
QString FolderOfChosenFile(const QString& path);

} // namespace tavik
