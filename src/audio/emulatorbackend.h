#pragma once

#include "audio/mcibackend.h"
#include "audio/mciemulator.h"

namespace tavik {

// MCI where the system has none: the command strings go to the emulator.
class EmulatorBackend : public MciBackend {
public:
    explicit EmulatorBackend(MciEmulator::Clock clock = {}) : emulator_(std::move(clock)) {}

    EmulatorBackend(MciEmulator::Clock clock, std::shared_ptr<SoundOutput> output)
        : emulator_(std::move(clock), std::move(output)) {}

    Result sendString(const QString& command, int replyLength, qintptr callbackWindow) override;
    Result sendOpen(const QString& command, const OpenElement& element,
                    qintptr callbackWindow) override;
    QString errorString(int code) override;
    void setDeviceLog(LogSink log) override { emulator_.setDeviceLog(std::move(log)); }
    void drain() override { emulator_.drain(); }
    qint64 playPosition(const QString& alias) override { return emulator_.position(alias); }

    MciEmulator& emulator() { return emulator_; }

private:
    MciEmulator emulator_;
};

} // namespace tavik
