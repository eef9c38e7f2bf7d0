#pragma once

#include <QString>
#include <sndfile.h>

namespace tavik {

// libsndfile's open for a path as the program holds it: every name the system can hold (on
// Windows beyond the ANSI code page), and for reading only a plain file, never a device that
// a name such as "aux.wav" stands for there. Null when it cannot be opened.
SNDFILE* OpenSndFile(const QString& path, int mode, SF_INFO* info);

} // namespace tavik
