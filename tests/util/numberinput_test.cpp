#include "util/conversions.h"
#include "util/numberinput.h"

#include <gtest/gtest.h>

using namespace tavik;

namespace {

NumberInput place(const char* text) {
    return CheckWholeNumberInput(QString::fromLatin1(text), 0, kLongMax);
}

NumberInput shift(const char* text) {
    return CheckWholeNumberInput(QString::fromLatin1(text), kIntegerMin, kIntegerMax);
}

} // namespace

TEST(WholeNumberInput, APlaceIsDigitsUpToTheLargest32BitNumber) {
    EXPECT_EQ(place("0"), NumberInput::Acceptable);
    EXPECT_EQ(place("007"), NumberInput::Acceptable);
    EXPECT_EQ(place("2147483647"), NumberInput::Acceptable);
    EXPECT_EQ(place("2147483648"), NumberInput::Invalid);
    EXPECT_EQ(place("99999999999999999999999"), NumberInput::Invalid);
    EXPECT_EQ(place(""), NumberInput::Intermediate);
}

TEST(WholeNumberInput, APlaceTakesNoSignBlankSeparatorOrOtherNumberForm) {
    for (const char* text :
         {"-1", "+1", "-", "+", " 1", "1 ", "1.000", "1,5", "&H10", "1e3", "zwei", "\xb2", "1\t"})
        EXPECT_EQ(place(text), NumberInput::Invalid) << text;
    // Digits of other scripts are no digits to the conversion.
    EXPECT_EQ(CheckWholeNumberInput(QStringLiteral("\u0661"), 0, kLongMax), NumberInput::Invalid);
}

TEST(WholeNumberInput, AShiftTakesOneLeadingSignWithinThe16BitRange) {
    EXPECT_EQ(shift("-32768"), NumberInput::Acceptable);
    EXPECT_EQ(shift("32767"), NumberInput::Acceptable);
    EXPECT_EQ(shift("+32767"), NumberInput::Acceptable);
    EXPECT_EQ(shift("-0"), NumberInput::Acceptable);
    EXPECT_EQ(shift("-32769"), NumberInput::Invalid);
    EXPECT_EQ(shift("32768"), NumberInput::Invalid);
    EXPECT_EQ(shift("-"), NumberInput::Intermediate);
    EXPECT_EQ(shift("+"), NumberInput::Intermediate);
    EXPECT_EQ(shift(""), NumberInput::Intermediate);
    for (const char* text : {"--1", "+-1", "1-", "5+", " 5", "abc", "1.5", "&O7"})
        EXPECT_EQ(shift(text), NumberInput::Invalid) << text;
}

TEST(WholeNumberInput, EverythingAcceptedConvertsWithoutError) {
    for (const char* text : {"0", "007", "2147483647", "-32768", "+32767", "-0", "+5"}) {
        const bool isShift = text[0] == '-' || text[0] == '+';
        const Variant value = Variant::fromString(QString::fromLatin1(text));
        if (isShift)
            EXPECT_NO_THROW(CInt(value)) << text;
        else
            EXPECT_NO_THROW(CLng(value)) << text;
    }
    EXPECT_EQ(CInt(Variant::fromString("-32768")), -32768);
    EXPECT_EQ(CLng(Variant::fromString("2147483647")), 2147483647);
}
