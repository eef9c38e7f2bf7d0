#pragma once

#include <QString>
#include <QStringList>

namespace tavik {

// One MCI command string taken apart. "open" is read from the right ("open PATH [type T]
// alias A"), so a path may hold blanks; every other command is "verb device words...".
struct MciCommand {
    QString verb;      // lower case
    QString device;    // the alias (or, for open, the alias named by "alias")
    QString path;      // open only: the element, unquoted
    QString type;      // open only: the device type, "" when none is named
    QStringList words; // the words after the device, lower case
    int error = 0;     // an MCI error code when the text cannot be taken apart
};

MciCommand parseMciCommand(const QString& text);

} // namespace tavik
