#include "app/loadinputguard.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QWidget>

namespace tavik {

namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

LoadInputGuard::LoadInputGuard(QWidget* window, QWidget* exitButton, QAction* quit)
    : window_(window), exitButton_(exitButton), quit_(quit) {
    qApp->installEventFilter(this);
}

LoadInputGuard::~LoadInputGuard() {
    qApp->removeEventFilter(this);
}

bool LoadInputGuard::eventFilter(QObject* watched, QEvent* event) {
    if (!isInput(event->type()) || !watched->isWidgetType())
        return false;
    if (static_cast<QWidget*>(watched)->window() != window_)
        return false;
    const bool key = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (key && quit_ &&
        quit_->shortcuts().contains(QKeySequence(static_cast<QKeyEvent*>(event)->keyCombination())))
        return false;
    // The Exit button takes its click and its keys; a shortcut pressed on it is the window's.
    if (watched == exitButton_ && event->type() != QEvent::ShortcutOverride)
        return false;
    // Taken by the focused control, a key starts none of the window's shortcuts; then it is
    // dropped as well.
    if (event->type() == QEvent::ShortcutOverride)
        event->accept();
    return true;
}

} // namespace tavik
