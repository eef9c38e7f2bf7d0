#include "packagefolder.h"

#include "util/apppath.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QSet>
#include <algorithm>

namespace tavik {

QString DataFolder() {
    return NativePath(AppPath() + QStringLiteral("\\..\\Data\\"));
}

QString FormatKey(std::int32_t number) {
    QString padding;
    if (number < 1000)
        padding = QStringLiteral("0");
    if (number < 100)
        padding = QStringLiteral("00");
    if (number < 10)
        padding = QStringLiteral("000");
    return padding + QString::number(number);
}

bool IsAnnouncementKey(const QString& key) {
    if (key.isEmpty())
        return false;
    return std::all_of(key.begin(), key.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

namespace {

// Whether `name` is a file of `key`: it begins with the key and does not go on with another
// digit, so the key 0001 never finds 00012.wav and 1000 never finds 10000.wav, the files of
// other keys.
bool isFileOfKey(const QString& name, const QString& key) {
    // A key is digits, which have no case: compared as they are.
    if (!name.startsWith(key))
        return false;
    return name.size() == key.size() || !(name[key.size()] >= u'0' && name[key.size()] <= u'9');
}

QString firstFileForKey(const QString& packageFolder, const QString& key) {
    if (!IsAnnouncementKey(key))
        return {};
    for (const QString& name : ListFiles(NativePath(packageFolder))) {
        if (isFileOfKey(name, key))
            return name;
    }
    return {};
}

} // namespace

QString NextFreeKey(const QString& packageFolder, const QSet<QString>& alsoTaken) {
    // One listing instead of one search per number: keys are digits, so a key names a file
    // exactly when it begins the run of digits the file's name starts with. A link counts
    // like a file, wherever it points: a new sound must never be written through it.
    QSet<QString> taken;
    for (const QString& name : ListFilesAndLinks(NativePath(packageFolder))) {
        qsizetype digits = 0;
        while (digits < name.size() && name[digits] >= u'0' && name[digits] <= u'9')
            ++digits;
        for (qsizetype length = 4; length <= digits; ++length)
            taken.insert(name.left(length));
    }
    for (std::int32_t n = 0;; ++n) {
        QString key = FormatKey(n);
        if (!taken.contains(key) && !alsoTaken.contains(key))
            return key;
    }
}

QString GetFileName(const QString& packageFolder, const QString& key) {
    const QString name = firstFileForKey(packageFolder, key);
    if (name.isEmpty())
        return {};
    return NativePath(packageFolder + QStringLiteral("\\") + name);
}

PackageFileList::PackageFileList(QString packageFolder)
    : folder_(std::move(packageFolder)), prefix_(NativePath(folder_ + QStringLiteral("\\"))),
      names_(ListFiles(NativePath(folder_))) {}

QString PackageFileList::GetFileName(const QString& key) const {
    if (!IsAnnouncementKey(key))
        return {};
    // Names are sorted without regard to case, so those that begin with the key form one run.
    auto it =
        std::lower_bound(names_.begin(), names_.end(), key, [](const QString& a, const QString& b) {
            return CompareWithoutCase(a, b) < 0;
        });
    for (; it != names_.end() && it->startsWith(key); ++it) {
        if (isFileOfKey(*it, key)) {
            // One text, not a joined one made native again, and of its exact size: the row
            // keeps it as long as the package is open, and a joined text has room to grow.
            const QString name = NativePath(*it);
            QString path;
            path.reserve(prefix_.size() + name.size());
            path.append(prefix_.constData(), prefix_.size());
            path.append(name.constData(), name.size());
            return path;
        }
    }
    return {};
}

QString GetExtension(const QString& name) {
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot < 0 ? name : name.mid(dot + 1);
}

IndexEntry SplitIndexEntry(const QString& entry) {
    // As the parts of Split(entry, "~") 0 and 1, without the list: every entry of a load is
    // split. An empty entry has no parts and one without "~" no second.
    const qsizetype first = entry.indexOf(u'~');
    if (entry.isEmpty() || first < 0)
        throw RuntimeError(rt::SubscriptOutOfRange);
    const qsizetype second = entry.indexOf(u'~', first + 1);
    return {entry.left(first), entry.mid(first + 1, second < 0 ? -1 : second - first - 1)};
}

QString JoinIndexEntry(const QString& key, const QString& title) {
    return key + QStringLiteral("~") + title;
}

} // namespace tavik
