#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace tavik::test {

// A scratch folder for one test, removed afterwards.
class TempDir {
public:
    TempDir();
    QString path() const { return dir_.path(); }
    QString file(const QString& name) const { return dir_.filePath(name); }
    // Writes `bytes` to `name` below the folder and returns the full path.
    QString write(const QString& name, const QByteArray& bytes) const;

private:
    QTemporaryDir dir_;
};

QByteArray readAll(const QString& path);

// The names a folder holds, files, folders, links and system entries alike, sorted; with
// `hidden` also those whose name begins with a dot.
QStringList namesIn(const QString& folder, bool hidden = true);

} // namespace tavik::test
