#include "numbervalidator.h"

#include "numberinput.h"

namespace tavik {

WholeNumberValidator::WholeNumberValidator(std::int64_t minimum, std::int64_t maximum,
                                           QObject* parent)
    : QValidator(parent), minimum_(minimum), maximum_(maximum) {}

QValidator::State WholeNumberValidator::validate(QString& input, int& /*pos*/) const {
    switch (CheckWholeNumberInput(input, minimum_, maximum_)) {
    case NumberInput::Acceptable:
        return Acceptable;
    case NumberInput::Intermediate:
        return Intermediate;
    case NumberInput::Invalid:
        break;
    }
    return Invalid;
}

} // namespace tavik
