#include "support/smallfilesystem.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

namespace tavik::test {

SmallFileSystem::SmallFileSystem(const QString& mountPoint, qint64 bytes) : path_(mountPoint) {
    if (!QDir().mkpath(path_)) {
        whyNot_ = QStringLiteral("cannot make the mount point %1").arg(path_);
        return;
    }
    const QByteArray options = "size=" + QByteArray::number(bytes) + ",mode=0755";
    if (::mount("tavik-test", QFile::encodeName(path_).constData(), "tmpfs", 0,
                options.constData()) != 0) {
        const int error = errno;
        whyNot_ = QStringLiteral("mounting a %1-byte tmpfs on %2 is not permitted here (%3); "
                                 "the full-disk tests need root")
                      .arg(bytes)
                      .arg(path_, QString::fromLocal8Bit(std::strerror(error)));
        return;
    }
    mounted_ = true;
}

SmallFileSystem::~SmallFileSystem() {
    if (mounted_)
        ::umount2(QFile::encodeName(path_).constData(), MNT_DETACH);
}

qint64 SmallFileSystem::fill(const QString& fillerName) {
    qint64 total = 0;
    const QByteArray name = QFile::encodeName(QDir(path_).filePath(fillerName));
    const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0)
        return 0;
    const QByteArray block(4096, 'f');
    // Whole blocks first, then single bytes, until the system says there is no room.
    for (qsizetype size : {block.size(), qsizetype(1)}) {
        for (;;) {
            const ssize_t done = ::write(fd, block.constData(), static_cast<size_t>(size));
            if (done <= 0)
                break;
            total += done;
        }
    }
    ::close(fd);
    return total;
}

bool SmallFileSystem::makeReadOnly() {
    return mounted_ && ::mount(nullptr, QFile::encodeName(path_).constData(), nullptr,
                               MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

} // namespace tavik::test
