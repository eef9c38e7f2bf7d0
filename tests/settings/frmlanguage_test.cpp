#include "settings/frmlanguage.h"

#include "settings/language.h"
#include "settings/languageinstall.h"
#include "settings/modini.h"
#include "settings/windowtexts.h"
#include "util/conversions.h"

#include <QApplication>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::LanguageInstall;
using tavik::test::MessageRecorder;

namespace {

const QByteArray kEnglishTexts = "[frmLanguage]\r\nCaption=Choose language\r\nLabel1=Name:\r\n"
                                 "Label2=Version:\r\nLabel3=Author:\r\n"
                                 "cmdOK=&OK|Use this language\r\ncmdCancel=&Cancel\r\n";

QStringList listedFiles(const frmLanguage& dialog) {
    QStringList names;
    for (int i = 0; i < dialog.File1()->count(); ++i)
        names << dialog.File1()->item(i)->toolTip();
    return names;
}

// Clicks the file's line in the list of a dialog on screen.
void clickFile(const frmLanguage& dialog, const QString& name) {
    QListWidgetItem* found = dialog.itemOfFile(name);
    ASSERT_NE(found, nullptr) << name.toStdString();
    const QRect line = dialog.File1()->visualItemRect(found);
    QTest::mouseClick(dialog.File1()->viewport(), Qt::LeftButton, {}, line.center());
}

QString storedLanguage(const LanguageInstall& install) {
    return CStr(ReadINI(install.settingsFile(), QStringLiteral("Settings"),
                        QStringLiteral("Language"), Variant::fromString({})));
}

} // namespace

TEST(frmLanguage, NoLanguageFileShowsTheFixedMessageAndEndsTheProgram) {
    LanguageInstall install;
    MessageRecorder messages;
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();

    ASSERT_EQ(messages.seen.size(), 1);
    EXPECT_EQ(messages.seen[0].title, QStringLiteral("Tavik"));
    EXPECT_EQ(messages.seen[0].icon, MsgIcon::Critical);
    EXPECT_EQ(messages.seen[0].buttons, MsgButtons::OK);
    EXPECT_EQ(messages.seen[0].text,
              QStringLiteral("Keine Sprachdatei gefunden! Programm kann nicht gestartet werden\r"
                             "No languagefile found! Can't start application"));
    EXPECT_TRUE(dialog.EndProgram());
    EXPECT_TRUE(dialog.IsUnloaded());
    EXPECT_FALSE(dialog.WasShown());
    EXPECT_TRUE(language.LanguageFile.isEmpty());
    EXPECT_FALSE(QFile::exists(install.settingsFile()));
}

TEST(frmLanguage, AMissingLanguageFolderCountsAsNoFile) {
    LanguageInstall install;
    QDir(install.dir.file(QStringLiteral("res/lang"))).removeRecursively();
    MessageRecorder messages;
    Language language;
    frmLanguage dialog(language);
    dialog.ShowModal();
    EXPECT_EQ(messages.seen.size(), 1);
    EXPECT_TRUE(dialog.EndProgram());
    EXPECT_FALSE(dialog.WasShown());
}

TEST(frmLanguage, OnlyLanguageFilesAreListed) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("English.lng"), "English");
    install.addLanguage(QStringLiteral("deutsch.LNG"), "Deutsch");
    install.dir.write(QStringLiteral("res/lang/readme.txt"), "not a language");
    install.dir.write(QStringLiteral("res/lang/Old.lng.bak"), "[_Language]\r\nName=Old\r\n");
    QDir(install.dir.path()).mkpath(QStringLiteral("res/lang/Folder.lng"));
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();
    EXPECT_EQ(listedFiles(dialog), QStringList({"deutsch.LNG", "English.lng"}));
}

TEST(frmLanguage, ListsEachLanguageByItsOwnName) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("English.lng"), "English");
    install.addLanguage(QStringLiteral("de.lng"), "Deutsch");
    install.dir.write(QStringLiteral("res/lang/ohne.lng"), "[_Language]\r\nFileVersion=1\r\n");
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();
    QStringList shown;
    for (int i = 0; i < dialog.File1()->count(); ++i)
        shown << dialog.File1()->item(i)->text();
    // A file without a name of its language is listed by its file name.
    EXPECT_EQ(shown, QStringList({"Deutsch", "English", "ohne.lng"}));
    EXPECT_EQ(listedFiles(dialog), QStringList({"de.lng", "English.lng", "ohne.lng"}));
}

