// Language files are data beside the program that users copy around; whatever they hold, the
// look-ups answer with a text and never crash or hang.
#include "settings/language.h"

#include "support/tempdir.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

namespace {

Language languageWith(const TempDir& dir, const QByteArray& content) {
    Language lang;
    lang.LanguageFile = dir.write("Hostile.lng", content);
    return lang;
}

} // namespace

TEST(LanguageHostile, BytesOutsideTheCodePageReadAsTheirCharacters) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_String]\r\n1=\x81\xff\x80%1\x9d\r\n");
    EXPECT_EQ(lang.GetLangString(1, "x"),
              QString(QChar(0x81)) + QChar(0xff) + QChar(0x20ac) + "x" + QChar(0x9d));
}

TEST(LanguageHostile, HugeLineIsCutToProfileLimit) {
    TempDir dir;
    QByteArray content = "[_String]\r\n1=";
    content += QByteArray(100000, 'a');
    content += "\r\n2=zwei\r\n";
    const Language lang = languageWith(dir, content);
    EXPECT_EQ(lang.GetLangString(1), QString(1023, u'a'));
    EXPECT_EQ(lang.GetLangString(2), QStringLiteral("zwei"));
}

TEST(LanguageHostile, HugeLineWithPlaceholdersStaysBounded) {
    TempDir dir;
    QByteArray content = "[_String]\r\n1=";
    for (int i = 0; i < 20000; ++i)
        content += "%1&_";
    const Language lang = languageWith(dir, content);
    // At most 1023 characters come from the file; each "%1" grows by the argument only.
    const QString s = lang.GetLangString(1, QString(10, u'x'));
    EXPECT_LE(s.size(), 1023 / 2 * 10 + 1023);
    EXPECT_TRUE(s.startsWith(QStringLiteral("xxxxxxxxxx\r\n")));
}

TEST(LanguageHostile, FileWithoutSectionsHasNoTexts) {
    TempDir dir;
    const Language lang = languageWith(dir, "1=eins\r\n6=doc\\readme.txt\r\nCaption=x\r\n");
    EXPECT_EQ(lang.GetLangString(1), QString());
    EXPECT_EQ(lang.GetLangFile(6), QString());
}

TEST(LanguageHostile, BinaryGarbageNeverCrashes) {
    TempDir dir;
    QRandomGenerator rng(4711);
    for (int round = 0; round < 50; ++round) {
        QByteArray bytes(4096, '\0');
        for (char& c : bytes)
            c = static_cast<char>(rng.bounded(256));
        if (round % 2)
            bytes.prepend("[_String]\n");
        const Language lang = languageWith(dir, bytes);
        for (int n = 0; n < 64; ++n)
            EXPECT_LE(lang.GetLangString(n, "a", "b", "c", "d", "e").size(), 1023 * 2);
        (void)lang.GetLangFile(static_cast<std::int16_t>(round));
    }
}

TEST(LanguageHostile, ValueCutAtNulCharacter) {
    TempDir dir;
    const Language lang = languageWith(dir, QByteArray("[_String]\r\n1=ab\0cd\r\n", 20));
    EXPECT_EQ(lang.GetLangString(1), QStringLiteral("ab"));
}

TEST(LanguageHostile, FolderInsteadOfFileReadsAsNoKeys) {
    TempDir dir;
    Language lang;
    lang.LanguageFile = dir.path();
    EXPECT_EQ(lang.GetLangString(1), QString());
    EXPECT_EQ(lang.GetLangFile(2), QString());
}
