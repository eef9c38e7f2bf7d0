#pragma once

#include <QByteArray>

#include "util/jsontree.h"

namespace tavik {

// The package index file a dump describes, byte for byte: the header with its reserved
// bytes, every key slot in order (free ones and the trailing one included), each key's items
// or none, each value with its type code, and any bytes the file held behind its records.
// Raises JsonFieldError for the first field that no file can hold.
QByteArray zeldbBytesFromJson(const JsonValue& json);

} // namespace tavik
