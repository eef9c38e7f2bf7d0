#pragma once

#include <QStringList>

namespace tavik {

// Splits as the runtime splits: an empty text gives no parts at all, otherwise every
// delimiter starts a new part (empty parts included).
QStringList Split(const QString& text, const QString& delimiter);

// Part `index` of a split; a part that is not there raises runtime error 9.
const QString& PartAt(const QStringList& parts, qsizetype index);

} // namespace tavik
