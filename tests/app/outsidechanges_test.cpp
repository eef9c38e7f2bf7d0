// The main window and other programs on the same package: it notices their changes, reloads
// or asks, never saves over a change it has not shown, and never lists a key twice.
#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "package/clszeldb.h"
#include "package/packagesettings.h"
#include "package/packagewatch.h"
#include "support/editorfixture.h"
#include "support/errorcatcher.h"
#include "support/toolrun.h"
#include "util/conversions.h"
#include "util/packagelock.h"
#include "util/zelcmd.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QLockFile>
#include <QSet>
#include <QTest>
#include <gtest/gtest.h>
#include <iostream>
#include <random>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::tool;
using tavik::test::writeTone;

namespace {

constexpr int kWaitMs = 10000;

QString readItem(const QString& folder, const QString& key, const QString& item) {
    clsZELDB store;
    store.OpenIOFile(folder + QStringLiteral("/Package.io"));
    return CStr(store.GetSetting(key, item, QString()));
}

bool hasDuplicates(const QStringList& keys) {
    return QSet<QString>(keys.cbegin(), keys.cend()).size() != keys.size();
}

struct OpenPackage {
    EditorFixture editor;
    QString folder;

    OpenPackage() {
        folder = editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                                     {{QStringLiteral("0000"), QStringLiteral("Gong"), 50},
                                      {QStringLiteral("0001"), QStringLiteral("Gleis 1"), 50},
                                      {QStringLiteral("0002"), QStringLiteral("Gleis 2"), 50}});
        EXPECT_TRUE(editor.main->FormLoad());
        editor.main->show();
        editor.open(folder);
    }
    bool reloadedSaid() const {
        return editor.main->Panel(1)->text().contains(QStringLiteral("Package.io"));
    }
    void importSound(const QString& path) {
        frmFile dialog(*editor.main);
        dialog.AddFiles({path});
        dialog.show();
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
        if (dialog.isVisible())
            QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    }
};

} // namespace

TEST(OutsideChanges, AChangeByTheToolIsReloadedAndShownInTheStatusBar) {
    OpenPackage p;
    QElapsedTimer noticed;
    noticed.start();
    ASSERT_EQ(tool({"set", p.folder, "INFO", "Name", "Extern"}).code, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return p.reloadedSaid(); }, kWaitMs));
    std::cout << "[ figures ] outside change noticed and reloaded after " << noticed.elapsed()
              << " ms\n";
    EXPECT_EQ(p.editor.main->Panel(4)->text(), QStringLiteral("Extern"));
    EXPECT_TRUE(p.editor.messages.empty());
}

TEST(OutsideChanges, AnOutsideImportIsListedAndSavingKeepsIt) {
    OpenPackage p;
    const QString sound = p.editor.root.file(QStringLiteral("neu.wav"));
    ASSERT_TRUE(writeTone(sound, 400, 8000));
    ASSERT_EQ(tool({"import", p.folder, sound, "--title", "Neu"}).code, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return p.editor.column(1).contains("Neu"); }, kWaitMs));
    QTest::mouseClick(p.editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(EditorFixture::savedKeys(p.folder), (QStringList{"0000", "0001", "0002", "0003"}));
}

TEST(OutsideChanges, SaveRightAfterAnOutsideChangeAsksBeforeWritingOverIt) {
    OpenPackage p;
    ASSERT_EQ(tool({"set", p.folder, "INFO", "Autor", "Extern"}).code, 0);
    // Saved before the watch has told: the save itself finds the change.
    p.editor.answers.push_back(MsgResult::Cancel);
    QTest::mouseClick(p.editor.main->cmdSave(), Qt::LeftButton);
    ASSERT_EQ(p.editor.messages.size(), 1u);
    EXPECT_EQ(p.editor.messages[0].buttons, MsgButtons::SaveDiscardCancel);
    EXPECT_TRUE(p.editor.messages[0].text.contains(QStringLiteral("Package.io")));
    EXPECT_EQ(readItem(p.folder, "INFO", "Autor"), QStringLiteral("Extern"));
}

