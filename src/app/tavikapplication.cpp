#include "tavikapplication.h"

#include "util/runtimeerror.h"

#include <QMessageBox>

namespace tavik {

TavikApplication::TavikApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(QStringLiteral("Tavik Editor"));
    reporter_ = [](const QString& text) {
        QMessageBox::critical(QApplication::activeWindow(), QApplication::applicationName(), text);
    };
}

bool TavikApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const RuntimeError& error) {
        reportRuntimeError(error);
    }
    // The error was dealt with here; the event counts as handled.
    event->accept();
    return true;
}

void TavikApplication::setErrorReporter(std::function<void(const QString&)> reporter) {
    reporter_ = std::move(reporter);
}

void TavikApplication::setErrorText(std::function<QString(const RuntimeError&)> text) {
    errorText_ = std::move(text);
}

void TavikApplication::reportRuntimeError(const RuntimeError& error) {
    if (reporter_)
        reporter_(errorText_ ? errorText_(error) : error.message());
}

void RunHandler(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const RuntimeError& error) {
        ReportRuntimeError(error);
    }
}

void ReportRuntimeError(const RuntimeError& error) {
    if (auto* app = dynamic_cast<TavikApplication*>(QCoreApplication::instance()))
        app->reportRuntimeError(error);
}

} // namespace tavik
