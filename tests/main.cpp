#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

// A Qt warning during a test is a failure: it means something was used wrongly.
void failOnQtWarning(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg)
        ADD_FAILURE() << "Qt warning: " << message.toStdString();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication app(argc, argv);
    qInstallMessageHandler(failOnQtWarning);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
