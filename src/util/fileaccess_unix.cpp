#include "util/fileaccess.h"

#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavik {

namespace {

qint64 nanoseconds(const timespec& t) {
    return static_cast<qint64>(t.tv_sec) * 1000000000LL + t.tv_nsec;
}

FileStamp fromStat(const struct stat& st) {
    FileStamp stamp;
    stamp.exists = true;
    stamp.size = st.st_size;
    stamp.modifiedNs = nanoseconds(st.st_mtim);
    stamp.changedNs = nanoseconds(st.st_ctim);
    stamp.identity = (static_cast<quint64>(st.st_dev) << 32) ^ static_cast<quint64>(st.st_ino);
    return stamp;
}

[[noreturn]] void raiseSystemError(int systemError) {
    throw RuntimeError(rt::FromSystemError(systemError));
}

} // namespace

void WriteEveryByte(QFileDevice& file, const char* data, qint64 size) {
    // Straight to the descriptor, so the system's own error number is known.
    const int fd = file.handle();
    if (fd < 0) {
        if (file.write(data, size) != size || !file.flush())
            throw RuntimeError(rt::PathFileAccess);
        return;
    }
    while (size > 0) {
        const ssize_t done = ::write(fd, data, static_cast<size_t>(size));
        if (done < 0 && errno == EINTR)
            continue;
        if (done < 0)
            raiseSystemError(errno);
        if (done == 0)
            raiseSystemError(ENOSPC);
        data += done;
        size -= done;
    }
}

void SyncToDisk(QFileDevice& file) {
    const int fd = file.handle();
    // A file system that cannot sync says so with EINVAL; that is no failed write.
    if (fd >= 0 && ::fsync(fd) != 0 && errno != EINVAL)
        raiseSystemError(errno);
}

FileStamp StampOfOpenFile(QFile& file) {
    struct stat st {};
    if (::fstat(file.handle(), &st) != 0)
        return {};
    return fromStat(st);
}

FileStamp StampOf(const QString& path) {
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return {};
    return fromStat(st);
}

qint64 ReadAt(QFileDevice& file, qint64 at, char* into, qint64 count) {
    const int fd = file.handle();
    if (fd < 0)
        return -1;
    qint64 total = 0;
    while (total < count) {
        const ssize_t got = ::pread(fd, into + total, static_cast<std::size_t>(count - total),
                                    static_cast<off_t>(at + total));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return total > 0 ? total : -1;
        if (got == 0)
            break;
        total += got;
    }
    return total;
}

QStringList PlainFileNames(const QString& folder) {
    // Read straight from the directory: QDir makes a file information record for every entry,
    // and a package folder has tens of thousands. Hidden names are those that begin with ".".
    DIR* dir = ::opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return {};
    QStringList names;
    while (const dirent* entry = ::readdir(dir)) {
        if (entry->d_name[0] == '.')
            continue;
        bool plain = entry->d_type == DT_REG;
        if (entry->d_type == DT_UNKNOWN) {
            // A file system that does not tell the type in the directory: asked per name.
            struct stat st {};
            plain = ::fstatat(::dirfd(dir), entry->d_name, &st, AT_SYMLINK_NOFOLLOW) == 0 &&
                    S_ISREG(st.st_mode);
        }
        if (plain)
            names << QFile::decodeName(entry->d_name);
    }
    ::closedir(dir);
    return names;
}

FolderStamps::FolderStamps(const QString& folder) : folder_(folder) {
    fd_ = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

FolderStamps::~FolderStamps() {
    if (fd_ >= 0)
        ::close(fd_);
}

FileStamp FolderStamps::of(const QString& name) const {
    if (fd_ < 0 || name.contains(u'/'))
        return StampOf(folder_ + u'/' + name);
    struct stat st {};
    if (::fstatat(fd_, QFile::encodeName(name).constData(), &st, 0) != 0)
        return {};
    return fromStat(st);
}

bool IsFaithfulName(const QByteArray& native) {
    return QFile::encodeName(QFile::decodeName(native)) == native;
}

bool OpenToRead(QFile& file) {
    // Opened without blocking and checked on the open descriptor: a pipe put in place after a
    // look at the name would still block an ordinary open.
    const int fd =
        ::open(QFile::encodeName(file.fileName()).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) ||
        ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK) != 0 ||
        !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return false;
    }
    return true;
}

} // namespace tavik
