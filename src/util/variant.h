#pragma once

#include <QString>
#include <cstdint>

namespace tavik {

// Type codes of the runtime's variant, as they stand on disk.
enum class VarType : std::uint16_t {
    Empty = 0,
    Integer = 2, // 16-bit
    Long = 3,    // 32-bit
    Double = 5,
    Date = 7, // days since 1899-12-30 as a double
    String = 8,
    Boolean = 11, // 16-bit, -1 true, 0 false
};

bool isKnownVarType(std::uint16_t code);

// A value of the package store. Numbers keep their exact bits, so a value read from a file
// is written back with the same type code and bytes.
class Variant {
public:
    Variant() = default; // Empty

    static Variant fromInteger(std::int16_t v);
    static Variant fromLong(std::int32_t v);
    static Variant fromDouble(double v);
    static Variant fromDoubleBits(std::uint64_t bits);
    static Variant fromDateBits(std::uint64_t bits);
    static Variant fromString(QString v);
    static Variant fromBoolean(bool v);
    // A Boolean as stored: any 16-bit value, non-zero meaning true.
    static Variant fromBooleanBits(std::int16_t raw);

    VarType type() const { return type_; }
    bool isEmpty() const { return type_ == VarType::Empty; }

    // Raw payloads of the numeric types (only meaningful for the matching type).
    std::int16_t int16Bits() const { return static_cast<std::int16_t>(bits_); }
    std::int32_t int32Bits() const { return static_cast<std::int32_t>(bits_); }
    std::uint64_t doubleBits() const { return bits_; }
    double doubleValue() const; // Double and Date
    const QString& stringValue() const { return string_; }

    bool operator==(const Variant& other) const;

private:
    VarType type_ = VarType::Empty;
    std::uint64_t bits_ = 0;
    QString string_;
};

} // namespace tavik
