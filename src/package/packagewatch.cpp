#include "package/packagewatch.h"

#include "util/apppath.h"
#include "util/packagelock.h"

#include <QDir>
#include <QFileSystemWatcher>
#include <QLockFile>
#include <QTimer>

namespace tavik {

void SettleAfterChanges(QFileSystemWatcher& watcher, QTimer& timer, int settleMs) {
    timer.setSingleShot(true);
    timer.setInterval(settleMs);
    QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &timer,
                     qOverload<>(&QTimer::start));
    QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, &timer,
                     qOverload<>(&QTimer::start));
}

PackageWatch::PackageWatch(QObject* parent)
    : QObject(parent), watcher_(new QFileSystemWatcher(this)), settleTimer_(new QTimer(this)) {
    SettleAfterChanges(*watcher_, *settleTimer_, kSettleMs);
    connect(settleTimer_, &QTimer::timeout, this, &PackageWatch::settle);
}

PackageWatch::~PackageWatch() = default;

QString PackageWatch::follow(const QString& packageFolder) {
    QString elsewhere;
    if (packageFolder != folder_ || !openLock_) {
        openLock_.reset();
        auto lock =
            std::make_unique<QLockFile>(PackageLockFile(packageFolder, QStringLiteral("open")));
        lock->setStaleLockTime(0);
        if (lock->tryLock(0))
            openLock_ = std::move(lock);
        else
            elsewhere = LockHolder(PackageLockFile(packageFolder, QStringLiteral("open")));
    }
    folder_ = packageFolder;
    loaded_ = ReadPackageDiskState(folder_);
    shown_.clear();
    rewatch();
    return elsewhere;
}

QStringList PackageWatch::changes() const {
    if (folder_.isEmpty())
        return {};
    return ChangedPackageFiles(loaded_, ReadPackageDiskState(folder_));
}

QStringList PackageWatch::listChanges() const {
    QStringList names = changes();
    names.removeIf([](const QString& name) { return IsServiceFileName(name); });
    return names;
}

void PackageWatch::markShown() {
    shown_ = ReadPackageDiskState(folder_);
}

bool PackageWatch::alreadyShown() const {
    return !shown_.isEmpty() &&
           ChangedPackageFiles(shown_, ReadPackageDiskState(folder_)).isEmpty();
}

void PackageWatch::noteOwnWrite(const QStringList& names) {
    if (folder_.isEmpty())
        return;
    RefreshPackageFiles(loaded_, folder_, names);
    rewatch();
}

void PackageWatch::rewatch() {
    // A file replaced by a rename is a new file to the system: watched again each time.
    const QStringList old = watcher_->files() + watcher_->directories();
    if (!old.isEmpty())
        watcher_->removePaths(old);
    if (folder_.isEmpty() || !QDir(NativePath(folder_)).exists())
        return;
    // The folder tells of files that come, go or are replaced; the index and service files,
    // rewritten in place by some programs, are watched one by one. A sound changed in place is
    // found by the check before every write.
    QStringList paths{NativePath(folder_)};
    for (auto it = loaded_.cbegin(); it != loaded_.cend(); ++it) {
        if (!it.value().hash.isEmpty())
            paths << NativePath(folder_) + QDir::separator() + it.key();
    }
    watcher_->addPaths(paths);
}

void PackageWatch::settle() {
    rewatch();
    const QStringList names = changes();
    if (!names.isEmpty())
        Q_EMIT changedOnDisk(names);
}

} // namespace tavik
