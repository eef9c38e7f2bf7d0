#include "package/packagedisk.h"

#include "util/apppath.h"
#include "util/fileops.h"

#include <QCryptographicHash>
#include <QDir>
#include <QSet>

namespace tavik {

namespace {

// The index and service files are read whole by the editor anyway; sound files can be large
// and are followed by their stamps alone.
bool hashedByContent(const QString& name) {
    return name.compare(QStringLiteral("Package.io"), Qt::CaseInsensitive) == 0 ||
           IsServiceFileName(name);
}

} // namespace

bool IsServiceFileName(const QString& name) {
    return WildcardMatch(QStringLiteral("_*._"), name);
}

bool IsFollowedPackageFile(const QString& name) {
    if (name.isEmpty())
        return false;
    return hashedByContent(name) || (name[0] >= u'0' && name[0] <= u'9');
}

PackageFileState ReadPackageFileState(const QString& packageFolder, const QString& name) {
    const QString path = NativePath(packageFolder) + QDir::separator() + name;
    PackageFileState state;
    if (!hashedByContent(name)) {
        state.stamp = StampOf(path);
        return state;
    }
    const WholeRead read = ReadWholeFile(path);
    if (read.ok()) {
        state.stamp = read.stamp;
        // BLAKE2b: as safe as SHA-256 and five times as fast in Qt's code; every load and
        // save hashes the whole index.
        state.hash = QCryptographicHash::hash(read.bytes, QCryptographicHash::Blake2b_256);
    } else {
        // A file that cannot be read whole now is followed by its stamp until it can.
        state.stamp = StampOf(path);
    }
    return state;
}

PackageDiskState ReadPackageDiskState(const QString& packageFolder) {
    PackageDiskState state;
    const QString folder = NativePath(packageFolder);
    const FolderStamps stamps(folder);
    const QStringList names = ListFiles(folder);
    state.reserve(names.size());
    for (const QString& name : names) {
        if (!IsFollowedPackageFile(name))
            continue;
        // The sounds by their stamps alone, found from the folder.
        if (hashedByContent(name))
            state.insert(name, ReadPackageFileState(packageFolder, name));
        else
            state.insert(name, PackageFileState{stamps.of(name), {}});
    }
    return state;
}

void RefreshPackageFiles(PackageDiskState& state, const QString& packageFolder,
                         const QStringList& names) {
    for (const QString& name : names) {
        const PackageFileState now = ReadPackageFileState(packageFolder, name);
        if (now.stamp.exists)
            state.insert(name, now);
        else
            state.remove(name);
    }
}

QStringList ChangedPackageFiles(const PackageDiskState& was, const PackageDiskState& now) {
    QSet<QString> names;
    for (auto it = was.cbegin(); it != was.cend(); ++it) {
        if (now.value(it.key()) != it.value())
            names.insert(it.key());
    }
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (!was.contains(it.key()))
            names.insert(it.key());
    }
    QStringList sorted(names.cbegin(), names.cend());
    sorted.sort(Qt::CaseInsensitive);
    return sorted;
}

} // namespace tavik
