#pragma once

#include <QJsonObject>
#include <QStringList>
#include <QTextStream>

namespace tavik::cli {

// Takes the flag "--lossy" out of `args`: true when it was given. With it, a text the package
// files cannot hold is written as they hold it ("?" for each such character), as before.
bool takeLossy(QStringList& args);

// 0 when code page 1252 holds every character of `text`, the value of `field`; otherwise one
// line on `err` naming `file`, the field, each character and its place, and 2.
int refuseUnheld(QTextStream& err, const QString& file, const QString& field, const QString& text);

// `json` with every text in it (names and values) as the files keep it: a character code
// page 1252 cannot hold becomes "?".
QJsonObject lossyTexts(const QJsonObject& json);

} // namespace tavik::cli
