#pragma once

#include <QString>
#include <cstdint>

namespace tavik {

// Milliseconds of a monotonic clock, wrapped to signed 32 bits like the system tick count.
std::int32_t GetTickCount();

// The short (8.3) form of a path. Systems without short names use the path itself when the
// file exists; a path that names nothing has no short form and gives "".
QString ShortPath(const QString& path);

} // namespace tavik
