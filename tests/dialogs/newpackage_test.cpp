#include "dialogs/newpackage.h"
#include "support/errorof.h"
#include "support/tempdir.h"
#include "support/writefault.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::readAll;
using tavik::test::TempDir;

TEST(SaveTextToFile, WritesTheTextInAnsiFollowedByCrLf) {
    TempDir dir;
    SaveTextToFile(QStringLiteral("Linie 1\r\nGrüße"), dir.file("Package.txt"));
    EXPECT_EQ(readAll(dir.file("Package.txt")), QByteArray("Linie 1\r\nGr\xfc\xdf"
                                                           "e\r\n"));
}

TEST(SaveTextToFile, ReplacesALongerOlderFileWhole) {
    TempDir dir;
    const QString path = dir.write("Package.txt", QByteArray(500, 'x'));
    SaveTextToFile(QStringLiteral("kurz"), path);
    EXPECT_EQ(readAll(path), QByteArray("kurz\r\n"));
}

TEST(SaveTextToFile, AMissingFolderIsTheRuntimesPathError) {
    TempDir dir;
    EXPECT_EQ(errorOf([&] { SaveTextToFile(QStringLiteral("x"), dir.file("nope/Package.txt")); }),
              rt::PathNotFound);
}

TEST(CreateDir, MakesTheFolderWithoutComplaint) {
    TempDir dir;
    int complaints = 0;
    EXPECT_TRUE(CreateDir(dir.file("Linie1"), [&] { ++complaints; }));
    EXPECT_TRUE(QFileInfo(dir.file("Linie1")).isDir());
    EXPECT_EQ(complaints, 0);
}

TEST(CreateDir, AnExistingFolderIsComplainedAboutAndReportedFalse) {
    TempDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("Linie1"));
    int complaints = 0;
    EXPECT_FALSE(CreateDir(dir.file("Linie1"), [&] { ++complaints; }));
    EXPECT_EQ(complaints, 1);
}

TEST(CreateDir, AMissingParentIsComplainedAboutAndNothingIsMade) {
    TempDir dir;
    int complaints = 0;
    EXPECT_FALSE(CreateDir(dir.file("a/b"), [&] { ++complaints; }));
    EXPECT_EQ(complaints, 1);
    EXPECT_FALSE(QFileInfo::exists(dir.file("a")));
}

TEST(GetFolderName, IsTheLastPartOfThePackageFolder) {
    EXPECT_EQ(GetFolderName(QStringLiteral("C:\\Tavik\\bin\\..\\Data\\Linie1")),
              QStringLiteral("Linie1"));
    EXPECT_EQ(GetFolderName(QStringLiteral("/opt/tavik/bin/../Data/Linie1")),
              QStringLiteral("Linie1"));
    EXPECT_EQ(GetFolderName(QStringLiteral("Linie1")), QStringLiteral("Linie1"));
}

TEST(GetFolderName, IsEmptyForNoFolderAndForAFolderEndingInASeparator) {
    EXPECT_EQ(GetFolderName(QString()), QString());
    EXPECT_EQ(GetFolderName(QStringLiteral("D:\\Pakete\\Linie1\\")), QString());
}

TEST(IsPlainFolderName, AcceptsOneFolderName) {
    EXPECT_TRUE(IsPlainFolderName(QStringLiteral("Linie1")));
    EXPECT_TRUE(IsPlainFolderName(QStringLiteral("S-Bahn Zürich")));
    EXPECT_TRUE(IsPlainFolderName(QStringLiteral("v1.2")));
}