TEST(frmLanguage, OpenedAgainItSpeaksTheLanguageInUseAndHasItChosen) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English", "1.0", "Team", kEnglishTexts);
    install.storeLanguage(install.storedPath(QStringLiteral("English.lng")));
    Language language;
    frmLanguage dialog(language);
    dialog.KeepOpen = true;
    dialog.FormLoad();
    ASSERT_NE(dialog.File1()->currentItem(), nullptr);
    EXPECT_EQ(dialog.File1()->currentItem()->text(), QStringLiteral("English"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Choose language"));
    EXPECT_EQ(dialog.cmdCancel()->text(), QStringLiteral("&Cancel"));
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());
}

TEST(frmLanguage, TheOnlyFileIsChosenAndStoredWithoutAQuestion) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("English.lng"), "English", "1.0", "Team", kEnglishTexts);
    MessageRecorder messages;
    Language language;
    frmLanguage dialog(language);
    dialog.ShowModal();

    EXPECT_TRUE(messages.seen.isEmpty());
    EXPECT_FALSE(dialog.WasShown());
    EXPECT_TRUE(dialog.IsUnloaded());
    EXPECT_FALSE(dialog.EndProgram());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(language.LanguageFile, install.storedPath(QStringLiteral("English.lng")));
    EXPECT_EQ(test::readAll(install.settingsFile()),
              "[Settings]\r\nLanguage=" +
                  install.storedPath(QStringLiteral("English.lng")).toLocal8Bit() + "\r\n");
}

TEST(frmLanguage, TwoFilesWaitForTheUserToChoose) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English", "1.0", "Team", kEnglishTexts);
    MessageRecorder messages;
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();

    EXPECT_TRUE(messages.seen.isEmpty());
    EXPECT_FALSE(dialog.IsUnloaded());
    EXPECT_FALSE(dialog.Timer1()->isActive());
    EXPECT_EQ(dialog.File1()->currentItem(), nullptr);
    EXPECT_FALSE(dialog.cmdOK()->isEnabled());
    EXPECT_TRUE(language.LanguageFile.isEmpty());

    dialog.show();
    clickFile(dialog, QStringLiteral("English.lng"));
    EXPECT_EQ(dialog.txtName()->text(), QStringLiteral("English"));
    ASSERT_TRUE(dialog.cmdOK()->isEnabled());
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);

    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(dialog.IsUnloaded());
    EXPECT_FALSE(dialog.EndProgram());
    EXPECT_EQ(language.LanguageFile, install.storedPath(QStringLiteral("English.lng")));
    EXPECT_EQ(storedLanguage(install), install.storedPath(QStringLiteral("English.lng")));
}

TEST(frmLanguage, AStoredLanguageIsTakenAndTheTimerClosesTheDialogUnseen) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English");
    const QString chosen = install.storedPath(QStringLiteral("Deutsch.lng"));
    install.storeLanguage(chosen);
    const QByteArray before = test::readAll(install.settingsFile());
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();

    EXPECT_EQ(language.LanguageFile, chosen);
    EXPECT_TRUE(dialog.Timer1()->isActive());
    EXPECT_FALSE(dialog.IsUnloaded());
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.IsUnloaded(); }, 5000));
    EXPECT_FALSE(dialog.WasShown());
    EXPECT_FALSE(dialog.EndProgram());
    EXPECT_FALSE(dialog.Timer1()->isActive());
    EXPECT_EQ(test::readAll(install.settingsFile()), before);
}

TEST(frmLanguage, AStoredLanguageNeedsNoFileInTheFolder) {
    LanguageInstall install;
    install.storeLanguage(QStringLiteral("C:\\elsewhere\\Klingon.lng"));
    MessageRecorder messages;
    Language language;
    frmLanguage dialog(language);
    dialog.ShowModal();
    EXPECT_TRUE(messages.seen.isEmpty());
    EXPECT_FALSE(dialog.WasShown());
    EXPECT_FALSE(dialog.EndProgram());
    EXPECT_EQ(language.LanguageFile, QStringLiteral("C:\\elsewhere\\Klingon.lng"));
}

