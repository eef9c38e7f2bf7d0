// Settings of any length are read whole or refused with a message, and the picture-only
// buttons are named in every language.
#include "app/frmmain.h"
#include "settings/language.h"
#include "settings/modini.h"
#include "support/editorfixture.h"
#include "util/zelcmd.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

TEST(LongSettings, AValueOf1023CharactersIsWholeAndOneOf1024IsNot) {
    test::TempDir dir;
    const QString ini =
        dir.write(QStringLiteral("Tavik.ini"), "[Settings]\r\nA=" + QByteArray(1023, 'a') +
                                                   "\r\nB=" + QByteArray(1024, 'b') + "\r\n");
    EXPECT_TRUE(ReadINIIsWhole(ini, QStringLiteral("Settings"), QStringLiteral("A")));
    EXPECT_FALSE(ReadINIIsWhole(ini, QStringLiteral("Settings"), QStringLiteral("B")));
    EXPECT_TRUE(ReadINIIsWhole(ini, QStringLiteral("Settings"), QStringLiteral("C")));
}

TEST(LongSettings, ALanguagePathOf2000CharactersIsRefusedWithAMessageAndAskedAgain) {
    EditorFixture editor{QString()};
    ASSERT_TRUE(QFile::remove(editor.root.file(QStringLiteral("res/lang/Deutsch.lng"))));
    const QByteArray longPath =
        editor.root.file(QStringLiteral("res/lang/")).toLocal8Bit() + QByteArray(2000, 'x');
    editor.root.write(QStringLiteral("bin/Tavik.ini"),
                      "[Settings]\r\nLanguage=" + longPath + "/English.lng\r\n");
    ASSERT_TRUE(editor.main->FormLoad());
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_TRUE(editor.messages[0].text.contains(QStringLiteral("too long")));
    EXPECT_EQ(editor.messages[0].title, QStringLiteral("Tavik"));
    // The only language there is was taken instead, and the editor speaks it.
    EXPECT_TRUE(editor.language.LanguageFile.endsWith(QStringLiteral("English.lng")));
    EXPECT_LT(editor.language.LanguageFile.size(), 1023);
    EXPECT_EQ(editor.main->cmdOpen()->text(), QStringLiteral("&Open"));
}

TEST(ArrowButtonNames, TheFourArrowButtonsAreNamedWithoutALanguageFile) {
    EditorFixture editor{QString()};
    for (zelcmd* button : {editor.main->cmdFUp(), editor.main->cmdUp(), editor.main->cmdDown(),
                           editor.main->cmdFDown()})
        EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
}

TEST(ArrowButtonNames, TheFourArrowButtonsAreNamedInEveryLanguage) {
    for (const QString& file : {QStringLiteral("Deutsch.lng"), QStringLiteral("English.lng")}) {
        EditorFixture editor(file);
        ASSERT_TRUE(editor.main->FormLoad());
        for (zelcmd* button : {editor.main->cmdFUp(), editor.main->cmdUp(), editor.main->cmdDown(),
                               editor.main->cmdFDown()}) {
            EXPECT_FALSE(button->accessibleName().isEmpty())
                << file.toStdString() << " " << button->objectName().toStdString();
            EXPECT_EQ(button->accessibleName(), button->toolTip());
        }
    }
}
