#include "util/cp1252.h"
#include "util/cp1252guard.h"

#include <gtest/gtest.h>

using namespace tavik;

TEST(UnheldCharacters, ATextTheCodePageHoldsHasNone) {
    EXPECT_TRUE(FindUnheldCharacters(QStringLiteral("Grüße € „Zug“ – Süd?")).isEmpty());
    EXPECT_TRUE(FindUnheldCharacters(QString()).isEmpty());
}

TEST(UnheldCharacters, NamesEachWithItsPositionCountingAnEmojiAsOne) {
    const QList<UnheldCharacter> unheld =
        FindUnheldCharacters(QStringLiteral("Probe → Süd \U0001F686 Łukasz"));
    ASSERT_EQ(unheld.size(), 3);
    EXPECT_EQ(unheld[0], (UnheldCharacter{7, U'→', QStringLiteral("→")}));
    EXPECT_EQ(unheld[1], (UnheldCharacter{13, U'\U0001F686', QStringLiteral("\U0001F686")}));
    EXPECT_EQ(unheld[2], (UnheldCharacter{15, U'Ł', QStringLiteral("Ł")}));
}

TEST(UnheldCharacters, FindsCyrillicAndALoneSurrogate) {
    const QList<UnheldCharacter> cyrillic = FindUnheldCharacters(QStringLiteral("Москва"));
    EXPECT_EQ(cyrillic.size(), 6);
    QString lone = QStringLiteral("a");
    lone += QChar(0xD83D);
    const QList<UnheldCharacter> unheld = FindUnheldCharacters(lone);
    ASSERT_EQ(unheld.size(), 1);
    EXPECT_EQ(unheld[0].position, 2);
    EXPECT_EQ(UnheldCharacterName(unheld[0]), QStringLiteral("U+D83D"));
}

TEST(UnheldCharacters, AreNamedByNumberAndCharacter) {
    EXPECT_EQ(UnheldCharacterName({7, U'→', QStringLiteral("→")}), QStringLiteral("U+2192 \"→\""));
    EXPECT_EQ(UnheldCharacterName({1, U'\U0001F686', QStringLiteral("\U0001F686")}),
              QStringLiteral("U+1F686 \"\U0001F686\""));
}

TEST(ClosestLetters, KeepWhatTheCodePageHolds) {
    EXPECT_EQ(ClosestCp1252Text(QStringLiteral("Grüße Øre ß")), QStringLiteral("Grüße Øre ß"));
}

TEST(ClosestLetters, ReplaceLettersSignsAndTheRest) {
    EXPECT_EQ(ClosestCp1252Text(QStringLiteral("Łukasz")), QStringLiteral("Lukasz"));
    EXPECT_EQ(ClosestCp1252Text(QStringLiteral("Probe → Süd")), QStringLiteral("Probe -> Süd"));
    EXPECT_EQ(ClosestCp1252Text(QStringLiteral("Đakovo Ștefan Ćirić ﬁx")),
              QStringLiteral("Dakovo Stefan Ciric fix"));
    EXPECT_EQ(ClosestCp1252Text(QStringLiteral("Zug \U0001F686!")), QStringLiteral("Zug ?!"));
    EXPECT_EQ(ClosestCp1252Text(QStringLiteral("Москва")), QStringLiteral("??????"));
}

TEST(ClosestLetters, AlwaysGiveATextTheCodePageHolds) {
    const QString mixed = QStringLiteral("Ł→\U0001F600Ж≠ǅ ẞ ḗ ffi Ω");
    EXPECT_TRUE(CanHoldInCp1252(ClosestCp1252Text(mixed)));
    EXPECT_TRUE(FindUnheldCharacters(ClosestCp1252Text(mixed)).isEmpty());
}

TEST(UnheldCharacters, TheToolsProblemNamesEachCharacterAndItsPlace) {
    EXPECT_TRUE(UnheldCharactersProblem(QStringLiteral("Süd")).isEmpty());
    EXPECT_EQ(UnheldCharactersProblem(QStringLiteral("Łukasz → Süd")),
              QStringLiteral("code page 1252 cannot hold U+0141 \"Ł\" at character 1, U+2192 "
                             "\"→\" at character 8 (--lossy writes \"?\" instead)"));
}
