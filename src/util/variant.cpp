#include "variant.h"

#include <bit>

namespace tavik {

bool isKnownVarType(std::uint16_t code) {
    switch (static_cast<VarType>(code)) {
    case VarType::Empty:
    case VarType::Integer:
    case VarType::Long:
    case VarType::Double:
    case VarType::Date:
    case VarType::String:
    case VarType::Boolean:
        return true;
    }
    return false;
}

Variant Variant::fromInteger(std::int16_t v) {
    Variant r;
    r.type_ = VarType::Integer;
    r.bits_ = static_cast<std::uint16_t>(v);
    return r;
}

Variant Variant::fromLong(std::int32_t v) {
    Variant r;
    r.type_ = VarType::Long;
    r.bits_ = static_cast<std::uint32_t>(v);
    return r;
}

Variant Variant::fromDouble(double v) {
    return fromDoubleBits(std::bit_cast<std::uint64_t>(v));
}

Variant Variant::fromDoubleBits(std::uint64_t bits) {
    Variant r;
    r.type_ = VarType::Double;
    r.bits_ = bits;
    return r;
}

Variant Variant::fromDateBits(std::uint64_t bits) {
    Variant r;
    r.type_ = VarType::Date;
    r.bits_ = bits;
    return r;
}

Variant Variant::fromString(QString v) {
    Variant r;
    r.type_ = VarType::String;
    r.string_ = std::move(v);
    return r;
}

Variant Variant::fromBoolean(bool v) {
    return fromBooleanBits(v ? -1 : 0);
}

Variant Variant::fromBooleanBits(std::int16_t raw) {
    Variant r;
    r.type_ = VarType::Boolean;
    r.bits_ = static_cast<std::uint16_t>(raw);
    return r;
}

double Variant::doubleValue() const {
    return std::bit_cast<double>(bits_);
}

bool Variant::operator==(const Variant& other) const {
    return type_ == other.type_ && bits_ == other.bits_ && string_ == other.string_;
}

} // namespace tavik
