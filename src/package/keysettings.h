#pragma once

#include <QString>

namespace tavik {

class clsZELDB;

// Frees every item the store still holds under `key` (colour, place, sentence flag, title
// and whatever else an older editor or tool left there), so an announcement that takes the
// key starts with no setting of an earlier one. A key the store lacks is left alone.
void ClearKeySettings(clsZELDB& store, const QString& key);

} // namespace tavik
