// A package that goes away, is renamed, becomes read-only or meets a full disk while the
// editor has it open: the user hears which file could not be saved, the file on disk stays
// whole, and the list keeps its unsaved changes for another try.
#include "app/frmmain.h"
#include "settings/langtexts.h"
#include "support/editorfixture.h"
#include "support/smallfilesystem.h"
#include "support/tempdir.h"
#include "util/apppath.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QUndoStack>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::readAll;
using tavik::test::SmallFileSystem;

namespace {

const std::vector<EditorFixture::Entry> kEntries{
    {"0000", "Gong", 100}, {"0001", "Zug", 100}, {"0002", "Halt", 100}};

// Opens the package in `folder` and moves its second row up: an unsaved change.
void openAndMove(EditorFixture& editor, const QString& folder) {
    ASSERT_TRUE(editor.main->FormLoad());
    editor.writePackage(QFileInfo(folder).fileName(), QStringLiteral("P"), kEntries);
    editor.open(folder);
    ReportList* list = editor.main->lsvPack();
    list->setCurrentItem(list->ListItems(2));
    list->ListItems(2)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton);
    editor.messages.clear();
}

const QStringList kMoved{"0001", "0000", "0002"};

// The save failed: one message naming the file, the list as it was, still unsaved.
void expectSaveRefusedAndChangesKept(EditorFixture& editor, const QString& indexFile) {
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    QStringList texts;
    for (const MessageRequest& m : editor.messages)
        texts << m.text;
    ASSERT_EQ(editor.messages.size(), 1u) << texts.join(u'\n').toStdString();
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Exclamation);
    EXPECT_TRUE(editor.messages[0].text.contains(QDir::toNativeSeparators(indexFile)))
        << editor.messages[0].text.toStdString();
    EXPECT_EQ(editor.column(0), kMoved);
    EXPECT_FALSE(editor.main->undoStack()->isClean());
    EXPECT_TRUE(editor.main->isWindowModified());
}

} // namespace

TEST(MainWindowBadInput, APackageFolderRemovedWhileOpenIsNotMadeAgainAndTheListStays) {
    EditorFixture editor;
    const QString folder = editor.root.file(QStringLiteral("Data/p"));
    openAndMove(editor, folder);
    ASSERT_TRUE(QDir(folder).removeRecursively());
    if (QFileInfo::exists(folder))
        GTEST_SKIP() << "this system keeps a folder that a program watches until it lets go "
                        "(Windows): it is not removed while the package is open";
    expectSaveRefusedAndChangesKept(editor, folder + QStringLiteral("/Package.io"));
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST(MainWindowBadInput, APackageFolderRenamedWhileOpenKeepsItsFileAsItWas) {
    EditorFixture editor;
    const QString folder = editor.root.file(QStringLiteral("Data/p"));
    openAndMove(editor, folder);
    const QString moved = editor.root.file(QStringLiteral("Data/q"));
    const QByteArray before = readAll(folder + QStringLiteral("/Package.io"));
    ASSERT_TRUE(QDir().rename(folder, moved));
    expectSaveRefusedAndChangesKept(editor, folder + QStringLiteral("/Package.io"));
    EXPECT_EQ(readAll(moved + QStringLiteral("/Package.io")), before);
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST(MainWindowBadInput, AReadOnlyPackageKeepsItsFileAndTheList) {
    EditorFixture editor;
    const QString folder = editor.root.file(QStringLiteral("Data/p"));
    SmallFileSystem disk(folder, 512 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    openAndMove(editor, folder);
    const QByteArray before = readAll(folder + QStringLiteral("/Package.io"));
    ASSERT_TRUE(disk.makeReadOnly());
    expectSaveRefusedAndChangesKept(editor, folder + QStringLiteral("/Package.io"));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.io")), before);
}

TEST(MainWindowBadInput, AFullDiskKeepsTheOldFileWholeAndASecondTryAfterwardsSaves) {
    EditorFixture editor;
    const QString folder = editor.root.file(QStringLiteral("Data/p"));
    SmallFileSystem disk(folder, 512 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    openAndMove(editor, folder);
    const QString index = folder + QStringLiteral("/Package.io");
    const QByteArray before = readAll(index);
    ASSERT_GT(disk.fill(QStringLiteral("filler")), 0);
    expectSaveRefusedAndChangesKept(editor, index);
    EXPECT_EQ(readAll(index), before);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden).filter(QStringLiteral("Package")),
              QStringList{QStringLiteral("Package.io")}); // no partial or temporary file

    // Room again: the same list saves.
    ASSERT_TRUE(QFile::remove(folder + QStringLiteral("/filler")));
    editor.messages.clear();
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_TRUE(editor.main->undoStack()->isClean());
    EXPECT_EQ(editor.column(0), kMoved);
}
