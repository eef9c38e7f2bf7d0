#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "app/tavikapplication.h"
#include "dialogs/frmsetting.h"
#include "log/frmdebug.h"
#include "package/clszeldb.h"
#include "settings/langtexts.h"
#include "shell/frmsplash.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "support/errorcatcher.h"
#include "support/errorof.h"
#include "util/conversions.h"
#include "util/listrows.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <cmath>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ErrorCatcher;
using tavik::test::whenShown;
using Entry = EditorFixture::Entry;

namespace {

std::vector<Entry> numbered(int count) {
    std::vector<Entry> entries;
    for (int i = 0; i < count; ++i)
        entries.push_back({FormatKey(i), QStringLiteral("Ansage %1").arg(i), -1});
    return entries;
}

clsZELDB reopen(const QString& index) {
    clsZELDB store;
    EXPECT_TRUE(store.OpenIOFile(index));
    return store;
}

QString setting(clsZELDB& store, const QString& key, const QString& item) {
    return CStr(store.GetSetting(key, item, QStringLiteral("<none>")));
}

// Names every status window, progress bar and status-bar panel that is shown while it
// lives, so a test sees what a routine showed on the way and hid again.
class ShowWatcher : public QObject {
public:
    explicit ShowWatcher(frmMain& main) : main_(main) { qApp->installEventFilter(this); }
    ~ShowWatcher() override { qApp->removeEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show) {
            if (qobject_cast<frmStatus*>(watched))
                seen << QStringLiteral("frmStatus");
            else if (watched == main_.prgStatus())
                seen << QStringLiteral("prgStatus");
            else if (watched == main_.Panel(2))
                seen << QStringLiteral("Panel2");
        }
        return false;
    }

    QStringList seen;

private:
    frmMain& main_;
};

} // namespace

TEST(MainWindowStartUp, LabelsTheListAndTheStatusBarFromTheLanguageFile) {
    EditorFixture editor(QStringLiteral("English.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    ReportList* list = editor.main->lsvPack();
    EXPECT_EQ(list->ColumnText(1), QStringLiteral("Key"));
    EXPECT_EQ(list->ColumnText(2), QStringLiteral("Title"));
    EXPECT_EQ(list->ColumnText(3), QStringLiteral("Format"));
    EXPECT_EQ(list->ColumnText(4), QStringLiteral("Play time (s)"));
    EXPECT_EQ(editor.main->Panel(6)->text(), editor.language.GetLangString(33));
    EXPECT_EQ(editor.main->cmdOpen()->text(), QStringLiteral("&Open"));
    EXPECT_EQ(list->Count(), 0);
    EXPECT_FALSE(editor.main->cmdSave()->isEnabled());
    EXPECT_FALSE(editor.main->cmdPlay()->isEnabled());
    EXPECT_TRUE(editor.messages.empty());
}

TEST(MainWindowStartUp, ReadsUseFormatOneAndOpensSoundsWithTheirDeviceType) {
    EditorFixture editor;
    const QString settings = editor.root.file(QStringLiteral("bin/Tavik.ini"));
    QFile file(settings);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("[SOUND]\r\nUseFormat=1\r\n");
    file.close();
    ASSERT_FALSE(editor.main->UseFormat());
    ASSERT_TRUE(editor.main->FormLoad());
    EXPECT_TRUE(editor.main->UseFormat());
    EXPECT_TRUE(editor.mci.UseFormat);
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {{"0000", "Gong", 100}});
    editor.recorder.clear();
    editor.open(folder);
    const QStringList opens = editor.recorder.commands().filter(QStringLiteral("open "));
    ASSERT_EQ(opens.size(), 1);
    EXPECT_TRUE(opens[0].endsWith(QStringLiteral(" type waveaudio alias 0000")))
        << opens[0].toStdString();
}

TEST(MainWindowStartUp, WithoutUseFormatOrWithZeroSoundsOpenWithoutADeviceType) {
    for (const QByteArray& stored : {QByteArray(), QByteArray("[SOUND]\r\nUseFormat=0\r\n")}) {
        EditorFixture editor;
        QFile file(editor.root.file(QStringLiteral("bin/Tavik.ini")));
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(stored);
        file.close();
        editor.main->SetUseFormat(true);
        ASSERT_TRUE(editor.main->FormLoad());
        EXPECT_FALSE(editor.main->UseFormat()) << stored.toStdString();
        editor.recorder.clear();
        editor.open(
            editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {{"0000", "Gong", 100}}));
        const QStringList opens = editor.recorder.commands().filter(QStringLiteral("open "));
        ASSERT_EQ(opens.size(), 1);
        EXPECT_FALSE(opens[0].contains(QStringLiteral(" type "))) << opens[0].toStdString();
    }
}

