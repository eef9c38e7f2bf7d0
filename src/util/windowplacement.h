#pragma once

#include <QRect>

class QWidget;

namespace tavik {

// The frame rectangle of `window` on screen. A window not yet shown counts with the place
// and size it will open with, and with the frame the window manager gives the program's
// other windows.
QRect ExpectedFrame(const QWidget* window);

// Moves `window` so that it opens centred on `owner` and wholly inside the available area of
// the owner's screen; without a visible owner it is centred on that screen. A window that was
// never sized gets its designed size first. Returns the frame rectangle it will have.
QRect PlaceOnOwner(QWidget* window, const QWidget* owner);

// Moves `window` to the centre of the available area of the screen `reference` is on (the
// primary screen without one). Returns the frame rectangle it will have.
QRect PlaceOnScreen(QWidget* window, const QWidget* reference);

} // namespace tavik
