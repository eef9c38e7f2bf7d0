#include "emulatorbackend.h"

#include "audio/mcierrors.h"

namespace tavik {

MciBackend::Result EmulatorBackend::sendString(const QString& command, int replyLength,
                                               qintptr callbackWindow) {
    Q_UNUSED(callbackWindow); // no notify flag is ever sent, so nothing calls back
    MciEmulator::Reply reply = emulator_.send(command);
    // The reply fills the caller's buffer, which keeps room for its terminating NUL.
    const qsizetype room = replyLength > 0 ? replyLength - 1 : 0;
    return {reply.code, reply.text.left(room)};
}

MciBackend::Result EmulatorBackend::sendOpen(const QString& command, const OpenElement& element,
                                             qintptr callbackWindow) {
    Q_UNUSED(callbackWindow);
    MciEmulator::Reply reply = emulator_.sendOpen(command, element.path, element.inCommand);
    return {reply.code, {}};
}

QString EmulatorBackend::errorString(int code) {
    switch (code) {
    case mci::NoError:
        return QStringLiteral("The specified command was carried out.");
    case mci::UnrecognizedKeyword:
        return QStringLiteral("The driver cannot recognize the specified command parameter.");
    case mci::UnrecognizedCommand:
        return QStringLiteral("The driver cannot recognize the specified command.");
    case mci::InvalidDeviceName:
        return QStringLiteral("The specified device is not open or is not recognized by MCI.");
    case mci::MissingParameter:
        return QStringLiteral("The specified command requires a parameter. Please supply one.");
    case mci::FileNotFound:
        return QStringLiteral("Cannot find the specified file. Make sure the path and filename "
                              "are correct.");
    case mci::ExtensionNotFound:
        return QStringLiteral("The specified extension has no device type associated with it. "
                              "Specify a device type.");
    case mci::DuplicateAlias:
        return QStringLiteral("The specified alias is already being used in this application. "
                              "Use a unique alias.");
    case mci::MissingDeviceName:
        return QStringLiteral("No device name was specified.");
    case mci::BadTimeFormat:
        return QStringLiteral("The specified time format is invalid.");
    case mci::InvalidFile:
        return QStringLiteral("Cannot play the specified file on the specified MCI device. The "
                              "file may be corrupt, or not in the correct format.");
    default:
        return QStringLiteral("Unknown problem while loading the specified device driver.");
    }
}

} // namespace tavik