TEST(IsPlainFolderName, RefusesSeparatorsDotDotAndDriveColons) {
    EXPECT_FALSE(IsPlainFolderName(QStringLiteral("a/b")));
    EXPECT_FALSE(IsPlainFolderName(QStringLiteral("a\\b")));
    EXPECT_FALSE(IsPlainFolderName(QStringLiteral("..")));
    EXPECT_FALSE(IsPlainFolderName(QStringLiteral("../Linie1")));
    EXPECT_FALSE(IsPlainFolderName(QStringLiteral("..\\..\\bin")));
    EXPECT_FALSE(IsPlainFolderName(QStringLiteral("/tmp/x")));
    EXPECT_FALSE(IsPlainFolderName(QStringLiteral("C:x")));
}

TEST(NewPackageFolder, IsTheDataFolderFollowedByTheName) {
    TempDir root;
    qputenv("TAVIK_HOME", root.path().toLocal8Bit());
    const QString folder = NewPackageFolder(QStringLiteral("Linie1"));
    qunsetenv("TAVIK_HOME");
    EXPECT_EQ(QDir::cleanPath(folder), QDir::cleanPath(root.file("Data/Linie1")));
    EXPECT_TRUE(folder.endsWith(QDir::toNativeSeparators(QStringLiteral("Data/Linie1"))));
}

TEST(ReadDescription, GivesTheWholeTextWithLineBreaksAsTheBoxHasThem) {
    TempDir dir;
    const QString path = dir.write("Package.txt", "Zeile 1\r\nGr\xfc\xdf"
                                                  "e\r\n");
    EXPECT_EQ(ReadDescription(path), QStringLiteral("Zeile 1\nGrüße\n"));
}

TEST(ReadDescription, AMissingFileGivesEmptyText) {
    TempDir dir;
    EXPECT_EQ(ReadDescription(dir.file("Package.txt")), QString());
    EXPECT_EQ(ReadDescription(QString()), QString());
}

TEST(ReadDescription, AHugeFileIsReadOnlyAsFarAsTheBoxHolds) {
    TempDir dir;
    const QString path = dir.write("Package.txt", QByteArray(8 * 1024 * 1024, 'a'));
    const QString text = ReadDescription(path);
    EXPECT_EQ(text.size(), kMaxDescriptionBytes);
}

TEST(ReadDescription, EndsAtTheFirstNulByte) {
    TempDir dir;
    const QString path = dir.write("Package.txt", QByteArray("Text\0M\xfcll", 9));
    EXPECT_EQ(ReadDescription(path), QStringLiteral("Text"));
}

TEST(DescriptionForFile, WritesEveryLineBreakAsCrLf) {
    EXPECT_EQ(DescriptionForFile(QStringLiteral("a\nb\n")), QStringLiteral("a\r\nb\r\n"));
    EXPECT_EQ(DescriptionForFile(QStringLiteral("a\r\nb")), QStringLiteral("a\r\nb"));
    EXPECT_EQ(DescriptionForFile(QString()), QString());
}

TEST(SaveTextToFile, AFailedWriteKeepsTheOlderFileByteForByte) {
    TempDir dir;
    const QString path = dir.write("Package.txt", QByteArray("alt\0text", 8));
    tavik::test::ScopedWriteFault fault(WriteStep::Write, ENOSPC);
    EXPECT_EQ(errorOf([&] { SaveTextToFile(QStringLiteral("neu"), path); }), rt::DiskFull);
    EXPECT_EQ(readAll(path), QByteArray("alt\0text", 8));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"Package.txt"});
}

TEST(WritesDescription, TheInformationModeWritesOnlyAnEditedDescription) {
    EXPECT_FALSE(WritesDescription(false, QStringLiteral("Text"), QStringLiteral("Text")));
    EXPECT_TRUE(WritesDescription(false, QStringLiteral("Text!"), QStringLiteral("Text")));
    EXPECT_FALSE(WritesDescription(false, QString(), QStringLiteral("Text")));
    EXPECT_TRUE(WritesDescription(true, QStringLiteral("Text"), QString()));
    EXPECT_TRUE(WritesDescription(true, QStringLiteral("Text"), QStringLiteral("Text")));
    EXPECT_FALSE(WritesDescription(true, QString(), QString()));
}