TEST(MainWindowStartUp, ASecondInstanceIsRefusedWithText24) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    frmMain second(editor.language, editor.mci, editor.log);
    second.ShowSplash = false;
    EXPECT_FALSE(second.FormLoad());
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(24));
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Exclamation);
    EXPECT_FALSE(second.isVisible());
}

TEST(MainWindowStartUp, TheSplashWindowShowsAndStartUpGoesOnWhenItCloses) {
    EditorFixture editor;
    editor.main->ShowSplash = true;
    bool splashSeen = false;
    test::whenShown<frmSplash>([&](frmSplash& splash) {
        splashSeen = true;
        splash.close();
    });
    EXPECT_TRUE(editor.main->FormLoad());
    EXPECT_TRUE(splashSeen);
}

TEST(MainWindowStartUp, DraggingTheWindowSmallerSnapsBackToItsStartUpSize) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    const QSize start(editor.main->MinWidth(), editor.main->MinHeight());
    ASSERT_GT(start.width(), 100);
    editor.main->resize(start.width() / 2, start.height() / 2);
    QCoreApplication::processEvents();
    EXPECT_GE(editor.main->width(), start.width());
    EXPECT_GE(editor.main->height(), start.height());
    editor.main->resize(start.width() + 50, start.height() + 40);
    QCoreApplication::processEvents();
    EXPECT_EQ(editor.main->size(), QSize(start.width() + 50, start.height() + 40));
}

TEST(MainWindowOpen, OpeningWhileTheListIsEmptyAsksNoQuestion) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    QString shown;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            shown = dialog->objectName();
            dialog->close();
        }
    });
    poll.start(10);
    editor.main->cmdOpen_Click();
    poll.stop();
    EXPECT_EQ(shown, QStringLiteral("frmOpen"));
    EXPECT_TRUE(editor.messages.empty());
}

TEST(MainWindowOpen, OpeningOverUnsavedChangesAsksAndCancelKeepsTheList) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                    {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}}));
    ReportList* list = editor.main->lsvPack();
    list->setCurrentItem(list->ListItems(1));
    list->ListItems(1)->SetSelected(true);
    whenShown<frmSetting>([](frmSetting& dialog) {
        dialog.txtTitle()->setText(QStringLiteral("Gong 2"));
        dialog.cmdOK()->click();
    });
    editor.main->lsvPack_DblClick(); // something unsaved
    editor.messages.clear();
    editor.answers.push_back(MsgResult::Cancel);
    editor.main->cmdOpen_Click();
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text,
              editor.language.GetLangString(LangText::UnsavedListQuestion, "p"));
    EXPECT_EQ(editor.messages[0].title,
              editor.language.GetLangString(LangText::UnsavedChangesTitle));
    EXPECT_EQ(editor.messages[0].buttons, MsgButtons::SaveDiscardCancel);
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Question);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 1);
    EXPECT_EQ(editor.column(1), QStringList{QStringLiteral("Gong 2")});
}

TEST(MainWindowClose, AnEmptyPackageFolderIsRemovedOnExit) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.root.file(QStringLiteral("Data/Neu"));
    QDir().mkpath(folder);
    editor.main->PackageFolder = folder;
    editor.main->show();
    editor.main->close();
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST(MainWindowClose, APackageFolderWithFilesIsKeptOnExit) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(QStringLiteral("Voll"), QStringLiteral("Voll"),
                                               {{QStringLiteral("0000"), "Gong", 50}});
    editor.open(folder);
    editor.main->show();
    editor.main->close();
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("/Package.io")));
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("/0000.wav")));
}

