#include "support/errorof.h"
#include "support/links.h"
#include "support/namedpipe.h"
#include "support/tempdir.h"
#include "util/apppath.h"
#include "util/fileops.h"
#include "util/platformnames.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::TempDir;

TEST(FileCheck, APresentFileHasAtLeastOneByte) {
    TempDir dir;
    EXPECT_TRUE(FileCheck(dir.write("a.txt", "x")));
    EXPECT_FALSE(FileCheck(dir.write("empty.txt", "")));
    EXPECT_FALSE(FileCheck(dir.file("missing.txt")));
    EXPECT_FALSE(FileCheck(dir.path()));
    EXPECT_FALSE(FileCheck(QString()));
}

TEST(FileCheck, DeletesAnEmptyFileOnlyWhenAsked) {
    TempDir dir;
    const QString empty = dir.write("empty.txt", "");
    EXPECT_FALSE(FileCheck(empty));
    EXPECT_TRUE(QFileInfo::exists(empty));
    EXPECT_FALSE(FileCheck(empty, true));
    EXPECT_FALSE(QFileInfo::exists(empty));
    const QString full = dir.write("full.txt", "abc");
    EXPECT_TRUE(FileCheck(full, true));
    EXPECT_TRUE(QFileInfo::exists(full));
}

TEST(WildcardMatch, MatchesStarsAndQuestionMarksWithoutRegardToCase) {
    EXPECT_TRUE(WildcardMatch("0007*", "0007.wav"));
    EXPECT_TRUE(WildcardMatch("0007*", "0007"));
    EXPECT_TRUE(WildcardMatch("*.WAV", "a.b.wav"));
    EXPECT_TRUE(WildcardMatch("a?c", "ABC"));
    EXPECT_FALSE(WildcardMatch("0007*", "0070.wav"));
    EXPECT_FALSE(WildcardMatch("a?c", "ac"));
    EXPECT_TRUE(WildcardMatch("*", ""));
    EXPECT_FALSE(WildcardMatch("*a*a*a*a*a*a*b", QString(200, u'a')));
}

TEST(CompareWithoutCase, OrdersNamesAsQtComparesThemWithoutCase) {
    // ASCII in both cases, letters whose folding leaves ASCII (the Kelvin sign, the long s),
    // umlauts and sharp s, a character beyond the first plane, prefixes and the empty name.
    const QStringList names = {QString(),
                               QStringLiteral("0001.wav"),
                               QStringLiteral("0001.WAV"),
                               QStringLiteral("0001.mp3"),
                               QStringLiteral("0001"),
                               QStringLiteral("0010.wav"),
                               QStringLiteral("0001 a.wav"),
                               QStringLiteral("Zug"),
                               QStringLiteral("zug"),
                               QStringLiteral("zu_g"),
                               QStringLiteral("zu[g"),
                               QStringLiteral("k"),
                               QStringLiteral("\u212A"),
                               QStringLiteral("s"),
                               QStringLiteral("\u017F"),
                               QStringLiteral("st"),
                               QStringLiteral("\u00DF"),
                               QStringLiteral("\u00C4x"),
                               QStringLiteral("\u00E4x"),
                               QStringLiteral("a\U00010400"),
                               QStringLiteral("a\U00010428"),
                               QStringLiteral("a\U00010400b"),
                               QStringLiteral("A~1"),
                               QStringLiteral("a~1")};
    auto sign = [](int v) { return (v > 0) - (v < 0); };
    for (const QString& a : names)
        for (const QString& b : names)
            EXPECT_EQ(sign(CompareWithoutCase(a, b)), sign(a.compare(b, Qt::CaseInsensitive)))
                << qPrintable(a) << " " << qPrintable(b);
}

