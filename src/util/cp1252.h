#pragma once

#include <QByteArray>
#include <QString>

namespace tavik {

// Texts on disk are 8-bit ANSI text in code page 1252. The five byte values the code page
// leaves undefined map to the C1 control characters of the same value, as Windows maps them,
// so every byte string survives a read and a write unchanged.
QString fromCp1252(const char* data, qsizetype size);
inline QString fromCp1252(const QByteArray& bytes) {
    return fromCp1252(bytes.constData(), bytes.size());
}

// A character the code page cannot hold is written as "?".
QByteArray toCp1252(const QString& text);

// What `text` becomes on its way through the code page and back, as every text that crosses
// an 8-bit interface does: a character the code page cannot hold becomes "?". A text of ASCII
// and Latin-1 letters comes back as it is, without a copy.
QString ThroughCp1252(const QString& text);

// Whether the code page has a byte of its own for the character `c` (a code point).
bool Cp1252HoldsCharacter(char32_t c);
// That byte, for a character the code page holds; "?" for any other.
char Cp1252Byte(char32_t c);

// Whether every character of `text` has a byte of its own in the code page, so writing it
// loses nothing.
bool CanHoldInCp1252(const QString& text);

} // namespace tavik
