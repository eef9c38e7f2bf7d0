#pragma once

#include "log/logsettings.h"

#include <QString>
#include <memory>

namespace tavik {

class frmDebug;
class Language;

// The program's event log: every line goes to the debug viewer and, when logging to file is
// switched on in the settings file, to the log file. Owns the viewer, which it creates hidden
// on first use and keeps until it is destroyed itself at the end of the program.
class EventLog {
public:
    // The viewer labels itself from `language` (the program's one, which outlives the log).
    explicit EventLog(QString programFolder, const Language* language = nullptr);
    ~EventLog();
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    // Adds `line` (without line end) to the viewer and, if switched on, to the log file. A
    // log file that cannot be written raises the runtime error to the caller.
    void WriteLog(const QString& line);

    // Each line lets pending events through; a caller that writes many lines in a row (a
    // load, whose sounds may each fail to open) turns that off and lets them through at its
    // own pace.
    bool YieldOnWrite = true;

    frmDebug* viewer();
    // Whether the viewer exists yet; viewer() would create it.
    bool viewerCreated() const { return viewer_ != nullptr; }

private:
    QString programFolder_;
    const Language* language_;
    // Read fresh for every line as far as anyone can tell: again whenever the file changed.
    LogSettingsReader settings_;
    std::unique_ptr<frmDebug> viewer_;
};

} // namespace tavik