TEST(OutsideChanges, WithUnsavedChangesItAsksAndCancelKeepsBoth) {
    OpenPackage p;
    p.editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(p.editor.main->cmdDown(), Qt::LeftButton);
    ASSERT_TRUE(p.editor.main->HasUnsavedChanges());
    p.editor.answers.push_back(MsgResult::Cancel);
    ASSERT_EQ(tool({"set", p.folder, "INFO", "Autor", "Extern"}).code, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !p.editor.messages.empty(); }, kWaitMs));
    EXPECT_TRUE(p.editor.messages[0].text.contains(QStringLiteral("Package.io")));
    EXPECT_EQ(p.editor.column(0), (QStringList{"0001", "0000", "0002"}));
    EXPECT_EQ(readItem(p.folder, "INFO", "Autor"), QStringLiteral("Extern"));
    // The same change is not asked about again while nothing else changes.
    QTest::qWait(3 * PackageWatch::kSettleMs);
    EXPECT_EQ(p.editor.messages.size(), 1u);
}

TEST(OutsideChanges, WithUnsavedChangesDiscardReloadsWhatIsOnDisk) {
    OpenPackage p;
    p.editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(p.editor.main->cmdDown(), Qt::LeftButton);
    p.editor.answers.push_back(MsgResult::Discard);
    ASSERT_EQ(tool({"set", p.folder, "INFO", "Name", "Extern"}).code, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return p.reloadedSaid(); }, kWaitMs));
    EXPECT_EQ(p.editor.column(0), (QStringList{"0000", "0001", "0002"}));
    EXPECT_EQ(p.editor.main->Panel(4)->text(), QStringLiteral("Extern"));
}

TEST(OutsideChanges, WithUnsavedChangesSaveMineWritesTheListOverTheirs) {
    OpenPackage p;
    p.editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(p.editor.main->cmdDown(), Qt::LeftButton);
    p.editor.answers.push_back(MsgResult::Save);
    ASSERT_EQ(tool({"set", p.folder, "INDEX", "1", "0002~Anders"}).code, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !p.editor.messages.empty(); }, kWaitMs));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return EditorFixture::savedKeys(p.folder).value(0) == "0001"; }, kWaitMs));
    EXPECT_EQ(EditorFixture::savedKeys(p.folder), (QStringList{"0001", "0000", "0002"}));
    EXPECT_EQ(p.editor.messages.size(), 1u);
}

