#include "support/devicenames.h"

#include <QDir>
#include <QFile>

namespace tavik::test {

bool SystemHasDeviceNames() {
    return false;
}

bool PutFileNamedLikeADevice(const QString& folder, const QString& name, const QByteArray& bytes) {
    QFile file(QDir(folder).filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

void RemoveFileNamedLikeADevice(const QString& folder, const QString& name) {
    QFile::remove(QDir(folder).filePath(name));
}

} // namespace tavik::test
