#include "log/logsettings.h"
#include "support/links.h"
#include "support/tempdir.h"
#include "support/writefault.h"
#include "util/apppath.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

TEST(LogSettings, FileLoggingIsOffWithoutSettings) {
    TempDir dir;
    const LogSettings s = ReadLogSettings(dir.path());
    EXPECT_FALSE(s.toFile);
    EXPECT_FALSE(QFile::exists(dir.file(QStringLiteral("Tavik.ini"))));
}

TEST(LogSettings, TheSwitchIsStoredAsMinusOneAndZero) {
    TempDir dir;
    WriteLogToFile(dir.path(), true);
    EXPECT_TRUE(tavik::test::readAll(dir.file(QStringLiteral("Tavik.ini"))).contains("ToFile=-1"));
    const LogSettings on = ReadLogSettings(dir.path());
    EXPECT_TRUE(on.toFile);
    EXPECT_EQ(on.file, dir.path() + NativePath(QStringLiteral("\\res\\log\\Tavik.log")));
    WriteLogToFile(dir.path(), false);
    EXPECT_FALSE(ReadLogSettings(dir.path()).toFile);
}

TEST(LogSettings, TheLogFilePathComesFromTheSettingsFile) {
    TempDir dir;
    dir.write(QStringLiteral("Tavik.ini"), "[log]\r\ntofile=1\r\nFILE=C:\\x\\Run.log\r\n");
    const LogSettings s = ReadLogSettings(dir.path());
    EXPECT_TRUE(s.toFile);
    EXPECT_EQ(s.file, NativePath(QStringLiteral("C:\\x\\Run.log")));
}

TEST(LogRecord, EachLineIsAppendedAsOneQuotedRecordInCodePage1252) {
    TempDir dir;
    const QString path = dir.file(QStringLiteral("Tavik.log"));
    AppendLogRecord(path, QStringLiteral("ANNOUNCE 'Ankunft'"));
    AppendLogRecord(path, QStringLiteral("\tPLAY 'A1' 'Gr\u00fc\u00dfe'"));
    EXPECT_EQ(tavik::test::readAll(path),
              QByteArray("\"ANNOUNCE 'Ankunft'\"\r\n\"\tPLAY 'A1' 'Gr\xfc\xdf"
                         "e'\"\r\n"));
}

TEST(LogRecord, AnEmptyLineIsTwoDoubleQuotes) {
    TempDir dir;
    const QString path = dir.file(QStringLiteral("Tavik.log"));
    AppendLogRecord(path, QString());
    EXPECT_EQ(tavik::test::readAll(path), QByteArray("\"\"\r\n"));
}

TEST(LogRecord, AMissingFolderRaisesPathNotFound) {
    TempDir dir;
    try {
        AppendLogRecord(dir.file(QStringLiteral("res/log/Tavik.log")), QStringLiteral("READY"));
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), rt::PathNotFound);
    }
}

TEST(LogRecord, AFileThatCannotBeOpenedRaisesPathFileAccess) {
    TempDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("Tavik.log"));
    try {
        AppendLogRecord(dir.file(QStringLiteral("Tavik.log")), QStringLiteral("READY"));
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), rt::PathFileAccess);
    }
}

TEST(LogRecord, AFailedRecordRaisesItsErrorAndLeavesTheLogAsItWas) {
    TempDir dir;
    const QString path = dir.write(QStringLiteral("Tavik.log"), "\"READY\"\r\n");
    tavik::test::ScopedWriteFault fault(WriteStep::Write, ENOSPC);
    try {
        AppendLogRecord(path, QStringLiteral("PLAY 'A1' 'Gleis 1'"));
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), rt::DiskFull);
    }
    EXPECT_EQ(tavik::test::readAll(path), QByteArray("\"READY\"\r\n"));
}

TEST(LogRecord, ALinkedLogFileIsRefusedWith75) {
    TempDir dir;
    const QString outside = dir.write(QStringLiteral("elsewhere/other.txt"), "other");
    TAVIK_LINK_OR_SKIP(outside, dir.file(QStringLiteral("Tavik.log")));
    try {
        AppendLogRecord(dir.file(QStringLiteral("Tavik.log")), QStringLiteral("READY"));
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), rt::PathFileAccess);
    }
    EXPECT_EQ(tavik::test::readAll(outside), QByteArray("other"));
}
