// Times the event log and the debug viewer: 10,000 WriteLog calls into the hidden viewer, and
// highlighting a 10,000-line log. Prints its figures; run by hand from the build folder.
#include "log/eventlog.h"
#include "log/frmdebug.h"
#include "log/logsettings.h"
#include "log/richtextbox.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

using namespace tavik;

namespace {

QString logLine(int i) {
    switch (i % 4) {
    case 0:
        return QStringLiteral("ANNOUNCE 'Satz %1'").arg(i);
    case 1:
        return QStringLiteral("\tPLAY 'A%1' 'Ansage %1'").arg(i);
    case 2:
        return QStringLiteral("!MCI ERROR '263' 'Unable to load file!'");
    default:
        return QStringLiteral("READY");
    }
}

double writeLines(const QString& folder, int lines) {
    EventLog log(folder);
    log.viewer();
    QElapsedTimer t;
    t.start();
    for (int i = 0; i < lines; ++i)
        log.WriteLog(logLine(i));
    return static_cast<double>(t.nsecsElapsed()) / 1e6;
}

// Runs the event loop until the box has laid out every change.
void settle(RichTextBox* box) {
    while (box->hasPendingChanges())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
}

void report(const char* what, double ms, double targetMs) {
    std::printf("%-56s %9.1f ms  (target < %.0f ms)%s\n", what, ms, targetMs,
                ms < targetMs ? "  target met" : "  TARGET MISSED");
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir root;
    const QString folder = root.filePath(QStringLiteral("bin"));
    QDir().mkpath(folder + QStringLiteral("/res/log"));
    const int lines = 10000;

    report("10,000 WriteLog, viewer hidden, file logging off", writeLines(folder, lines), 1000);
    WriteLogToFile(folder, true);
    report("10,000 WriteLog, viewer hidden, file logging on", writeLines(folder, lines), 1000);
    WriteLogToFile(folder, false);

    EventLog log(folder);
    for (int i = 0; i < lines; ++i)
        log.WriteLog(logLine(i));
    frmDebug* viewer = log.viewer();
    viewer->resize(800, 600);
    QElapsedTimer t;
    t.start();
    viewer->Highlight();
    report("Highlight a 10,000-line log, viewer hidden",
           static_cast<double>(t.nsecsElapsed()) / 1e6, 500);

    viewer->show();
    settle(viewer->txtDebug());
    t.start();
    viewer->Highlight();
    report("Highlight the same log again, viewer shown",
           static_cast<double>(t.nsecsElapsed()) / 1e6, 500);
    settle(viewer->txtDebug());
    std::printf(
        "  ... until the colours are laid out on screen (incl. %d ms settle wait) %9.1f ms\n", 30,
        static_cast<double>(t.nsecsElapsed()) / 1e6);
    return 0;
}
