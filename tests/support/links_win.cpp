#include "support/links.h"

#include <QDir>
#include <QFileInfo>
#include <windows.h>

namespace tavik::test {

namespace {

const wchar_t* wide(const QString& path) {
    return reinterpret_cast<const wchar_t*>(path.utf16());
}

} // namespace

// A real symbolic link, as Windows makes it (QFile::link would make a shell shortcut, which is
// a plain file). Wine 8 answers the call without making anything, so a link is only believed
// when the system then shows it as one.
bool MakeLink(const QString& target, const QString& link) {
    const QString nativeLink = QDir::toNativeSeparators(link);
    DWORD flags = SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    if (QFileInfo(target).isDir())
        flags |= SYMBOLIC_LINK_FLAG_DIRECTORY;
    if (!CreateSymbolicLinkW(wide(nativeLink), wide(QDir::toNativeSeparators(target)), flags))
        return false;
    const DWORD attributes = GetFileAttributesW(wide(nativeLink));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

QString LinksWhyNot() {
    return QStringLiteral("this system makes no symbolic links (Wine 8 answers the call without "
                          "making one, and shows the host's links as the files they name)");
}

} // namespace tavik::test
