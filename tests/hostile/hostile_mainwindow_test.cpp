// The main window over a package from another machine: keys that are no numbers, links to
// outside files, a "_" folder. Load, Remove and Save must never touch a file outside the
// package, nor another announcement's sound.
#include "hostile/hostilecorpus.h"
#include "hostile/treesnapshot.h"
#include "support/editorfixture.h"
#include "support/errorcatcher.h"
#include "support/tempdir.h"
#include "util/apppath.h"
#include "util/reportlist.h"
#include "util/tickcount.h"
#include "util/zelcmd.h"

#include <QFileInfo>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ErrorCatcher;
using tavik::test::snapshotTree;
using tavik::test::treeChanges;

namespace {

// The editor started on a scratch installation with the hostile package loaded.
struct HostileEditor : EditorFixture {
    ErrorCatcher errors;
    QString folder;

    HostileEditor() {
        folder = root.file(QStringLiteral("Data/Feindlich"));
        test::writeHostilePackage(root.path(), folder);
        if (!main->FormLoad())
            ADD_FAILURE() << "the main window did not start";
    }

    // Everything of the installation but the program folder, whose settings and log may
    // change, and `inside` (paths relative to the root).
    QMap<QString, QString> around(const QStringList& inside = {}) const {
        return snapshotTree(root.path(), QStringList{QStringLiteral("bin")} + inside);
    }

    int rowOf(const QString& key) const {
        const QStringList keys = column(0);
        return static_cast<int>(keys.indexOf(key)) + 1;
    }
};

} // namespace

TEST(HostilePackageWindow, KeysThatAreNoNumbersLoadWithoutASoundAndNothingOutsideIsOpened) {
    HostileEditor editor;
    const auto before = editor.around();
    editor.open(editor.folder);

    // Every entry with a title is listed, in index order.
    QStringList keys;
    for (const QString& entry : test::hostileIndexEntries())
        keys << entry.left(entry.indexOf(u'~'));
    EXPECT_EQ(editor.column(0), keys);

    ReportList* list = editor.main->lsvPack();
    for (int r = 1; r <= list->Count(); ++r) {
        ReportListItem* row = list->ListItems(r);
        const QString key = row->Text();
        if (test::keysWithSound().contains(key)) {
            EXPECT_EQ(row->Tag(), NativePath(editor.folder + u'\\' + key + QStringLiteral(".wav")))
                << key.toStdString();
            EXPECT_EQ(row->SubItems(2), QStringLiteral("wav")) << key.toStdString();
        } else {
            // No file: neither the package's own files, nor another announcement's sound,
            // nor the link to the file outside.
            EXPECT_EQ(row->Tag(), QString()) << key.toStdString();
            EXPECT_EQ(row->SubItems(2), QStringLiteral("???")) << key.toStdString();
        }
    }
    // Only the three sounds of the package were opened.
    QStringList opened;
    for (const QString& command : editor.recorder.commands()) {
        if (command.startsWith(QStringLiteral("open ")))
            opened << command;
    }
    ASSERT_EQ(opened.size(), 3) << opened.join(u'\n').toStdString();
    // Each names its file in the package folder (in the short form, where the system has one).
    for (const QString& command : opened)
        EXPECT_TRUE(command.contains(ShortPath(editor.folder))) << command.toStdString();

    EXPECT_EQ(treeChanges(before, editor.around()), QString());
}

TEST(HostilePackageWindow, UnloadingClosesNoDeviceForAKeyThatIsNoNumber) {
    HostileEditor editor;
    editor.open(editor.folder);
    editor.recorder.clear();
    editor.main->UnloadAudioFiles();
    // Only keys that are numbers are closed, in list order; "all" would close every sound.
    EXPECT_EQ(editor.recorder.commands(), (QStringList{"close 0000", "close 0003", "close 000",
                                                       "close 1000", "close 0001", "close 10000"}));
}

