#pragma once

#include <QString>
#include <QStringList>

namespace tavik {

// The fixed entries in front of the format list of the import dialog.
inline constexpr char16_t kAllFilesEntry[] = u"Alle Dateien";
inline constexpr char16_t kAllMediaEntry[] = u"Alle Medientypen!";

// The extensions listed under "Installed" in the formats file, keys "1", "2", ... in order,
// up to the first key without a value.
QStringList InstalledFormats(const QString& formatsFile);

// The entries of the format list: the two fixed ones, then "*." and each installed format.
QStringList FormatFilterEntries(const QStringList& installedFormats);

// The file pattern for the entry at `index`: "*.*" for all files, every format entry joined by
// ";" for all media types, else the entry's own text.
QString FilterPattern(const QStringList& entries, int index);

// True when `path` names a file with one of `installedFormats` as its extension (compared
// without regard to case): what a drop onto the import list takes.
bool IsInstalledFormat(const QString& path, const QStringList& installedFormats);

} // namespace tavik
