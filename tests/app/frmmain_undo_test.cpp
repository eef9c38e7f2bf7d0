// The main window's undo history, its modified mark, and the questions before unsaved
// changes of the list would be lost.
#include "app/frmmain.h"
#include "app/setasidefiles.h"
#include "dialogs/frmfile.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmsetting.h"
#include "settings/langtexts.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "support/scratchtrash.h"
#include "support/tempdir.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <QUndoStack>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::TempDir;
using tavik::test::whenShown;

namespace {

// A package of four announcements, opened; the trash goes to a scratch folder.
struct UndoEditor : EditorFixture {
    QString folder;
    UndoEditor() {
        EXPECT_TRUE(main->FormLoad());
        folder = writePackage(QStringLiteral("p"), QStringLiteral("P"),
                              {{"0000", "Delta", 100},
                               {"0001", "Alpha", 200},
                               {"0002", "Charlie", 300},
                               {"0003", "Bravo", 400}});
        open(folder);
        messages.clear();
    }
    void select(int row) {
        main->lsvPack()->setCurrentItem(main->lsvPack()->ListItems(row));
        main->lsvPack()->ListItems(row)->SetSelected(true);
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

const QStringList kLoaded{"0000", "0001", "0002", "0003"};

} // namespace

TEST(MainWindowUndo, EveryMoveAndSortIsUndoneAndRedoneStepByStep) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    EXPECT_TRUE(main.undoStack()->isClean());
    EXPECT_FALSE(main.mnuUndo()->isEnabled());
    editor.select(4);
    QTest::mouseClick(main.cmdFUp(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), (QStringList{"0003", "0000", "0001", "0002"}));
    QTest::mouseClick(main.cmdDown(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0003", "0001", "0002"}));
    main.mnuTitel()->trigger(); // a new column sorts ascending
    EXPECT_EQ(editor.column(1), (QStringList{"Alpha", "Bravo", "Charlie", "Delta"}));
    EXPECT_FALSE(main.undoStack()->isClean());
    EXPECT_TRUE(main.isWindowModified());
    EXPECT_TRUE(main.mnuUndo()->isEnabled());

    main.mnuUndo()->trigger();
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0003", "0001", "0002"}));
    EXPECT_FALSE(main.lsvPack()->Sorted());
    main.mnuUndo()->trigger();
    EXPECT_EQ(editor.column(0), (QStringList{"0003", "0000", "0001", "0002"}));
    main.mnuUndo()->trigger();
    EXPECT_EQ(editor.column(0), kLoaded);
    EXPECT_TRUE(main.undoStack()->isClean());
    EXPECT_FALSE(main.isWindowModified());

    main.mnuRedo()->trigger();
    main.mnuRedo()->trigger();
    main.mnuRedo()->trigger();
    EXPECT_EQ(editor.column(1), (QStringList{"Alpha", "Bravo", "Charlie", "Delta"}));
    EXPECT_TRUE(main.lsvPack()->Sorted());
}

TEST(MainWindowUndo, TheKeysOfTheEditMenuUndoAndRedo) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    main.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    editor.select(1);
    QTest::mouseClick(main.cmdFDown(), Qt::LeftButton);
    const QStringList moved{"0001", "0002", "0003", "0000"};
    ASSERT_EQ(editor.column(0), moved);
    QTest::keyClick(&main, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor.column(0), kLoaded);
    QTest::keyClick(&main, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(editor.column(0), moved);
    QTest::keyClick(&main, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&main, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(editor.column(0), moved);
    EXPECT_TRUE(main.windowTitle().contains(QStringLiteral("[*]")));
}

TEST(MainWindowUndo, SaveMarksTheListCleanAndUndoAfterTheSaveShowsItModifiedAgain) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    editor.select(2);
    QTest::mouseClick(main.cmdUp(), Qt::LeftButton);
    const QStringList moved{"0001", "0000", "0002", "0003"};
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_TRUE(main.undoStack()->isClean());
    EXPECT_FALSE(main.isWindowModified());
    EXPECT_EQ(editor.column(0), moved);
    EXPECT_EQ(editor.keysOnDisk(), moved);
    main.mnuUndo()->trigger();
    EXPECT_EQ(editor.column(0), kLoaded);
    EXPECT_TRUE(main.isWindowModified());
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.keysOnDisk(), kLoaded);
}

TEST(MainWindowUndo, PropertiesAreUndoneInListTableAndSavedFile) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    editor.select(3);
    const quint32 colour = main.lsvPack()->ListItems(3)->ForeColor();
    whenShown<frmSetting>([](frmSetting& dialog) {
        dialog.txtTitle()->setText(QStringLiteral("Echo"));
        dialog.chkVisible()->setChecked(false);
        dialog.optColor()[2]->setChecked(true);
        dialog.cmdOK()->click();
    });
    main.lsvPack_DblClick();
    EXPECT_EQ(editor.column(1)[2], QStringLiteral("Echo"));
    EXPECT_NE(main.lsvPack()->ListItems(3)->ForeColor(), colour);
    EXPECT_FALSE(main.undoStack()->isClean());
    main.mnuUndo()->trigger();
    EXPECT_EQ(editor.column(1), (QStringList{"Delta", "Alpha", "Charlie", "Bravo"}));
    EXPECT_TRUE(main.table.Announcements[2].NameVisible);
    EXPECT_EQ(main.lsvPack()->ListItems(3)->ForeColor(), colour);
    EXPECT_FALSE(main.lsvPack()->ListItems(3)->Bold());
    main.mnuRedo()->trigger();
    EXPECT_EQ(editor.column(1)[2], QStringLiteral("Echo"));
    EXPECT_FALSE(main.table.Announcements[2].NameVisible);
}

TEST(MainWindowUndo, PropertiesWhileSortedPutTheRowInItsSortedPlace) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    main.mnuTitel()->trigger();
    editor.select(1);
    whenShown<frmSetting>([](frmSetting& dialog) {
        dialog.txtTitle()->setText(QStringLiteral("Zulu"));
        dialog.cmdOK()->click();
    });
    main.lsvPack_DblClick();
    EXPECT_EQ(editor.column(1), (QStringList{"Bravo", "Charlie", "Delta", "Zulu"}));
    const QStringList shown = editor.column(0);
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), shown);
    EXPECT_EQ(editor.keysOnDisk(), shown);
}

