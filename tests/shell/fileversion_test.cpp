#include "shell/fileversion.h"
#include "support/tempdir.h"
#include "support/versionedfile.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::ProgramWithVersionResource;
using tavik::test::TempDir;

TEST(ReadFileVersion, ReportsTheFourVersionPartsAndTheFileType) {
    TempDir dir;
    const QString path =
        dir.write("prog.exe", ProgramWithVersionResource(0x00060000, 0x00540012, 1));
    const FileVersionInfo info = ReadFileVersion(path);
    EXPECT_EQ(info.Version, QStringLiteral("6.0.84.18"));
    EXPECT_EQ(info.FileType, QStringLiteral("Anwendung"));
    EXPECT_EQ(info.FileName, QStringLiteral("prog.exe"));
    EXPECT_EQ(info.Path, path);
}

TEST(ReadFileVersion, AFontFileReportsSchriftartAndType6ReportsNoType) {
    TempDir dir;
    EXPECT_EQ(
        ReadFileVersion(dir.write("a.fon", ProgramWithVersionResource(1 << 16, 0, 4))).FileType,
        QStringLiteral("Schriftart"));
    EXPECT_EQ(
        ReadFileVersion(dir.write("b.drv", ProgramWithVersionResource(1 << 16, 0, 6))).FileType,
        QString());
    EXPECT_EQ(
        ReadFileVersion(dir.write("c.drv", ProgramWithVersionResource(1 << 16, 0, 9))).FileType,
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
