// The reference for start-up times: a bare Qt program that shows one main window with an empty
// list and does nothing else. It stays until it is closed, so a watcher outside can see when its
// window appears (bench/windows_startup.sh times it against the editor under Wine).
#include <QApplication>
#include <QMainWindow>
#include <QTreeWidget>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Bare window"));
    window.setCentralWidget(new QTreeWidget);
    window.resize(640, 480);
    window.show();
    return app.exec();
}
