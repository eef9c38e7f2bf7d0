#include "app/activewindow.h"

#include <QApplication>
#include <QWidget>

namespace tavik {

qintptr ActiveWindowHandle() {
    // No native window is made for it: the emulator only keeps the value.
    return reinterpret_cast<qintptr>(QApplication::activeWindow());
}

} // namespace tavik
