#pragma once

#include <QtGlobal>

namespace tavik {

// The handle of the window the user works in, as MCI commands carry it: the system's own
// window handle on Windows, elsewhere any value that tells the windows apart (the emulator
// only keeps it).
qintptr ActiveWindowHandle();

} // namespace tavik
