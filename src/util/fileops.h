#pragma once

#include <QStringList>

namespace tavik {

// The program's one file check: a file is present when it is at least one byte long. With
// `deleteEmpty` a zero-length file is deleted and counted absent. Any error counts as absent.
bool FileCheck(const QString& path, bool deleteEmpty = false);

// Wildcard match of a file name against a pattern of "*" and "?", without regard to case,
// as the directory search matches names.
bool WildcardMatch(const QString& pattern, const QString& name);

// The plain files of a folder in the order the directory search lists them (names compared
// without regard to case). Folders, links and hidden files are left out.
QStringList ListFiles(const QString& folder);

// The first plain file in `folder` whose name matches `pattern`, in the order the directory
// search lists them (names compared without regard to case); "" when none does. Folders,
// links and hidden files are never found.
QString DirFirst(const QString& folder, const QString& pattern);

// The runtime's file statements. Each raises the runtime's error for what went wrong
// (53 file not found, 75 path/file access error, 76 path not found).
qint64 FileLen(const QString& path);
void FileCopy(const QString& source, const QString& destination);
void Kill(const QString& path);
void MkDir(const QString& path);
void RmDir(const QString& path);

// Writes `bytes` as the whole new content of `path` through a temporary file and a rename,
// so a failed write leaves the old file as it was. Raises 76 when the folder is missing and
// 75 for any other failure.
void WriteFileAtomically(const QString& path, const QByteArray& bytes);

} // namespace tavik
