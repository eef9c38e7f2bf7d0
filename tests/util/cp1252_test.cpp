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

TEST(Cp1252, ATextThroughTheCodePageComesBackAsTheBytesWouldReadIt) {
    // Every character up to U+0200, one surrogate pair and an unpaired surrogate: each one
    // comes back as a write and a read of its bytes give it.
    QString all;
    for (char16_t c = 0; c < 0x200; ++c)
        all += QChar(c);
    all += QStringLiteral("\U0001F600");
    all += QChar(0xD800);
    all += QStringLiteral("\u20ac\u2122");
    for (qsizetype i = 0; i < all.size(); ++i) {
        const QString one = all.mid(i, 1);
        EXPECT_EQ(ThroughCp1252(one), fromCp1252(toCp1252(one))) << i;
    }
    EXPECT_EQ(ThroughCp1252(all), fromCp1252(toCp1252(all)));
    EXPECT_EQ(ThroughCp1252(QStringLiteral("status 0001 length")),
              QStringLiteral("status 0001 length"));
    EXPECT_EQ(ThroughCp1252(QStringLiteral("play \u0101 \u0081")), QStringLiteral("play ? \u0081"));
}
