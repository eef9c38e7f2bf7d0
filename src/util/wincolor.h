#pragma once

#include <QColor>

namespace tavik {

// The colour a Windows colour value (0x00BBGGRR: red in the low byte) stands for. Values with
// the high bit set name a system colour; they give an invalid QColor, meaning "the widget's
// own colour".
QColor WinColorToQColor(quint32 color);

// The Windows colour value of an RGB colour.
quint32 QColorToWinColor(const QColor& color);

} // namespace tavik
