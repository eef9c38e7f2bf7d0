#include "support/smallfilesystem.h"

#include "support/winehost.h"

#include <QDir>
#include <windows.h>

namespace tavik::test {

// Under Wine the host system mounts a small tmpfs on the folder (the tests run as root there),
// and Windows calls then meet a full disk as on any small drive. Windows itself has no such
// drive to make without an administrator.

SmallFileSystem::SmallFileSystem(const QString& mountPoint, qint64 bytes) : path_(mountPoint) {
    if (!QDir().mkpath(path_)) {
        whyNot_ = QStringLiteral("cannot make the mount point %1").arg(path_);
        return;
    }
    const QString host = HostPath(path_);
    if (host.isEmpty()) {
        whyNot_ = QStringLiteral("a small drive for the full-disk tests is made through the host "
                                 "system under Wine; this Windows has none");
        return;
    }
    if (RunOnHost(QStringLiteral("/bin/mount"),
                  {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                   QStringLiteral("size=%1,mode=0755").arg(bytes), QStringLiteral("tavik-test"),
                   host}) != 0) {
        whyNot_ = QStringLiteral("the host system does not mount a %1-byte tmpfs on %2 here; "
                                 "the full-disk tests need root")
                      .arg(bytes)
                      .arg(host);
        return;
    }
    hostPath_ = host;
    mounted_ = true;
}

SmallFileSystem::~SmallFileSystem() {
    if (mounted_)
        RunOnHost(QStringLiteral("/bin/umount"), {QStringLiteral("-l"), hostPath_});
}

qint64 SmallFileSystem::fill(const QString& fillerName) {
    const QString name = QDir::toNativeSeparators(QDir(path_).filePath(fillerName));
    const HANDLE file =
        CreateFileW(reinterpret_cast<const wchar_t*>(name.utf16()), FILE_APPEND_DATA,
                    FILE_SHARE_READ, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 0;
    qint64 total = 0;
    const QByteArray block(4096, 'f');
    // Whole blocks first, then single bytes, until the system says there is no room.
    for (const DWORD size : {DWORD(block.size()), DWORD(1)}) {
        for (;;) {
            DWORD done = 0;
            if (!WriteFile(file, block.constData(), size, &done, nullptr) || done == 0)
                break;
            total += done;
        }
    }
    CloseHandle(file);
    return total;
}

bool SmallFileSystem::makeReadOnly() {
    return mounted_ &&
           RunOnHost(QStringLiteral("/bin/mount"),
                     {QStringLiteral("-o"), QStringLiteral("remount,ro"), hostPath_}) == 0;
}

} // namespace tavik::test
