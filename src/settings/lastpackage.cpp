#include "settings/lastpackage.h"

#include "settings/modini.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/runtimeerror.h"

#include <QDir>

namespace tavik {

namespace {

QString settingsFile() {
    return NativePath(AppPath() + QStringLiteral("\\Tavik.ini"));
}

QString comparable(const QString& folder) {
    return QDir::cleanPath(QDir::fromNativeSeparators(folder));
}

} // namespace

QString ReadLastPackage() {
    try {
        return CStr(ReadINI(settingsFile(), QStringLiteral("Settings"),
                            QStringLiteral("LastPackage"), Variant::fromString(QString())));
    } catch (const RuntimeError&) {
        return {};
    }
}

void WriteLastPackage(const QString& folder) {
    if (folder.isEmpty() || comparable(ReadLastPackage()) == comparable(folder))
        return;
    try {
        WriteINI(settingsFile(), QStringLiteral("Settings"), QStringLiteral("LastPackage"),
                 QDir::toNativeSeparators(comparable(folder)));
    } catch (const RuntimeError&) {
        // Only a convenience: a settings file that cannot be written costs the preselection.
    }
}

int IndexOfFolder(const QStringList& folders, const QString& folder) {
    if (folder.isEmpty())
        return -1;
    const QString wanted = comparable(folder);
    for (int i = 0; i < folders.size(); ++i) {
        if (comparable(folders[i]) == wanted)
            return i;
    }
    return -1;
}

} // namespace tavik
