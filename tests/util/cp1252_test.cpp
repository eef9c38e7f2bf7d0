#include "util/cp1252.h"

#include <gtest/gtest.h>

using namespace tavik;

TEST(Cp1252, EveryByteSurvivesAReadAndAWrite) {
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all.append(static_cast<char>(b));
    const QString text = fromCp1252(all);
    ASSERT_EQ(text.size(), 256);
    EXPECT_EQ(toCp1252(text), all);
}

TEST(Cp1252, MapsTheHighCharactersOfTheCodePage) {
    EXPECT_EQ(fromCp1252(QByteArray("\x80", 1)), QString(QChar(0x20AC)));
    EXPECT_EQ(fromCp1252(QByteArray("\xE4\xF6\xFC\xDF", 4)), QStringLiteral("äöüß"));
    EXPECT_EQ(toCp1252(QStringLiteral("Grüße €")), QByteArray("Gr\xFC\xDF"
                                                              "e \x80"));
}

TEST(Cp1252, WritesAQuestionMarkForWhatItCannotHold) {
    EXPECT_EQ(toCp1252(QStringLiteral("a\u0101b")), QByteArray("a?b"));
    EXPECT_EQ(toCp1252(QStringLiteral("\U0001F600")), QByteArray("?"));
    EXPECT_EQ(toCp1252(QStringLiteral("Ωx")), QByteArray("?x"));
}