TEST(MainWindowUndo, AManualMoveWhileSortedEndsTheSortAndIsSavedAsShown) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    main.mnuTitel()->trigger();
    editor.select(1);
    QTest::mouseClick(main.cmdDown(), Qt::LeftButton);
    EXPECT_FALSE(main.lsvPack()->Sorted());
    const QStringList shown = editor.column(0);
    EXPECT_EQ(editor.column(1), (QStringList{"Bravo", "Alpha", "Charlie", "Delta"}));
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), shown);
    EXPECT_EQ(editor.keysOnDisk(), shown);
}

TEST(MainWindowRemove, TheQuestionNamesTitleAndFileWithNoAsDefault) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    main.lsvPack()->clearSelection();
    QTest::mouseClick(main.cmdRemove(), Qt::LeftButton);
    EXPECT_TRUE(editor.messages.empty()); // nothing without a selected row
    editor.select(2);
    editor.answers.push_back(MsgResult::No);
    QTest::mouseClick(main.cmdRemove(), Qt::LeftButton);
    ASSERT_EQ(editor.messages.size(), 1u);
    const MessageRequest& question = editor.messages[0];
    EXPECT_EQ(question.text, editor.language.GetLangString(LangText::RemoveNamedQuestion, "0001",
                                                           "Alpha", "0001.wav"));
    EXPECT_TRUE(question.text.contains(QStringLiteral("Alpha")));
    EXPECT_TRUE(question.text.contains(QStringLiteral("0001.wav")));
    EXPECT_EQ(question.buttons, MsgButtons::YesNo);
    EXPECT_EQ(question.defaultButton, MsgResult::No);
    EXPECT_EQ(editor.column(0), kLoaded);
    EXPECT_TRUE(QFileInfo::exists(editor.folder + QStringLiteral("/0001.wav")));
}

