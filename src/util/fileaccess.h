#pragma once

#include "util/wholeread.h"

#include <QFile>
#include <QFileDevice>
#include <QStringList>

namespace tavik {

// How this system reads and writes files at the level below Qt. Each system has its own file
// (fileaccess_unix.cpp, fileaccess_win.cpp); the callers are the same everywhere.
// Also defined there: IsFaithfulName and OpenToRead (fileops.h), StampOf and FolderStamps
// (wholeread.h).

// Writes every byte of `data` to the open `file`, or raises the runtime's error for what the
// system answered (a full disk is "Disk full").
void WriteEveryByte(QFileDevice& file, const char* data, qint64 size);

// Has the system put what was written on the disk; a failure raises the runtime's error.
void SyncToDisk(QFileDevice& file);

// The stamp of the file `file` has open (not of whatever its name names now).
FileStamp StampOfOpenFile(QFile& file);

// Reads up to `count` bytes at `at` of the open `file` without moving anything another reader
// relies on; fewer at the file's end, -1 when the system refuses.
qint64 ReadAt(QFileDevice& file, qint64 at, char* into, qint64 count);

// The names QDir(folder).entryList(QDir::Files | QDir::NoSymLinks) gives, in no order: the
// plain files of `folder` that are no links and not hidden.
QStringList PlainFileNames(const QString& folder);

} // namespace tavik