TEST(ListFiles, ListsFilesWithoutRegardToCaseAndExactOrderAmongEquals) {
    TempDir dir;
    for (const char* name : {"b.wav", "B.wav", "a.WAV", "\xc3\x84.wav", "0001.mp3", "0001.WAV"})
        dir.write(QString::fromUtf8(name), "x");
    QStringList expected = {QStringLiteral("0001.mp3"), QStringLiteral("0001.WAV"),
                            QStringLiteral("a.WAV"),    QStringLiteral("B.wav"),
                            QStringLiteral("b.wav"),    QStringLiteral("\u00C4.wav")};
    // Where names differ by case alone they name one file, which keeps its first name.
    if (FileNameCase() == Qt::CaseInsensitive)
        expected.removeAll(QStringLiteral("B.wav"));
    EXPECT_EQ(ListFiles(dir.path()), expected);
}

TEST(ListFiles, PlainAsciiNamesSortAsQtComparesThemWithoutCase) {
    TempDir dir;
    const QStringList names = {"b.wav",    "B.wav", "a_1.mp3",  "A[1.mp3",   "a.WAV", "0001.mp3",
                               "0001.WAV", "0001",  "0010.wav", "00010",     "Zug~1", "zug~1",
                               "z",        "Z_",    "z[",       "0001 a.wav"};
    QStringList expected;
    for (const QString& name : names) {
        dir.write(name, "x");
        // Where names differ by case alone they name one file, which keeps its first name.
        if (!expected.contains(name, FileNameCase()))
            expected << name;
    }
    std::sort(expected.begin(), expected.end(), [](const QString& a, const QString& b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
    EXPECT_EQ(ListFiles(dir.path()), expected);
}

TEST(DirFirst, FindsTheFirstMatchingFileInListingOrder) {
    TempDir dir;
    dir.write("0001.wav", "x");
    dir.write("0001b.mp3", "x");
    dir.write("0001A.ogg", "x");
    EXPECT_EQ(DirFirst(dir.path(), "0001*"), QStringLiteral("0001.wav"));
    EXPECT_EQ(DirFirst(dir.path(), "0001?*"), QStringLiteral("0001.wav"));
    EXPECT_EQ(DirFirst(dir.path(), "0001a*"), QStringLiteral("0001A.ogg"));
    EXPECT_EQ(DirFirst(dir.path(), "0002*"), QString());
    EXPECT_EQ(DirFirst(dir.file("nowhere"), "*"), QString());
}

TEST(DirFirst, NeverFindsFoldersLinksOrHiddenFiles) {
    TempDir dir;
    QDir(dir.path()).mkdir("0001-folder");
    dir.write(".0002", "x");
    const QString outside = dir.write("outside/secret.wav", "x");
    tavik::test::MakeLink(outside, dir.file("0003.wav"));
    EXPECT_EQ(DirFirst(dir.path(), "0001*"), QString());
    EXPECT_EQ(DirFirst(dir.path(), ".0002*"), QString());
    EXPECT_EQ(DirFirst(dir.path(), "0003*"), QString());
}

TEST(FileStatements, RaiseTheRuntimeErrors) {
    TempDir dir;
    EXPECT_EQ(errorOf([&] { FileLen(dir.file("missing")); }), rt::FileNotFound);
    EXPECT_EQ(FileLen(dir.write("three", "abc")), 3);
    EXPECT_EQ(errorOf([&] { Kill(dir.file("missing")); }), rt::FileNotFound);
    EXPECT_EQ(errorOf([&] { FileCopy(dir.file("missing"), dir.file("b")); }), rt::FileNotFound);
    EXPECT_EQ(errorOf([&] { MkDir(dir.file("a/b")); }), rt::PathNotFound);
    MkDir(dir.file("made"));
    EXPECT_TRUE(QFileInfo(dir.file("made")).isDir());
    EXPECT_EQ(errorOf([&] { MkDir(dir.file("made")); }), rt::PathFileAccess);
    dir.write("made/inside", "x");
    EXPECT_EQ(errorOf([&] { RmDir(dir.file("made")); }), rt::PathFileAccess);
    Kill(dir.file("made/inside"));
    RmDir(dir.file("made"));
    EXPECT_FALSE(QFileInfo::exists(dir.file("made")));
    EXPECT_EQ(errorOf([&] { RmDir(dir.file("made")); }), rt::PathNotFound);
}

TEST(FileCopy, CopiesTheBytes) {
    TempDir dir;
    const QString source = dir.write("a.wav", QByteArray("RIFF\0\1\2", 7));
    FileCopy(source, dir.file("0000.wav"));
    EXPECT_EQ(tavik::test::readAll(dir.file("0000.wav")), QByteArray("RIFF\0\1\2", 7));
}

TEST(WriteFileAtomically, LeavesTheOldFileWhenTheWriteFails) {
    TempDir dir;
    EXPECT_EQ(errorOf([&] { WriteFileAtomically(dir.file("no/such/x"), "new"); }),
              rt::PathNotFound);
    QDir(dir.path()).mkdir("target");
    EXPECT_EQ(errorOf([&] { WriteFileAtomically(dir.file("target"), "new"); }), rt::PathFileAccess);
    const QString file = dir.write("locked/file", "old");
    QFile::setPermissions(dir.file("locked"), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    const bool canStillWrite = QFileInfo(dir.file("locked")).isWritable(); // true for root
    if (!canStillWrite) {
        EXPECT_EQ(errorOf([&] { WriteFileAtomically(file, "new"); }), rt::PathFileAccess);
        EXPECT_EQ(tavik::test::readAll(file), QByteArray("old"));
    }
    QFile::setPermissions(dir.file("locked"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    WriteFileAtomically(file, "new");
    EXPECT_EQ(tavik::test::readAll(file), QByteArray("new"));
}

TEST(AppPath, FollowsTavikHome) {
    TempDir dir;
    qputenv("TAVIK_HOME", dir.path().toLocal8Bit());
    EXPECT_EQ(AppPath(), dir.path() + QStringLiteral("/bin"));
    qunsetenv("TAVIK_HOME");
    EXPECT_TRUE(AppPath().endsWith(QStringLiteral("/bin")));
}

TEST(AppPath, IsTheBinFolderOfAnInstalledRootOrElseOfTheCheckout) {
    TempDir dir;
    QDir(dir.path()).mkpath("root/bin");
    QDir(dir.path()).mkpath("root/res/lang");
    QDir(dir.path()).mkpath("build/src");
    EXPECT_EQ(resolveProgramFolder({}, dir.file("root/bin"), "/checkout"), dir.file("root/bin"));
    EXPECT_EQ(resolveProgramFolder({}, dir.file("build/src"), "/checkout"),
              QStringLiteral("/checkout/bin"));
    EXPECT_EQ(resolveProgramFolder(dir.file("home"), dir.file("root/bin"), "/checkout"),
              dir.file("home/bin"));
}

TEST(NativePath, TurnsBackslashesIntoThePlatformSeparator) {
#ifndef Q_OS_WIN
    EXPECT_EQ(NativePath(QStringLiteral("/x/bin\\..\\Data\\")), QStringLiteral("/x/bin/../Data/"));
#endif
}

TEST(OpenToRead, OpensAPlainFileAlsoBehindALink) {
    TempDir dir;
    const QString path = dir.write("Package.txt", "Linie 1");
    QFile file(path);
    ASSERT_TRUE(OpenToRead(file));
    EXPECT_EQ(file.readAll(), QByteArray("Linie 1"));
    TAVIK_LINK_OR_SKIP(path, dir.file("link.txt"));
    QFile linked(dir.file("link.txt"));
    ASSERT_TRUE(OpenToRead(linked));
    EXPECT_EQ(linked.readAll(), QByteArray("Linie 1"));
}

TEST(OpenToRead, RefusesAPipeAFolderAndAMissingFileWithoutWaiting) {
    TempDir dir;
    const tavik::test::NamedPipe pipe(dir.file("Package.txt"));
    ASSERT_TRUE(pipe.made());
    QFile piped(dir.file("Package.txt"));
    EXPECT_FALSE(OpenToRead(piped));
    EXPECT_FALSE(piped.isOpen());
    QFile folder(dir.path());
    EXPECT_FALSE(OpenToRead(folder));
    QFile missing(dir.file("fehlt.txt"));
    EXPECT_FALSE(OpenToRead(missing));
    EXPECT_FALSE(pipe.hadToFreeAReader());
}
