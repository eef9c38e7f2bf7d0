#include "monitorrecording.h"

#include "support/winehost.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QUuid>

namespace tavik::test {

// Wine starts the host's parec without a Windows process whose output could be read or which
// could be stopped: a host shell writes parec's number to one file and its sound to another,
// which is read; the host's kill stops it.
bool MonitorRecording::start(QString& problem) {
    const QString stem = QDir::temp().filePath(QStringLiteral("tavik-monitor-") +
                                               QUuid::createUuid().toString(QUuid::WithoutBraces));
    dataFile_ = stem + QStringLiteral(".raw");
    pidFile_ = stem + QStringLiteral(".pid");
    const QString hostData = HostPath(dataFile_);
    const QString hostPid = HostPath(pidFile_);
    if (hostData.isEmpty()) {
        problem = QStringLiteral("the host's recorder is reached only under Wine");
        return false;
    }
    if (!QProcess::startDetached(
            HostProgram(QStringLiteral("sh")),
            {QStringLiteral("-c"),
             QStringLiteral("echo $$ > \"$1.part\"; mv \"$1.part\" \"$1\"; exec parec "
                            "--device=tavik_null.monitor --raw --format=s16le --rate=44100 "
                            "--channels=2 --latency-msec=5 > \"$2\""),
             QStringLiteral("sh"), hostPid, hostData})) {
        problem = QStringLiteral("the host's shell does not start");
        return false;
    }
    QElapsedTimer t;
    t.start();
    while (QFileInfo(dataFile_).size() == 0 && t.elapsed() < 5000)
        QThread::msleep(5);
    if (QFileInfo(dataFile_).size() == 0) {
        problem = QStringLiteral("parec records nothing from tavik_null.monitor");
        stop();
        return false;
    }
    return true;
}

void MonitorRecording::stop() {
    // A little more, so the end of the last sound is in.
    QThread::msleep(300);
    QFile pid(pidFile_);
    if (pid.open(QIODevice::ReadOnly))
        RunOnHost(QStringLiteral("kill"), {QString::fromLatin1(pid.readAll().trimmed())});
    pid.close();
    QFile data(dataFile_);
    data_ = data.open(QIODevice::ReadOnly) ? data.readAll() : QByteArray();
    data.close();
    QFile::remove(dataFile_);
    QFile::remove(pidFile_);
    keep(data_);
}

} // namespace tavik::test
