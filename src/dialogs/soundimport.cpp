#include "dialogs/soundimport.h"

#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/fileops.h"

#include <QDir>

namespace tavik {

namespace {

qsizetype lastSeparator(const QString& path) {
    return std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
}

} // namespace

QString PathFileName(const QString& path, bool stripExtension) {
    QString name = path.mid(lastSeparator(path) + 1);
    if (stripExtension) {
        const qsizetype dot = name.indexOf(u'.');
        if (dot >= 0)
            name.truncate(dot);
    }
    return name;
}

QString ImportExtension(const QString& source) {
    const qsizetype dot = source.lastIndexOf(u'.');
    return dot < 0 ? source : source.mid(dot + 1);
}

QStringList ImportSoundFiles(const QList<ImportEntry>& entries, const QString& packageFolder,
                             clsZELDB& store, const ImportProgress& progress) {
    const QString index = QString::fromUtf16(pkg::Index);
    QStringList keys;
    for (const ImportEntry& entry : entries) {
        const QString extension = ImportExtension(entry.Source);
        const QString key = NextFreeKey(packageFolder);
        // The extension holds no ".", so the target never leaves the package folder.
        const QString target =
            NativePath(packageFolder) + QDir::separator() + key + QStringLiteral(".") + extension;
        if (progress.beforeCopy)
            progress.beforeCopy(PathFileName(entry.Source, false));
        FileCopy(entry.Source, target);
        const std::int16_t count = addInteger(ReadIndexCount(store), 1);
        store.SaveSetting(index, QString::number(count),
                          Variant::fromString(JoinIndexEntry(key, entry.Title)));
        store.SaveSetting(index, QString::fromUtf16(pkg::Count), Variant::fromLong(count));
        keys << key;
        if (progress.afterEntry)
            progress.afterEntry();
    }
    return keys;
}

} // namespace tavik
