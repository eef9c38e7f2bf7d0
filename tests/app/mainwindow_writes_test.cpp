// The main window's Save on a full disk and through a link: the index on disk stays as it
// was and nothing outside the package changes.
#include "app/frmmain.h"
#include "support/editorfixture.h"
#include "support/errorcatcher.h"
#include "support/links.h"
#include "support/smallfilesystem.h"
#include "support/treesnapshot.h"
#include "support/writefault.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ErrorCatcher;
using tavik::test::namesIn;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::SmallFileSystem;
using tavik::test::TreeSnapshot;

namespace {

const std::vector<EditorFixture::Entry> kEntries = {
    {QStringLiteral("0000"), QStringLiteral("Gong"), 50},
    {QStringLiteral("0001"), QStringLiteral("Ansage"), 50},
};

void moveFirstRowDown(EditorFixture& editor) {
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdDown(), Qt::LeftButton);
}

} // namespace

TEST(MainWindowSave, OnAFullDiskShowsError61AndKeepsTheIndexByteForByte) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    SmallFileSystem disk(editor.root.file(QStringLiteral("Data/Voll")), 256 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    const QString folder =
        editor.writePackage(QStringLiteral("Voll"), QStringLiteral("V"), kEntries);
    const QByteArray index = readAll(folder + QStringLiteral("/Package.io"));
    ASSERT_LT(index.size(), 16 * 1024);
    editor.open(folder);
    ASSERT_GT(disk.fill(), 0);
    moveFirstRowDown(editor);
    editor.messages.clear();
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);

    // A message of the editor's own names the file and the error.
    ASSERT_EQ(editor.messages.size(), 1u);
    const QString text = editor.messages[0].text;
    EXPECT_TRUE(text.contains(QStringLiteral("(61)"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Datenträger voll")));
    EXPECT_TRUE(text.contains(QDir::toNativeSeparators(folder + QStringLiteral("/Package.io"))));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.io")), index);
    EXPECT_EQ(namesIn(folder, false), (QStringList{"0000.wav", "0001.wav", "Package.io"}));
    // The list still shows what the user had; the window goes on.
    EXPECT_EQ(editor.column(0), (QStringList{"0001", "0000"}));
    EXPECT_TRUE(editor.main->cmdSave()->isEnabled());
}

TEST(MainWindowSave, AFailedWriteAtAnyStepKeepsTheIndexByteForByte) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), kEntries);
    const QByteArray index = readAll(folder + QStringLiteral("/Package.io"));
    editor.open(folder);
    for (const WriteStep step :
         {WriteStep::Open, WriteStep::Write, WriteStep::Sync, WriteStep::Commit}) {
        ScopedWriteFault fault(step, EIO);
        moveFirstRowDown(editor);
        editor.messages.clear();
        QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
        ASSERT_EQ(editor.messages.size(), 1u);
        EXPECT_TRUE(editor.messages[0].text.contains(QStringLiteral("(57)")))
            << editor.messages[0].text.toStdString();
        EXPECT_EQ(readAll(folder + QStringLiteral("/Package.io")), index);
        EXPECT_EQ(namesIn(folder, false), (QStringList{"0000.wav", "0001.wav", "Package.io"}));
    }
}

TEST(MainWindowSave, ALinkedIndexIsRefusedWith75AndNothingOutsideChanges) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), kEntries);
    const QString outside = editor.root.file(QStringLiteral("outside.io"));
    ASSERT_TRUE(QFile::rename(folder + QStringLiteral("/Package.io"), outside));
    TAVIK_LINK_OR_SKIP(outside, folder + QStringLiteral("/Package.io"));
    editor.open(folder);
    ASSERT_EQ(editor.main->lsvPack()->Count(), 2);
    const TreeSnapshot before(editor.root.path());
    moveFirstRowDown(editor);
    editor.messages.clear();
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_TRUE(editor.messages[0].text.contains(QStringLiteral("(75)")))
        << editor.messages[0].text.toStdString();
    EXPECT_EQ(TreeSnapshot(editor.root.path()).changesSince(before), QStringList());
}
