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
    // Shows `error` the way an unhandled one is shown.
    void reportRuntimeError(const RuntimeError& error);

private:
    std::function<void(const QString&)> reporter_;
};

} // namespace tavik