TEST(MainWindowRemove, UndoBringsTheFileAndTheRowBackAtItsPlaceAlsoAfterASave) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    const QString file = editor.folder + QStringLiteral("/0001.wav");
    const QByteArray bytes = tavik::test::readAll(file);
    editor.select(2);
    QTest::mouseClick(main.cmdRemove(), Qt::LeftButton);
    EXPECT_FALSE(QFileInfo::exists(file)); // gone from the package folder at once
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0002", "0003"}));
    main.mnuUndo()->trigger();
    EXPECT_EQ(editor.column(0), kLoaded);
    EXPECT_EQ(editor.column(1)[1], QStringLiteral("Alpha"));
    EXPECT_EQ(tavik::test::readAll(file), bytes);

    main.mnuRedo()->trigger();
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.keysOnDisk(), (QStringList{"0000", "0002", "0003"}));
    main.mnuUndo()->trigger();
    EXPECT_EQ(editor.column(0), kLoaded);
    EXPECT_EQ(tavik::test::readAll(file), bytes);
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.keysOnDisk(), kLoaded);
    EXPECT_FALSE(editor.column(3)[1].isEmpty()); // measured again: its sound is open
}

TEST(MainWindowRemove, ASavedRemovalSendsTheFileToTheTrashWhenThePackageCloses) {
    if (!test::TrashCanBeScratch())
        GTEST_SKIP() << test::WhyNoScratchTrash().toStdString();
    UndoEditor editor;
    frmMain& main = *editor.main;
    editor.select(2);
    QTest::mouseClick(main.cmdRemove(), Qt::LeftButton);
    editor.select(2);
    QTest::mouseClick(main.cmdRemove(), Qt::LeftButton); // 0002, not saved
    main.mnuUndo()->trigger();
    main.mnuRedo()->trigger();
    // Save only the first removal: undo the second, save, redo it, then close and discard.
    main.mnuUndo()->trigger();
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    main.mnuRedo()->trigger();
    EXPECT_FALSE(QFileInfo::exists(editor.folder + QStringLiteral("/0002.wav")));
    EXPECT_TRUE(main.close());
    // The removal the file holds goes to the trash; the unsaved one comes back.
    EXPECT_FALSE(QFileInfo::exists(editor.folder + QStringLiteral("/0001.wav")));
    EXPECT_TRUE(QFileInfo::exists(editor.folder + QStringLiteral("/0002.wav")));
    EXPECT_EQ(QDir(editor.root.file(QStringLiteral("share/Trash/files")))
                  .entryList(QDir::Files)
                  .filter(QStringLiteral("0001")),
              QStringList{QStringLiteral("0001.wav")});
}

TEST(MainWindowUnsaved, NewAndOpenAskOnlyWhenSomethingIsUnsaved) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    bool newShown = false;
    whenShown<frmNew>([&](frmNew& dialog) {
        newShown = true;
        dialog.cmdCancel()->click();
    });
    QTest::mouseClick(main.cmdNew(), Qt::LeftButton);
    EXPECT_TRUE(newShown);
    EXPECT_TRUE(editor.messages.empty()); // a saved list is not asked about

    editor.select(2);
    QTest::mouseClick(main.cmdUp(), Qt::LeftButton);
    editor.answers.push_back(MsgResult::Cancel);
    QTest::mouseClick(main.cmdNew(), Qt::LeftButton);
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].buttons, MsgButtons::SaveDiscardCancel);
    EXPECT_EQ(editor.messages[0].text,
              editor.language.GetLangString(LangText::UnsavedListQuestion, "p"));
    EXPECT_EQ(editor.column(0), (QStringList{"0001", "0000", "0002", "0003"}));
    editor.answers.push_back(MsgResult::Cancel);
    QTest::mouseClick(main.cmdOpen(), Qt::LeftButton);
    EXPECT_EQ(editor.messages.size(), 2u);
    EXPECT_FALSE(main.undoStack()->isClean());
}

