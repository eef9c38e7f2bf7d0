#include "util/conversions.h"
#include "util/runtimeerror.h"

#include "support/errorof.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using namespace tavik;
using tavik::test::errorOf;

TEST(Val, SkipsLeadingBlanksAndStopsWhereTheNumberEnds) {
    EXPECT_EQ(Val(QStringLiteral("  1234 ms")), 1234.0);
    EXPECT_EQ(Val(QStringLiteral("12.5abc")), 12.5);
    EXPECT_EQ(Val(QStringLiteral("-3.75")), -3.75);
    EXPECT_EQ(Val(QStringLiteral("1.2.3")), 1.2);
}

TEST(Val, IgnoresBlanksTabsAndLineFeedsInsideTheNumber) {
    EXPECT_EQ(Val(QStringLiteral(" 1615 198th Street")), 1615198.0);
    EXPECT_EQ(Val(QStringLiteral("2\t4\n5")), 245.0);
}

TEST(Val, GivesZeroForTextWithoutANumber) {
    EXPECT_EQ(Val(QString()), 0.0);
    EXPECT_EQ(Val(QStringLiteral("abc")), 0.0);
    EXPECT_EQ(Val(QStringLiteral("-")), 0.0);
    EXPECT_EQ(Val(QStringLiteral(".")), 0.0);
}

TEST(Val, ReadsExponentsAndRadixPrefixes) {
    EXPECT_EQ(Val(QStringLiteral("1.5E2")), 150.0);
    EXPECT_EQ(Val(QStringLiteral("2d3")), 2000.0);
    EXPECT_EQ(Val(QStringLiteral("7e")), 7.0);
    EXPECT_EQ(Val(QStringLiteral("&HFF")), 255.0);
    EXPECT_EQ(Val(QStringLiteral("&HFFFF")), -1.0);
    EXPECT_EQ(Val(QStringLiteral("&O17")), 15.0);
    EXPECT_EQ(Val(QStringLiteral(".5")), 0.5);
}

TEST(Val, RaisesOverflowForANumberBeyondDoubles) {
    EXPECT_EQ(errorOf([] { Val(QStringLiteral("1E400")); }), rt::Overflow);
}

TEST(RoundHalfEven, RoundsTiesToTheEvenNeighbour) {
    EXPECT_EQ(roundHalfEven(0.5), 0.0);
    EXPECT_EQ(roundHalfEven(1.5), 2.0);
    EXPECT_EQ(roundHalfEven(2.5), 2.0);
    EXPECT_EQ(roundHalfEven(-2.5), -2.0);
    EXPECT_EQ(roundHalfEven(-3.5), -4.0);
    EXPECT_EQ(roundHalfEven(2.4999), 2.0);
    EXPECT_EQ(roundHalfEven(2.5001), 3.0);
}

TEST(CInt, RoundsHalfToEvenAndRaisesOverflowOutside16Bits) {
    EXPECT_EQ(CInt(32767.0), 32767);
    EXPECT_EQ(CInt(-32768.0), -32768);
    EXPECT_EQ(CInt(32766.5), 32766);
    EXPECT_EQ(CInt(-32768.5), -32768);
    EXPECT_EQ(errorOf([] { CInt(32767.5); }), rt::Overflow);
    EXPECT_EQ(errorOf([] { CInt(-32769.0); }), rt::Overflow);
    EXPECT_EQ(errorOf([] { CInt(std::nan("")); }), rt::Overflow);
}

TEST(CLng, RoundsHalfToEvenAndRaisesOverflowOutside32Bits) {
    EXPECT_EQ(CLng(2147483647.0), 2147483647);
    EXPECT_EQ(CLng(-2147483648.0), -2147483647 - 1);
    EXPECT_EQ(CLng(4.5), 4);
    EXPECT_EQ(CLng(5.5), 6);
    EXPECT_EQ(errorOf([] { CLng(2147483647.5); }), rt::Overflow);
    EXPECT_EQ(errorOf([] { CLng(-2147483649.0); }), rt::Overflow);
}

TEST(CInt, ConvertsTextsAndRaisesTypeMismatchForNonNumbers) {
    EXPECT_EQ(CInt(Variant::fromString(QStringLiteral(" 42 "))), 42);
    EXPECT_EQ(CInt(Variant::fromString(QStringLiteral("-1"))), -1);
    EXPECT_EQ(CInt(Variant::fromString(QStringLiteral("2.5"))), 2);
    EXPECT_EQ(CInt(Variant::fromString(QStringLiteral("&H10"))), 16);
    EXPECT_EQ(errorOf([] { CInt(Variant::fromString(QStringLiteral("abc"))); }), rt::TypeMismatch);
    EXPECT_EQ(errorOf([] { CInt(Variant::fromString(QString())); }), rt::TypeMismatch);
    EXPECT_EQ(errorOf([] { CInt(Variant::fromString(QStringLiteral("12abc"))); }),
              rt::TypeMismatch);
    EXPECT_EQ(errorOf([] { CInt(Variant::fromString(QStringLiteral("40000"))); }), rt::Overflow);
}

