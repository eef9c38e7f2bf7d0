#pragma once

#include <QString>

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

// Appends `line` to `path` as one quoted record, `"` line `"` CR LF in code page 1252, opening
// and closing the file for this one record. Raises 76 when the folder is missing, 75 when the
// file cannot be opened or is a link, 61 when the disk is full; a failed record leaves the
// file as it was.
void AppendLogRecord(const QString& path, const QString& line);

} // namespace tavik
