#include "dialogs/filebrowsing.h"

#include "package/packagefolder.h"
#include "util/fileops.h"
#include "util/platformnames.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace tavik {

namespace {

void sortByName(QStringList& names) {
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
}

bool matchesOne(const QString& pattern, const QString& name) {
    if (pattern == QStringLiteral("*.*"))
        return true;
    return WildcardMatch(pattern, name);
}

} // namespace

QString DriveOf(const QString& folder) {
    const QString path =
        QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
    QString best;
    for (const QString& root : DriveRoots()) {
        const QString r = QDir::toNativeSeparators(root);
        const bool inside =
            path.compare(r, Qt::CaseInsensitive) == 0 ||
            path.startsWith(r.endsWith(QDir::separator()) ? r : r + QDir::separator(),
                            Qt::CaseInsensitive);
        if (inside && r.size() > best.size())
            best = root;
    }
    return best;
}

QStringList ListFolders(const QString& folder) {
    QDir dir(folder);
    if (folder.isEmpty() || !dir.exists())
        return {};
    QStringList names = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    sortByName(names);
    return names;
}

QStringList ListPatternFiles(const QString& folder, const QString& pattern) {
    QDir dir(folder);
    if (folder.isEmpty() || pattern.isEmpty() || !dir.exists())
        return {};
    const QStringList patterns = pattern.split(u';', Qt::SkipEmptyParts);
    QStringList names;
    for (const QString& name : dir.entryList(QDir::Files, QDir::NoSort)) {
        if (std::any_of(patterns.begin(), patterns.end(),
                        [&](const QString& p) { return matchesOne(p, name); }))
            names << name;
    }
    sortByName(names);
    return names;
}

QString JoinFolderFile(const QString& folder, const QString& name) {
    if (folder.endsWith(u'/') || folder.endsWith(QDir::separator()))
        return folder + name;
    return folder + QDir::separator() + name;
}

QString PackagesDialogFolder() {
    return QDir::toNativeSeparators(QDir::cleanPath(QDir::fromNativeSeparators(DataFolder())));
}

QString PackageDialogFolder(const QString& packageFolder) {
    if (!packageFolder.isEmpty() && QFileInfo(packageFolder).isDir())
        return QDir::toNativeSeparators(QDir::cleanPath(QDir::fromNativeSeparators(packageFolder)));
    return PackagesDialogFolder();
}

QString PictureFilter(const QString& allPictures, const QString& designed,
                      const QList<QByteArray>& formats) {
    QStringList patterns;
    for (const QByteArray& format : formats) {
        const QString pattern = QStringLiteral("*.") + QString::fromLatin1(format).toLower();
        // Only plain extensions: a pattern character would widen the filter.
        if (format.isEmpty() || format.contains('*') || format.contains('?') ||
            format.contains('|') || format.contains(';') || patterns.contains(pattern))
            continue;
        patterns << pattern;
    }
    if (patterns.isEmpty())
        return designed;
    std::sort(patterns.begin(), patterns.end());
    const QString joined = patterns.join(u';');
    // The dialog shows the patterns beside the description; listing them twice is too long.
    QString filter = allPictures + u'|' + joined;
    if (!designed.isEmpty())
        filter += u'|' + designed;
    return filter;
}

} // namespace tavik
