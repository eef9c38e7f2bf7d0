#pragma once

#include "package/clszeldb.h"

#include <QJsonObject>

namespace tavik {

// The records a store read from its file, as the headless tool prints them: every key slot
// the file held, in slot order, with its items.
QJsonObject zeldbToJson(const clsZELDB& store);

} // namespace tavik
