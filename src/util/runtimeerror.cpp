#include "runtimeerror.h"

#include <cerrno>

namespace tavik {

RuntimeError::RuntimeError(int number, QString description)
    : number_(number),
      description_(description.isEmpty() ? defaultDescription(number) : std::move(description)) {
    what_ = message().toUtf8();
}

QString RuntimeError::message() const {
    return QStringLiteral("Laufzeitfehler '%1':\n\n%2").arg(number_).arg(description_);
}

QString RuntimeError::defaultDescription(int number) {
    // The German runtime's own texts: the add-on and the editor run on German systems.
    switch (number) {
    case 5:
        return QStringLiteral("Ungültiger Prozeduraufruf oder ungültiges Argument");
    case 6:
        return QStringLiteral("Überlauf");
    case 7:
        return QStringLiteral("Nicht genügend Speicher");
    case 9:
        return QStringLiteral("Index außerhalb des gültigen Bereichs");
    case 11:
        return QStringLiteral("Division durch Null");
    case 13:
        return QStringLiteral("Typen unverträglich");
    case 52:
        return QStringLiteral("Dateiname oder -nummer falsch");
    case 53:
        return QStringLiteral("Datei nicht gefunden");
    case 55:
        return QStringLiteral("Datei bereits geöffnet");
    case 57:
        return QStringLiteral("Fehler beim Lesen/Schreiben auf dem Gerät");
    case 58:
        return QStringLiteral("Datei existiert bereits");
    case 61:
        return QStringLiteral("Datenträger voll");
    case 62:
        return QStringLiteral("Einlesen hinter Dateiende");
    case 70:
        return QStringLiteral("Zugriff verweigert");
    case 75:
        return QStringLiteral("Fehler beim Zugriff auf Pfad/Datei");
    case 76:
        return QStringLiteral("Pfad nicht gefunden");
    case 91:
        return QStringLiteral("Objektvariable oder With-Blockvariable nicht festgelegt");
    // The list controls bring their own texts.
    case 35600:
        return QStringLiteral("Index out of bounds");
    case 35602:
        return QStringLiteral("Key is not unique in collection");
    default:
        return QStringLiteral("Anwendungs- oder objektdefinierter Fehler");
    }
}

QString ErrorText(const RuntimeError& error) {
    return QStringLiteral("%1 (%2)").arg(error.description()).arg(error.number());
}

} // namespace tavik

namespace tavik::rt {

int FromSystemError(int systemError) {
    switch (systemError) {
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
    case EFBIG:
        return DiskFull;
    case ENOENT:
    case ENOTDIR:
        return PathNotFound;
    case EIO:
        return DeviceIO;
    default:
        return PathFileAccess;
    }
}

} // namespace tavik::rt