TEST(MainWindowLoad, AnEmptyPackageShowsNoStatusWindowAndNoMessageAndSetsTheStatusBar) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(editor.main.get()));
    const auto loadWatched = [&](const QString& folder) {
        editor.main->PackageFolder = folder;
        editor.main->IndexFilePath = folder + QStringLiteral("/Package.io");
        editor.main->UnloadAudioFiles(); // shows its own status window, before the load
        editor.main->lsvPack()->ClearItems();
        editor.messages.clear();
        ShowWatcher watcher(*editor.main);
        editor.main->LoadPackage();
        return watcher.seen;
    };

    const QStringList seen = loadWatched(
        editor.writePackage(QStringLiteral("leer"), QStringLiteral("Leeres Paket"), {}));
    EXPECT_TRUE(seen.isEmpty()) << seen.join(u' ').toStdString();
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_EQ(editor.main->statusWindow(), nullptr);
    EXPECT_EQ(editor.main->Panel(1)->text(), editor.language.GetLangString(27));
    EXPECT_EQ(editor.main->Panel(4)->text(), QStringLiteral("Leeres Paket"));
    EXPECT_TRUE(editor.main->Panel(2)->isHidden());
    EXPECT_FALSE(editor.main->Panel(3)->isHidden());
    EXPECT_TRUE(editor.main->prgStatus()->isHidden());
    EXPECT_TRUE(editor.main->cmdSave()->isEnabled());
    EXPECT_TRUE(editor.main->cmdAdd()->isEnabled());
    EXPECT_EQ(editor.main->lsvPack()->Count(), 0);

    // The watch does see what a load of one entry shows while it runs.
    const QStringList seenForOne = loadWatched(editor.writePackage(
        QStringLiteral("eins"), QStringLiteral("Ein Eintrag"), {{"0000", "Gong", 100}}));
    EXPECT_TRUE(seenForOne.contains(QStringLiteral("frmStatus")))
        << seenForOne.join(u' ').toStdString();
    EXPECT_TRUE(seenForOne.contains(QStringLiteral("prgStatus")))
        << seenForOne.join(u' ').toStdString();
    EXPECT_EQ(editor.main->statusWindow(), nullptr);
}

TEST(MainWindowLoad, AnEntryWithAnEmptyTitleIsSkippedAndTableAndListStayInStep) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                    {{QStringLiteral("0001"), QStringLiteral("Eins"), 100},
                                     {QStringLiteral("0003"), QString(), 100},
                                     {QStringLiteral("0004"), QStringLiteral("Vier"), 100}}));
    EXPECT_EQ(editor.column(0), (QStringList{QStringLiteral("0001"), QStringLiteral("0004")}));
    ASSERT_EQ(editor.main->table.AnnouncementCount, 2);
    EXPECT_EQ(editor.main->table.Announcements[0].Key, QStringLiteral("0001"));
    EXPECT_EQ(editor.main->table.Announcements[1].Key, QStringLiteral("0004"));
    EXPECT_EQ(editor.main->table.Announcements[1].Title, QStringLiteral("Vier"));
}

TEST(MainWindowLoad, TheTitleColumnMakesRoomForTheScrollBarFromTheEighteenthEntry) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    ReportList* list = editor.main->lsvPack();
    // The control keeps whole pixels of 15 twips.
    const double wide = std::round(5430.6143 / 15.0) * 15.0;
    const double narrow = std::round(5190.2363 / 15.0) * 15.0;
    ASSERT_NE(wide, narrow);

    editor.open(editor.writePackage(QStringLiteral("b"), QStringLiteral("B"), numbered(18)));
    EXPECT_EQ(list->ColumnWidth(2), narrow);

    // Seventeen entries set the wide column again, whatever it was before.
    list->ClearItems();
    editor.open(editor.writePackage(QStringLiteral("a"), QStringLiteral("A"), numbered(17)));
    EXPECT_EQ(list->ColumnWidth(2), wide);
    list->ClearItems();
    list->SetColumnWidth(2, 900);
    editor.open(editor.writePackage(QStringLiteral("c"), QStringLiteral("C"), numbered(17)));
    EXPECT_EQ(list->ColumnWidth(2), wide);
}

TEST(MainWindowLoad, PlayTimesShowTwoRoundedDecimalsInTheUsersNumberFormat) {
    const QLocale previous;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    {
        EditorFixture editor;
        ASSERT_TRUE(editor.main->FormLoad());
        editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                        {{QStringLiteral("0000"), QStringLiteral("Gong"), 1234},
                                         {QStringLiteral("0001"), QStringLiteral("Kurz"), 500}}));
        EXPECT_EQ(editor.main->table.Announcements[0].Length, 1234);
        EXPECT_EQ(editor.column(3), (QStringList{QStringLiteral("1,23"), QStringLiteral("0,5")}));
        EXPECT_EQ(editor.column(2), (QStringList{QStringLiteral("wav"), QStringLiteral("wav")}));
    }
    QLocale::setDefault(previous);
}

