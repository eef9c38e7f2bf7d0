// Choosing another language relabels every open window at once, and Qt's own texts follow.
#include "settings/everywindow.h"

#include "settings/followlanguage.h"
#include "settings/language.h"
#include "settings/qttranslation.h"
#include "support/dialogtesting.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QTabBar>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

namespace {

QString yesButtonText() {
    QMessageBox box(QMessageBox::Question, QString(), QString(),
                    QMessageBox::Yes | QMessageBox::No);
    return box.button(QMessageBox::Yes)->text();
}

ControlText controlText(const QString& file, const char* section, const char* control) {
    return ParseControlText(
        ReadLanguageValue(file, QString::fromLatin1(section), QString::fromLatin1(control)));
}

QString numbered(const QString& file, int number) {
    Language language;
    language.LanguageFile = file;
    return language.GetLangString(number);
}

void chooseLanguageWithTheLanguageButton(frmMain& main, const QString& languageFile) {
    whenShown<frmLanguage>([languageFile](frmLanguage& dialog) {
        EveryWindow::selectLanguageFile(dialog, languageFile);
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(main.cmdLanguage(), Qt::LeftButton);
}

} // namespace

TEST(LanguageChange, StartUpGivesQtsOwnButtonsTheChosenLanguage) {
    {
        EditorFixture editor(QStringLiteral("Deutsch.lng"));
        ASSERT_TRUE(editor.main->FormLoad());
        EXPECT_EQ(QtTranslationInUse(), QStringLiteral("de"));
        EXPECT_EQ(yesButtonText(), QStringLiteral("&Ja"));
    }
    EditorFixture editor(QStringLiteral("English.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    EXPECT_EQ(QtTranslationInUse(), QString());
    EXPECT_EQ(yesButtonText(), QStringLiteral("&Yes"));
}

TEST(LanguageChange, TheLanguageButtonRelabelsEveryOpenWindowAtOnce) {
    EditorFixture editor(QStringLiteral("Deutsch.lng"));
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                            {{QStringLiteral("0000"), QStringLiteral("A"), 100}});
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(folder);
    frmMain& main = *editor.main;
    main.show();
    QTest::mouseClick(main.cmdExpand(), Qt::LeftButton);
    frmDebug* debug = editor.log.viewer();
    debug->show();
    ASSERT_EQ(yesButtonText(), QStringLiteral("&Ja"));
    const QString german = editor.language.LanguageFile;
    ASSERT_EQ(main.cmdOpen()->text(), controlText(german, "frmMain", "cmdOpen").caption);

    chooseLanguageWithTheLanguageButton(main, QStringLiteral("English.lng"));

    const QString english = editor.language.LanguageFile;
    ASSERT_TRUE(english.endsWith(QStringLiteral("English.lng")));
    EXPECT_EQ(main.cmdOpen()->text(), controlText(english, "frmMain", "cmdOpen").caption);
    EXPECT_EQ(main.cmdOpen()->toolTip(), controlText(english, "frmMain", "cmdOpen").toolTip);
    // The title carries the place of the unsaved-changes mark behind the caption.
    EXPECT_EQ(main.windowTitle(), ReadLanguageValue(english, "frmMain", "Caption") + "[*]");
    EXPECT_EQ(main.lsvPack()->headerItem()->text(1), numbered(english, 30));
    EXPECT_EQ(main.Panel(1)->text(), numbered(english, 27));
    EXPECT_EQ(main.Panel(6)->text(), numbered(english, 33));
    const QString upTip = controlText(english, "frmMain", "cmdUp").toolTip;
    EXPECT_EQ(main.cmdUp()->toolTip(), upTip);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(main.cmdUp())->text(QAccessible::Name), upTip);
    EXPECT_EQ(debug->windowTitle(), ReadLanguageValue(english, "frmDebug", "Caption"));
    EXPECT_EQ(QtTranslationInUse(), QString());
    EXPECT_EQ(yesButtonText(), QStringLiteral("&Yes"));

    chooseLanguageWithTheLanguageButton(main, QStringLiteral("Deutsch.lng"));
    EXPECT_EQ(main.cmdOpen()->text(), controlText(german, "frmMain", "cmdOpen").caption);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(main.cmdUp())->text(QAccessible::Name),
              controlText(german, "frmMain", "cmdUp").toolTip);
    EXPECT_EQ(yesButtonText(), QStringLiteral("&Ja"));
}

TEST(LanguageChange, AnOpenServiceEditorTakesTheNewTabsAndColumns) {
    EditorFixture editor(QStringLiteral("Deutsch.lng"));
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                            {{QStringLiteral("0000"), QStringLiteral("A"), 100}});
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(folder);
    auto* dienst = new frmDienst(*editor.main);
    dienst->show();
    const QString german = editor.language.LanguageFile;
    EXPECT_EQ(dienst->findChild<QTabBar*>(QStringLiteral("ridDienst"))->tabText(0),
              numbered(german, 130));

    const QString english = LanguageFolder() + QStringLiteral("English.lng");
    editor.language.LanguageFile = english;
    SwitchLanguage(editor.language);

    auto* tabs = dienst->findChild<QTabBar*>(QStringLiteral("ridDienst"));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(tabs->tabText(i), numbered(english, 130 + i));
    EXPECT_EQ(dienst->lsvTarget()->headerItem()->text(0), numbered(english, 133));
    EXPECT_EQ(dienst->lsvTarget()->headerItem()->text(1), numbered(english, 134));
    EXPECT_EQ(dienst->windowTitle(), ReadLanguageValue(english, "frmDienst", "Caption") + "[*]");
    EXPECT_EQ(dienst->lsvDienst()->accessibleName(), numbered(english, 147));
    dienst->close();
}
