#include "tickcount.h"

#include <chrono>

namespace tavik {

namespace {

std::int32_t wrapped(std::int64_t ms) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(ms));
}

} // namespace

std::int32_t GetTickCount() {
    return wrapped(
        std::chrono::duration_cast<std::chrono::milliseconds>(TickClock::now().time_since_epoch())
            .count());
}

TickClock::time_point TickStarts(std::int32_t tick) {
    const auto now = std::chrono::floor<std::chrono::milliseconds>(TickClock::now());
    const std::int32_t current = wrapped(now.time_since_epoch().count());
    const auto ahead = static_cast<std::int32_t>(static_cast<std::uint32_t>(tick) -
                                                 static_cast<std::uint32_t>(current));
    return TickClock::time_point(now + std::chrono::milliseconds(ahead));
}

} // namespace tavik