TEST(MainWindowLoad, TwoPositionsWithTheSameKeyWarnOnceAndBothGetTheLength) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                    {{QStringLiteral("0000"), QStringLiteral("Gong"), 300},
                                     {QStringLiteral("0000"), QStringLiteral("Gong"), 300},
                                     {QStringLiteral("0000"), QStringLiteral("Gong"), 300}}));
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(11));
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Exclamation);
    ASSERT_EQ(editor.main->table.AnnouncementCount, 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(editor.main->table.Announcements[i].Length, 300);
    EXPECT_EQ(editor.column(3).size(), 3);
    EXPECT_FALSE(editor.column(3).contains(QString()));
}

TEST(MainWindowLoad, AKeyWithoutAFileIsShownWhiteWithQuestionMarksAndNoLength) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                    {{QStringLiteral("0005"), QStringLiteral("Fehlt"), -1}}));
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text,
              editor.language.GetLangString(10, QStringLiteral("0005"), QStringLiteral("Fehlt")));
    EXPECT_TRUE(editor.messages[0].text.contains(QStringLiteral("0005")));
    ReportListItem* row = editor.main->lsvPack()->ListItems(1);
    EXPECT_EQ(row->ForeColor(), 0xFFFFFFu);
    EXPECT_FALSE(row->Bold());
    EXPECT_EQ(row->SubItems(2), QStringLiteral("???"));
    EXPECT_EQ(row->SubItems(3), QString());
    EXPECT_TRUE(editor.main->table.Announcements[0].Missing);
    EXPECT_EQ(editor.main->table.Announcements[0].Length, 0);
}

TEST(MainWindowLoad, ColouredEntriesAreBoldInTheirColourAndTaggedWithTheirFile) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                            {{QStringLiteral("0000"), QStringLiteral("Rot"), 100, 255},
                             {QStringLiteral("0001"), QStringLiteral("Ohne"), 100, 0}});
    editor.open(folder);
    ReportListItem* red = editor.main->lsvPack()->ListItems(1);
    EXPECT_EQ(red->ForeColor(), 255u);
    EXPECT_TRUE(red->Bold());
    EXPECT_EQ(red->Tag(), editor.main->GetFileName(QStringLiteral("0000")));
    EXPECT_TRUE(red->Tag().endsWith(QStringLiteral("0000.wav")));
    EXPECT_FALSE(editor.main->lsvPack()->ListItems(2)->Bold());
    EXPECT_EQ(editor.main->lsvPack()->ListItems(2)->ForeColor(), WindowTextColor);
}

TEST(MainWindowLoad, AnIndexFileThatCannotBeReadShowsText8AndChangesNothing) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                    {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}}));
    const QString broken = editor.root.write(QStringLiteral("Data/kaputt/Package.io"), "garbage");
    editor.main->IndexFilePath = broken;
    editor.main->LoadPackage();
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(8));
    EXPECT_EQ(editor.main->lsvPack()->Count(), 1);
    EXPECT_EQ(editor.main->table.AnnouncementCount, 1);
}

TEST(MainWindowLoad, AnEntryWithoutATildeAbortsTheLoadWithTheSubscriptError) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {});
    clsZELDB store;
    store.SaveSetting("INFO", "Name", Variant::fromString("P"));
    store.SaveSetting("INDEX", "1", Variant::fromString("0000"));
    store.SaveSetting("INDEX", "Count", Variant::fromLong(1));
    store.SaveIOFile(folder + "/Package.io");
    editor.main->PackageFolder = folder;
    editor.main->IndexFilePath = folder + "/Package.io";
    EXPECT_EQ(test::errorOf([&] { editor.main->LoadPackage(); }), 9);
    // The window stays usable: the list is back and the status window gone.
    EXPECT_FALSE(editor.main->lsvPack()->isHidden());
    EXPECT_EQ(editor.main->statusWindow(), nullptr);
    EXPECT_TRUE(editor.main->prgStatus()->isHidden());
    EXPECT_TRUE(editor.main->Panel(2)->isHidden());
}

