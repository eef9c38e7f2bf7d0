#include "dialogs/packagescan.h"

#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "util/conversions.h"
#include "util/fileops.h"

#include <QDir>
#include <algorithm>

namespace tavik {

QList<PackageCandidate> ScanPackages(const QString& dataFolder) {
    QList<PackageCandidate> packages;
    QDir dir(dataFolder);
    if (dataFolder.isEmpty() || !dir.exists())
        return packages;
    // The directory search in folder mode: folders and plain files, no hidden ones.
    QStringList names =
        dir.entryList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::NoSort);
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
    for (const QString& name : names) {
        const QString path = dataFolder + QDir::separator() + name;
        // A file with content is no package; an empty one is cleared away.
        if (FileCheck(path, true))
            continue;
        // A folder whose index cannot be read is left out, rather than listed under the
        // name read from the folder before.
        clsZELDB store;
        const QString info = QString::fromUtf16(pkg::Info);
        if (!store.OpenIOFileForKey(IndexFileOf(path), info))
            continue;
        const QString packageName =
            CStr(store.GetSetting(info, QString::fromUtf16(pkg::Name), QString()));
        if (!packageName.isEmpty())
            packages.append({packageName, path});
    }
    return packages;
}

QString IndexFileOf(const QString& packageFolder) {
    // Joined without turning separators inside a folder's name into path steps.
    return packageFolder + QDir::separator() + QString::fromUtf16(kIndexFileName).mid(1);
}

QString FolderOfChosenFile(const QString& path) {
    const QString native = QDir::toNativeSeparators(path);
    const qsizetype separator = std::max(native.lastIndexOf(u'/'), native.lastIndexOf(u'\\'));
    return native.left(separator + 1);
}

} // namespace tavik