TEST(MainWindowUnsaved, CancellingNewShowsThePackageAsItWasAndSaveStillWritesOnlyThere) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    editor.select(2);
    QTest::mouseClick(main.cmdUp(), Qt::LeftButton);
    const QStringList shown = editor.column(0);
    editor.answers.push_back(MsgResult::Discard);
    whenShown<frmNew>([](frmNew& dialog) { dialog.cmdCancel()->click(); });
    QTest::mouseClick(main.cmdNew(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), shown);
    EXPECT_TRUE(main.isWindowModified());
    EXPECT_TRUE(main.cmdAdd()->isEnabled());
    EXPECT_EQ(main.table.AnnouncementCount, 4);
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.keysOnDisk(), shown);
    EXPECT_EQ(editor.column(0), shown);
}

TEST(MainWindowUnsaved, ClosingAsksAndCancelKeepsTheWindowAndItsChanges) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    main.show();
    editor.select(2);
    QTest::mouseClick(main.cmdUp(), Qt::LeftButton);
    editor.answers.push_back(MsgResult::Cancel);
    QTest::mouseClick(main.cmdExit(), Qt::LeftButton);
    EXPECT_TRUE(main.isVisible());
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].buttons, MsgButtons::SaveDiscardCancel);

    // The window manager's close (button, Alt+F4, end of session) asks the same.
    editor.answers.push_back(MsgResult::Save);
    EXPECT_TRUE(main.close());
    EXPECT_EQ(editor.messages.size(), 2u);
    EXPECT_EQ(editor.keysOnDisk(), (QStringList{"0001", "0000", "0002", "0003"}));
}

TEST(MainWindowUnsaved, ClosingASavedListAsksNothing) {
    UndoEditor editor;
    EXPECT_TRUE(editor.main->close());
    EXPECT_TRUE(editor.messages.empty());
}

TEST(MainWindowUndo, AnImportIsUndoneWithItsFileAndRedoneAndKeepsUnsavedMovesShown) {
    UndoEditor editor;
    frmMain& main = *editor.main;
    editor.select(2);
    QTest::mouseClick(main.cmdUp(), Qt::LeftButton); // unsaved: the import saves it as shown
    const QStringList moved{"0001", "0000", "0002", "0003"};
    TempDir sources;
    const QString source = sources.file(QStringLiteral("Ansage.wav"));
    ASSERT_TRUE(tavik::test::writeTone(source, 800, 8000));
    whenShown<frmFile>([](frmFile& dialog) { dialog.cmdOK()->click(); });
    main.ImportSounds({source});
    EXPECT_EQ(editor.column(0), moved + QStringList{"0004"});
    EXPECT_EQ(editor.keysOnDisk(), moved + QStringList{"0004"});
    EXPECT_TRUE(main.undoStack()->isClean());
    const QString file = editor.folder + QStringLiteral("/0004.wav");
    ASSERT_TRUE(QFileInfo::exists(file));

    main.mnuUndo()->trigger();
    EXPECT_EQ(editor.column(0), moved);
    EXPECT_FALSE(QFileInfo::exists(file));
    EXPECT_TRUE(main.isWindowModified());
    main.mnuRedo()->trigger();
    EXPECT_EQ(editor.column(0), moved + QStringList{"0004"});
    EXPECT_TRUE(QFileInfo::exists(file));
    EXPECT_EQ(editor.column(1)[4], QStringLiteral("Ansage"));
    main.mnuUndo()->trigger();
    main.mnuUndo()->trigger(); // the move before the import
    EXPECT_EQ(editor.column(0), kLoaded);
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.keysOnDisk(), kLoaded);
}
