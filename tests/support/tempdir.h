#pragma once

#include <QByteArray>
#include <QString>
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

} // namespace tavik::test
