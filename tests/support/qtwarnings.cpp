#include "support/qtwarnings.h"

#include <QString>
#include <QtGlobal>
#include <gtest/gtest.h>

namespace tavik::test {

namespace {

void handler(QtMsgType type, const QMessageLogContext&, const QString& message) {
    // The offscreen platform cannot size windows to their layouts' hints or stack them and
    // says so; that is the test platform's limit, not a fault of the window.
    if (message == QStringLiteral("This plugin does not support propagateSizeHints()") ||
        message == QStringLiteral("This plugin does not support raise()"))
        return;
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg)
        ADD_FAILURE() << "Qt warning: " << message.toStdString();
}

} // namespace

void failOnQtWarnings() {
    qInstallMessageHandler(handler);
}

} // namespace tavik::test
