#define ENABLE_SNDFILE_WINDOWS_PROMPTS
#include "audio/sndfileopen.h"

#include <QDir>
#include <windows.h>

namespace tavik {

namespace {

// Device names ("CON", "aux.wav") and pipes open as something that is no file on disk.
bool isDiskFile(const wchar_t* name) {
    const HANDLE handle = CreateFileW(name, FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const bool disk = GetFileType(handle) == FILE_TYPE_DISK;
    CloseHandle(handle);
    return disk;
}

} // namespace

SNDFILE* OpenSndFile(const QString& path, int mode, SF_INFO* info) {
    // The program's paths keep their "\bin\..\Data\" steps; libsndfile takes the format of an
    // MP3 without tags from the name and misses it behind them.
    const QString clean = QDir::toNativeSeparators(QDir::cleanPath(path));
    const auto* name = reinterpret_cast<const wchar_t*>(clean.utf16());
    if (mode == SFM_READ && !isDiskFile(name))
        return nullptr;
    return sf_wchar_open(name, mode, info);
}

} // namespace tavik
