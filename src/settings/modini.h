#pragma once

#include "util/variant.h"

#include <QString>
#include <cstdint>
#include <functional>

namespace tavik {

// Shows one message to the user; the window layer passes a message box, tests a recorder.
using MessageReporter = std::function<void(const QString&)>;

// The profile-file routines every setting goes through. Files are ANSI (code page 1252) text
// in the profile syntax; section and key names match without regard to case, the first match
// wins, and nothing is cached: every call goes to the file.
// File names may use "\" as the program builds them.

// The stored value as a text variant, or the text form of `defaultValue` when the file,
// section or key is absent ("False", "0", ""). Values are cut to 1023 characters.
Variant ReadINI(const QString& file, const QString& section, const QString& key,
                const Variant& defaultValue);

// Whether ReadINI reads the value of `key` whole: one of 1023 characters or more comes back
// cut, and a cut path or name must be refused rather than used.
bool ReadINIIsWhole(const QString& file, const QString& section, const QString& key);

// Stores `value` under `key`, creating file, section and key as needed. Changes only the
// key's own line and keeps every other byte of the file. Reports nothing.
void WriteINI(const QString& file, const QString& section, const QString& key,
              const QString& value);

// Deletes `key` from `section` (brackets around the section are dropped). Returns non-zero on
// success; on failure reports "Error code is :" and the system's error code through `report`
// and returns 0.
std::int32_t DeleteINI(const QString& file, const QString& section, const QString& key,
                       const MessageReporter& report = {});

// Drops one leading "[" and one trailing "]".
QString StripBrackets(const QString& section);

} // namespace tavik