TEST(MainWindowEdit, MovingTheFirstRowUpOrTheLastRowDownDoesNothing) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), numbered(3)));
    const QStringList before = editor.column(0);
    ReportList* list = editor.main->lsvPack();
    list->ListItems(1)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), before);
    list->ListItems(3)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdDown(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), before);
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0002", "0001"}));
    EXPECT_EQ(list->SelectedItem()->Index(), 2);
}

TEST(MainWindowEdit, ARowMovedToTheTopKeepsItsDataAndThePassedRowsKeepTheirs) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    std::vector<Entry> entries = numbered(6);
    // Every row looks different: its own colour or none, bold or not, a file or none.
    entries[0].color = 255;
    entries[1].lengthMs = 300;
    entries[2].color = 0x808080;
    entries[2].lengthMs = 500;
    entries[3].color = 0xFF0000;
    entries[4].color = 0x00FF00;
    entries[4].lengthMs = 700;
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), entries));
    editor.messages.clear();
    ReportList* list = editor.main->lsvPack();
    QList<ListRowSnapshot> rows;
    for (int i = 1; i <= list->Count(); ++i)
        rows << ReadListRow(list->ListItems(i));
    // The passed rows differ in every field the test compares.
    ASSERT_NE(rows[0].ForeColor, rows[1].ForeColor);
    ASSERT_NE(rows[0].Bold, rows[1].Bold);
    ASSERT_NE(rows[1].Tag, rows[2].Tag);
    list->ListItems(5)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdFUp(), Qt::LeftButton);

    ListRowSnapshot moved = ReadListRow(list->ListItems(1));
    EXPECT_EQ(moved.Text, QStringLiteral("0004"));
    EXPECT_EQ(moved.ForeColor, 0x00FF00u);
    EXPECT_TRUE(moved.Bold);
    EXPECT_EQ(moved.Tag, rows[4].Tag);
    EXPECT_EQ(moved.SubItems, rows[4].SubItems);
    EXPECT_TRUE(moved.Selected);
    for (int i = 0; i < 4; ++i) {
        const ListRowSnapshot passed = ReadListRow(list->ListItems(i + 2));
        EXPECT_EQ(passed.Text, rows[i].Text) << i;
        EXPECT_EQ(passed.ForeColor, rows[i].ForeColor) << i;
        EXPECT_EQ(passed.Bold, rows[i].Bold) << i;
        EXPECT_EQ(passed.Tag, rows[i].Tag) << i;
        EXPECT_EQ(passed.SubItems, rows[i].SubItems) << i;
        EXPECT_EQ(passed, rows[i]) << i;
    }
    EXPECT_EQ(ReadListRow(list->ListItems(6)), rows[5]);

    QTest::mouseClick(editor.main->cmdFDown(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), (QStringList{"0000", "0001", "0002", "0003", "0005", "0004"}));
}

TEST(MainWindowEdit, SortingByTitleTwiceGivesTheReverseOfSortingOnce) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(
        QStringLiteral("p"), QStringLiteral("P"),
        {{"0000", "Bahnsteig", -1}, {"0001", "Achtung", -1}, {"0002", "Zug", -1}}));
    editor.main->mnuTitel()->trigger();
    const QStringList once = editor.column(1);
    editor.main->mnuTitel()->trigger();
    QStringList twice = editor.column(1);
    std::reverse(twice.begin(), twice.end());
    EXPECT_EQ(once, twice);
    EXPECT_NE(once, editor.column(1));
    EXPECT_TRUE(editor.column(1) == (QStringList{"Achtung", "Bahnsteig", "Zug"}) ||
                once == (QStringList{"Achtung", "Bahnsteig", "Zug"}));
}

TEST(MainWindowEdit, TheSortMenuSortsPlayTimesAsText) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                    {{"0000", "A", 9200}, {"0001", "B", 10500}}));
    editor.main->mnuLenght()->trigger();
    EXPECT_EQ(editor.column(0).first(), QStringLiteral("0001")); // "10.5" before "9.2"
}

