#include "mcierrortext.h"

#include "mcierrors.h"

namespace tavik::mci {

QString ErrorMeaning(int code) {
    switch (code) {
    case UnrecognizedKeyword:
        return QStringLiteral("the command holds a word the device does not know");
    case UnrecognizedCommand:
        return QStringLiteral("the device does not know the command");
    case InvalidDeviceName:
        return QStringLiteral("no device of that name or type is open or known");
    case MissingParameter:
        return QStringLiteral("the command lacks a value it needs");
    case FileNotFound:
        return QStringLiteral("the file cannot be found");
    case ExtensionNotFound:
        return QStringLiteral("the file's extension names no sound device "
                              "(Formats.ini names one when \"use media types\" is on)");
    case OutOfRange:
        return QStringLiteral("a value lies outside the range the device takes");
    case DuplicateAlias:
        return QStringLiteral("the alias is already open");
    case BadConstant:
        return QStringLiteral("a value is not one the device knows");
    case MissingDeviceName:
        return QStringLiteral("the command names no device");
    case BadTimeFormat:
        return QStringLiteral("the time format is not one the device knows");
    case NoClosingQuote:
        return QStringLiteral("a quoted name is not closed");
    case InvalidFile:
        return QStringLiteral("the file is not a sound the device can read");
    default:
        return QStringLiteral("an MCI error without a known meaning");
    }
}

QString CommandFailure(const QString& command, const QString& file, int code) {
    return QStringLiteral("%1 of %2 failed with MCI error %3: %4")
        .arg(command, file)
        .arg(code)
        .arg(ErrorMeaning(code));
}

} // namespace tavik::mci
