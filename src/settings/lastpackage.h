#pragma once

#include <QString>
#include <QStringList>

namespace tavik {

// The package last loaded, kept in the program's settings file (section "Settings", key
// "LastPackage") so that the open dialog can offer it again after a restart. "" when none.
QString ReadLastPackage();
// Writes only when the folder differs from the one kept, so a save's reload writes nothing.
void WriteLastPackage(const QString& folder);

// The index into `folders` of the one that names the same folder as `folder` (separators,
// doubled separators and "." parts aside), -1 when none does.
int IndexOfFolder(const QStringList& folders, const QString& folder);

} // namespace tavik
