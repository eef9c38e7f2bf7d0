#include "tickcount.h"

#include <QFileInfo>
#include <chrono>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace tavik {

std::int32_t GetTickCount() {
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                        std::chrono::steady_clock::now().time_since_epoch())
                        .count();
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(ms));
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
