#pragma once

#include "package/clszeldb.h"

#include <QJsonObject>

namespace tavik {

// The records a store read from its file, as the headless tool prints them: every key slot
// the file held, in slot order, with its items. Flags other than -1 and 0 and the bits of
// doubles, dates and odd Booleans are given too, so zeldbBytesFromJson can write them back.
QJsonObject zeldbToJson(const clsZELDB& store);

} // namespace tavik
