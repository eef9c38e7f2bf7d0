#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

namespace tavik::test {

// Every file, folder and link below a folder with what it holds (a link: where it points,
// never followed), to tell afterwards whether anything outside a package changed.
class TreeSnapshot {
public:
    // `skip`: folders below `root` left out of the snapshot (the package under test).
    explicit TreeSnapshot(const QString& root, const QStringList& skip = {});

    // One line per entry that was added, removed or changed since `before`; empty when none.
    QStringList changesSince(const TreeSnapshot& before) const;

private:
    void walk(const QString& folder, const QStringList& skip);
    QString root_;
    QMap<QString, QByteArray> entries_; // relative path -> kind and content
};

} // namespace tavik::test
