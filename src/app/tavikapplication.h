#pragma once

#include <QApplication>
#include <functional>

namespace tavik {

class RuntimeError;

// The editor's application object. It is the one place where a runtime error that no
// routine handles ends up: the runtime's message is shown and the program goes on.
class TavikApplication : public QApplication {
public:
    TavikApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;

    // How an unhandled runtime error is shown; a message box unless a test replaces it.
    void setErrorReporter(std::function<void(const QString&)> reporter);
    // The text an error is shown with; the runtime's own message unless the editor sets its
    // language's.
    void setErrorText(std::function<QString(const RuntimeError&)> text);
    // Shows `error` the way an unhandled one is shown.
    void reportRuntimeError(const RuntimeError& error);

private:
    std::function<void(const QString&)> reporter_;
    std::function<QString(const RuntimeError&)> errorText_;
};

// Runs an event handler of a window: a runtime error it raises is shown the way an unhandled
// one is, and the window stays usable. Handlers run from a mouse or key press go through here
// so the error never unwinds through the toolkit's own event code.
void RunHandler(const std::function<void()>& handler);

// Shows a runtime error that was caught outside the event loop (start-up, before the loop
// runs) through the application's one handler, so it looks as any unhandled one does.
void ReportRuntimeError(const RuntimeError& error);

} // namespace tavik
