#pragma once

#include "audio/soundcheck.h"

#include <cstdint>

namespace tavik {

// The numbered language text ("%1" the file) that tells why a file is not imported.
std::int32_t ImportRefusalText(SoundProblem problem);

} // namespace tavik
