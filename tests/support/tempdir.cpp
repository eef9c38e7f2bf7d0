#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <stdexcept>

namespace tavik::test {

TempDir::TempDir() {
    if (!dir_.isValid())
        throw std::runtime_error("cannot make a temporary folder");
}

QString TempDir::write(const QString& name, const QByteArray& bytes) const {
    const QString path = file(name);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write a test file");
    return path;
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

QStringList namesIn(const QString& folder, bool hidden) {
    QDir::Filters filters = QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot;
    if (hidden)
        filters |= QDir::Hidden;
    return QDir(folder).entryList(filters);
}

} // namespace tavik::test