TEST(frmLanguage, CancelAtStartUpEndsTheProgram) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English");
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();
    dialog.show();
    clickFile(dialog, QStringLiteral("Deutsch.lng"));
    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);

    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(dialog.EndProgram());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_FALSE(QFile::exists(install.settingsFile()));
}

TEST(frmLanguage, CancelWithKeepOpenOnlyClosesTheDialog) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English");
    install.storeLanguage(install.storedPath(QStringLiteral("Deutsch.lng")));
    const QByteArray before = test::readAll(install.settingsFile());
    Language language;
    frmLanguage dialog(language);
    dialog.KeepOpen = true;
    dialog.FormLoad();
    EXPECT_FALSE(dialog.Timer1()->isActive());
    EXPECT_FALSE(dialog.IsUnloaded());

    dialog.show();
    clickFile(dialog, QStringLiteral("English.lng"));
    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);

    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(dialog.IsUnloaded());
    EXPECT_FALSE(dialog.EndProgram());
    // The file keeps the old choice; the selection stays active until the program restarts.
    EXPECT_EQ(test::readAll(install.settingsFile()), before);
    EXPECT_EQ(language.LanguageFile, install.storedPath(QStringLiteral("English.lng")));
}

TEST(frmLanguage, EscapeIsCancel) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English");
    Language language;
    frmLanguage dialog(language);
    dialog.KeepOpen = true;
    dialog.FormLoad();
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(dialog.EndProgram());

    frmLanguage startUp(language);
    startUp.FormLoad();
    startUp.show();
    QTest::keyClick(&startUp, Qt::Key_Escape);
    EXPECT_FALSE(startUp.isVisible());
    EXPECT_TRUE(startUp.EndProgram());
}

TEST(frmLanguage, AFileWithoutAuthorLeavesOKDisabledButCannotDisableItAgain) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Complete.lng"), "Complete", "1.0", "Team");
    install.addLanguage(QStringLiteral("NoAuthor.lng"), "NoAuthor", "1.0", "");
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();
    dialog.show();

    clickFile(dialog, QStringLiteral("NoAuthor.lng"));
    EXPECT_EQ(dialog.txtName()->text(), QStringLiteral("NoAuthor"));
    EXPECT_EQ(dialog.txtAutor()->text(), QString());
    EXPECT_FALSE(dialog.cmdOK()->isEnabled());
    // Selecting takes effect before it is confirmed.
    EXPECT_EQ(language.LanguageFile, install.storedPath(QStringLiteral("NoAuthor.lng")));

    clickFile(dialog, QStringLiteral("Complete.lng"));
    EXPECT_EQ(dialog.txtAutor()->text(), QStringLiteral("Team"));
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());

    clickFile(dialog, QStringLiteral("NoAuthor.lng"));
    EXPECT_EQ(dialog.txtAutor()->text(), QString());
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());

    // Confirming then stores the incomplete file the user has selected.
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(storedLanguage(install), install.storedPath(QStringLiteral("NoAuthor.lng")));
}

TEST(frmLanguage, OKStoresTheFullPathOfTheChosenFile) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English");
    install.storeLanguage(install.storedPath(QStringLiteral("Deutsch.lng")));
    Language language;
    frmLanguage dialog(language);
    dialog.KeepOpen = true;
    dialog.FormLoad();
    dialog.show();
    clickFile(dialog, QStringLiteral("English.lng"));
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);

    EXPECT_FALSE(dialog.isVisible());
    const QString expected = install.storedPath(QStringLiteral("English.lng"));
    EXPECT_EQ(storedLanguage(install), expected);
    EXPECT_EQ(language.LanguageFile, expected);
    EXPECT_TRUE(QFile::exists(expected));
}

