#include "wholeread.h"

#include "fileaccess.h"
#include "fileops.h"

#include <QFile>
#include <QThread>

namespace tavik {

namespace {

// Writers that rewrite a small file finish within a few milliseconds; a file still changing
// after this many reads is being written continuously and is refused rather than guessed at.
constexpr int kAttempts = 8;

} // namespace

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
        const FileStamp before = StampOfOpenFile(file);
        // Read, never mapped: a mapped file that shrinks faults on the pages it lost.
        const QByteArray bytes = maxBytes < 0 ? file.readAll() : file.read(maxBytes);
        const FileStamp after = StampOfOpenFile(file);
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
