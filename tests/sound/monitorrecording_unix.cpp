#include "monitorrecording.h"

#include <QElapsedTimer>

namespace tavik::test {

bool MonitorRecording::start(QString& problem) {
    process_.setProgram(QStringLiteral("parec"));
    process_.setArguments({QStringLiteral("--device=tavik_null.monitor"), QStringLiteral("--raw"),
                           QStringLiteral("--format=s16le"), QStringLiteral("--rate=44100"),
                           QStringLiteral("--channels=2"), QStringLiteral("--latency-msec=5")});
    process_.start();
    if (!process_.waitForStarted(5000)) {
        problem = QStringLiteral("parec does not start: ") + process_.errorString();
        return false;
    }
    QElapsedTimer t;
    t.start();
    while (process_.bytesAvailable() == 0 && t.elapsed() < 5000)
        process_.waitForReadyRead(100);
    if (process_.bytesAvailable() == 0) {
        problem = QStringLiteral("parec records nothing from tavik_null.monitor: ") +
                  QString::fromLocal8Bit(process_.readAllStandardError());
        return false;
    }
    data_ = process_.readAllStandardOutput();
    return true;
}

void MonitorRecording::stop() {
    // A little more, so the end of the last sound is in.
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < 300) {
        process_.waitForReadyRead(50);
        data_ += process_.readAllStandardOutput();
    }
    process_.terminate();
    process_.waitForFinished(5000);
    data_ += process_.readAllStandardOutput();
    keep(data_);
}

} // namespace tavik::test
