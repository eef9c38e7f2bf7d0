#include "eventlog.h"

#include "frmdebug.h"
#include "logsettings.h"
#include "richtextbox.h"

#include <QCoreApplication>

namespace tavik {

EventLog::EventLog(QString programFolder, const Language* language)
    : programFolder_(std::move(programFolder)), language_(language), settings_(programFolder_) {}

EventLog::~EventLog() = default;

frmDebug* EventLog::viewer() {
    if (!viewer_)
        viewer_ = std::make_unique<frmDebug>(programFolder_, language_);
    return viewer_.get();
}

void EventLog::WriteLog(const QString& line) {
    RichTextBox* box = viewer()->txtDebug();
    const qsizetype oldEnd = box->textLength();
    box->setSelStart(oldEnd);
    // Inserting at the end gives the same text as setting old text, line and CR LF, without
    // copying the whole log for every line.
    box->setSelText(line + QStringLiteral("\r\n"));
    const qsizetype newEnd = box->textLength();
    box->setSelStart(oldEnd);
    box->setSelLength(newEnd - oldEnd);
    box->setSelStart(newEnd);

    if (YieldOnWrite)
        QCoreApplication::processEvents();

    const LogSettings& settings = settings_.current();
    if (settings.toFile)
        AppendLogRecord(settings.file, line);
}

} // namespace tavik
