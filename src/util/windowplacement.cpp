#include "util/windowplacement.h"

#include "util/placement.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace tavik {

namespace {

bool hasFrame(const QWidget* window) {
    const Qt::WindowType type = window->windowType();
    return !window->windowFlags().testFlag(Qt::FramelessWindowHint) && type != Qt::SplashScreen &&
           type != Qt::Popup && type != Qt::ToolTip;
}

QMargins marginsOf(const QWidget* shown) {
    const QRect frame = shown->frameGeometry(), client = shown->geometry();
    return QMargins(client.left() - frame.left(), client.top() - frame.top(),
                    frame.right() - client.right(), frame.bottom() - client.bottom());
}

// The frame a window not yet shown will get: the window manager frames the program's windows
// alike, so a shown one tells, its owner first.
QMargins expectedMargins(const QWidget* window) {
    if (!hasFrame(window))
        return {};
    if (const QWidget* parent = window->parentWidget()) {
        const QWidget* owner = parent->window();
        if (owner->isVisible() && hasFrame(owner))
            return marginsOf(owner);
    }
    for (const QWidget* other : QApplication::topLevelWidgets()) {
        if (other != window && other->isVisible() && hasFrame(other) &&
            other->frameGeometry() != other->geometry())
            return marginsOf(other);
    }
    return {};
}

const QScreen* screenOf(const QWidget* reference) {
    const QScreen* screen = reference ? reference->screen() : nullptr;
    return screen ? screen : QGuiApplication::primaryScreen();
}

QRect moveTo(QWidget* window, const QRect& frame) {
    window->move(frame.topLeft());
    return frame;
}

QSize expectedFrameSize(QWidget* window) {
    // What showing the window would do to a window nobody sized.
    if (!window->isVisible() && !window->testAttribute(Qt::WA_Resized))
        window->adjustSize();
    return ExpectedFrame(window).size();
}

} // namespace

QRect ExpectedFrame(const QWidget* window) {
    if (!window)
        return {};
    if (window->isVisible())
        return window->frameGeometry();
    // Its position is already the frame's; the frame adds to the size.
    const QMargins margins = expectedMargins(window);
    return QRect(window->pos(), window->size().grownBy(margins));
}

QRect PlaceOnOwner(QWidget* window, const QWidget* owner) {
    const QWidget* ownerWindow = owner ? owner->window() : nullptr;
    if (!ownerWindow || !ownerWindow->isVisible())
        return PlaceOnScreen(window, ownerWindow);
    const QScreen* screen = screenOf(ownerWindow);
    const QSize size = expectedFrameSize(window);
    if (!screen)
        return ExpectedFrame(window);
    return moveTo(window,
                  CentredOn(size, ownerWindow->frameGeometry(), screen->availableGeometry()));
}

QRect PlaceOnScreen(QWidget* window, const QWidget* reference) {
    const QScreen* screen = screenOf(reference);
    const QSize size = expectedFrameSize(window);
    if (!screen)
        return ExpectedFrame(window);
    const QRect area = screen->availableGeometry();
    return moveTo(window, CentredOn(size, area, area));
}

} // namespace tavik
