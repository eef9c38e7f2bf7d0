#pragma once

#include <QString>

namespace tavik {

// The most of a package's comment text that is read: a description, not a book. A longer file
// is cut, so a hostile package cannot make a window hang or eat memory.
inline constexpr qint64 kMaxPackageText = 64 * 1024;

// The whole content of a text file of a package (its comment) as text, cut after `maxBytes`.
// A missing file raises runtime error 53, one that cannot be read 75.
QString ReadPackageText(const QString& path, qint64 maxBytes = kMaxPackageText);

// A package's description for the open dialog: its comment file read as above, except that a
// missing file is the empty description. A package made with an empty description has no
// comment file and must still open; every other failure is the reader's error.
QString ReadPackageDescription(const QString& path);

} // namespace tavik
