#include "logsettings.h"

#include "settings/modini.h"
#include "settings/profilefile.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/cp1252.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <algorithm>
#include <chrono>

namespace tavik {

namespace {

const QString kSection = QStringLiteral("Log");
const QString kToFile = QStringLiteral("ToFile");
const QString kFile = QStringLiteral("File");

// A switch as a user may type it: a number (non-zero is on) or "True"/"False".
bool isOn(const QString& text) {
    const QString t = text.trimmed();
    if (t.compare(QStringLiteral("True"), Qt::CaseInsensitive) == 0)
        return true;
    return Val(t) != 0;
}

} // namespace

QString SettingsFilePath(const QString& programFolder) {
    return NativePath(programFolder + QStringLiteral("\\Tavik.ini"));
}

QString DefaultLogFilePath(const QString& programFolder) {
    return NativePath(programFolder + QStringLiteral("\\res\\log\\Tavik.log"));
}

LogSettings ReadLogSettings(const QString& programFolder) {
    const QString ini = SettingsFilePath(programFolder);
    LogSettings s;
    s.toFile = isOn(CStr(ReadINI(ini, kSection, kToFile, Variant::fromInteger(0))));
    if (s.toFile) {
        const QString file = CStr(ReadINI(ini, kSection, kFile, Variant::fromString({})));
        s.file = file.trimmed().isEmpty() ? DefaultLogFilePath(programFolder) : NativePath(file);
    }
    return s;
}

void WriteLogToFile(const QString& programFolder, bool on) {
    WriteINI(SettingsFilePath(programFolder), kSection, kToFile, QString::number(toVbBool(on)));
}

LogSettingsReader::LogSettingsReader(QString programFolder, Clock now)
    : programFolder_(std::move(programFolder)),
      settingsFile_(profile::profilePath(SettingsFilePath(programFolder_))), now_(std::move(now)) {
    if (!now_) {
        now_ = [] {
            return static_cast<qint64>(std::chrono::duration_cast<std::chrono::nanoseconds>(
                                           std::chrono::system_clock::now().time_since_epoch())
                                           .count());
        };
    }
}

const LogSettings& LogSettingsReader::current() {
    // The stamp is taken before the read: a change during the read leaves a stamp that differs
    // from the next one, so the next call reads again.
    const FileStamp stamp = StampOf(settingsFile_);
    if (trusted_ && stamp == stamp_)
        return settings_;
    const qint64 readBegins = now_();
    settings_ = ReadLogSettings(programFolder_);
    ++reads_;
    stamp_ = stamp;
    const qint64 lastChange = std::max(stamp.modifiedNs, stamp.changedNs);
    trusted_ = !stamp.exists || readBegins - lastChange >= kSettleNs;
    return settings_;
}

void AppendLogRecord(const QString& path, const QString& line) {
    // An append adds bytes after the old ones and never rewrites them, so the log keeps
    // everything written before a failure without going through a temporary file.
    AppendToFile(path, toCp1252(QStringLiteral("\"") + line + QStringLiteral("\"\r\n")));
}

} // namespace tavik
