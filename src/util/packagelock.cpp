#include "packagelock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLockFile>
#include <QThread>
#include <mutex>

namespace tavik {

namespace {

std::mutex& heldMutex() {
    static std::mutex mutex;
    return mutex;
}

// Lock files this process holds, with how deeply each is nested.
QHash<QString, int>& held() {
    static QHash<QString, int> files;
    return files;
}

QString canonicalFolder(const QString& folder) {
    const QFileInfo info(folder);
    const QString canonical = info.canonicalFilePath();
    if (!canonical.isEmpty())
        return canonical;
    // A folder not made yet: its parent's canonical path and its own name.
    const QString parent = QFileInfo(info.absolutePath()).canonicalFilePath();
    if (!parent.isEmpty())
        return parent + QLatin1Char('/') + info.fileName();
    return QDir::cleanPath(info.absoluteFilePath());
}

// QLockFile's own wait doubles its pauses up to seconds, so a writer among several busy ones
// would try only a handful of times; short pauses give every writer its turn soon.
bool tryLockFor(QLockFile& file, int waitMs) {
    QElapsedTimer waited;
    waited.start();
    for (int attempt = 0;; ++attempt) {
        if (file.tryLock(0))
            return true;
        if (waited.elapsed() >= waitMs)
            return false;
        QThread::msleep(static_cast<unsigned long>(5 + attempt % 4 * 5));
    }
}

} // namespace

PackageBusy::PackageBusy(QString folder, QString holder)
    : RuntimeError(rt::PermissionDenied,
                   QStringLiteral("%1: %2").arg(
                       RuntimeError::defaultDescription(rt::PermissionDenied),
                       holder.isEmpty()
                           ? QStringLiteral("another program is writing the package")
                           : QStringLiteral("the package is being written by ") + holder)),
      folder_(std::move(folder)), holder_(std::move(holder)) {}

QString PackageLockFile(const QString& packageFolder, const QString& purpose) {
    // The folder's name as the system has it, so two spellings of one folder share one lock.
    const QByteArray name = QFile::encodeName(canonicalFolder(packageFolder));
    const QByteArray hash = QCryptographicHash::hash(name, QCryptographicHash::Sha256).toHex();
    return UserLockFolder() +
           QStringLiteral("/package-%1-%2.lock").arg(QString::fromLatin1(hash.left(32)), purpose);
}

QString LockHolder(const QString& lockFile) {
    QLockFile file(lockFile);
    qint64 pid = 0;
    QString host;
    QString program;
    if (!file.getLockInfo(&pid, &host, &program))
        return {};
    return QStringLiteral("%1 (process %2 on %3)")
        .arg(program.isEmpty() ? QStringLiteral("a program") : program)
        .arg(pid)
        .arg(host.isEmpty() ? QStringLiteral("this computer") : host);
}

PackageWriteLock::PackageWriteLock(const QString& packageFolder, int waitMs)
    : key_(PackageLockFile(packageFolder)) {
    {
        const std::lock_guard lock(heldMutex());
        auto it = held().find(key_);
        if (it != held().end()) {
            ++it.value();
            return;
        }
    }
    file_ = std::make_unique<QLockFile>(key_);
    // Only a holder that died leaves a lock to take over, however long it was held.
    file_->setStaleLockTime(0);
    if (!tryLockFor(*file_, waitMs)) {
        QString holder = LockHolder(key_);
        file_.reset();
        throw PackageBusy(packageFolder, holder);
    }
    const std::lock_guard lock(heldMutex());
    held().insert(key_, 1);
}

PackageWriteLock::~PackageWriteLock() {
    const std::lock_guard lock(heldMutex());
    auto it = held().find(key_);
    if (it == held().end())
        return;
    if (--it.value() > 0 && !file_)
        return;
    if (it.value() <= 0)
        held().erase(it);
    if (file_)
        file_->unlock();
}

} // namespace tavik
