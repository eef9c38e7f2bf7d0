#pragma once

#include "package/clszeldb.h"
#include "package/jsontextwriter.h"

namespace tavik {

// The records a store read from its file, as the headless tool prints them: every key slot
// the file held, in slot order, with its items. Flags other than -1 and 0 and the bits of
// doubles, dates and odd Booleans are given too, so zeldbBytesFromJson can write them back.
// A non-empty `tail` (bytes the file holds behind what was read) is given as hex.
void writeZeldbJson(JsonTextWriter& json, const clsZELDB& store, const QByteArray& tail = {});

} // namespace tavik
