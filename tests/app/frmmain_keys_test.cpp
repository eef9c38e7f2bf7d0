// The main window's keys: each does what its button does, the list's keys only while the list
// has the focus, the menus show them, and Tab walks the window in the order of its layout.
#include "app/frmmain.h"
#include "app/listfilterbar.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmopen.h"
#include "dialogs/frmsetting.h"
#include "package/clszeldb.h"
#include "package/packagesettings.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QUndoStack>
#include <QUrl>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::whenShown;

namespace {

struct KeyEditor : EditorFixture {
    QString folder;
    KeyEditor() {
        EXPECT_TRUE(main->FormLoad());
        folder = writePackage(
            QStringLiteral("p"), QStringLiteral("P"),
            {{"0000", "Alpha", 100}, {"0001", "Bravo", 200}, {"0002", "Charlie", 300}});
        open(folder);
        messages.clear();
        main->show();
        main->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*main));
    }
    // As the user's window again, after a dialog closed.
    void activate() {
        main->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*main));
    }
    void select(int row) {
        ReportList* list = main->lsvPack();
        list->setCurrentItem(list->ListItems(row));
        list->ListItems(row)->SetSelected(true);
    }
    // A key pressed while the list has the focus.
    void pressInList(int key, Qt::KeyboardModifiers modifiers = {}) {
        activate();
        main->lsvPack()->setFocus();
        EXPECT_TRUE(main->lsvPack()->hasFocus());
        QTest::keyClick(main->lsvPack(), static_cast<Qt::Key>(key), modifiers);
    }
    // A key pressed while a button has the focus.
    void pressOn(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = {}) {
        activate();
        widget->setFocus();
        EXPECT_TRUE(widget->hasFocus());
        QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
    }
    QStringList keysOnDisk() const {
        clsZELDB store;
        EXPECT_TRUE(store.OpenIOFile(folder + QStringLiteral("/Package.io")));
        QStringList keys;
        for (const IndexEntry& entry : ReadShownEntries(store))
            keys << entry.Key;
        return keys;
    }
};

// Takes the addresses the editor hands to the desktop instead of a browser.
class UrlCatcher : public QObject {
    Q_OBJECT
public:
    QList<QUrl> urls;
public Q_SLOTS:
    void open(const QUrl& url) { urls << url; }
};

} // namespace

