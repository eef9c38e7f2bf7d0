#include "tickcount.h"

#include <windows.h>

#include <string>

namespace tavik {

QString ShortPath(const QString& path) {
    const auto* name = reinterpret_cast<const wchar_t*>(path.utf16());
    // Asked once for the length, so a long path gets a buffer of its size.
    const DWORD needed = GetShortPathNameW(name, nullptr, 0);
    if (needed == 0)
        return {};
    std::wstring buffer(needed, L'\0');
    const DWORD n = GetShortPathNameW(name, buffer.data(), needed);
    return (n > 0 && n < needed) ? QString::fromWCharArray(buffer.data(), static_cast<int>(n))
                                 : QString();
}

QString ShortPathInBuffer(const QString& path, qsizetype buffer) {
    const QString result = ShortPath(path);
    return result.size() < buffer ? result : QString();
}

} // namespace tavik
