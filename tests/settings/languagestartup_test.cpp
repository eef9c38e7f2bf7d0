// The main window's start-up with the language dialog, and its language and options buttons.
#include "app/frmmain.h"
#include "settings/frmlanguage.h"
#include "settings/frmoptions.h"
#include "settings/modini.h"
#include "support/editorfixture.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/zelcmd.h"

#include <QApplication>
#include <QCheckBox>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

// Plays the user of a modal window: once a window named `name` is the active modal one, `act`
// runs on it, once.
class ModalUser {
public:
    ModalUser(const QString& name, std::function<void(QWidget*)> act)
        : name_(name), act_(std::move(act)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            QWidget* modal = QApplication::activeModalWidget();
            if (acted || !modal || modal->objectName() != name_ || !modal->isVisible())
                return;
            acted = true;
            timer_.stop();
            act_(modal);
        });
        timer_.start(10);
    }
    bool acted = false;

private:
    QString name_;
    std::function<void(QWidget*)> act_;
    QTimer timer_;
};

// Counts how often a window of the given name goes on screen.
class ShowCounter : public QObject {
public:
    explicit ShowCounter(const QString& name) : name_(name) { qApp->installEventFilter(this); }
    ~ShowCounter() override { qApp->removeEventFilter(this); }
    int shown = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->objectName() == name_)
            ++shown;
        return false;
    }

private:
    QString name_;
};

void chooseLanguage(QWidget* window, const QString& fileName) {
    auto* dialog = static_cast<frmLanguage*>(window);
    QListWidgetItem* found = dialog->itemOfFile(fileName);
    ASSERT_NE(found, nullptr);
    QTest::mouseClick(dialog->File1()->viewport(), Qt::LeftButton, {},
                      dialog->File1()->visualItemRect(found).center());
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
}

QString storedLanguage(const EditorFixture& editor) {
    return CStr(ReadINI(editor.root.file(QStringLiteral("bin/Tavik.ini")),
                        QStringLiteral("Settings"), QStringLiteral("Language"),
                        Variant::fromString({})));
}

QString languagePath(const EditorFixture& editor, const QString& fileName) {
    return editor.root.path() + QStringLiteral("/bin") +
           NativePath(QStringLiteral("\\..\\res\\lang\\")) + fileName;
}

void removeLanguage(const EditorFixture& editor, const QString& fileName) {
    ASSERT_TRUE(QFile::remove(editor.root.file(QStringLiteral("res/lang/") + fileName)));
}

// Opens the extended panel, where the language and options buttons are.
void openPanel(EditorFixture& editor) {
    editor.main->show();
    QTest::mouseClick(editor.main->cmdExpand(), Qt::LeftButton);
    ASSERT_TRUE(editor.main->picExpand()->isVisible());
}

} // namespace

TEST(MainWindowLanguage, WithoutAnyLanguageFileTheProgramDoesNotStart) {
    EditorFixture editor{QString()};
    removeLanguage(editor, QStringLiteral("Deutsch.lng"));
    removeLanguage(editor, QStringLiteral("English.lng"));
    EXPECT_FALSE(editor.main->FormLoad());
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].title, QStringLiteral("Tavik"));
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Critical);
    EXPECT_EQ(editor.messages[0].text,
              QStringLiteral("Keine Sprachdatei gefunden! Programm kann nicht gestartet werden\r"
                             "No languagefile found! Can't start application"));
    EXPECT_TRUE(editor.language.LanguageFile.isEmpty());
    EXPECT_FALSE(QFile::exists(editor.root.file(QStringLiteral("bin/Tavik.ini"))));
    // It ends before it looks for another instance.
    EXPECT_FALSE(QFile::exists(editor.root.file(QStringLiteral("bin/Tavik.lock"))));
}

TEST(MainWindowLanguage, TheOnlyLanguageFileIsTakenWithoutAQuestion) {
    EditorFixture editor{QString()};
    removeLanguage(editor, QStringLiteral("Deutsch.lng"));
    ShowCounter shown(QStringLiteral("frmLanguage"));
    ASSERT_TRUE(editor.main->FormLoad());
    EXPECT_EQ(shown.shown, 0);
    EXPECT_TRUE(editor.messages.empty());
    const QString english = languagePath(editor, QStringLiteral("English.lng"));
    EXPECT_EQ(editor.language.LanguageFile, english);
    EXPECT_EQ(storedLanguage(editor), english);
    EXPECT_EQ(editor.main->cmdOpen()->text(), QStringLiteral("&Open"));
}

TEST(MainWindowLanguage, WithTwoLanguageFilesTheUserChooses) {
    EditorFixture editor{QString()};
    ModalUser user(QStringLiteral("frmLanguage"),
                   [](QWidget* dialog) { chooseLanguage(dialog, QStringLiteral("English.lng")); });
    ASSERT_TRUE(editor.main->FormLoad());
    EXPECT_TRUE(user.acted);
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_EQ(storedLanguage(editor), languagePath(editor, QStringLiteral("English.lng")));
    EXPECT_EQ(editor.main->cmdOpen()->text(), QStringLiteral("&Open"));
}

