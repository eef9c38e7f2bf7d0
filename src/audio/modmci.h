#pragma once

#include "audio/mcibackend.h"

#include <QString>
#include <cstdint>
#include <functional>

namespace tavik {

// The program's only way of making sound: MCI command strings, each sound addressed by an
// alias the caller chooses. The layer keeps no table of open devices.
class modMCI {
public:
    using LogSink = std::function<void(const QString&)>;
    using ActiveWindow = std::function<qintptr()>;

    modMCI(MciBackend& backend, LogSink writeLog, ActiveWindow activeWindow = {});

    // Open commands name the device type only when this is set.
    bool UseFormat = false;
    // An open lets pending events through; a caller that opens many sounds in a row turns that
    // off and lets them through at its own pace.
    bool YieldOnOpen = true;
    // The window last active when play, stop, close or seek was sent.
    qintptr mciCallbackWindow = 0;

    // -1 on success, else MCI's error code (also written to the event log). `path` is
    // replaced by its short form.
    std::int16_t MciOpen(QString& path, const QString& alias, const QString& deviceType);
    // These never report: stopping or closing an alias that is not open is harmless.
    void MciPlay(const QString& alias);
    void MciStop(const QString& alias);
    void MciClose(const QString& alias);
    void MciSeekToStart(const QString& alias);
    // The length in milliseconds; 0 on any problem.
    std::int32_t MciGetLength(const QString& alias);
    // Where the sound of `alias` stands while it plays (ms), or -1: the back-end's own
    // position, asked without sending a command.
    qint64 PlayPosition(const QString& alias) { return backend_.playPosition(alias); }

private:
    MciBackend::Result send(const QString& command, int replyLength, qintptr callbackWindow);
    void sendFromActiveWindow(const QString& command);

    MciBackend& backend_;
    LogSink writeLog_;
    ActiveWindow activeWindow_;
};

// The MCI device type for a format key (a file extension) from the program folder's
// Formats.ini; "" when the format is not listed.
QString IndentifyFormat(const QString& key);

// Waits while the user interface stays live: the wait ends at the first tick reading later
// than now + ms, after at least one pass over pending events per turn. Raises the overflow
// error when the end does not fit 32 bits. Sleeps between turns instead of spinning and wakes
// at the tick it waits for. False when EndRunningWaits ended it before its time.
bool WaitMilliseconds(std::int32_t ms);

// Ends every wait now running at once, however deeply nested: the editor is closing, and
// nothing may hold it (a sentence stops after the entry that plays). Later waits run normally.
void EndRunningWaits();

// Whole ticks WaitMilliseconds(ms) holds its caller when nothing is late: a count of 0 or more
// runs to the tick after its end, one tick longer; a negative count ends at once.
qint64 TicksWaited(std::int32_t ms);

} // namespace tavik
