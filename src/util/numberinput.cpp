#include "numberinput.h"

namespace tavik {

NumberInput CheckWholeNumberInput(QStringView text, std::int64_t minimum, std::int64_t maximum) {
    if (text.isEmpty())
        return NumberInput::Intermediate;
    qsizetype i = 0;
    bool negative = false;
    if (text[0] == u'+' || text[0] == u'-') {
        if (minimum >= 0)
            return NumberInput::Invalid;
        negative = text[0] == u'-';
        i = 1;
    }
    if (i == text.size())
        return NumberInput::Intermediate;
    // Past this bound no range of a 32-bit conversion is reached, and the sum cannot overflow.
    constexpr std::int64_t kBeyondAnyRange = std::int64_t(1) << 40;
    std::int64_t magnitude = 0;
    for (; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c < u'0' || c > u'9')
            return NumberInput::Invalid;
        magnitude = magnitude * 10 + (c - u'0');
        if (magnitude > kBeyondAnyRange)
            return NumberInput::Invalid;
    }
    const std::int64_t value = negative ? -magnitude : magnitude;
    return value < minimum || value > maximum ? NumberInput::Invalid : NumberInput::Acceptable;
}

} // namespace tavik
