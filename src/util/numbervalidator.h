#pragma once

#include <QValidator>
#include <cstdint>

namespace tavik {

// Lets a text box take only what the runtime's whole-number conversion behind it converts
// (see CheckWholeNumberInput), so typing cannot reach its type-mismatch or overflow error.
class WholeNumberValidator : public QValidator {
    Q_OBJECT
public:
    WholeNumberValidator(std::int64_t minimum, std::int64_t maximum, QObject* parent = nullptr);

    State validate(QString& input, int& pos) const override;

private:
    std::int64_t minimum_;
    std::int64_t maximum_;
};

} // namespace tavik
