#include "package/packagefilewatch.h"

#include "package/packagewatch.h"
#include "util/apppath.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QTimer>

namespace tavik {

namespace {

bool sameContent(const PackageFileState& a, const PackageFileState& b) {
    if (a.stamp.exists != b.stamp.exists)
        return false;
    if (!a.stamp.exists)
        return true;
    // A file that could not be read whole has no hash and is compared by its stamp.
    if (!a.hash.isEmpty() && !b.hash.isEmpty())
        return a.hash == b.hash;
    return a == b;
}

} // namespace

PackageFileWatch::PackageFileWatch(QObject* parent)
    : QObject(parent), watcher_(new QFileSystemWatcher(this)), settleTimer_(new QTimer(this)) {
    SettleAfterChanges(*watcher_, *settleTimer_, kSettleMs);
    connect(settleTimer_, &QTimer::timeout, this, &PackageFileWatch::settle);
}

PackageFileState PackageFileWatch::now() const {
    const QFileInfo info(path_);
    return ReadPackageFileState(info.absolutePath(), info.fileName());
}

void PackageFileWatch::follow(const QString& path) {
    path_ = path;
    loaded_ = path_.isEmpty() ? PackageFileState{} : now();
    hasShown_ = false;
    rewatch();
}

PackageFileWatch::Look PackageFileWatch::look() const {
    if (path_.isEmpty())
        return {};
    const PackageFileState state = now();
    return {!sameContent(loaded_, state), state.stamp.exists,
            hasShown_ && sameContent(shown_, state)};
}

void PackageFileWatch::markShown() {
    shown_ = now();
    hasShown_ = true;
}

void PackageFileWatch::rewatch() {
    // A file replaced by a rename is a new file to the system: watched again each time, and
    // its folder tells when it comes or goes.
    const QStringList old = watcher_->files() + watcher_->directories();
    if (!old.isEmpty())
        watcher_->removePaths(old);
    if (path_.isEmpty())
        return;
    const QFileInfo info(path_);
    QStringList paths;
    if (QDir(NativePath(info.absolutePath())).exists())
        paths << NativePath(info.absolutePath());
    if (info.exists())
        paths << NativePath(info.absoluteFilePath());
    if (!paths.isEmpty())
        watcher_->addPaths(paths);
}

void PackageFileWatch::settle() {
    rewatch();
    const Look state = look();
    if (state.changed && !state.alreadyShown)
        Q_EMIT changedOnDisk();
}

} // namespace tavik
