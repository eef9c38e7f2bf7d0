#include "package/packagetext.h"

#include "util/cp1252.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QFile>
#include <QFileInfo>

namespace tavik {

QString ReadPackageText(const QString& path, qint64 maxBytes) {
    const QFileInfo info(path);
    if (path.isEmpty() || !info.exists() || info.isDir())
        throw RuntimeError(rt::FileNotFound);
    QFile file(path);
    if (!OpenToRead(file))
        throw RuntimeError(rt::PathFileAccess);
    return fromCp1252(file.read(maxBytes));
}

QString ReadPackageDescription(const QString& path) {
    try {
        return ReadPackageText(path);
    } catch (const RuntimeError& error) {
        if (error.number() != rt::FileNotFound)
            throw;
    }
    return {};
}

} // namespace tavik
