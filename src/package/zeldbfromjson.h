#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

#include "util/jsontree.h"

namespace tavik {

// The package index file a dump describes, byte for byte: the header with its reserved
// bytes, every key slot in order (free ones and the trailing one included), each key's items
// or none, each value with its type code, and any bytes the file held behind its records.
// Raises JsonFieldError for the first field that no file can hold.
QByteArray zeldbBytesFromJson(const JsonValue& json);

// The same bytes straight from the text of a dump as the tool writes it, in one pass and
// without a tree of the document: for a text whose values are all plain (whole numbers, texts
// without escapes, the value types of a package's settings) and whose fields are exactly the
// dump's. Nothing for any other text, also a valid one, which then takes the reading above:
// whatever this returns, that reading returns too.
std::optional<QByteArray> zeldbBytesFromDumpText(QByteArrayView text);

} // namespace tavik
