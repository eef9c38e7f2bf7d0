#pragma once

#include "audio/mcibackend.h"

#include <memory>

namespace tavik {

// The MCI of this system: winmm on Windows, the emulator everywhere else. Without `sound` the
// emulator only opens and measures (no output device is started for a tool that plays nothing).
std::unique_ptr<MciBackend> createSystemMciBackend(bool sound = true);

} // namespace tavik
