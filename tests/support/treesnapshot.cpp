#include "support/treesnapshot.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tavik::test {

TreeSnapshot::TreeSnapshot(const QString& root, const QStringList& skip)
    : root_(QDir(root).absolutePath()) {
    QStringList absoluteSkip;
    for (const QString& folder : skip)
        absoluteSkip << QDir(folder).absolutePath();
    walk(root_, absoluteSkip);
}

void TreeSnapshot::walk(const QString& folder, const QStringList& skip) {
    const QFileInfoList entries = QDir(folder).entryInfoList(
        QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& entry : entries) {
        const QString path = entry.absoluteFilePath();
        if (skip.contains(path))
            continue;
        const QString relative = QDir(root_).relativeFilePath(path);
        if (entry.isSymbolicLink()) {
            entries_[relative] = "link -> " + QFile::encodeName(entry.symLinkTarget());
        } else if (entry.isDir()) {
            entries_[relative] = "folder";
            walk(path, skip);
        } else {
            QFile file(path);
            entries_[relative] = file.open(QIODevice::ReadOnly) ? "file " + file.readAll()
                                                                : QByteArray("unreadable file");
        }
    }
}

QStringList TreeSnapshot::changesSince(const TreeSnapshot& before) const {
    QStringList changes;
    for (auto it = before.entries_.cbegin(); it != before.entries_.cend(); ++it) {
        if (!entries_.contains(it.key()))
            changes << QStringLiteral("removed: ") + it.key();
        else if (entries_.value(it.key()) != it.value())
            changes << QStringLiteral("changed: ") + it.key();
    }
    for (auto it = entries_.cbegin(); it != entries_.cend(); ++it) {
        if (!before.entries_.contains(it.key()))
            changes << QStringLiteral("added: ") + it.key();
    }
    return changes;
}

} // namespace tavik::test