TEST(MainWindowEdit, PlayingASoundThatCouldNotBeOpenedReturnsAtOnce) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    // A long sound beside it: waiting for any real sound would overrun the bound below.
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                    {{"0000", "Fehlt", -1}, {"0001", "Lang", 3000}}));
    ASSERT_EQ(editor.main->table.Announcements[0].Length, 0);
    ASSERT_TRUE(editor.backend.emulator().isOpen(QStringLiteral("0001")));
    editor.recorder.clear();
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    bool playing = false;
    QTimer probe;
    QObject::connect(&probe, &QTimer::timeout, [&] {
        playing = playing || editor.backend.emulator().isPlaying(QStringLiteral("0000")) ||
                  editor.backend.emulator().isPlaying(QStringLiteral("0001"));
    });
    probe.start(0);
    QElapsedTimer clock;
    clock.start();
    QTest::mouseClick(editor.main->cmdPlay(), Qt::LeftButton);
    EXPECT_LT(clock.elapsed(), 1000);
    probe.stop();
    EXPECT_FALSE(playing);
    EXPECT_TRUE(editor.main->cmdPlay()->isEnabled());
    EXPECT_FALSE(editor.backend.emulator().isOpen(QStringLiteral("0000")));
    for (const QString& command : editor.recorder.commands())
        EXPECT_FALSE(command.contains(QStringLiteral("0001"))) << command.toStdString();
}

TEST(MainWindowEdit, PlayDisablesTheButtonWhileTheSoundPlaysAndRewindsAfter) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {{"0000", "Gong", 400}}));
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    bool disabledWhilePlaying = false;
    bool soundingWhilePlaying = false;
    QTimer::singleShot(150, [&] {
        disabledWhilePlaying = !editor.main->cmdPlay()->isEnabled();
        soundingWhilePlaying = editor.backend.emulator().isPlaying(QStringLiteral("0000"));
    });
    QTest::mouseClick(editor.main->cmdPlay(), Qt::LeftButton);
    EXPECT_TRUE(disabledWhilePlaying);
    EXPECT_TRUE(soundingWhilePlaying);
    EXPECT_TRUE(editor.main->cmdPlay()->isEnabled());
    EXPECT_FALSE(editor.backend.emulator().isPlaying(QStringLiteral("0000")));
    EXPECT_EQ(editor.backend.emulator().send(QStringLiteral("status 0000 position")).text,
              QStringLiteral("0"));
}

TEST(MainWindowEdit, RemoveAsksAndNoKeepsRowAndFile) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {{"0000", "Gong", 100}});
    editor.open(folder);
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    editor.answers.push_back(MsgResult::No);
    QTest::mouseClick(editor.main->cmdRemove(), Qt::LeftButton);
    ASSERT_EQ(editor.messages.size(), 1u);
    // The question names the announcement and its file; No is the default.
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(LangText::RemoveNamedQuestion,
                                                                     "0000", "Gong", "0000.wav"));
    EXPECT_EQ(editor.messages[0].defaultButton, MsgResult::No);
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Question);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 1);
    EXPECT_TRUE(QFileInfo::exists(folder + "/0000.wav"));
}

TEST(MainWindowEdit, RemoveDeletesTheSoundFileAndTheRowButKeepsTheIndexFile) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                               {{"0000", "Gong", 100}, {"0001", "Zug", 100}});
    editor.open(folder);
    const QByteArray index = test::readAll(folder + "/Package.io");
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdRemove(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), QStringList{"0001"});
    EXPECT_FALSE(QFileInfo::exists(folder + "/0000.wav"));
    EXPECT_TRUE(QFileInfo::exists(folder + "/0001.wav"));
    EXPECT_EQ(test::readAll(folder + "/Package.io"), index);
    EXPECT_EQ(editor.main->table.AnnouncementCount, 2);
}

TEST(MainWindowEdit, RemovingARowWhoseFileIsGoneShowsTheErrorAndKeepsTheRow) {
    EditorFixture editor;
    ErrorCatcher errors;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {{"0000", "Gong", 100}});
    editor.open(folder);
    QFile::remove(folder + "/0000.wav");
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdRemove(), Qt::LeftButton);
    ASSERT_EQ(errors.shown.size(), 1);
    EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("53"))) << errors.shown[0].toStdString();
    EXPECT_EQ(editor.main->lsvPack()->Count(), 1);
    // The window goes on working.
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 1);
}

