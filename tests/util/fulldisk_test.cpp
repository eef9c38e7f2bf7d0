#include "support/errorof.h"
#include "support/smallfilesystem.h"
#include "support/tempdir.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::namesIn;
using tavik::test::readAll;
using tavik::test::SmallFileSystem;
using tavik::test::TempDir;

TEST(FullDisk, ASmallFileThatDoesNotFitRaises61AndKeepsTheOldFile) {
    TempDir dir;
    SmallFileSystem disk(dir.file("disk"), 64 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    const QByteArray old(1149, 'o');
    const QString file = disk.path() + QStringLiteral("/Package.io");
    WriteFileAtomically(file, old);
    ASSERT_GT(disk.fill(), 0);

    EXPECT_EQ(errorOf([&] { WriteFileAtomically(file, QByteArray(1200, 'n')); }), rt::DiskFull);
    EXPECT_EQ(readAll(file), old);
    EXPECT_EQ(namesIn(disk.path(), false), QStringList{"Package.io"});
}

TEST(FullDisk, ACopyThatDoesNotFitLeavesNoPartialFile) {
    TempDir dir;
    SmallFileSystem disk(dir.file("disk"), 64 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    const QString source = dir.write("sound.wav", QByteArray(200 * 1024, 's'));
    EXPECT_EQ(errorOf([&] { FileCopy(source, disk.path() + QStringLiteral("/0000.wav")); }),
              rt::DiskFull);
    EXPECT_TRUE(namesIn(disk.path(), false).isEmpty());
}

TEST(FullDisk, AnAppendThatDoesNotFitLeavesTheLogAsItWas) {
    TempDir dir;
    SmallFileSystem disk(dir.file("disk"), 64 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    // One whole page, so the next byte needs room the disk does not have.
    const QByteArray old(4096, 'l');
    const QString log = disk.path() + QStringLiteral("/Tavik.log");
    AppendToFile(log, old);
    ASSERT_GT(disk.fill(), 0);
    EXPECT_EQ(errorOf([&] { AppendToFile(log, "\"PLAY 'x'\"\r\n"); }), rt::DiskFull);
    EXPECT_EQ(readAll(log), old);
}