TEST(CLng, ConvertsTheStoredDefaultTexts) {
    EXPECT_EQ(CLng(Variant::fromString(QStringLiteral("0"))), 0);
    EXPECT_EQ(CLng(Variant::fromString(QStringLiteral("-1"))), -1);
    EXPECT_EQ(CLng(Variant::fromLong(16777215)), 16777215);
    EXPECT_EQ(CLng(Variant::fromInteger(-7)), -7);
    EXPECT_EQ(CLng(Variant()), 0);
}

TEST(CDbl, ReadsWholeNumbersToTheBitsStrtodGives) {
    // Short and long ones, signs, leading zeros, a minus zero, one beyond fifteen digits.
    for (const char* text :
         {"0", "-0", "+0", "7", "+7", "-1", "000123", "255", "16777215", "-2147483648",
          "999999999999999", "-999999999999999", "9999999999999999", "12345678901234567890"}) {
        const double expected = std::strtod(text, nullptr);
        const double got = CDbl(Variant::fromString(QString::fromLatin1(text)));
        EXPECT_EQ(got, expected) << text;
        EXPECT_EQ(std::signbit(got), std::signbit(expected)) << text;
    }
}

TEST(CBool, ReadsNumbersTextsAndStoredBooleans) {
    EXPECT_TRUE(CBool(Variant::fromString(QStringLiteral("1"))));
    EXPECT_FALSE(CBool(Variant::fromString(QStringLiteral("0"))));
    EXPECT_TRUE(CBool(Variant::fromString(QStringLiteral("True"))));
    EXPECT_FALSE(CBool(Variant::fromString(QStringLiteral("false"))));
    EXPECT_TRUE(CBool(Variant::fromBoolean(true)));
    EXPECT_TRUE(CBool(Variant::fromBooleanBits(5)));
    EXPECT_FALSE(CBool(Variant()));
    EXPECT_EQ(errorOf([] { CBool(Variant::fromString(QStringLiteral("ja"))); }), rt::TypeMismatch);
}

TEST(Booleans, AreStoredAsMinusOneAndZero) {
    EXPECT_EQ(toVbBool(true), -1);
    EXPECT_EQ(toVbBool(false), 0);
    EXPECT_EQ(CInt(Variant::fromBoolean(true)), -1);
    EXPECT_EQ(Variant::fromBoolean(true).int16Bits(), -1);
}

TEST(CStr, WritesEachTypeAsTheRuntimeDoes) {
    EXPECT_EQ(CStr(Variant()), QString());
    EXPECT_EQ(CStr(Variant::fromInteger(-12)), QStringLiteral("-12"));
    EXPECT_EQ(CStr(Variant::fromLong(70000)), QStringLiteral("70000"));
    EXPECT_EQ(CStr(Variant::fromBoolean(false)), QStringLiteral("False"));
    EXPECT_EQ(CStr(Variant::fromBoolean(true)), QStringLiteral("True"));
    EXPECT_EQ(CStr(Variant::fromString(QStringLiteral("x"))), QStringLiteral("x"));
    EXPECT_EQ(CStr(Variant::fromDouble(1.5)), QStringLiteral("1.5"));
}

TEST(CheckedSums, RaiseOverflowPastTheirWidth) {
    EXPECT_EQ(addInteger(32766, 1), 32767);
    EXPECT_EQ(errorOf([] { addInteger(32767, 1); }), rt::Overflow);
    EXPECT_EQ(addLong(2147483646, 1), 2147483647);
    EXPECT_EQ(errorOf([] { addLong(2147483647, 1); }), rt::Overflow);
    EXPECT_EQ(errorOf([] { addLong(-2147483647 - 1, -1); }), rt::Overflow);
}

TEST(RuntimeError, CarriesNumberAndTheRuntimeMessage) {
    const RuntimeError e(9);
    EXPECT_EQ(e.number(), 9);
    EXPECT_EQ(e.description(), QStringLiteral("Index außerhalb des gültigen Bereichs"));
    EXPECT_TRUE(e.message().startsWith(QStringLiteral("Laufzeitfehler '9':")));
    EXPECT_EQ(RuntimeError(6).description(), QStringLiteral("Überlauf"));
    EXPECT_EQ(RuntimeError(13).description(), QStringLiteral("Typen unverträglich"));
}
