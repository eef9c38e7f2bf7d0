#include "dialogs/importformats.h"

#include "package/packagefolder.h"
#include "settings/modini.h"

#include <QFileInfo>

namespace tavik {

QStringList InstalledFormats(const QString& formatsFile) {
    QStringList formats;
    // The counter is a 16-bit number; no delivered file comes near it.
    for (int i = 1; i <= 32767; ++i) {
        const QString value = ReadINI(formatsFile, QStringLiteral("Installed"), QString::number(i),
                                      Variant::fromString(QString()))
                                  .stringValue();
        if (value.isEmpty())
            break;
        formats << value;
    }
    return formats;
}

QStringList FormatFilterEntries(const QStringList& installedFormats) {
    QStringList entries{QString::fromUtf16(kAllFilesEntry), QString::fromUtf16(kAllMediaEntry)};
    for (const QString& format : installedFormats)
        entries << QStringLiteral("*.") + format;
    return entries;
}

QString FilterPattern(const QStringList& entries, int index) {
    if (index == 0)
        return QStringLiteral("*.*");
    if (index == 1)
        return entries.mid(2).join(u';');
    if (index >= 2 && index < entries.size())
        return entries[index];
    return {};
}

bool IsInstalledFormat(const QString& path, const QStringList& installedFormats) {
    const QString name = QFileInfo(path).fileName();
    if (!name.contains(u'.'))
        return false;
    const QString extension = GetExtension(name);
    for (const QString& format : installedFormats) {
        if (extension.compare(format, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace tavik
