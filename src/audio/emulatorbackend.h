#pragma once

#include "audio/mcibackend.h"
#include "audio/mciemulator.h"

namespace tavik {

// MCI where the system has none: the command strings go to the emulator.
class EmulatorBackend : public MciBackend {
public:
    explicit EmulatorBackend(MciEmulator::Clock clock = {}) : emulator_(std::move(clock)) {}

    Result sendString(const QString& command, int replyLength, qintptr callbackWindow) override;
    QString errorString(int code) override;

    MciEmulator& emulator() { return emulator_; }

private:
    MciEmulator emulator_;
};

} // namespace tavik
