#include "wholeread.h"

#include "fileops.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tavik {

namespace {

// Writers that rewrite a small file finish within a few milliseconds; a file still changing
// after this many reads is being written continuously and is refused rather than guessed at.
constexpr int kAttempts = 8;

#ifdef Q_OS_UNIX
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
#endif

FileStamp stampOfOpenFile(QFile& file) {
#ifdef Q_OS_UNIX
    struct stat st {};
    if (::fstat(file.handle(), &st) != 0)
        return {};
    return fromStat(st);
#else
    return StampOf(file.fileName());
#endif
}

} // namespace

FileStamp StampOf(const QString& path) {
#ifdef Q_OS_UNIX
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return {};
    return fromStat(st);
#else
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    FileStamp stamp;
    stamp.exists = true;
    stamp.size = info.size();
    stamp.modifiedNs = info.lastModified().toMSecsSinceEpoch() * 1000000LL;
    stamp.changedNs = info.metadataChangeTime().toMSecsSinceEpoch() * 1000000LL;
    return stamp;
#endif
}

FolderStamps::FolderStamps(const QString& folder) : folder_(folder) {
#ifdef Q_OS_UNIX
    fd_ = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
#endif
}

FolderStamps::~FolderStamps() {
#ifdef Q_OS_UNIX
    if (fd_ >= 0)
        ::close(fd_);
#endif
}

FileStamp FolderStamps::of(const QString& name) const {
#ifdef Q_OS_UNIX
    if (fd_ >= 0 && !name.contains(u'/')) {
        struct stat st {};
        if (::fstatat(fd_, QFile::encodeName(name).constData(), &st, 0) != 0)
            return {};
        return fromStat(st);
    }
#endif
    return StampOf(folder_ + QDir::separator() + name);
}

WholeRead ReadWholeFile(const QString& path, qint64 maxBytes) {
    WholeRead result;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (attempt > 0)
            QThread::msleep(attempt);
        QFile file(path);
        if (!OpenToRead(file)) {
            result.status = WholeRead::Status::CannotOpen;
            return result;
        }
        const FileStamp before = stampOfOpenFile(file);
        // Read, never mapped: a mapped file that shrinks faults on the pages it lost.
        const QByteArray bytes = maxBytes < 0 ? file.readAll() : file.read(maxBytes);
        const FileStamp after = stampOfOpenFile(file);
        const bool whole = maxBytes < 0 ? bytes.size() == after.size
                                        : bytes.size() == std::min(after.size, maxBytes);
        if (file.error() == QFileDevice::NoError && before.exists && before == after && whole) {
            result.status = WholeRead::Status::Read;
            result.bytes = bytes;
            result.stamp = after;
            return result;
        }
    }
    result.status = WholeRead::Status::KeptChanging;
    return result;
}

} // namespace tavik
