#pragma once

#include <QRect>
#include <QSize>

namespace tavik {

// Where a window goes on screen. Every rectangle is a frame rectangle (title bar and border
// included) in screen coordinates.

// `window` moved as little as needed to lie wholly inside `area`. A window larger than the
// area keeps its top-left corner on the area's, so its title bar stays reachable.
QRect KeepInside(const QRect& window, const QRect& area);

// A window of `size` centred on `owner`, then kept inside `area`.
QRect CentredOn(const QSize& size, const QRect& owner, const QRect& area);

} // namespace tavik
