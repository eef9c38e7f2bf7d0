#include "tickcount.h"

#include <QFileInfo>
#include <chrono>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

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

QString ShortPath(const QString& path) {
#ifdef Q_OS_WIN
    wchar_t buffer[MAX_PATH];
    const DWORD n =
        GetShortPathNameW(reinterpret_cast<const wchar_t*>(path.utf16()), buffer, MAX_PATH);
    return (n > 0 && n < MAX_PATH) ? QString::fromWCharArray(buffer, static_cast<int>(n))
                                   : QString();
#else
    return QFileInfo::exists(path) ? path : QString();
#endif
}

} // namespace tavik
