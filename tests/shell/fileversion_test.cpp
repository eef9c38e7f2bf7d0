#include "shell/fileversion.h"
#include "support/tempdir.h"

#include <QtEndian>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

namespace {

// A file with a version resource laid out as a 32-bit program stores it: the block header,
// the UTF-16 key "VS_VERSION_INFO" with its terminator, padding to 32 bits, then the fixed
// information.
QByteArray withVersionResource(std::uint32_t ms, std::uint32_t ls, std::uint32_t fileType) {
    QByteArray bytes("MZ some program bytes before the resource ");
    bytes.append(QByteArray("\x34\x03\x34\x00\x00\x00", 6)); // length, value length, type
    for (const char c : QByteArrayLiteral("VS_VERSION_INFO")) {
        bytes.append(c);
        bytes.append('\0');
    }
    bytes.append(QByteArray(2, '\0')); // terminator
    while (bytes.size() % 4 != 0)
        bytes.append('\0');
    const std::uint32_t fixed[13] = {0xFEEF04BD, 0x10000, ms,       ls, ms, ls, 0x3F,
                                     0,          4,       fileType, 0,  0,  0};
    for (std::uint32_t f : fixed) {
        uchar b[4];
        qToLittleEndian(f, b);
        bytes.append(reinterpret_cast<const char*>(b), 4);
    }
    bytes.append("and what follows");
    return bytes;
}

} // namespace

TEST(ReadFileVersion, ReportsTheFourVersionPartsAndTheFileType) {
    TempDir dir;
    const QString path = dir.write("prog.exe", withVersionResource(0x00060000, 0x00540012, 1));
    const FileVersionInfo info = ReadFileVersion(path);
    EXPECT_EQ(info.Version, QStringLiteral("6.0.84.18"));
    EXPECT_EQ(info.FileType, QStringLiteral("Anwendung"));
    EXPECT_EQ(info.FileName, QStringLiteral("prog.exe"));
    EXPECT_EQ(info.Path, path);
}

TEST(ReadFileVersion, AFontFileReportsSchriftartAndType6ReportsNoType) {
    TempDir dir;
    EXPECT_EQ(ReadFileVersion(dir.write("a.fon", withVersionResource(1 << 16, 0, 4))).FileType,
              QStringLiteral("Schriftart"));
    EXPECT_EQ(ReadFileVersion(dir.write("b.drv", withVersionResource(1 << 16, 0, 6))).FileType,
              QString());
    EXPECT_EQ(ReadFileVersion(dir.write("c.drv", withVersionResource(1 << 16, 0, 9))).FileType,
              QString());
}

TEST(ReadFileVersion, AFileWithoutResourceIsUnknownWithVersionZero) {
    TempDir dir;
    for (const QString& path : {dir.write("plain.txt", "no resource here"), dir.file("missing")}) {
        const FileVersionInfo info = ReadFileVersion(path);
        EXPECT_EQ(info.FileType, QStringLiteral("Unbekannt"));
        EXPECT_EQ(info.Version, QStringLiteral("0.0.0.0"));
    }
}

TEST(ReadFileVersion, TheFileNameIsTheTextAfterTheLastBackslash) {
    EXPECT_EQ(ReadFileVersion(QStringLiteral("C:\\Programme\\Tavik\\tavik.exe")).FileName,
              QStringLiteral("tavik.exe"));
    EXPECT_EQ(ReadFileVersion(QStringLiteral("tavik.exe")).FileName, QStringLiteral("tavik.exe"));
}

TEST(FileTypeName, KeepsTheDesignedSpellings) {
    EXPECT_EQ(FileTypeName(2), QStringLiteral("Dynamic Link Library (DLL)"));
    EXPECT_EQ(FileTypeName(3), QStringLiteral("Geräte Trieber"));
    EXPECT_EQ(FileTypeName(5), QStringLiteral("Virtueller Geräte Treiber"));
    EXPECT_EQ(FileTypeName(7), QStringLiteral("Static Library"));
    EXPECT_EQ(FileTypeName(8), QString());
}
