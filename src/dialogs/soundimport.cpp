#include "dialogs/soundimport.h"

#include "package/clszeldb.h"
#include "package/keysettings.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/fileops.h"
#include "util/packagelock.h"
#include "util/runtimeerror.h"
#include "util/wholeread.h"

#include <QDir>
#include <QFile>

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

QSet<QString> ListedKeys(clsZELDB& store) {
    const QString index = QString::fromUtf16(pkg::Index);
    QSet<QString> keys;
    const std::int16_t count = ReadIndexCount(store);
    for (int i = 1; i <= count; ++i) {
        const QString entry = CStr(store.GetSetting(index, QString::number(i), QString()));
        keys.insert(entry.left(entry.indexOf(u'~')));
    }
    return keys;
}

namespace {

// The copies of one run under their temporary names; whatever did not reach its own name when
// the run ends goes again.
class StagedCopies {
public:
    ~StagedCopies() {
        for (const QString& temporary : temporaries_)
            QFile::remove(temporary);
    }
    void add(const QString& temporary, const QString& target) {
        temporaries_ << temporary;
        targets_ << target;
    }
    // Gives every copy its own name; on a failure the ones already renamed go again.
    bool rename() {
        for (qsizetype i = 0; i < temporaries_.size(); ++i) {
            if (!QFile::rename(temporaries_[i], targets_[i])) {
                for (qsizetype j = 0; j < i; ++j)
                    QFile::remove(targets_[j]);
                return false;
            }
        }
        temporaries_.clear();
        return true;
    }

private:
    QStringList temporaries_;
    QStringList targets_;
};

} // namespace

QStringList ImportSoundFiles(const QList<ImportEntry>& entries, const QString& packageFolder,
                             clsZELDB& store, const QString& indexFile,
                             const ImportProgress& progress, const QSet<QString>& heldKeys,
                             std::optional<std::int32_t> color) {
    const PackageWriteLock lock(packageFolder);
    const QString index = QString::fromUtf16(pkg::Index);
    const clsZELDB before = store;
    QStringList keys;
    try {
        QSet<QString> taken = heldKeys;
        taken.unite(ListedKeys(store));
        StagedCopies copies;
        for (const ImportEntry& entry : entries) {
            const QString extension = ImportExtension(entry.Source);
            const QString key = NextFreeKey(packageFolder, taken);
            taken.insert(key);
            // The extension holds no ".", so the target never leaves the package folder. The
            // temporary name is hidden and starts with no digit, so it names no key.
            const QString name = key + QStringLiteral(".") + extension;
            const QString folder = NativePath(packageFolder) + QDir::separator();
            const QString temporary = folder + QStringLiteral(".import-") + name;
            if (progress.beforeCopy)
                progress.beforeCopy(PathFileName(entry.Source, false));
            FileCopy(entry.Source, temporary);
            copies.add(temporary, folder + name);
            const std::int16_t count = addInteger(ReadIndexCount(store), 1);
            store.SaveSetting(index, QString::number(count),
                              Variant::fromString(JoinIndexEntry(key, entry.Title)));
            store.SaveSetting(index, QString::fromUtf16(pkg::Count), Variant::fromLong(count));
            // Settings an earlier, removed announcement left under the key are not the new
            // sound's: it starts with the import's choices only.
            ClearKeySettings(store, key);
            if (color)
                store.SaveSetting(key, QString::fromUtf16(pkg::Color), Variant::fromLong(*color));
            keys << key;
            if (progress.afterEntry)
                progress.afterEntry();
        }
        const WholeRead oldIndex = ReadWholeFile(indexFile);
        store.SaveIOFile(indexFile);
        if (!copies.rename()) {
            // The index names sounds that did not arrive: it goes back to what it was.
            if (oldIndex.ok())
                WriteFileAtomically(indexFile, oldIndex.bytes);
            else
                QFile::remove(indexFile);
            throw RuntimeError(rt::PathFileAccess);
        }
    } catch (...) {
        store = before;
        throw;
    }
    return keys;
}

} // namespace tavik