TEST(HostilePackageWindow, RemovingAnEntryWhoseKeyIsNoNumberDeletesNothingAnywhere) {
    HostileEditor editor;
    editor.open(editor.folder);
    const auto before = editor.around();
    ReportList* list = editor.main->lsvPack();
    int refused = 0;
    for (const QString& entry : test::hostileIndexEntries()) {
        const QString key = entry.left(entry.indexOf(u'~'));
        if (test::keysWithSound().contains(key))
            continue;
        const int row = editor.rowOf(key);
        ASSERT_GT(row, 0) << key.toStdString();
        list->ListItems(row)->SetSelected(true);
        editor.errors.shown.clear();
        QTest::mouseClick(editor.main->cmdRemove(), Qt::LeftButton);
        // As for any announcement without its sound: the file-not-found error, and the row stays.
        ASSERT_EQ(editor.errors.shown.size(), 1) << key.toStdString();
        EXPECT_TRUE(editor.errors.shown[0].contains(QStringLiteral("'53'")))
            << editor.errors.shown[0].toStdString();
        EXPECT_EQ(editor.rowOf(key), row) << key.toStdString();
        ++refused;
    }
    EXPECT_EQ(refused, test::hostileIndexEntries().size() - test::keysWithSound().size());
    // The package and everything around it are as they were, the link and its target too.
    EXPECT_EQ(treeChanges(before, editor.around()), QString());
    // The link is still a link, where the system makes links at all.
    const test::TempDir probe;
    const bool linksAreMade =
        test::MakeLink(QStringLiteral("target"), probe.file(QStringLiteral("link")));
    EXPECT_EQ(QFileInfo(editor.folder + QStringLiteral("/0003.wav")).isSymLink(), linksAreMade);
    // The device word "all" closed no sound: the announcements still play.
    EXPECT_EQ(editor.backend.emulator().send(QStringLiteral("status 0000 length")).code, 0);

    // Removing a real announcement deletes exactly its sound.
    list->ListItems(editor.rowOf(QStringLiteral("0001")))->SetSelected(true);
    QTest::mouseClick(editor.main->cmdRemove(), Qt::LeftButton);
    const auto after = editor.around();
    auto expected = before;
    expected.remove(QStringLiteral("Data/Feindlich/0001.wav"));
    EXPECT_EQ(treeChanges(expected, after), QString());
}

TEST(HostilePackageWindow, SavingAndReloadingKeepsTheListAndWritesOnlyTheIndexFile) {
    HostileEditor editor;
    editor.open(editor.folder);
    const QStringList keys = editor.column(0);
    const QStringList formats = editor.column(2);
    const auto before = editor.around({QStringLiteral("Data/Feindlich/Package.io")});
    editor.errors.shown.clear();
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.errors.shown, QStringList());
    EXPECT_EQ(editor.column(0), keys);
    EXPECT_EQ(editor.column(2), formats);
    EXPECT_EQ(treeChanges(before, editor.around({QStringLiteral("Data/Feindlich/Package.io")})),
              QString());
}

TEST(HostilePackageWindow, ABadUseFormatSettingIsShownOnceAndStartUpGoesOnWithTheDefault) {
    for (const QByteArray& value : {QByteArray(""), QByteArray("abc"), QByteArray("  ")}) {
        EditorFixture editor;
        ErrorCatcher errors;
        QFile settings(editor.root.file(QStringLiteral("bin/Tavik.ini")));
        ASSERT_TRUE(settings.open(QIODevice::Append));
        settings.write("[SOUND]\r\nUseFormat=" + value + "\r\n");
        settings.close();
        editor.mci.UseFormat = true;
        ASSERT_TRUE(editor.main->FormLoad()) << value.toStdString();
        ASSERT_EQ(errors.shown.size(), 1) << value.toStdString();
        EXPECT_TRUE(errors.shown[0].startsWith(QStringLiteral("Laufzeitfehler '13'")))
            << errors.shown[0].toStdString();
        EXPECT_FALSE(editor.main->UseFormat());
        // Start-up ran to its end: the list is labelled.
        EXPECT_EQ(editor.main->lsvPack()->ColumnText(1), editor.language.GetLangString(29));
    }
}

TEST(HostilePackageWindow, AGoodUseFormatSettingIsTakenWithoutAMessage) {
    EditorFixture editor;
    ErrorCatcher errors;
    QFile settings(editor.root.file(QStringLiteral("bin/Tavik.ini")));
    ASSERT_TRUE(settings.open(QIODevice::Append));
    settings.write("[SOUND]\r\nUseFormat=1\r\n");
    settings.close();
    ASSERT_TRUE(editor.main->FormLoad());
    EXPECT_EQ(errors.shown, QStringList());
    EXPECT_TRUE(editor.main->UseFormat());
}
