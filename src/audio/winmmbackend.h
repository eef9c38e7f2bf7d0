#pragma once

#include "audio/mcibackend.h"

namespace tavik {

// The real command-string interface of Windows (winmm), with ANSI texts as the program always
// sent them.
class WinmmBackend : public MciBackend {
public:
    Result sendString(const QString& command, int replyLength, qintptr callbackWindow) override;
    QString errorString(int code) override;
};

} // namespace tavik
