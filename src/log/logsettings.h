#pragma once

#include "util/wholeread.h"

#include <QString>
#include <functional>

namespace tavik {

// The event log's two settings, kept in the program's settings file (program folder &
// "\Tavik.ini", section "Log"): "ToFile" (-1 on, 0 off) and "File", the full path of the log
// file, by default program folder & "\res\log\Tavik.log".
struct LogSettings {
    bool toFile = false;
    QString file;
};

QString SettingsFilePath(const QString& programFolder);
QString DefaultLogFilePath(const QString& programFolder);

// Read fresh from the settings file on every call. The log file path is only looked up when
// logging to file is on.
LogSettings ReadLogSettings(const QString& programFolder);
void WriteLogToFile(const QString& programFolder, bool on);

// The log settings of one program folder for a writer of many lines: each call answers what
// ReadLogSettings would answer at that moment, but the settings file is read again only when
// it may have changed since it was last read. That is when its stamp (whether it exists, its
// size, its modification and change times to the nanosecond, its identity) differs from the
// one it had then, or when it had changed less than kSettleNs before that read began: a file
// system with coarse times could then show a later change with the same times.
class LogSettingsReader {
public:
    // Nanoseconds since the epoch, as file times count.
    using Clock = std::function<qint64()>;
    static constexpr qint64 kSettleNs = 2'000'000'000; // FAT keeps times to two seconds

    explicit LogSettingsReader(QString programFolder, Clock now = {});

    const LogSettings& current();
    // How often the settings file was read so far.
    int reads() const { return reads_; }

private:
    QString programFolder_;
    QString settingsFile_;
    Clock now_;
    LogSettings settings_;
    FileStamp stamp_;
    bool trusted_ = false;
    int reads_ = 0;
};

// Appends `line` to `path` as one quoted record, `"` line `"` CR LF in code page 1252, opening
// and closing the file for this one record. Raises 76 when the folder is missing, 75 when the
// file cannot be opened or is a link, 61 when the disk is full; a failed record leaves the
// file as it was.
void AppendLogRecord(const QString& path, const QString& line);

} // namespace tavik