TEST(MainWindowLanguage, CancellingTheChoiceAtStartUpEndsTheProgram) {
    EditorFixture editor{QString()};
    ModalUser user(QStringLiteral("frmLanguage"), [](QWidget* dialog) {
        QTest::mouseClick(static_cast<frmLanguage*>(dialog)->cmdCancel(), Qt::LeftButton);
    });
    EXPECT_FALSE(editor.main->FormLoad());
    EXPECT_TRUE(user.acted);
    EXPECT_FALSE(QFile::exists(editor.root.file(QStringLiteral("bin/Tavik.ini"))));
    EXPECT_FALSE(QFile::exists(editor.root.file(QStringLiteral("bin/Tavik.lock"))));
}

TEST(MainWindowLanguage, AStoredLanguageStartsWithoutShowingTheDialog) {
    EditorFixture editor(QStringLiteral("English.lng"));
    const QString stored = storedLanguage(editor);
    ShowCounter shown(QStringLiteral("frmLanguage"));
    ASSERT_TRUE(editor.main->FormLoad());
    EXPECT_EQ(shown.shown, 0);
    EXPECT_EQ(editor.language.LanguageFile, stored);
    EXPECT_EQ(editor.main->cmdOpen()->text(), QStringLiteral("&Open"));
}

TEST(MainWindowLanguage, TheLanguageButtonLetsTheUserChangeTheLanguage) {
    EditorFixture editor(QStringLiteral("Deutsch.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    openPanel(editor);
    bool stayedOpen = false;
    ModalUser user(QStringLiteral("frmLanguage"), [&](QWidget* dialog) {
        stayedOpen = dialog->isVisible();
        chooseLanguage(dialog, QStringLiteral("English.lng"));
    });
    QTest::mouseClick(editor.main->cmdLanguage(), Qt::LeftButton);

    EXPECT_TRUE(user.acted);
    EXPECT_TRUE(stayedOpen);
    const QString english = languagePath(editor, QStringLiteral("English.lng"));
    EXPECT_EQ(storedLanguage(editor), english);
    EXPECT_EQ(editor.language.LanguageFile, english);
    // The open window follows at once, and so does every message from now on.
    EXPECT_EQ(editor.main->cmdOpen()->text(), QStringLiteral("&Open"));
    EXPECT_EQ(editor.language.GetLangString(7), QStringLiteral("Discard list"));
    EXPECT_TRUE(editor.main->isVisible());
}

TEST(MainWindowLanguage, CancellingTheLanguageButtonsDialogKeepsTheProgramRunning) {
    EditorFixture editor(QStringLiteral("Deutsch.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    const QByteArray settings = test::readAll(editor.root.file(QStringLiteral("bin/Tavik.ini")));
    openPanel(editor);
    ModalUser user(QStringLiteral("frmLanguage"), [](QWidget* dialog) {
        QTest::mouseClick(static_cast<frmLanguage*>(dialog)->cmdCancel(), Qt::LeftButton);
    });
    QTest::mouseClick(editor.main->cmdLanguage(), Qt::LeftButton);

    EXPECT_TRUE(user.acted);
    EXPECT_TRUE(editor.main->isVisible());
    EXPECT_EQ(test::readAll(editor.root.file(QStringLiteral("bin/Tavik.ini"))), settings);
}

TEST(MainWindowOptions, TheOptionsButtonStoresTheMediaTypeSettingAndAppliesIt) {
    EditorFixture editor(QStringLiteral("English.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    ASSERT_FALSE(editor.main->UseFormat());
    openPanel(editor);
    bool wasUnchecked = false;
    ModalUser user(QStringLiteral("frmOptions"), [&](QWidget* window) {
        auto* dialog = static_cast<frmOptions*>(window);
        wasUnchecked = !dialog->chkMedia()->isChecked();
        QTest::mouseClick(dialog->chkMedia(), Qt::LeftButton);
        QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(editor.main->cmdDelete(), Qt::LeftButton);

    EXPECT_TRUE(user.acted);
    EXPECT_TRUE(wasUnchecked);
    EXPECT_TRUE(editor.main->UseFormat());
    EXPECT_TRUE(editor.mci.UseFormat);
    EXPECT_EQ(
        CStr(ReadINI(editor.root.file(QStringLiteral("bin/Tavik.ini")), QStringLiteral("SOUND"),
                     QStringLiteral("UseFormat"), Variant::fromString({}))),
        QStringLiteral("1"));
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(22));
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Information);
}

TEST(MainWindowOptions, CancellingTheOptionsChangesNothing) {
    EditorFixture editor(QStringLiteral("English.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    const QByteArray settings = test::readAll(editor.root.file(QStringLiteral("bin/Tavik.ini")));
    openPanel(editor);
    ModalUser user(QStringLiteral("frmOptions"), [](QWidget* window) {
        auto* dialog = static_cast<frmOptions*>(window);
        QTest::mouseClick(dialog->chkMedia(), Qt::LeftButton);
        QTest::mouseClick(dialog->cmdCancel(), Qt::LeftButton);
    });
    QTest::mouseClick(editor.main->cmdDelete(), Qt::LeftButton);

    EXPECT_TRUE(user.acted);
    EXPECT_FALSE(editor.main->UseFormat());
    EXPECT_EQ(test::readAll(editor.root.file(QStringLiteral("bin/Tavik.ini"))), settings);
    EXPECT_TRUE(editor.messages.empty());
}
