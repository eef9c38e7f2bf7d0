#pragma once

#include <QString>
#include <QStringList>

namespace tavik {

// How this system compares file names: Windows folds case, other systems do not.
Qt::CaseSensitivity FileNameCase();

// The file name of a program called `stem` here ("tavikpm" becomes "tavikpm.exe" on Windows).
QString ProgramFileName(const QString& stem);

// What the drive list offers: the drive letters where there are drives, else the file
// system's root followed by the root of every other mounted volume.
QStringList DriveRoots();

} // namespace tavik
