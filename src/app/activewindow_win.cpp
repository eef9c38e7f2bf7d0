#include "app/activewindow.h"

#include <windows.h>

namespace tavik {

qintptr ActiveWindowHandle() {
    return reinterpret_cast<qintptr>(::GetActiveWindow());
}

} // namespace tavik
