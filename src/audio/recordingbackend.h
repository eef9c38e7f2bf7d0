#pragma once

#include "audio/mcibackend.h"

#include <QList>
#include <functional>

namespace tavik {

// Passes every command on to another back-end and keeps it with the time it was sent, so a
// test can read the whole stream of commands.
class RecordingBackend : public MciBackend {
public:
    struct Entry {
        qint64 time = 0;     // milliseconds of the clock
        qint64 returned = 0; // when the back-end gave the command back
        QString command;
        int code = 0;
        qintptr callbackWindow = 0;
    };
    using Clock = std::function<qint64()>;

    RecordingBackend(MciBackend& inner, Clock clock);

    Result sendString(const QString& command, int replyLength, qintptr callbackWindow) override;
    Result sendOpen(const QString& command, const OpenElement& element,
                    qintptr callbackWindow) override;
    QString errorString(int code) override { return inner_.errorString(code); }
    void setDeviceLog(LogSink log) override { inner_.setDeviceLog(std::move(log)); }
    void drain() override { inner_.drain(); }
    qint64 playPosition(const QString& alias) override { return inner_.playPosition(alias); }

    const QList<Entry>& entries() const { return entries_; }
    QStringList commands() const;
    void clear() { entries_.clear(); }

private:
    MciBackend& inner_;
    Clock clock_;
    QList<Entry> entries_;
};

} // namespace tavik
