#pragma once

#include "app/tavikapplication.h"

#include <QStringList>

namespace tavik::test {

// Catches the runtime errors the application shows while a test runs.
class ErrorCatcher {
public:
    ErrorCatcher() {
        app()->setErrorReporter([this](const QString& text) { shown << text; });
    }
    ~ErrorCatcher() { app()->setErrorReporter({}); }
    QStringList shown;

private:
    static TavikApplication* app() { return static_cast<TavikApplication*>(qApp); }
};

} // namespace tavik::test
