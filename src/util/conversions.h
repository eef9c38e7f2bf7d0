#pragma once

#include "variant.h"

#include <QLocale>
#include <QString>
#include <cstdint>

namespace tavik {

// Booleans are stored as 16-bit -1 (true) and 0 (false).
inline constexpr std::int16_t VbTrue = -1;
inline constexpr std::int16_t VbFalse = 0;
inline constexpr std::int16_t toVbBool(bool b) {
    return b ? VbTrue : VbFalse;
}

// Reads as much of the text as forms a number and ignores the rest: blanks, tabs and line
// feeds are skipped anywhere, "." is the decimal point whatever the locale, "&H"/"&O" start
// hexadecimal and octal numbers; a text that starts with no number gives 0.
double Val(const QString& text);

// Rounds to the nearest whole number, ties to the even one.
double roundHalfEven(double value);

// Reads a whole text as a number the way the runtime converts a text to a number: blanks
// around it, a sign, group separators and the decimal separator of `locale`, an exponent,
// or "&H"/"&O". Returns false when the text is not a number.
bool parseNumericText(const QString& text, double& out, const QLocale& locale = QLocale());

// The runtime's conversions. They raise runtime error 6 (overflow) for values out of range
// and 13 (type mismatch) for texts that are no number.
std::int16_t CInt(double value);
std::int32_t CLng(double value);
std::int16_t CInt(const Variant& value);
std::int32_t CLng(const Variant& value);
double CDbl(const Variant& value);
bool CBool(const Variant& value);
QString CStr(const Variant& value);

// Adds two 32-bit numbers as the runtime does: an overflow raises runtime error 6.
std::int32_t addLong(std::int32_t a, std::int32_t b);
std::int16_t addInteger(std::int16_t a, std::int16_t b);

} // namespace tavik
