// Loading a package keeps the window responsive at a fixed pace and ends with the same texts
// as a load that updated after every row.
#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "log/eventlog.h"
#include "support/editorfixture.h"
#include "support/tempdir.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

std::vector<EditorFixture::Entry> entries(int count) {
    std::vector<EditorFixture::Entry> out;
    for (int i = 0; i < count; ++i)
        out.push_back({QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0')),
                       QStringLiteral("Ansage %1").arg(i), 20});
    return out;
}

// The editor with a package of `count` entries loaded, shown as the user's window.
struct LoadedEditor : EditorFixture {
    QString folder;
    explicit LoadedEditor(int count) {
        EXPECT_TRUE(main->FormLoad());
        folder = writePackage(QStringLiteral("p"), QStringLiteral("P"), entries(count));
        open(folder);
        main->show();
        main->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*main));
        messages.clear();
    }
    QByteArray index() const {
        return tavik::test::readAll(folder + QStringLiteral("/Package.io"));
    }
};

// The texts the status window's second line was painted with.
class SecondLineWatcher : public QObject {
public:
    SecondLineWatcher() { qApp->installEventFilter(this); }
    ~SecondLineWatcher() override { qApp->removeEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->objectName() == QLatin1String("lblFile"))
            painted << static_cast<QLabel*>(watched)->text();
        return false;
    }
    QStringList painted;
};

} // namespace

TEST(MainWindowLoad, EventsAreHandledWhileALongLoadRuns) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), entries(60));
    int rowsWhenHandled = -1;
    QTimer::singleShot(0, [&] { rowsWhenHandled = editor.main->lsvPack()->Count(); });
    editor.open(folder);
    EXPECT_GE(rowsWhenHandled, 1);
    EXPECT_LT(rowsWhenHandled, 60);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 60);
    // Sound opens and log lines let events through by themselves again once the load is over.
    EXPECT_TRUE(editor.mci.YieldOnOpen);
    EXPECT_TRUE(editor.main->eventLog().YieldOnWrite);
}

TEST(MainWindowLoad, TheStatusWindowAndTheProgressBarEndOnTheLastEntry) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), entries(40));
    SecondLineWatcher watcher;
    QList<int> progress;
    QObject::connect(editor.main->prgStatus(), &QProgressBar::valueChanged,
                     [&](int value) { progress << value; });
    editor.open(folder);
    ASSERT_FALSE(watcher.painted.isEmpty());
    EXPECT_EQ(watcher.painted.last(), QStringLiteral("Ansage 39"));
    EXPECT_TRUE(watcher.painted.contains(QStringLiteral("Ansage 0")));
    ASSERT_FALSE(progress.isEmpty());
    EXPECT_EQ(progress.last(), 40);
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_EQ(editor.main->statusWindow(), nullptr);
    EXPECT_TRUE(editor.main->prgStatus()->isHidden());
}

TEST(MainWindowLoad, ALogLineLetsEventsThroughOnlyWhenAskedTo) {
    EditorFixture editor;
    EventLog& log = editor.main->eventLog();
    for (const bool yield : {true, false}) {
        log.YieldOnWrite = yield;
        bool handled = false;
        QTimer::singleShot(0, [&] { handled = true; });
        log.WriteLog(QStringLiteral("!MCI ERROR '289' 'Unable to load file!'"));
        EXPECT_EQ(handled, yield);
        QCoreApplication::processEvents();
    }
    log.YieldOnWrite = true;
}

TEST(MainWindowLoad, AnOpenLetsEventsThroughOnlyWhenAskedTo) {
    EmulatorBackend emulator;
    modMCI mci(emulator, {});
    for (const bool yield : {true, false}) {
        mci.YieldOnOpen = yield;
        bool handled = false;
        QTimer::singleShot(0, [&] { handled = true; });
        QString path = QStringLiteral("/no/such/file.wav");
        mci.MciOpen(path, QStringLiteral("a"), QStringLiteral("waveaudio"));
        EXPECT_EQ(handled, yield);
        QCoreApplication::processEvents();
    }
}

TEST(MainWindowLoad, ClosingTheWindowWhileItLoadsEndsTheLoadAsksNothingAndWritesNothing) {
    LoadedEditor editor(200);
    const QByteArray before = editor.index();
    // An edit saved: the undo history is not clean while Save loads the package again.
    editor.main->lsvPack()->ListItems(2)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton);
    const QByteArray saved = [&] {
        int rowsAtClose = -1;
        QTimer::singleShot(0, [&] {
            rowsAtClose = editor.main->lsvPack()->Count();
            editor.main->close();
        });
        QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
        EXPECT_GE(rowsAtClose, 0);
        return editor.index();
    }();
    EXPECT_FALSE(editor.main->isVisible());
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_LT(editor.main->lsvPack()->Count(), 200);
    // The save itself was whole: the moved row and every entry are in the file.
    EXPECT_NE(saved, before);
    const QStringList savedKeys = EditorFixture::savedKeys(editor.folder);
    ASSERT_EQ(savedKeys.size(), 200);
    EXPECT_EQ(savedKeys.mid(0, 2), (QStringList{QStringLiteral("0001"), QStringLiteral("0000")}));
}

TEST(MainWindowLoad, ClicksAndKeysGivenToTheWindowWhileItLoadsDoNothing) {
    LoadedEditor editor(150);
    const QStringList keys = editor.column(0);
    editor.main->lsvPack()->setFocus();
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    bool tried = false;
    QTimer::singleShot(0, [&] {
        tried = true;
        QTest::mouseClick(editor.main->cmdRemove(), Qt::LeftButton);
        QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
        QTest::mouseClick(editor.main->cmdOpen(), Qt::LeftButton);
        QTest::keyClick(editor.main->lsvPack(), Qt::Key_Delete);
        QTest::keyClick(editor.main->lsvPack(), Qt::Key_S, Qt::ControlModifier);
        QTest::keyClick(editor.main->lsvPack(), Qt::Key_F, Qt::AltModifier);
    });
    // Save writes the list and loads the package again.
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    ASSERT_TRUE(tried);
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 150);
    EXPECT_EQ(EditorFixture::savedKeys(editor.folder), keys);
    // Once the load is over, the same key reaches the list again: Delete asks and removes.
    editor.main->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*editor.main));
    ReportList* list = editor.main->lsvPack();
    list->setFocus();
    list->setCurrentItem(list->ListItems(1));
    list->ListItems(1)->SetSelected(true);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(list->Count(), 149);
}

TEST(MainWindowLoad, TheExitButtonAndTheQuitKeyCloseTheWindowWhileItLoads) {
    for (const bool key : {false, true}) {
        LoadedEditor editor(150);
        QTimer::singleShot(0, [&] {
            if (key)
                QTest::keyClick(editor.main->lsvPack(), Qt::Key_Q, Qt::ControlModifier);
            else
                QTest::mouseClick(editor.main->cmdExit(), Qt::LeftButton);
        });
        editor.main->UnloadAudioFiles();
        editor.main->lsvPack()->ClearItems();
        editor.main->LoadPackage();
        EXPECT_FALSE(editor.main->isVisible()) << (key ? "Ctrl+Q" : "Exit");
        EXPECT_LT(editor.main->lsvPack()->Count(), 150);
        EXPECT_TRUE(editor.messages.empty());
    }
}
