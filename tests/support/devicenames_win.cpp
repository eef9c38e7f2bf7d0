#include "support/devicenames.h"

#include "support/winehost.h"

#include <QDir>
#include <QFile>

namespace tavik::test {

bool SystemHasDeviceNames() {
    return true;
}

bool PutFileNamedLikeADevice(const QString& folder, const QString& name, const QByteArray& bytes) {
    // Written under a harmless name, then given the device's name by the host.
    const QString staged = QDir(folder).filePath(QStringLiteral("staged-device-file"));
    QFile file(staged);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return false;
    file.close();
    const QString hostFolder = HostPath(folder);
    return !hostFolder.isEmpty() && RunOnHost(QStringLiteral("/usr/bin/mv"),
                                              {hostFolder + QStringLiteral("/staged-device-file"),
                                               hostFolder + QStringLiteral("/") + name}) == 0;
}

void RemoveFileNamedLikeADevice(const QString& folder, const QString& name) {
    const QString hostFolder = HostPath(folder);
    if (!hostFolder.isEmpty())
        RunOnHost(QStringLiteral("rm"), {QStringLiteral("-f"), hostFolder + u'/' + name});
}

} // namespace tavik::test
