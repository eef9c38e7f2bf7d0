#include "util/fileaccess.h"

#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace tavik {

namespace {

[[noreturn]] void raiseWindowsError(DWORD error) {
    int systemError = EACCES;
    switch (error) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        systemError = ENOSPC;
        break;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        systemError = ENOENT;
        break;
    case ERROR_CRC:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_GEN_FAILURE:
        systemError = EIO;
        break;
    default:
        break;
    }
    throw RuntimeError(rt::FromSystemError(systemError));
}

HANDLE systemHandle(QFileDevice& file) {
    const int fd = file.handle();
    return fd < 0 ? INVALID_HANDLE_VALUE : reinterpret_cast<HANDLE>(_get_osfhandle(fd));
}

const wchar_t* wide(const QString& path) {
    return reinterpret_cast<const wchar_t*>(path.utf16());
}

qint64 fileTime(const LARGE_INTEGER& t) {
    // 100-nanosecond steps; only compared with other stamps.
    return t.QuadPart * 100;
}

FileStamp stampOfHandle(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION info{};
    FILE_BASIC_INFO basic{};
    if (!GetFileInformationByHandle(handle, &info) ||
        !GetFileInformationByHandleEx(handle, FileBasicInfo, &basic, sizeof basic))
        return {};
    FileStamp stamp;
    stamp.exists = true;
    stamp.size = (static_cast<qint64>(info.nFileSizeHigh) << 32) | info.nFileSizeLow;
    stamp.modifiedNs = fileTime(basic.LastWriteTime);
    stamp.changedNs = fileTime(basic.ChangeTime);
    stamp.identity = (static_cast<quint64>(info.dwVolumeSerialNumber) << 40) ^
                     (static_cast<quint64>(info.nFileIndexHigh) << 32) ^ info.nFileIndexLow;
    return stamp;
}

} // namespace

void WriteEveryByte(QFileDevice& file, const char* data, qint64 size) {
    const HANDLE handle = systemHandle(file);
    if (handle == INVALID_HANDLE_VALUE) {
        if (file.write(data, size) != size || !file.flush())
            throw RuntimeError(rt::PathFileAccess);
        return;
    }
    while (size > 0) {
        const DWORD chunk = static_cast<DWORD>(std::min<qint64>(size, 1 << 30));
        DWORD done = 0;
        if (!WriteFile(handle, data, chunk, &done, nullptr))
            raiseWindowsError(GetLastError());
        if (done == 0)
            raiseWindowsError(ERROR_DISK_FULL);
        data += done;
        size -= done;
    }
}

void SyncToDisk(QFileDevice& file) {
    const HANDLE handle = systemHandle(file);
    if (handle != INVALID_HANDLE_VALUE && !FlushFileBuffers(handle))
        raiseWindowsError(GetLastError());
}

FileStamp StampOfOpenFile(QFile& file) {
    const HANDLE handle = systemHandle(file);
    return handle == INVALID_HANDLE_VALUE ? FileStamp{} : stampOfHandle(handle);
}

FileStamp StampOf(const QString& path) {
    // Attributes only, shared every way, folders too: looking never stands in anyone's way.
    const HANDLE handle = CreateFileW(wide(path), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return {};
    const FileStamp stamp =
        GetFileType(handle) == FILE_TYPE_DISK ? stampOfHandle(handle) : FileStamp{};
    CloseHandle(handle);
    return stamp;
}

qint64 ReadAt(QFileDevice& file, qint64 at, char* into, qint64 count) {
    const HANDLE handle = systemHandle(file);
    if (handle == INVALID_HANDLE_VALUE)
        return -1;
    qint64 total = 0;
    while (total < count) {
        // The offset goes with the read itself, as with pread.
        OVERLAPPED where{};
        const quint64 offset = static_cast<quint64>(at + total);
        where.Offset = static_cast<DWORD>(offset & 0xffffffffu);
        where.OffsetHigh = static_cast<DWORD>(offset >> 32);
        const DWORD chunk = static_cast<DWORD>(std::min<qint64>(count - total, 1 << 30));
        DWORD got = 0;
        if (!ReadFile(handle, into + total, chunk, &got, &where))
            return GetLastError() == ERROR_HANDLE_EOF ? total : (total > 0 ? total : -1);
        if (got == 0)
            break;
        total += got;
    }
    return total;
}

QStringList PlainFileNames(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::NoSymLinks, QDir::NoSort);
}

// The folder is not held open here: Windows would keep it from being renamed or removed.
FolderStamps::FolderStamps(const QString& folder) : folder_(folder) {}

FolderStamps::~FolderStamps() = default;

FileStamp FolderStamps::of(const QString& name) const {
    return StampOf(folder_ + u'/' + name);
}

bool IsFaithfulName(const QByteArray&) {
    // Names arrive as UTF-16 and stay so.
    return true;
}

bool OpenToRead(QFile& file) {
    // Shared for deleting too, so another program may replace the file while it is read. A
    // device name ("CON", "aux.wav") or a pipe opens something that is no file: refused.
    const HANDLE handle = CreateFileW(wide(file.fileName()), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    BY_HANDLE_FILE_INFORMATION info{};
    if (GetFileType(handle) != FILE_TYPE_DISK || !GetFileInformationByHandle(handle, &info) ||
        (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
        CloseHandle(handle);
        return false;
    }
    const int fd = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_RDONLY | _O_BINARY);
    if (fd < 0) {
        CloseHandle(handle);
        return false;
    }
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        _close(fd);
        return false;
    }
    return true;
}

} // namespace tavik
