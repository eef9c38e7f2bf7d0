#include "wincolor.h"

namespace tavik {

QColor WinColorToQColor(quint32 color) {
    if (color & 0x80000000u)
        return {};
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                  static_cast<int>((color >> 16) & 0xFF));
}

quint32 QColorToWinColor(const QColor& color) {
    return static_cast<quint32>(color.red()) | (static_cast<quint32>(color.green()) << 8) |
           (static_cast<quint32>(color.blue()) << 16);
}

} // namespace tavik
