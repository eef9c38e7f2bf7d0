#include "fileversion.h"

#include <windows.h>

#include <iterator>
#include <vector>

namespace tavik {

FixedFileInfo ReadFixedFileInfo(const QString& path) {
    FixedFileInfo info;
    const auto* name = reinterpret_cast<const wchar_t*>(path.utf16());
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(name, &ignored);
    if (size == 0)
        return info;
    std::vector<char> block(size);
    if (!GetFileVersionInfoW(name, 0, size, block.data()))
        return info;
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &length) || !fixed ||
        length < sizeof(VS_FIXEDFILEINFO))
        return info;
    const DWORD fields[] = {
        fixed->dwSignature,     fixed->dwStrucVersion,     fixed->dwFileVersionMS,
        fixed->dwFileVersionLS, fixed->dwProductVersionMS, fixed->dwProductVersionLS,
        fixed->dwFileFlagsMask, fixed->dwFileFlags,        fixed->dwFileOS,
        fixed->dwFileType,      fixed->dwFileSubtype,      fixed->dwFileDateMS,
        fixed->dwFileDateLS};
    static_assert(std::size(fields) == std::tuple_size_v<decltype(info.fields)>);
    for (std::size_t i = 0; i < info.fields.size(); ++i)
        info.fields[i] = fields[i];
    return info;
}

} // namespace tavik
