#pragma once

#include "audio/soundfile.h"
#include "audio/soundoutput.h"

#include <QHash>
#include <QString>
#include <functional>

namespace tavik {

// Stands in for the system's media control interface where there is none: it understands the
// command strings the program sends, keeps a table of open aliases and answers with MCI's own
// error codes and reply texts.
class MciEmulator {
public:
    struct Reply {
        int code = 0;
        QString text;
    };
    // Milliseconds from any fixed start; the play positions are measured with it.
    using Clock = std::function<qint64()>;

    using LogSink = std::function<void(const QString&)>;

    // Without an output the emulator takes the system's at the first open, so the output runs
    // before the first play.
    explicit MciEmulator(Clock clock = {}, std::shared_ptr<SoundOutput> output = {});

    Reply send(const QString& command);
    // An open whose file is named by `path`; `inCommand` is what the command text holds in its
    // place, so folder names with blanks, " type " or " alias " in them are not misread.
    Reply sendOpen(const QString& command, const QString& path, const QString& inCommand);

    // Where a sound device that cannot be opened is reported.
    void setDeviceLog(LogSink log) { deviceLog_ = std::move(log); }
    // Returns once what was started has been heard to its stop or end.
    void drain();

    // The output's interruptions so far (SoundOutput::interruptions); 0 before the first open.
    int outputInterruptions() const { return output_ ? output_->interruptions() : 0; }

    bool isOpen(const QString& alias) const;
    bool isPlaying(const QString& alias) const;
    // The device's position in milliseconds; -1 when `alias` is not open.
    qint64 position(const QString& alias) const;

    // The device type MCI picks for a file by its extension; "" when it has none.
    static QString deviceTypeForExtension(const QString& extension);

private:
    // What an open alias needs for its plays: a package holds thousands, so nothing more.
    struct Device {
        SoundInfo info;
        int id = 0;
        bool playing = false;
        qint64 position = 0;  // milliseconds, when the device last changed state
        qint64 startedAt = 0; // clock reading when play began
        std::shared_ptr<const PreparedSound> sound; // made ready at open
    };

    Reply open(const QString& path, const QString& type, const QString& alias);
    Reply status(Device& device, const QStringList& words);
    qint64 positionOf(const Device& device) const;
    void settle(Device& device);
    void play(Device& device);
    SoundOutput& output();

    Clock clock_;
    std::shared_ptr<SoundOutput> output_;
    LogSink deviceLog_;
    QHash<QString, Device> devices_; // by lower-case alias
    int nextId_ = 1;
};

} // namespace tavik
