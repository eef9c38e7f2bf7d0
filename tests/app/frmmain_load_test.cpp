// Loading a package keeps the window responsive at a fixed pace and ends with the same texts
// as a load that updated after every row.
#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "log/eventlog.h"
#include "support/editorfixture.h"
#include "util/reportlist.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QProgressBar>
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
