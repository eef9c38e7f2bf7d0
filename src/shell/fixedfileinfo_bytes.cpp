#include "fileversion.h"

#include "util/fileops.h"

#include <QFile>

namespace tavik {

FixedFileInfo ReadFixedFileInfo(const QString& path) {
    QFile file(path);
    if (!OpenToRead(file))
        return {};
    // Mapped, so a large file costs no memory of its own.
    uchar* data = file.map(0, file.size());
    if (!data)
        return {};
    return findFixedFileInfo(QByteArray::fromRawData(reinterpret_cast<char*>(data),
                                                     static_cast<qsizetype>(file.size())));
}

} // namespace tavik
