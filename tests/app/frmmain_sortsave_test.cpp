// While the list is sorted, a save, an import or any reload shows the rows in the saved order,
// sorted over whole rows, and saving again changes no byte.
#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "support/buildpaths.h"
#include "support/editorfixture.h"
#include "support/tempdir.h"
#include "util/conversions.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::readAll;
using tavik::test::TempDir;
using tavik::test::writeTone;
using Entry = EditorFixture::Entry;

namespace {

const QString kDemo = tavik::test::CheckoutPath(QStringLiteral("/Data/Beispielpaket"));

// The keys of the "INDEX" entries 1 to "Count" of the index file on disk, in order.
QStringList savedKeys(const QString& indexFile) {
    clsZELDB store;
    EXPECT_TRUE(store.OpenIOFile(indexFile));
    QStringList keys;
    const int count = CInt(store.GetSetting(QStringLiteral("INDEX"), QStringLiteral("Count"), "0"));
    for (int i = 1; i <= count; ++i)
        keys << CStr(store.GetSetting(QStringLiteral("INDEX"), QString::number(i), QString()))
                    .section(u'~', 0, 0);
    return keys;
}

// True when `texts` are in the list's text order (without regard to case).
bool inOrder(const QStringList& texts, bool ascending) {
    for (qsizetype i = 1; i < texts.size(); ++i) {
        const int c = QString::compare(texts[i - 1], texts[i], Qt::CaseInsensitive);
        if (ascending ? c > 0 : c < 0)
            return false;
    }
    return true;
}

QString copyDemo(const EditorFixture& editor) {
    const QString folder = editor.root.file(QStringLiteral("Data/Beispielpaket"));
    QDir().mkpath(folder);
    for (const QString& name : QDir(kDemo).entryList(QDir::Files))
        EXPECT_TRUE(QFile::copy(kDemo + u'/' + name, folder + u'/' + name)) << name.toStdString();
    return folder;
}

// Saves with the real button and checks that the list shows what it showed before, that
// the file holds that order, and that a second save writes the very same bytes.
void expectSaveKeepsWhatIsShown(EditorFixture& editor, const QString& indexFile) {
    const QStringList shown = editor.column(0);
    const QStringList titles = editor.column(1);
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), shown);
    EXPECT_EQ(editor.column(1), titles);
    EXPECT_EQ(savedKeys(indexFile), shown);
    const QByteArray first = readAll(indexFile);
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(readAll(indexFile), first);
    EXPECT_EQ(editor.column(0), shown);
    EXPECT_EQ(savedKeys(indexFile), shown);
}

} // namespace

TEST(MainWindowSortedSave, TheDemoPackageSortedByPlayTimeSavesWhatTheListShows) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = copyDemo(editor);
    editor.open(folder);
    ASSERT_EQ(editor.main->lsvPack()->Count(), 9);
    const QStringList fileOrder = editor.column(0);
    editor.main->mnuLenght()->trigger();
    ASSERT_TRUE(inOrder(editor.column(3), true));
    ASSERT_NE(editor.column(0), fileOrder); // the sort did move rows
    expectSaveKeepsWhatIsShown(editor, folder + QStringLiteral("/Package.io"));
    EXPECT_TRUE(inOrder(editor.column(3), true));
}

TEST(MainWindowSortedSave, TheDemoPackageSortedByTitleEitherWaySavesWhatTheListShows) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = copyDemo(editor);
    editor.open(folder);
    editor.main->mnuTitel()->trigger();
    ASSERT_TRUE(inOrder(editor.column(1), true));
    expectSaveKeepsWhatIsShown(editor, folder + QStringLiteral("/Package.io"));
    EXPECT_TRUE(inOrder(editor.column(1), true));

    editor.main->mnuTitel()->trigger();
    ASSERT_TRUE(inOrder(editor.column(1), false));
    expectSaveKeepsWhatIsShown(editor, folder + QStringLiteral("/Package.io"));
    EXPECT_TRUE(inOrder(editor.column(1), false));
}

TEST(MainWindowSortedSave, RowsThatSortEquallyKeepTheirSavedOrderOnEveryReload) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                               {{"0000", "Zug", 300},
                                                {"0001", "Gong", -1},
                                                {"0002", "Achtung", 200},
                                                {"0003", "Gong", 300},
                                                {"0004", "Achtung", -1}});
    editor.open(folder);
    editor.messages.clear();
    editor.main->mnuTitel()->trigger();
    EXPECT_EQ(editor.column(0), (QStringList{"0002", "0004", "0001", "0003", "0000"}));
    expectSaveKeepsWhatIsShown(editor, folder + QStringLiteral("/Package.io"));
    EXPECT_EQ(editor.column(0), (QStringList{"0002", "0004", "0001", "0003", "0000"}));

    // By play time the two missing sounds (no time) and the two of 300 ms tie.
    editor.main->mnuLenght()->trigger();
    EXPECT_EQ(editor.column(0), (QStringList{"0004", "0001", "0002", "0003", "0000"}));
    expectSaveKeepsWhatIsShown(editor, folder + QStringLiteral("/Package.io"));
    EXPECT_EQ(editor.column(0), (QStringList{"0004", "0001", "0002", "0003", "0000"}));
}

TEST(MainWindowSortedSave, FiveImportsIntoASortedListComeOutInTheOrderOfTheFile) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {});
    editor.open(folder);
    editor.main->mnuLenght()->trigger();

    TempDir sources;
    QStringList files;
    for (const char* name : {"e", "d", "c", "b", "a"}) {
        files << sources.file(name + QStringLiteral(".wav"));
        ASSERT_TRUE(writeTone(files.back(), 800, 8000));
    }
    frmFile dialog(*editor.main);
    dialog.AddFiles(files);
    dialog.show();
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    ASSERT_EQ(dialog.result(), QDialog::Accepted);

    const QString index = folder + QStringLiteral("/Package.io");
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0001", "0002", "0003", "0004"}));
    EXPECT_EQ(editor.column(1), (QStringList{"e", "d", "c", "b", "a"}));
    EXPECT_EQ(savedKeys(index), editor.column(0));
    // The first save adds the new announcements' own settings, so the index gains keys; the
    // index format then carries one free key slot more from the next save on. From there on
    // saving changes no byte.
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0001", "0002", "0003", "0004"}));
    EXPECT_EQ(savedKeys(index), editor.column(0));
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    expectSaveKeepsWhatIsShown(editor, index);

    // The same import into a list sorted by title places each row by its title.
    editor.main->mnuTitel()->trigger();
    EXPECT_EQ(editor.column(1), (QStringList{"a", "b", "c", "d", "e"}));
    expectSaveKeepsWhatIsShown(editor, index);
}
