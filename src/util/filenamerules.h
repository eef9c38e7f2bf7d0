#pragma once

#include <QString>

namespace tavik {

// Whether Windows takes the file name `name` (one part of a path) for a device instead of a
// file: CON, PRN, AUX, NUL, COM1 to COM9 and LPT1 to LPT9 (also with the superscript digits
// 1, 2, 3), in any case, alone or before an extension ("aux.wav"), blanks before the dot
// included. Reading such a name reads the device; writing it writes to the device.
bool IsDeviceName(const QString& name);

// Whether Windows stores `name` under another name: it drops trailing dots and blanks, so
// "Paket." is the folder "Paket".
bool IsTrimmedName(const QString& name);

// Whether `name` names the same file on every system the packages go to: neither a device
// nor trimmed.
inline bool IsPortableName(const QString& name) {
    return !IsDeviceName(name) && !IsTrimmedName(name);
}

} // namespace tavik
