#include "util/placement.h"

#include <algorithm>

namespace tavik {

namespace {

// The start of a span of `length` moved into [areaStart, areaStart + areaLength); a span
// longer than the area starts where the area starts.
int keepSpanInside(int start, int length, int areaStart, int areaLength) {
    const int lastStart = areaStart + areaLength - length;
    return std::max(areaStart, std::min(start, lastStart));
}

} // namespace

QRect KeepInside(const QRect& window, const QRect& area) {
    if (!area.isValid())
        return window;
    return QRect(keepSpanInside(window.left(), window.width(), area.left(), area.width()),
                 keepSpanInside(window.top(), window.height(), area.top(), area.height()),
                 window.width(), window.height());
}

QRect CentredOn(const QSize& size, const QRect& owner, const QRect& area) {
    // Middle against middle, each halved on its own as the window system centres; in 64 bits,
    // so rectangles near the ends of the coordinate range do not overflow.
    const auto centre = [](int start, int length, int inner) {
        return static_cast<int>(static_cast<long long>(start) + length / 2 - inner / 2);
    };
    const QRect centred(centre(owner.left(), owner.width(), size.width()),
                        centre(owner.top(), owner.height(), size.height()), size.width(),
                        size.height());
    return KeepInside(centred, area);
}

} // namespace tavik