TEST(frmLanguage, ASelectionRelabelsTheDialogAtOnce) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English", "2.1", "Tavik team",
                        kEnglishTexts);
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();
    // Nothing is chosen yet, so the designed texts stay.
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Sprachauswahl"));
    EXPECT_EQ(dialog.Label3()->text(), QStringLiteral("Autor:"));
    EXPECT_EQ(dialog.cmdCancel()->text(), QStringLiteral("&Abbruch"));

    dialog.show();
    clickFile(dialog, QStringLiteral("English.lng"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Choose language"));
    EXPECT_EQ(dialog.Label3()->text(), QStringLiteral("Author:"));
    EXPECT_EQ(dialog.cmdOK()->text(), QStringLiteral("&OK"));
    EXPECT_EQ(dialog.cmdOK()->toolTip(), QStringLiteral("Use this language"));
    EXPECT_EQ(dialog.cmdCancel()->text(), QStringLiteral("&Cancel"));
    EXPECT_EQ(dialog.txtName()->text(), QStringLiteral("English"));
    EXPECT_EQ(dialog.txtVersion()->text(), QStringLiteral("2.1"));
    EXPECT_EQ(dialog.txtAutor()->text(), QStringLiteral("Tavik team"));
}

TEST(frmLanguage, TheUserCannotCloseItOtherThanThroughItsButtons) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English");
    Language language;
    frmLanguage dialog(language);
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    dialog.FormLoad();
    EXPECT_FALSE(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    dialog.show();
    EXPECT_FALSE(dialog.close());
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.IsUnloaded());
    EXPECT_FALSE(dialog.EndProgram());

    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
}

TEST(frmLanguage, DisableCloseButtonKeepsAWindowOnScreen) {
    QWidget window;
    window.show();
    frmLanguage::DisableCloseButton(&window);
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
}

TEST(frmLanguage, CentresItselfOnTheScreen) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English");
    Language language;
    frmLanguage dialog(language);
    dialog.move(0, 0);
    dialog.FormLoad();
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QPoint placed = dialog.pos();
    EXPECT_EQ(placed.x(), screen.width() / 2 - dialog.width() / 2);
    EXPECT_EQ(placed.y(), screen.height() / 2 - dialog.height() / 2);
    // On screen the window keeps that place; only its frame is added around it.
    dialog.show();
    EXPECT_EQ(dialog.pos(), placed);
    EXPECT_LE(std::abs(dialog.frameGeometry().center().x() - screen.center().x()), 4);
    EXPECT_LE(std::abs(dialog.frameGeometry().center().y() - screen.center().y()), 4);
}

TEST(frmLanguage, ShowModalWaitsForTheUsersChoice) {
    LanguageInstall install;
    install.addLanguage(QStringLiteral("Deutsch.lng"), "Deutsch");
    install.addLanguage(QStringLiteral("English.lng"), "English");
    Language language;
    frmLanguage dialog(language);
    bool answered = false;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        if (answered || QApplication::activeModalWidget() != &dialog)
            return;
        answered = true;
        clickFile(dialog, QStringLiteral("Deutsch.lng"));
        dialog.cmdOK()->click();
    });
    user.start(10);
    dialog.ShowModal();
    user.stop();

    EXPECT_TRUE(answered);
    EXPECT_TRUE(dialog.WasShown());
    EXPECT_FALSE(dialog.EndProgram());
    EXPECT_EQ(storedLanguage(install), install.storedPath(QStringLiteral("Deutsch.lng")));
}

TEST(frmLanguage, ControlsCarryTheNamesTheLanguageFilesUse) {
    LanguageInstall install;
    Language language;
    frmLanguage dialog(language);
    for (const WindowTexts& window : LocalisedWindows()) {
        if (QString::fromLatin1(window.window) != dialog.objectName())
            continue;
        for (const char* control : window.controls)
            EXPECT_NE(dialog.findChild<QWidget*>(QString::fromLatin1(control)), nullptr) << control;
        return;
    }
    ADD_FAILURE() << "frmLanguage is not among the localised windows";
}

TEST(frmLanguage, TheDeliveredLanguagesCanBeChosen) {
    const QString delivered = LanguageFolder();
    LanguageInstall install;
    for (const char* name : {"Deutsch.lng", "English.lng"})
        ASSERT_TRUE(QFile::copy(delivered + QString::fromLatin1(name),
                                install.dir.file(QStringLiteral("res/lang/") + name)));
    Language language;
    frmLanguage dialog(language);
    dialog.FormLoad();
    dialog.show();
    clickFile(dialog, QStringLiteral("English.lng"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Choose language"));
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());
    clickFile(dialog, QStringLiteral("Deutsch.lng"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Sprachauswahl"));
    EXPECT_EQ(dialog.txtName()->text(), QStringLiteral("Deutsch"));
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(storedLanguage(install), install.storedPath(QStringLiteral("Deutsch.lng")));
}
