#include "app/tavikapplication.h"

#include <QLabel>
#include <QMainWindow>

// The editor's start object. Until the main window is built, it opens a window that says so.
int main(int argc, char** argv) {
    tavik::TavikApplication app(argc, argv);
    QMainWindow window;
    window.setObjectName(QStringLiteral("frmMain"));
    window.setWindowTitle(QStringLiteral("Tavik Editor"));
    auto* label = new QLabel(
        QStringLiteral("Tavik Editor\n\nThe package editor's main window is not built yet.\n"
                       "Use the headless tool \"tavik\" to read and change package index files."),
        &window);
    label->setAlignment(Qt::AlignCenter);
    label->setMargin(24);
    window.setCentralWidget(label);
    window.resize(520, 240);
    window.show();
    return app.exec();
}
