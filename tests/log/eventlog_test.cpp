#include "boxcolors.h"
#include "log/eventlog.h"
#include "log/frmdebug.h"
#include "log/logsettings.h"
#include "log/richtextbox.h"
#include "support/tempdir.h"
#include "support/writefault.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QTest>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

namespace {

// Every file below `root` with its size and modification time.
QStringList snapshot(const QString& root) {
    QStringList out;
    QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        out << info.filePath() + u' ' + QString::number(info.size()) + u' ' +
                   QString::number(info.lastModified().toMSecsSinceEpoch());
    }
    out.sort();
    return out;
}

} // namespace

TEST(EventLog, EachLineIsAddedAtTheEndAndSelected) {
    TempDir dir;
    EventLog log(dir.path());
    log.WriteLog(QStringLiteral("ANNOUNCE 'Ankunft'"));
    log.WriteLog(QStringLiteral("\tPLAY 'A1' 'Gong'"));
    RichTextBox& box = *log.viewer()->txtDebug();
    EXPECT_EQ(box.text(), QStringLiteral("ANNOUNCE 'Ankunft'\r\n\tPLAY 'A1' 'Gong'\r\n"));
    EXPECT_EQ(box.selStart(), box.textLength());
    EXPECT_EQ(box.selLength(), 0);
}

TEST(EventLog, AnEmptyLineAddsAnEmptyLineAndTwoDoubleQuotesToTheFile) {
    TempDir dir;
    QDir(dir.path()).mkpath(QStringLiteral("res/log"));
    WriteLogToFile(dir.path(), true);
    EventLog log(dir.path());
    log.WriteLog(QStringLiteral("READY"));
    log.WriteLog(QString());
    EXPECT_EQ(log.viewer()->txtDebug()->text(), QStringLiteral("READY\r\n\r\n"));
    EXPECT_EQ(readAll(dir.file(QStringLiteral("res/log/Tavik.log"))),
              QByteArray("\"READY\"\r\n\"\"\r\n"));
}

TEST(EventLog, WithFileLoggingOffNothingTouchesTheDisk) {
    TempDir dir;
    QDir(dir.path()).mkpath(QStringLiteral("res/log"));
    WriteLogToFile(dir.path(), false);
    const QStringList before = snapshot(dir.path());
    EventLog log(dir.path());
    for (int i = 0; i < 20; ++i)
        log.WriteLog(QStringLiteral("READY"));
    EXPECT_EQ(snapshot(dir.path()), before);
    EXPECT_TRUE(QDir(dir.file(QStringLiteral("res/log"))).isEmpty());
}

TEST(EventLog, SettingsAreReadFreshOnEveryCall) {
    TempDir dir;
    QDir(dir.path()).mkpath(QStringLiteral("res/log"));
    EventLog log(dir.path());
    log.WriteLog(QStringLiteral("one"));
    WriteLogToFile(dir.path(), true);
    log.WriteLog(QStringLiteral("two"));
    WriteLogToFile(dir.path(), false);
    log.WriteLog(QStringLiteral("three"));
    EXPECT_EQ(readAll(dir.file(QStringLiteral("res/log/Tavik.log"))), QByteArray("\"two\"\r\n"));
}

TEST(EventLog, AHiddenViewerCollectsEveryLineAndShowsTheFullHistory) {
    TempDir dir;
    EventLog log(dir.path());
    log.WriteLog(QStringLiteral("ANNOUNCE 'Satz'"));
    frmDebug* viewer = log.viewer();
    EXPECT_FALSE(viewer->isVisible());
    for (int i = 0; i < 50; ++i)
        log.WriteLog(QStringLiteral("\tPLAY 'A%1' 'Ansage'").arg(i));
    log.WriteLog(QStringLiteral("READY"));
    EXPECT_FALSE(viewer->isVisible());
    EXPECT_EQ(log.viewer(), viewer);

    viewer->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(viewer));
    RichTextBox& box = *viewer->txtDebug();
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.lineCount(), 53);
    EXPECT_TRUE(box.text().startsWith(QStringLiteral("ANNOUNCE 'Satz'\r\n\tPLAY 'A0' 'Ansage'")));
    EXPECT_TRUE(box.text().endsWith(QStringLiteral("\tPLAY 'A49' 'Ansage'\r\nREADY\r\n")));
    // Showing the viewer colours what it holds.
    EXPECT_EQ(textColor(box, 0, 0), kBlue);
    EXPECT_EQ(textColor(box, 51, 0), kBlue);
}

TEST(EventLog, TheViewFollowsTheNewestLine) {
    TempDir dir;
    EventLog log(dir.path());
    frmDebug* viewer = log.viewer();
    viewer->resize(400, 200);
    viewer->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(viewer));
    for (int i = 0; i < 200; ++i)
        log.WriteLog(QStringLiteral("READY %1").arg(i));
    RichTextBox& box = *viewer->txtDebug();
    EXPECT_GT(box.firstVisibleLine(), 150);
}

TEST(EventLog, AMissingLogFolderRaisesTheRuntimeErrorToTheCaller) {
    TempDir dir;
    WriteLogToFile(dir.path(), true);
    EventLog log(dir.path());
    try {
        log.WriteLog(QStringLiteral("READY"));
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), rt::PathNotFound);
    }
    // The line still reached the viewer before the file was tried.
    EXPECT_EQ(log.viewer()->txtDebug()->text(), QStringLiteral("READY\r\n"));
}

TEST(EventLog, ALineThatCannotBeWrittenRaisesItsErrorAndTheLogFileKeepsWhatItHad) {
    TempDir dir;
    QDir(dir.path()).mkpath(QStringLiteral("res/log"));
    WriteLogToFile(dir.path(), true);
    EventLog log(dir.path());
    log.WriteLog(QStringLiteral("READY"));
    {
        ScopedWriteFault fault(WriteStep::Write, ENOSPC);
        try {
            log.WriteLog(QStringLiteral("PLAY 'A1' 'Gong'"));
            FAIL() << "no error raised";
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.number(), rt::DiskFull);
        }
    }
    EXPECT_EQ(readAll(dir.file(QStringLiteral("res/log/Tavik.log"))), QByteArray("\"READY\"\r\n"));
    // The viewer has the line all the same, and the next one reaches the file whole.
    log.WriteLog(QStringLiteral("READY"));
    EXPECT_EQ(log.viewer()->txtDebug()->text(),
              QStringLiteral("READY\r\nPLAY 'A1' 'Gong'\r\nREADY\r\n"));
    EXPECT_EQ(readAll(dir.file(QStringLiteral("res/log/Tavik.log"))),
              QByteArray("\"READY\"\r\n\"READY\"\r\n"));
}
