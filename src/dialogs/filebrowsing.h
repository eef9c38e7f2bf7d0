#pragma once

#include <QString>
#include <QStringList>

namespace tavik {

// What the drive list offers: the drive letters where there are drives, else the file
// system's root followed by the root of every other mounted volume.
QStringList DriveRoots();

// The drive (or volume root) a folder lies on, one of DriveRoots() when it is listed there.
QString DriveOf(const QString& folder);

// The subfolders of `folder`, sorted by name without regard to case; hidden ones left out.
QStringList ListFolders(const QString& folder);

// The plain files of `folder` that match `pattern`: one or more wildcard patterns joined by
// ";", where "*.*" matches every name, as the directory search has it. An empty pattern
// matches nothing. Sorted by name without regard to case; hidden files left out.
QStringList ListPatternFiles(const QString& folder, const QString& pattern);

// `folder` and `name` joined by one separator, none added when the folder already ends in one.
QString JoinFolderFile(const QString& folder, const QString& name);

} // namespace tavik
