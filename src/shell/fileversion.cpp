#include "fileversion.h"

#include <QtEndian>

namespace tavik {

namespace {

constexpr std::uint32_t kSignature = 0xFEEF04BD;
constexpr qsizetype kFixedSize = 52;

// The key of the root block, as the 32-bit (UTF-16) and the 16-bit (ANSI) formats store it.
QByteArray wideKey() {
    QByteArray key;
    for (const char c : QByteArrayLiteral("VS_VERSION_INFO")) {
        key.append(c);
        key.append('\0');
    }
    return key;
}

} // namespace

FixedFileInfo findFixedFileInfo(const QByteArray& bytes) {
    FixedFileInfo info;
    static const QByteArray keys[] = {wideKey(), QByteArrayLiteral("VS_VERSION_INFO")};
    for (const QByteArray& key : keys) {
        for (qsizetype at = bytes.indexOf(key); at >= 0; at = bytes.indexOf(key, at + 1)) {
            // The fixed block follows the key's terminator, aligned to 32 bits.
            const qsizetype from = at + key.size();
            for (qsizetype p = (from + 3) & ~qsizetype(3); p <= from + 8; p += 4) {
                if (p + kFixedSize > bytes.size())
                    break;
                const auto* data = reinterpret_cast<const uchar*>(bytes.constData() + p);
                if (qFromLittleEndian<std::uint32_t>(data) != kSignature)
                    continue;
                for (std::size_t f = 0; f < info.fields.size(); ++f)
                    info.fields[f] = qFromLittleEndian<std::uint32_t>(data + 4 * f);
                return info;
            }
        }
    }
    return info;
}

QString FileTypeName(std::uint32_t fileType) {
    // The designed spellings, "Trieber" included.
    switch (fileType) {
    case 0:
        return QStringLiteral("Unbekannt");
    case 1:
        return QStringLiteral("Anwendung");
    case 2:
        return QStringLiteral("Dynamic Link Library (DLL)");
    case 3:
        return QStringLiteral("Geräte Trieber");
    case 4:
        return QStringLiteral("Schriftart");
    case 5:
        return QStringLiteral("Virtueller Geräte Treiber");
    case 7:
        return QStringLiteral("Static Library");
    default:
        return {};
    }
}

FileVersionInfo ReadFileVersion(const QString& path) {
    const FixedFileInfo fixed = ReadFixedFileInfo(path);
    FileVersionInfo info;
    const qsizetype slash = std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/'));
    info.FileName = path.mid(slash + 1);
    info.FileType = FileTypeName(fixed.fileType());
    info.Version = QStringLiteral("%1.%2.%3.%4")
                       .arg(fixed.fileVersionMS() >> 16)
                       .arg(fixed.fileVersionMS() & 0xFFFF)
                       .arg(fixed.fileVersionLS() >> 16)
                       .arg(fixed.fileVersionLS() & 0xFFFF);
    info.Path = path;
    return info;
}

} // namespace tavik