TEST(MainWindowKeys, CtrlSSavesTheListAsShown) {
    KeyEditor editor;
    editor.select(3);
    QTest::mouseClick(editor.main->cmdFUp(), Qt::LeftButton);
    ASSERT_EQ(editor.column(0), (QStringList{"0002", "0000", "0001"}));
    ASSERT_EQ(editor.keysOnDisk(), (QStringList{"0000", "0001", "0002"}));
    editor.pressOn(editor.main->cmdNew(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(editor.keysOnDisk(), (QStringList{"0002", "0000", "0001"}));
    EXPECT_FALSE(editor.main->isWindowModified());
}

TEST(MainWindowKeys, AltUpAndAltDownMoveTheSelectedAnnouncementAsTheArrowButtonsDo) {
    KeyEditor editor;
    editor.select(2);
    editor.pressInList(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(editor.column(0), (QStringList{"0001", "0000", "0002"}));
    // From a button too: the keys belong to the window.
    editor.pressOn(editor.main->cmdPlay(), Qt::Key_Down, Qt::AltModifier);
    editor.pressOn(editor.main->cmdPlay(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0002", "0001"}));
    EXPECT_EQ(editor.main->lsvPack()->SelectedItem()->Text(), QStringLiteral("0001"));
    editor.main->undoStack()->undo();
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0001", "0002"}));
}

TEST(MainWindowKeys, DeleteInTheListRemovesTheSelectedAnnouncementAfterTheQuestion) {
    KeyEditor editor;
    editor.select(2);
    // Delete on a button is no removal.
    editor.pressOn(editor.main->cmdPlay(), Qt::Key_Delete);
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_EQ(editor.main->lsvPack()->Count(), 3);

    editor.answers.push_back(MsgResult::No);
    editor.pressInList(Qt::Key_Delete);
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 3);
    editor.pressInList(Qt::Key_Delete); // answered Yes
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0002"}));
    EXPECT_FALSE(QFileInfo::exists(editor.folder + QStringLiteral("/0001.wav")));
}

TEST(MainWindowKeys, EnterAndF2OpenThePropertiesOfTheSelectedAnnouncement) {
    KeyEditor editor;
    editor.select(2);
    QString shownTitle;
    whenShown<frmSetting>([&](frmSetting& dialog) {
        shownTitle = dialog.txtTitle()->text();
        dialog.txtTitle()->setText(QStringLiteral("Bravo neu"));
        dialog.cmdOK()->click();
    });
    editor.pressInList(Qt::Key_Return);
    EXPECT_EQ(shownTitle, QStringLiteral("Bravo"));
    EXPECT_EQ(editor.column(1)[1], QStringLiteral("Bravo neu"));

    shownTitle.clear();
    whenShown<frmSetting>([&](frmSetting& dialog) {
        shownTitle = dialog.txtTitle()->text();
        dialog.cmdCancel()->click();
    });
    editor.pressOn(editor.main->cmdSave(), Qt::Key_F2);
    EXPECT_EQ(shownTitle, QStringLiteral("Bravo neu"));
}

TEST(MainWindowKeys, SpaceInTheListPlaysTheSelectedAnnouncement) {
    KeyEditor editor;
    editor.select(3);
    editor.recorder.clear();
    editor.pressInList(Qt::Key_Space);
    const QStringList plays = editor.recorder.commands().filter(QStringLiteral("play "));
    ASSERT_EQ(plays.size(), 1) << editor.recorder.commands().join(u'\n').toStdString();
    EXPECT_TRUE(plays[0].contains(QStringLiteral("0002")));
    EXPECT_TRUE(editor.main->cmdPlay()->isEnabled());

    // Space on a button presses that button and plays nothing.
    editor.recorder.clear();
    editor.pressOn(editor.main->cmdUp(), Qt::Key_Space);
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0002", "0001"}));
    EXPECT_TRUE(editor.recorder.commands().filter(QStringLiteral("play ")).isEmpty());
}

TEST(MainWindowKeys, CtrlOOpensTheOpenDialogWithTheOpenPackageHighlighted) {
    KeyEditor editor;
    editor.writePackage(QStringLiteral("q"), QStringLiteral("Q"), {{"0000", "Gong", 100}});
    QString highlighted;
    bool okEnabled = false;
    whenShown<frmOpen>([&](frmOpen& dialog) {
        if (QListWidgetItem* item = dialog.lstFile()->currentItem())
            highlighted = item->text();
        okEnabled = dialog.cmdOK()->isEnabled();
        dialog.reject();
    });
    editor.pressOn(editor.main->cmdSave(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(highlighted, QStringLiteral("P"));
    EXPECT_TRUE(okEnabled);
    EXPECT_EQ(editor.column(1), (QStringList{"Alpha", "Bravo", "Charlie"}));
}

TEST(MainWindowKeys, CtrlNOpensTheNewPackageDialog) {
    KeyEditor editor;
    bool newMode = false;
    whenShown<frmNew>([&](frmNew& dialog) {
        newMode = dialog.txtDir()->isEnabled();
        dialog.cmdCancel()->click();
    });
    editor.pressOn(editor.main->cmdSave(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(newMode);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 3);
}

TEST(MainWindowKeys, F1OpensTheReadMeOfTheHelpMenu) {
    KeyEditor editor;
    // A readme to open: without one, Readme says that it is missing.
    const QString readme = editor.language.GetLangFile(6);
    QDir().mkpath(QFileInfo(readme).absolutePath());
    QFile file(readme);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Readme\r\n");
    file.close();
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &catcher, "open");
    editor.pressOn(editor.main->cmdSave(), Qt::Key_F1);
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    ASSERT_EQ(catcher.urls.size(), 1);
    EXPECT_EQ(catcher.urls[0].toLocalFile(),
              QUrl::fromLocalFile(editor.language.GetLangFile(6)).toLocalFile());
}

TEST(MainWindowKeys, CtrlQClosesThroughTheQuestionAboutUnsavedChanges) {
    KeyEditor editor;
    editor.select(2);
    editor.pressInList(Qt::Key_Up, Qt::AltModifier);
    ASSERT_TRUE(editor.main->isWindowModified());
    editor.answers.push_back(MsgResult::Cancel);
    editor.pressInList(Qt::Key_Q, Qt::ControlModifier);
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].buttons, MsgButtons::SaveDiscardCancel);
    EXPECT_TRUE(editor.main->isVisible());

    editor.answers.push_back(MsgResult::Save);
    editor.pressInList(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(editor.messages.size(), 2u);
    EXPECT_FALSE(editor.main->isVisible());
    EXPECT_EQ(editor.keysOnDisk(), (QStringList{"0001", "0000", "0002"}));
}

TEST(MainWindowKeys, TheMenusShowEveryKey) {
    KeyEditor editor;
    const auto keyOf = [](QAction* action) {
        return action->shortcut().toString(QKeySequence::PortableText);
    };
    EXPECT_EQ(keyOf(editor.main->mnuNew()), QStringLiteral("Ctrl+N"));
    EXPECT_EQ(keyOf(editor.main->mnuOpen()), QStringLiteral("Ctrl+O"));
    EXPECT_EQ(keyOf(editor.main->mnuSave()), QStringLiteral("Ctrl+S"));
    EXPECT_EQ(keyOf(editor.main->mnuQuit()), QStringLiteral("Ctrl+Q"));
    EXPECT_EQ(keyOf(editor.main->mnuRemove()), QStringLiteral("Del"));
    EXPECT_EQ(keyOf(editor.main->mnuProperties()), QStringLiteral("F2"));
    EXPECT_EQ(keyOf(editor.main->mnuPlay()), QStringLiteral("Space"));
    EXPECT_EQ(keyOf(editor.main->mnuMoveUp()), QStringLiteral("Alt+Up"));
    EXPECT_EQ(keyOf(editor.main->mnuMoveDown()), QStringLiteral("Alt+Down"));
    EXPECT_EQ(keyOf(editor.main->mnuReadme()), QStringLiteral("F1"));
    EXPECT_EQ(keyOf(editor.main->mnuUndo()), QStringLiteral("Ctrl+Z"));
    // Each is an entry of a menu, where its key is shown beside it.
    const QList<QAction*> file = editor.main->mnuFile()->actions();
    const QList<QAction*> edit = editor.main->mnuEdit()->actions();
    for (QAction* action : {editor.main->mnuNew(), editor.main->mnuOpen(), editor.main->mnuSave(),
                            editor.main->mnuQuit()})
        EXPECT_TRUE(file.contains(action)) << action->objectName().toStdString();
    for (QAction* action :
         {editor.main->mnuRemove(), editor.main->mnuProperties(), editor.main->mnuPlay(),
          editor.main->mnuMoveUp(), editor.main->mnuMoveDown()})
        EXPECT_TRUE(edit.contains(action)) << action->objectName().toStdString();
    EXPECT_TRUE(editor.main->mnuHlp()->actions().contains(editor.main->mnuReadme()));
    EXPECT_TRUE(editor.main->menuBar()->actions().contains(editor.main->mnuFile()->menuAction()));
    EXPECT_EQ(editor.main->mnuFile()->title(), QStringLiteral("Da&tei"));
    EXPECT_EQ(editor.main->mnuSave()->text(), editor.main->cmdSave()->text());
}

TEST(MainWindowKeys, KeysOfDisabledButtonsDoNothingWithoutAPackage) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    editor.main->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*editor.main));
    editor.main->lsvPack()->setFocus();
    for (int key : {int(Qt::Key_Delete), int(Qt::Key_Space), int(Qt::Key_Return)})
        QTest::keyClick(editor.main->lsvPack(), static_cast<Qt::Key>(key));
    QTest::keyClick(editor.main->lsvPack(), Qt::Key_S, Qt::ControlModifier);
    QTest::keyClick(editor.main->lsvPack(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_TRUE(editor.main->isVisible());
    // The file menu shows what can be done now, and its keys work again afterwards.
    Q_EMIT editor.main->mnuFile()->aboutToShow();
    EXPECT_FALSE(editor.main->mnuSave()->isEnabled());
    EXPECT_TRUE(editor.main->mnuOpen()->isEnabled());
    Q_EMIT editor.main->mnuFile()->aboutToHide();
    EXPECT_TRUE(editor.main->mnuSave()->isEnabled());
}

TEST(MainWindowKeys, TabWalksTheWindowInTheOrderOfItsLayout) {
    KeyEditor editor;
    frmMain& main = *editor.main;
    const QList<QWidget*> expected = {
        main.filterBar()->box(), main.lsvPack(),  main.cmdNew(),    main.cmdOpen(),
        main.cmdSave(),          main.cmdAdd(),   main.cmdRemove(), main.cmdEdit(),
        main.cmdPlay(),          main.cmdSort(),  main.cmdFUp(),    main.cmdUp(),
        main.cmdDown(),          main.cmdFDown(), main.cmdExpand(), main.cmdExit()};
    main.filterBar()->box()->setFocus();
    QList<QWidget*> walked{QApplication::focusWidget()};
    for (int i = 1; i < expected.size(); ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        walked << QApplication::focusWidget();
    }
    EXPECT_EQ(walked, expected);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), main.filterBar()->box()); // round again
}

#include "frmmain_keys_test.moc"