TEST(MainWindowSave, SavingAnEmptyListWritesCountZeroAndKeepsTheOlderEntries) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {{"0000", "Gong", 100}});
    editor.open(folder);
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdRemove(), Qt::LeftButton);
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    clsZELDB store = reopen(folder + "/Package.io");
    EXPECT_EQ(setting(store, "INDEX", "Count"), QStringLiteral("0"));
    EXPECT_EQ(setting(store, "INDEX", "1"), QStringLiteral("0000~Gong"));
    EXPECT_EQ(store.GetSetting("INDEX", "Count", "").type(), VarType::Long);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 0);
}

TEST(MainWindowSave, MovingARowUpChangesOnlyTheIndexPositions) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(
        QStringLiteral("p"), QStringLiteral("P"),
        {{"0000", "Gong", 100, 255, true, 1}, {"0001", "Zug", 100, 0x00FF00, false, 3}});
    editor.open(folder);
    editor.main->lsvPack()->ListItems(2)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton);
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);

    clsZELDB store = reopen(folder + "/Package.io");
    EXPECT_EQ(setting(store, "INDEX", "1"), QStringLiteral("0001~Zug"));
    EXPECT_EQ(setting(store, "INDEX", "2"), QStringLiteral("0000~Gong"));
    EXPECT_EQ(setting(store, "0000", "Color"), QStringLiteral("255"));
    EXPECT_EQ(setting(store, "0000", "AutoPlace"), QStringLiteral("1"));
    EXPECT_EQ(store.GetSetting("0000", "NameVisible", "").type(), VarType::Boolean);
    EXPECT_TRUE(CBool(store.GetSetting("0000", "NameVisible", "")));
    EXPECT_EQ(setting(store, "0001", "Color"), QStringLiteral("65280"));
    EXPECT_FALSE(CBool(store.GetSetting("0001", "NameVisible", "")));
    EXPECT_EQ(setting(store, "0001", "AutoPlace"), QStringLiteral("3"));
    EXPECT_EQ(editor.column(0), (QStringList{"0001", "0000"}));
}

TEST(MainWindowSave, TheSavedFileHoldsExactlyTheBytesOfTheListWrittenIntoTheLoadedIndex) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder = editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                               {{"0000", "Gong", 100, 255}, {"0001", "Zug", 100}});
    editor.open(folder);
    editor.main->lsvPack()->ListItems(2)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton);

    // What the save has to produce: the file as loaded, with each row's settings written in
    // list order and the count last.
    clsZELDB expected = reopen(folder + "/Package.io");
    expected.SaveSetting("INDEX", "1", Variant::fromString("0001~Zug"));
    expected.SaveSetting("0001", "Color", Variant::fromLong(static_cast<qint32>(WindowTextColor)));
    expected.SaveSetting("0001", "NameVisible", Variant::fromBoolean(true));
    expected.SaveSetting("0001", "AutoPlace", Variant::fromLong(-1));
    expected.SaveSetting("INDEX", "2", Variant::fromString("0000~Gong"));
    expected.SaveSetting("0000", "Color", Variant::fromLong(255));
    expected.SaveSetting("0000", "NameVisible", Variant::fromBoolean(true));
    expected.SaveSetting("0000", "AutoPlace", Variant::fromLong(-1));
    expected.SaveSetting("INDEX", "Count", Variant::fromLong(2));

    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(test::readAll(folder + "/Package.io"), expected.toBytes());
}

TEST(MainWindowSave, ThreeRowsSavedOverFiveLeaveTheOldPositionsFourAndFive) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), numbered(5));
    editor.open(folder);
    editor.answers = {MsgResult::Yes, MsgResult::Yes};
    for (int i = 0; i < 2; ++i) {
        editor.main->lsvPack()->ListItems(4)->SetSelected(true);
        // The rows have no sound files: the delete fails, so take the rows out directly.
        editor.main->lsvPack()->RemoveItem(4);
    }
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    clsZELDB store = reopen(folder + "/Package.io");
    EXPECT_EQ(setting(store, "INDEX", "Count"), QStringLiteral("3"));
    EXPECT_EQ(setting(store, "INDEX", "4"), QStringLiteral("0003~Ansage 3"));
    EXPECT_EQ(setting(store, "INDEX", "5"), QStringLiteral("0004~Ansage 4"));
    EXPECT_EQ(editor.main->lsvPack()->Count(), 3);
}

