#pragma once

#include <QByteArray>

#include "util/jsontree.h"

namespace tavik {

// The service file a dump describes, byte for byte: header texts, sentences in order (one
// whose "targets" is null gets an array descriptor of 0 dimensions), each "last_target" as
// given, and any bytes the file held behind its sentences ("tail"). Raises JsonFieldError
// for the first field that no service file can hold.
QByteArray serviceBytesFromJson(const JsonValue& json);

} // namespace tavik
