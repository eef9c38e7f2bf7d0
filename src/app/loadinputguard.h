#pragma once

#include <QObject>

class QAction;
class QWidget;

namespace tavik {

// While a load, an unload or a save goes through the list, letting events through so the
// program stays responsive, the window the list belongs to takes no clicks, keys, menus or
// drops: a command given to a half-filled list would act on it, and a Save would write it.
// Closing the window still works (its close button, the Exit button, the Quit keys), and so
// does every other window, message boxes included.
class LoadInputGuard : public QObject {
public:
    LoadInputGuard(QWidget* window, QWidget* exitButton, QAction* quit);
    ~LoadInputGuard() override;

    LoadInputGuard(const LoadInputGuard&) = delete;
    LoadInputGuard& operator=(const LoadInputGuard&) = delete;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* window_;
    QWidget* exitButton_;
    QAction* quit_;
};

} // namespace tavik
