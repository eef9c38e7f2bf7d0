#pragma once

#include <QStringView>
#include <cstdint>

namespace tavik {

// What a box that feeds one of the runtime's whole-number conversions makes of typed text.
enum class NumberInput {
    Invalid,      // cannot become a number in range by typing more
    Intermediate, // not yet a number ("" or a lone sign)
    Acceptable,   // digits the conversion takes, in range
};

// Text typed for a whole number from `minimum` to `maximum`: digits only, with one leading
// "+" or "-" when `minimum` is below 0. Anything the conversion would also read (blanks,
// separators, "&H", exponents) is refused, so what is taken always converts.
NumberInput CheckWholeNumberInput(QStringView text, std::int64_t minimum, std::int64_t maximum);

// The ranges of the runtime's 16- and 32-bit conversions.
inline constexpr std::int64_t kIntegerMin = -32768;
inline constexpr std::int64_t kIntegerMax = 32767;
inline constexpr std::int64_t kLongMax = 2147483647;

} // namespace tavik
