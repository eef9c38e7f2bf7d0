#include "modmci.h"

#include "settings/modini.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/cp1252.h"
#include "util/runtimeerror.h"
#include "util/tickcount.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <thread>

namespace tavik {

namespace {

// GetShortPathNameA is handed a 255-character buffer: a longer short form does not fit.
constexpr qsizetype kShortPathBuffer = 255;
constexpr int kCommandReplyBuffer = 128;
constexpr int kLengthReplyBuffer = 15;

QString shortPathForOpen(const QString& path) {
    QString result = ShortPath(path);
#ifdef Q_OS_WIN
    if (result.size() >= kShortPathBuffer)
        return {};
#else
    // There is no short-name buffer here: the path is its own short form at any length.
    Q_UNUSED(kShortPathBuffer);
#endif
    const qsizetype nul = result.indexOf(QChar(0));
    return nul < 0 ? result : result.left(nul);
}

} // namespace

modMCI::modMCI(MciBackend& backend, LogSink writeLog, ActiveWindow activeWindow)
    : backend_(backend), writeLog_(std::move(writeLog)), activeWindow_(std::move(activeWindow)) {
    backend_.setDeviceLog(writeLog_);
}

MciBackend::Result modMCI::send(const QString& command, int replyLength, qintptr callbackWindow) {
    // Commands cross the interface as ANSI text: what the code page cannot hold becomes "?".
    return backend_.sendString(fromCp1252(toCp1252(command)), replyLength, callbackWindow);
}

void modMCI::sendFromActiveWindow(const QString& command) {
    mciCallbackWindow = activeWindow_ ? activeWindow_() : 0;
    send(command, kCommandReplyBuffer, mciCallbackWindow);
}

std::int16_t modMCI::MciOpen(QString& path, const QString& alias, const QString& deviceType) {
    const QString fullPath = path;
    path = shortPathForOpen(path);
    const QString command =
        UseFormat ? QStringLiteral("open ") + path + QStringLiteral(" type ") + deviceType +
                        QStringLiteral(" alias ") + alias
                  : QStringLiteral("open ") + path + QStringLiteral(" alias ") + alias;
    const QString ansiCommand = fromCp1252(toCp1252(command));
    const QString ansiPath = fromCp1252(toCp1252(path));
    const auto code = static_cast<std::int16_t>(
        backend_.sendOpen(ansiCommand, {fullPath, ansiPath}, mciCallbackWindow).code);
    if (YieldOnOpen)
        QCoreApplication::processEvents();
    send(QStringLiteral("set ") + alias + QStringLiteral(" time format milliseconds"), 0, 0);
    if (code == 0)
        return -1;
    backend_.errorString(code); // fetched as the layer always did; the text is not shown
    if (writeLog_)
        writeLog_(QStringLiteral("!MCI ERROR '%1' 'Unable to load file!'").arg(code));
    return code;
}

void modMCI::MciPlay(const QString& alias) {
    sendFromActiveWindow(QStringLiteral("play ") + alias);
}

void modMCI::MciStop(const QString& alias) {
    sendFromActiveWindow(QStringLiteral("stop ") + alias);
}

void modMCI::MciClose(const QString& alias) {
    sendFromActiveWindow(QStringLiteral("close ") + alias);
}

void modMCI::MciSeekToStart(const QString& alias) {
    sendFromActiveWindow(QStringLiteral("seek ") + alias + QStringLiteral(" to start"));
}

std::int32_t modMCI::MciGetLength(const QString& alias) {
    send(QStringLiteral("set ") + alias + QStringLiteral(" time format milliseconds"), 0,
         mciCallbackWindow);
    const MciBackend::Result reply =
        send(QStringLiteral("status ") + alias + QStringLiteral(" length"), kLengthReplyBuffer,
             mciCallbackWindow);
    try {
        return CLng(Val(reply.text));
    } catch (const RuntimeError&) {
        return 0; // errors here are ignored, and the result stays 0
    }
}

QString IndentifyFormat(const QString& key) {
    return ReadINI(NativePath(AppPath() + QStringLiteral("\\Formats.ini")), key,
                   QStringLiteral("Format"), Variant::fromString(QString()))
        .stringValue();
}

void WaitMilliseconds(std::int32_t ms) {
    const std::int32_t end = addLong(GetTickCount(), ms);
    for (;;) {
        QCoreApplication::processEvents();
        const std::int32_t now = GetTickCount();
        if (!(end >= now))
            return;
        // Sleep until the tick passes the end, waking for every event meanwhile.
        const int remaining = static_cast<int>(static_cast<qint64>(end) - now + 1);
        if (QCoreApplication::instance()) {
            QEventLoop loop;
            QTimer timer;
            timer.setTimerType(Qt::PreciseTimer);
            timer.setSingleShot(true);
            QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
            timer.start(remaining);
            loop.exec();
        } else {
            std::this_thread::sleep_for(std::chrono::milliseconds(remaining));
        }
    }
}

} // namespace tavik
