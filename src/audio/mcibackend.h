#pragma once

#include <QString>

namespace tavik {

// The one seam through which every MCI command string goes: winmm on Windows, the emulator
// elsewhere, a recorder in tests.
class MciBackend {
public:
    struct Result {
        int code = 0;
        QString text; // the reply, at most replyLength - 1 characters
    };

    virtual ~MciBackend() = default;
    // `replyLength` 0 means no reply buffer.
    virtual Result sendString(const QString& command, int replyLength, qintptr callbackWindow) = 0;
    virtual QString errorString(int code) = 0;
};

} // namespace tavik
