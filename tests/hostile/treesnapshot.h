#pragma once

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QString>
#include <QStringList>

namespace tavik::test {

// Every folder, file and link below `root` (links are not followed) with what it is: a link's
// target, a file's size and content hash. Paths below one of `skip` (relative to `root`) are
// left out. Two snapshots differ exactly when something was written, replaced, deleted or
// created outside what was skipped.
inline QMap<QString, QString> snapshotTree(const QString& root, const QStringList& skip = {}) {
    QMap<QString, QString> entries;
    QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString relative = QDir(root).relativeFilePath(path);
        bool skipped = false;
        for (const QString& s : skip)
            skipped = skipped || relative == s || relative.startsWith(s + u'/');
        if (skipped)
            continue;
        const QFileInfo info(path);
        if (info.isSymLink()) {
            entries[relative] = QStringLiteral("link to ") + info.symLinkTarget();
        } else if (info.isDir()) {
            entries[relative] = QStringLiteral("folder");
        } else {
            QFile file(path);
            QByteArray hash;
            if (file.open(QIODevice::ReadOnly))
                hash = QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
            entries[relative] = QStringLiteral("file %1 %2")
                                    .arg(info.size())
                                    .arg(QString::fromLatin1(hash.toHex()));
        }
    }
    return entries;
}

// What differs between two snapshots, one line per path, for a failure message.
inline QString treeChanges(const QMap<QString, QString>& before,
                           const QMap<QString, QString>& after) {
    QStringList lines;
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (!after.contains(it.key()))
            lines << QStringLiteral("deleted ") + it.key();
        else if (after.value(it.key()) != it.value())
            lines << QStringLiteral("changed ") + it.key();
    }
    for (auto it = after.begin(); it != after.end(); ++it) {
        if (!before.contains(it.key()))
            lines << QStringLiteral("created ") + it.key();
    }
    return lines.join(u'\n');
}

} // namespace tavik::test