TEST(MainWindowSave, ATitleWithATildeIsWrittenAsItStandsAndCutThereOnLoad) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {{"0000", "Gong", 100}});
    editor.open(folder);
    editor.main->lsvPack()->ListItems(1)->SetSubItems(1, QStringLiteral("Gleis~1"));
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    clsZELDB store = reopen(folder + "/Package.io");
    EXPECT_EQ(setting(store, "INDEX", "1"), QStringLiteral("0000~Gleis~1"));
    EXPECT_EQ(editor.column(1), QStringList{"Gleis"});
}

TEST(MainWindowPack, WithoutThePackerAMessageSaysWhereItIsMissing) {
    EditorFixture editor;
    ErrorCatcher errors;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    QTest::mouseClick(editor.main->cmdCompress(), Qt::LeftButton);
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text,
              editor.language.GetLangString(LangText::PackerMissing, editor.main->PackerPath()));
    EXPECT_TRUE(editor.messages[0].text.contains(QStringLiteral("tavikpm")));
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Exclamation);
    EXPECT_TRUE(errors.shown.isEmpty());
}

#ifndef Q_OS_WIN
TEST(MainWindowPack, ThePackerBesideTheEditorIsStartedWithoutArguments) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString marker = editor.root.file("packer-ran");
    const QString packer = editor.root.write("bin/tavikpm", "#!/bin/sh\necho \"$#\" > '" +
                                                                marker.toLocal8Bit() + "'\n");
    QFile::setPermissions(packer, QFile::permissions(packer) | QFileDevice::ExeOwner);
    editor.main->show();
    QTest::mouseClick(editor.main->cmdCompress(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return test::readAll(marker).size() > 0; }, 5000));
    EXPECT_EQ(test::readAll(marker).trimmed(), QByteArray("0"));
}
#endif

TEST(MainWindowPanel, TheExtendedPanelOpensAndClosesWithItsButtons) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    EXPECT_FALSE(editor.main->picExpand()->isVisible());
    QTest::mouseClick(editor.main->cmdExpand(), Qt::LeftButton);
    EXPECT_TRUE(editor.main->picExpand()->isVisible());
    EXPECT_FALSE(editor.main->cmdExpand()->isEnabled());
    EXPECT_FALSE(editor.main->cmdDienst()->isEnabled()); // no package open
    QTest::mouseClick(editor.main->cmdUnexpand(), Qt::LeftButton);
    EXPECT_FALSE(editor.main->picExpand()->isVisible());
    EXPECT_TRUE(editor.main->cmdExpand()->isEnabled());
    EXPECT_TRUE(editor.main->cmdDienst()->isEnabled());
}

TEST(MainWindowPanel, TheDebugButtonShowsTheEventLog) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    QTest::mouseClick(editor.main->cmdExpand(), Qt::LeftButton);
    QTest::mouseClick(editor.main->cmdDebug(), Qt::LeftButton);
    ASSERT_TRUE(editor.log.viewerCreated());
    EXPECT_TRUE(editor.log.viewer()->isVisible());
    editor.main->close();
    EXPECT_FALSE(editor.log.viewer()->isVisible());
}

TEST(MainWindowStatus, TheNameTimerShowsThePackageNameOfTheIndex) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("Linie 5"), {}));
    editor.main->PackageIndex.SaveSetting("INFO", "Name", Variant::fromString("Umbenannt"));
    editor.main->tmrName_Timer();
    EXPECT_EQ(editor.main->Panel(4)->text(), QStringLiteral("Umbenannt"));
    EXPECT_TRUE(editor.main->tmrName()->isActive());
}

TEST(MainWindowStatus, UnloadingClosesEverySoundAndEmptiesTheTable) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                    {{"0000", "Gong", 100}, {"0001", "Zug", 100}}));
    EXPECT_TRUE(editor.backend.emulator().isOpen(QStringLiteral("0001")));
    editor.main->UnloadAudioFiles();
    EXPECT_EQ(editor.main->table.AnnouncementCount, 0);
    EXPECT_FALSE(editor.backend.emulator().isOpen(QStringLiteral("0000")));
    EXPECT_FALSE(editor.backend.emulator().isOpen(QStringLiteral("0001")));
    EXPECT_EQ(editor.main->table.Announcements.size(), 2); // storage kept for the next load
    EXPECT_EQ(editor.main->statusWindow(), nullptr);
}
