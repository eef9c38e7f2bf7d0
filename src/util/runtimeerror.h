#pragma once

#include <QString>
#include <exception>

namespace tavik {

// The one error the runtime raises. It carries the runtime's number and text so the
// event-loop handler can show the message users of the add-on know ("Laufzeitfehler '9': ...").
class RuntimeError : public std::exception {
public:
    explicit RuntimeError(int number, QString description = {});

    int number() const { return number_; }
    const QString& description() const { return description_; }
    // The text of the runtime's message box: "Laufzeitfehler '9':\n\n<text>".
    QString message() const;
    const char* what() const noexcept override { return what_.constData(); }

    static QString defaultDescription(int number);

private:
    int number_;
    QString description_;
    QByteArray what_;
};

// The error's text and number for a message of the program's own: "Datenträger voll (61)".
QString ErrorText(const RuntimeError& error);

// Error numbers of the runtime, as the rest of the program raises them.
namespace rt {
inline constexpr int InvalidCall = 5;
inline constexpr int Overflow = 6;
inline constexpr int OutOfMemory = 7;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int TypeMismatch = 13;
inline constexpr int BadFileName = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int DeviceIO = 57;
inline constexpr int DiskFull = 61;
inline constexpr int InputPastEnd = 62;
inline constexpr int PermissionDenied = 70;
inline constexpr int PathFileAccess = 75;
inline constexpr int PathNotFound = 76;
// Raised by the list controls.
inline constexpr int IndexOutOfBounds = 35600;
inline constexpr int KeyNotUnique = 35602;

// The runtime's number for a system error (errno) met while reading or writing a file: 61 for
// a full disk, 75 for a refused access, 76 for a missing folder, 57 for a device error.
int FromSystemError(int systemError);
} // namespace rt

} // namespace tavik
