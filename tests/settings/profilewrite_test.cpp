#include "settings/modini.h"
#include "settings/profilefile.h"
#include "support/links.h"
#include "support/smallfilesystem.h"
#include "support/tempdir.h"
#include "support/writefault.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::SmallFileSystem;
using tavik::test::TempDir;

namespace {

const QByteArray kSettings("[SOUND]\r\nUseFormat=0\r\n[Settings]\r\nLanguage=x.lng\r\n");

} // namespace

TEST(ProfileWrite, AFailedWriteReportsTheSystemErrorAndKeepsTheFile) {
    TempDir dir;
    const QString file = dir.write("Tavik.ini", kSettings);
    {
        ScopedWriteFault fault(WriteStep::Write, ENOSPC);
        EXPECT_EQ(profile::writeProfileString(file, "SOUND", "UseFormat", QStringLiteral("1")),
                  profile::error::DiskFull);
    }
    {
        ScopedWriteFault fault(WriteStep::Commit, EACCES);
        EXPECT_EQ(profile::writeProfileString(file, "SOUND", "UseFormat", std::nullopt),
                  profile::error::AccessDenied);
    }
    EXPECT_EQ(readAll(file), kSettings);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"Tavik.ini"});
}

TEST(ProfileWrite, WriteIniStaysSilentButLeavesTheFileWhole) {
    TempDir dir;
    const QString file = dir.write("Tavik.ini", kSettings);
    ScopedWriteFault fault(WriteStep::Sync, EIO);
    WriteINI(file, "SOUND", "UseFormat", "1");
    EXPECT_EQ(readAll(file), kSettings);
}

TEST(ProfileWrite, ALinkedSettingsFileIsNotWrittenThrough) {
    TempDir dir;
    const QString outside = dir.write("elsewhere/real.ini", kSettings);
    TAVIK_LINK_OR_SKIP(outside, dir.file("Tavik.ini"));
    EXPECT_EQ(profile::writeProfileString(dir.file("Tavik.ini"), "SOUND", "UseFormat",
                                          QStringLiteral("1")),
              profile::error::AccessDenied);
    EXPECT_EQ(readAll(outside), kSettings);
}

TEST(ProfileWrite, OnAFullDiskTheFileStaysByteForByte) {
    TempDir dir;
    SmallFileSystem disk(dir.file("disk"), 64 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    const QString file = disk.path() + QStringLiteral("/Formats.ini");
    {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("[Installed]\r\n1=wav\r\n2=mp3\r\n");
    }
    ASSERT_GT(disk.fill(), 0);
    EXPECT_EQ(profile::writeProfileString(file, "Installed", "3", QStringLiteral("ogg")),
              profile::error::DiskFull);
    EXPECT_EQ(readAll(file), QByteArray("[Installed]\r\n1=wav\r\n2=mp3\r\n"));
    EXPECT_EQ(QDir(disk.path()).entryList(QDir::Files), QStringList{"Formats.ini"});
}
