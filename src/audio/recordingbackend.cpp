#include "recordingbackend.h"

#include <QStringList>

namespace tavik {

RecordingBackend::RecordingBackend(MciBackend& inner, Clock clock)
    : inner_(inner), clock_(std::move(clock)) {}

MciBackend::Result RecordingBackend::sendString(const QString& command, int replyLength,
                                                qintptr callbackWindow) {
    const qint64 at = clock_();
    Result result = inner_.sendString(command, replyLength, callbackWindow);
    entries_.append({at, clock_(), command, result.code, callbackWindow});
    return result;
}

MciBackend::Result RecordingBackend::sendOpen(const QString& command, const OpenElement& element,
                                              qintptr callbackWindow) {
    const qint64 at = clock_();
    Result result = inner_.sendOpen(command, element, callbackWindow);
    entries_.append({at, clock_(), command, result.code, callbackWindow});
    return result;
}

QStringList RecordingBackend::commands() const {
    QStringList list;
    for (const Entry& e : entries_)
        list << e.command;
    return list;
}

} // namespace tavik
