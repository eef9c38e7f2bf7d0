#pragma once

#include <QString>
#include <chrono>
#include <cstdint>

namespace tavik {

// The clock the tick count reads: monotonic, and the one every timed command of the sound
// output is stamped with, so a wait's end and what is heard follow one time.
using TickClock = std::chrono::steady_clock;

// Milliseconds of TickClock, wrapped to signed 32 bits like the system tick count.
std::int32_t GetTickCount();

// The moment the tick count turns to `tick` (taken as the nearest such moment, within 2^31 ms
// before or after now).
TickClock::time_point TickStarts(std::int32_t tick);

// The short (8.3) form of a path. Systems without short names use the path itself when the
// file exists; a path that names nothing has no short form and gives "".
QString ShortPath(const QString& path);

// ShortPath as a call with a buffer of `buffer` characters gives it: "" when the short form
// does not fit (with its closing NUL). Systems without short names have no such buffer.
QString ShortPathInBuffer(const QString& path, qsizetype buffer);

} // namespace tavik
