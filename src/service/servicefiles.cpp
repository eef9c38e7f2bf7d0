#include "servicefiles.h"

#include "service/servicefile.h"
#include "util/apppath.h"
#include "util/fileops.h"

#include <QFileInfo>
#include <algorithm>

namespace tavik {

QString ServiceFilePath(const QString& packageFolder, const QString& id) {
    return NativePath(packageFolder + QStringLiteral("\\_") + id + QStringLiteral("._"));
}

bool IsServiceId(const QString& id) {
    if (id.contains(u"..") || id.contains(u'/') || id.contains(u'\\') || id.contains(u':'))
        return false;
    return std::none_of(id.begin(), id.end(), [](QChar c) {
        return c.unicode() < 0x20 || c.unicode() == 0x7F || c.category() == QChar::Other_Control;
    });
}

QString ServiceListFolder(const QString& packageFolder) {
    // The package path is held with the system's separators.
    QString folder = NativePath(packageFolder);
    folder.replace(NativePath(QStringLiteral("\\bin\\..\\Data\\")),
                   NativePath(QStringLiteral("\\Data")));
    return folder + NativePath(QStringLiteral("\\"));
}

void FindFiles(const QString& packageFolder, QStringList& lstOpen, QStringList& File1) {
    lstOpen.clear();
    const QString folder = ServiceListFolder(packageFolder);
    for (const QString& name : ListFiles(folder)) {
        if (!WildcardMatch(QStringLiteral("*._"), name))
            continue;
        const QString path = folder + name;
        QString title, author, description;
        GetFileInfo(path, title, author, description);
        if (title.isEmpty())
            continue;
        lstOpen.append(title);
        File1.append(path);
    }
}

QString LowestFreeServiceId(const QString& packageFolder) {
    constexpr int kIds = 1000000;
    for (int n = 0; n < kIds; ++n) {
        const QString id = QStringLiteral("%1").arg(n, 6, 10, QLatin1Char('0'));
        if (!QFileInfo::exists(ServiceFilePath(packageFolder, id)))
            return id;
    }
    return QString();
}

} // namespace tavik
