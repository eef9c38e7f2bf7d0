#pragma once

#include "package/jsontextwriter.h"
#include "service/servicefile.h"

namespace tavik {

// A service as the headless tool prints it: header texts and sentences in file order; a
// sentence whose entries were never set has "targets": null. A non-empty `tail` (bytes the
// file holds behind what was read) is given as hex.
void writeServiceJson(JsonTextWriter& json, const ServiceHeader& header,
                      const QList<SatzRecord>& sentences, const QByteArray& tail = {});

} // namespace tavik