TEST(OutsideChanges, AServiceFileWrittenBesideTheListNeitherReloadsNorAsks) {
    OpenPackage p;
    p.editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(p.editor.main->cmdDown(), Qt::LeftButton);
    p.editor.root.write(QStringLiteral("Data/Linie1/_000001._"), QByteArray(40, '\0'));
    QTest::qWait(4 * PackageWatch::kSettleMs);
    EXPECT_TRUE(p.editor.messages.empty());
    EXPECT_FALSE(p.reloadedSaid());
    EXPECT_EQ(p.editor.column(0), (QStringList{"0001", "0000", "0002"}));
    // Saving the list writes only the index: nothing of the service's to show first.
    QTest::mouseClick(p.editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_TRUE(p.editor.messages.empty());
    EXPECT_EQ(EditorFixture::savedKeys(p.folder), (QStringList{"0001", "0000", "0002"}));
}

TEST(OutsideChanges, TheEditorsOwnSaveIsNoOutsideChange) {
    OpenPackage p;
    p.editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(p.editor.main->cmdDown(), Qt::LeftButton);
    QTest::mouseClick(p.editor.main->cmdSave(), Qt::LeftButton);
    QTest::qWait(4 * PackageWatch::kSettleMs);
    EXPECT_TRUE(p.editor.messages.empty());
    EXPECT_FALSE(p.reloadedSaid());
    EXPECT_FALSE(p.editor.main->HasUnsavedChanges());
    EXPECT_EQ(EditorFixture::savedKeys(p.folder), (QStringList{"0001", "0000", "0002"}));
}

TEST(OutsideChanges, ASecondEditorIsToldThatThePackageIsOpenElsewhere) {
    OpenPackage first;
    EditorFixture second;
    // Its own installation, as a second editor would have: one per installation runs.
    ASSERT_TRUE(second.main->FormLoad());
    second.open(first.folder);
    ASSERT_EQ(second.messages.size(), 1u);
    EXPECT_EQ(second.messages[0].text,
              second.language.GetLangString(
                  232, LockHolder(PackageLockFile(first.folder, QStringLiteral("open")))));
    EXPECT_TRUE(second.messages[0].text.contains(
        QStringLiteral("%1").arg(QCoreApplication::applicationPid())));
}

TEST(OutsideChanges, RemoveThenImportWithoutSavingGivesANewKey) {
    OpenPackage p;
    p.editor.main->lsvPack()->ListItems(3)->SetSelected(true);
    QTest::mouseClick(p.editor.main->cmdRemove(), Qt::LeftButton);
    ASSERT_FALSE(QFile::exists(p.folder + QStringLiteral("/0002.wav")));
    const QString sound = p.editor.root.file(QStringLiteral("neu.wav"));
    ASSERT_TRUE(writeTone(sound, 400, 8000));
    p.importSound(sound);
    const QStringList keys = EditorFixture::savedKeys(p.folder);
    EXPECT_FALSE(hasDuplicates(keys)) << keys.join(u' ').toStdString();
    EXPECT_TRUE(keys.contains(QStringLiteral("0003"))) << keys.join(u' ').toStdString();
}

TEST(OutsideChanges, RandomRemovesImportsSavesAndOutsideDeletionsNeverListAKeyTwice) {
    constexpr int kSequences = 10;
    constexpr int kSteps = 10;
    std::mt19937 random(20261125);
    // Removing a row whose sound another program deleted shows the runtime's error 53.
    tavik::test::ErrorCatcher errors;
    int steps = 0;
    for (int sequence = 0; sequence < kSequences; ++sequence) {
        OpenPackage p;
        const QString sound = p.editor.root.file(QStringLiteral("neu.wav"));
        ASSERT_TRUE(writeTone(sound, 200, 8000));
        for (int step = 0; step < kSteps; ++step, ++steps) {
            ReportList* list = p.editor.main->lsvPack();
            switch (random() % 4) {
            case 0:
                if (list->Count() > 0) {
                    list->ListItems(1 + random() % list->Count())->SetSelected(true);
                    QTest::mouseClick(p.editor.main->cmdRemove(), Qt::LeftButton);
                }
                break;
            case 1:
                p.importSound(sound);
                break;
            case 2:
                QTest::mouseClick(p.editor.main->cmdSave(), Qt::LeftButton);
                break;
            default: {
                // Another program deletes a sound file.
                const QStringList names = QDir(p.folder).entryList({QStringLiteral("0*")});
                if (!names.isEmpty())
                    QFile::remove(p.folder + u'/' + names[random() % names.size()]);
                QTest::qWait(2 * PackageWatch::kSettleMs);
                break;
            }
            }
            const QStringList keys = EditorFixture::savedKeys(p.folder);
            ASSERT_FALSE(hasDuplicates(keys)) << "sequence " << sequence << " step " << step << ": "
                                              << keys.join(u' ').toStdString();
            ASSERT_FALSE(hasDuplicates(p.editor.column(0)))
                << "sequence " << sequence << " step " << step;
        }
    }
    std::cout << "[ figures ] " << kSequences << " random sequences, " << steps
              << " steps, no key listed twice\n";
}
