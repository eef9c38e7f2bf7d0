#pragma once

#include <QRect>
#include <QWidget>
#include <functional>

namespace tavik {

// Waits `ms` milliseconds while the user interface goes on processing events.
void Delay(int ms);

// The rectangles the zoom trail draws, one per step: the start rectangle moved towards the
// end by an equal share of each edge's distance per step, without the end rectangle itself.
QList<QRect> ZoomTrail(const QRect& from, const QRect& to, int steps);

// A window's or widget's rectangle on screen; a window not yet shown counts with the place,
// size and frame it will open with, so a trail towards it ends where it appears.
QRect ScreenRect(const QWidget* widget);

// The zoom effect: a click-through overlay above everything on which a trail of frames grows
// from `from` to `to`, one frame per step with a short pause, and which then disappears.
void RunZoomEffect(const QRect& from, const QRect& to, int steps);

// Called with the start and end rectangle of every zoom effect that runs; returns the
// previous observer. Lets a test see where a trail ends.
using ZoomObserver = std::function<void(const QRect& from, const QRect& to)>;
ZoomObserver SetZoomObserver(ZoomObserver observer);

} // namespace tavik
