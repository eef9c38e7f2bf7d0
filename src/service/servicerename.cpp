#include "servicerename.h"

#include "service/servicefiles.h"
#include "util/cp1252.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QFile>
#include <QFileInfo>
#include <optional>

namespace tavik {

bool ServiceIdTypable(const QString& typed) {
    static const QString kNotInFileNames = QStringLiteral("<>\"|?*");
    for (const QChar c : typed) {
        if (kNotInFileNames.contains(c))
            return false;
    }
    return IsServiceId(typed) && CanHoldInCp1252(typed);
}

void RenameServiceFile(const QString& oldPath, const QString& newPath,
                       const std::function<void(const QString&)>& write) {
    std::optional<QByteArray> before;
    if (QFileInfo::exists(newPath)) {
        QFile file(newPath);
        if (!OpenToRead(file))
            throw RuntimeError(rt::PathFileAccess);
        before = file.readAll();
    }
    const auto giveBack = [&] {
        try {
            if (before)
                WriteFileAtomically(newPath, *before);
            else
                QFile::remove(newPath);
        } catch (const RuntimeError&) {
            // The first error is the one to report.
        }
    };
    try {
        write(newPath);
        Kill(oldPath);
    } catch (const RuntimeError&) {
        giveBack();
        throw;
    }
}

} // namespace tavik
