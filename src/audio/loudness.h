#pragma once

#include "package/soundloudness.h"

#include <QString>
#include <optional>

namespace tavik {

// Measures the whole of a sound file; nothing when it cannot be read as sound.
std::optional<Loudness> MeasureLoudness(const QString& path);

} // namespace tavik
