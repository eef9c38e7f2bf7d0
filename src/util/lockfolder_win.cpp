#include "packagelock.h"

#include <QDir>

namespace tavik {

QString UserLockFolder() {
    // %TEMP% is the user's own on Windows.
    const QString folder = QDir::tempPath() + QStringLiteral("/tavik-locks");
    QDir().mkpath(folder);
    return folder;
}

} // namespace tavik
