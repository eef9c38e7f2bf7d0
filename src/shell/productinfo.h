#pragma once

#include <QString>
#include <cstdint>

namespace tavik {

// The product this program is; the picture of the splash and about windows depends on it.
inline constexpr char16_t kProductName[] = u"Tavik Editor";

// Where the about window's links lead. The product has no web site of its own yet: the home
// page link opens the delivered read-me, and mail goes to the address below.
inline constexpr char16_t kAuthorMail[] = u"tavik-editor@localhost";

// "Version 1.2 Build 37".
QString VersionLine(int major, int minor, int revision);
// The line for this build's own version.
QString ProgramVersionLine();

// The "_Files" number of the splash and about picture: 3 for this editor, 2 for any other
// product of the family.
std::int16_t PictureFileNumber(const QString& productName);

// The program's window icon, delivered with the pictures in the installation's res folder.
QString ProgramIconFile();

// "mailto:" & address & "?Subject=Tavik".
QString MailLink(const QString& address);

} // namespace tavik
