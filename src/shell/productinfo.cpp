#include "productinfo.h"

#include "util/apppath.h"

namespace tavik {

QString VersionLine(int major, int minor, int revision) {
    return QStringLiteral("Version %1.%2 Build %3").arg(major).arg(minor).arg(revision);
}

QString ProgramVersionLine() {
    return VersionLine(TAVIK_VERSION_MAJOR, TAVIK_VERSION_MINOR, TAVIK_VERSION_PATCH);
}

std::int16_t PictureFileNumber(const QString& productName) {
    return productName == QString::fromUtf16(kProductName) ? 3 : 2;
}

QString ProgramIconFile() {
    return NativePath(AppPath() + QStringLiteral("\\..\\res\\img\\icon.png"));
}

QString MailLink(const QString& address) {
    return QStringLiteral("mailto:") + address + QStringLiteral("?Subject=") +
           QStringLiteral("Tavik");
}

} // namespace tavik
