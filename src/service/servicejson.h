#pragma once

#include "service/servicefile.h"

#include <QJsonObject>

namespace tavik {

// A service as the headless tool prints it: header texts and sentences in file order; a
// sentence whose entries were never set has "targets": null.
QJsonObject serviceToJson(const ServiceHeader& header, const QList<SatzRecord>& sentences);

} // namespace tavik
