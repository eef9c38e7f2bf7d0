#pragma once

#include <QString>
#include <functional>

namespace tavik {

// The one seam through which every MCI command string goes: winmm on Windows, the emulator
// elsewhere, a recorder in tests.
class MciBackend {
public:
    struct Result {
        int code = 0;
        QString text; // the reply, at most replyLength - 1 characters
    };

    // An open command's file as the file system names it. The command text is 8-bit and holds
    // the short form, which a back-end that can open any name does better without.
    struct OpenElement {
        QString path;      // the caller's path
        QString inCommand; // the text the command holds for it
    };
    using LogSink = std::function<void(const QString&)>;

    virtual ~MciBackend() = default;
    // `replyLength` 0 means no reply buffer.
    virtual Result sendString(const QString& command, int replyLength, qintptr callbackWindow) = 0;
    virtual Result sendOpen(const QString& command, const OpenElement& element,
                            qintptr callbackWindow) {
        Q_UNUSED(element);
        return sendString(command, 0, callbackWindow);
    }
    virtual QString errorString(int code) = 0;
    // Where a failing sound device is reported.
    virtual void setDeviceLog(LogSink log) { Q_UNUSED(log); }
    // Returns once what is playing has been heard to its stop or end (at the program's end).
    virtual void drain() {}
    // Where the sound of `alias` stands now, in milliseconds from its start, as its device
    // plays it; -1 when the back-end cannot tell. Asked without a command string, so watching
    // a play changes nothing of what MCI is sent.
    virtual qint64 playPosition(const QString& alias) {
        Q_UNUSED(alias);
        return -1;
    }
};

} // namespace tavik
