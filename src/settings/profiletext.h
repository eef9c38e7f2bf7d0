#pragma once

#include <QString>
#include <QStringView>

namespace tavik::profile {

// The line rules of profile text, shared by the reader and the writer. A line ends at CR, LF
// or CR LF. Blanks are space, tab, vertical tab, form feed and Ctrl-Z (the old end-of-file
// mark), as the system skips them.
bool isBlank(QChar c);
QStringView trimBlanks(QStringView text);

// Drops everything from the first NUL on: the system sees the text only up to there.
QStringView cutAtNul(QStringView text);

// Where a key stands in a profile text, or where it would go.
struct KeyLocation {
    bool sectionFound = false;
    bool keyFound = false;
    // The key's line: its first character, the end of its text and the start of the next line.
    qsizetype lineBegin = -1;
    qsizetype lineEnd = -1;
    qsizetype lineNext = -1;
    QStringView keyName;   // as the file spells it
    bool hasValue = false; // the line has a "="
    QStringView value;     // trimmed, quotes still on
    // For a missing key of a found section: the end of the section's last key line (its
    // header when it has none) and whether a line end follows it there.
    qsizetype insertAt = -1;
    bool insertAfterLineEnd = false;
};

// Finds `key` in the first section named `section`; both names are compared trimmed and
// without regard to case, and the first matching key wins. Lines before the first section
// header belong to no section; a line whose first non-blank character is ";" is a comment.
KeyLocation findKey(QStringView text, QStringView section, QStringView key);

// The value as the system hands it out: one pair of matching quotes (' or ") around it
// dropped.
QStringView unquote(QStringView value);

} // namespace tavik::profile
