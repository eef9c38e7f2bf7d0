#include "support/qtwarnings.h"

#include <QString>
#include <QtGlobal>
#include <gtest/gtest.h>

namespace tavik::test {

namespace {

void handler(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg)
        ADD_FAILURE() << "Qt warning: " << message.toStdString();
}

} // namespace

void failOnQtWarnings() {
    qInstallMessageHandler(handler);
}

} // namespace tavik::test
