#pragma once

#include "audio/mcibackend.h"

#include <memory>

namespace tavik {

// The MCI of this system: winmm on Windows, the emulator everywhere else.
std::unique_ptr<MciBackend> createSystemMciBackend();

} // namespace tavik
