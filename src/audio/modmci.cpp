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
#include <algorithm>
#include <thread>
#include <vector>

namespace tavik {

namespace {

// GetShortPathNameA is handed a 255-character buffer: a longer short form does not fit.
constexpr qsizetype kShortPathBuffer = 255;
constexpr int kCommandReplyBuffer = 128;
constexpr int kLengthReplyBuffer = 15;

QString shortPathForOpen(const QString& path) {
    const QString result = ShortPathInBuffer(path, kShortPathBuffer);
    const qsizetype nul = result.indexOf(QChar(0));
    return nul < 0 ? result : result.left(nul);
}

// The event loop's timers are good to a millisecond or two; the last stretch of a wait is slept
// on the clock itself.
constexpr auto kFineSleep = std::chrono::milliseconds(2);

// Each EndRunningWaits ends the waits begun before it; the event loops of the waits now
// sleeping, innermost last.
std::uint64_t waitsEnded = 0;
std::vector<QEventLoop*> sleepingWaits;

// One turn's sleep: with an event loop, window messages are handled until shortly before
// `due`; the last stretch is a plain sleep to the moment.
void sleepTowards(TickClock::time_point due) {
    const auto left = due - TickClock::now();
    if (left <= TickClock::duration::zero())
        return;
    if (QCoreApplication::instance() && left > kFineSleep) {
        const auto coarse = std::chrono::floor<std::chrono::milliseconds>(left - kFineSleep);
        if (coarse.count() > 0) {
            QEventLoop loop;
            QTimer timer;
            timer.setTimerType(Qt::PreciseTimer);
            timer.setSingleShot(true);
            QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
            timer.start(std::chrono::milliseconds(coarse));
            sleepingWaits.push_back(&loop);
            loop.exec();
            sleepingWaits.pop_back();
            return;
        }
    }
    std::this_thread::sleep_until(due);
}

} // namespace

modMCI::modMCI(MciBackend& backend, LogSink writeLog, ActiveWindow activeWindow)
    : backend_(backend), writeLog_(std::move(writeLog)), activeWindow_(std::move(activeWindow)) {
    backend_.setDeviceLog(writeLog_);
}

MciBackend::Result modMCI::send(const QString& command, int replyLength, qintptr callbackWindow) {
    // Commands cross the interface as ANSI text: what the code page cannot hold becomes "?".
    return backend_.sendString(ThroughCp1252(command), replyLength, callbackWindow);
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
    const QString ansiCommand = ThroughCp1252(command);
    const QString ansiPath = ThroughCp1252(path);
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

qint64 TicksWaited(std::int32_t ms) {
    return std::max<qint64>(qint64(ms) + 1, 0);
}

bool WaitMilliseconds(std::int32_t ms) {
    const std::uint64_t begun = waitsEnded;
    const std::int32_t end = addLong(GetTickCount(), ms);
    // The first reading later than `end` is the tick after it; its moment is known.
    const auto due = TickStarts(static_cast<std::int32_t>(static_cast<std::uint32_t>(end) + 1u));
    for (;;) {
        QCoreApplication::processEvents();
        if (waitsEnded != begun)
            return false;
        const std::int32_t now = GetTickCount();
        if (!(end >= now))
            return true;
        sleepTowards(due);
    }
}

void EndRunningWaits() {
    ++waitsEnded;
    for (QEventLoop* loop : sleepingWaits)
        loop->quit();
}

} // namespace tavik
