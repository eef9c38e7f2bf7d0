#include "log/logsettings.h"
#include "support/links.h"
#include "support/tempdir.h"
#include "support/writefault.h"
#include "util/apppath.h"
#include "util/runtimeerror.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
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

namespace {

// A clock that stands where the test puts it.
struct TestClock {
    qint64 ns = 0;
    LogSettingsReader::Clock clock() {
        return [this] { return ns; };
    }
};

// Long after the settings file's last change, so that its times tell every later change.
qint64 settledAfter(const QString& file) {
    const FileStamp stamp = StampOf(file);
    return std::max(stamp.modifiedNs, stamp.changedNs) + LogSettingsReader::kSettleNs;
}

// Rewrites `file` in place (same identity) and gives it back its modification time.
void rewriteInPlaceKeepingItsTime(const QString& file, const QByteArray& bytes) {
    const QDateTime modified = QFileInfo(file).lastModified();
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    ASSERT_EQ(f.write(bytes), bytes.size());
    ASSERT_TRUE(f.setFileTime(modified, QFileDevice::FileModificationTime));
}

} // namespace

TEST(LogSettingsReader, AnswersAsTheSettingsFileReadsNow) {
    TempDir dir;
    LogSettingsReader reader(dir.path());
    EXPECT_FALSE(reader.current().toFile);
    WriteLogToFile(dir.path(), true);
    EXPECT_TRUE(reader.current().toFile);
    EXPECT_EQ(reader.current().file, DefaultLogFilePath(dir.path()));
    dir.write(QStringLiteral("Tavik.ini"), "[Log]\r\nToFile=1\r\nFile=C:\\x\\Run.log\r\n");
    EXPECT_EQ(reader.current().file, NativePath(QStringLiteral("C:\\x\\Run.log")));
    QFile::remove(dir.file(QStringLiteral("Tavik.ini")));
    EXPECT_FALSE(reader.current().toFile);
}

TEST(LogSettingsReader, ASettledUnchangedFileIsReadOnce) {
    TempDir dir;
    const QString ini = dir.write(QStringLiteral("Tavik.ini"), "[Log]\r\nToFile=0\r\n");
    TestClock now{settledAfter(ini)};
    LogSettingsReader reader(dir.path(), now.clock());
    for (int i = 0; i < 5; ++i)
        EXPECT_FALSE(reader.current().toFile);
    EXPECT_EQ(reader.reads(), 1);
}

TEST(LogSettingsReader, AMissingFileIsReadOnceUntilItAppears) {
    TempDir dir;
    LogSettingsReader reader(dir.path());
    EXPECT_FALSE(reader.current().toFile);
    EXPECT_FALSE(reader.current().toFile);
    EXPECT_EQ(reader.reads(), 1);
    WriteLogToFile(dir.path(), true);
    EXPECT_TRUE(reader.current().toFile);
    EXPECT_EQ(reader.reads(), 2);
}

TEST(LogSettingsReader, ARewriteInPlaceOfTheSameSizeAndTimeIsNoticed) {
    TempDir dir;
    const QString ini = dir.write(QStringLiteral("Tavik.ini"), "[Log]\r\nToFile=0\r\n");
    TestClock now{settledAfter(ini)};
    LogSettingsReader reader(dir.path(), now.clock());
    EXPECT_FALSE(reader.current().toFile);
    rewriteInPlaceKeepingItsTime(ini, "[Log]\r\nToFile=1\r\n");
    EXPECT_TRUE(reader.current().toFile);
    EXPECT_EQ(reader.reads(), 2);
}

TEST(LogSettingsReader, AFileChangedJustBeforeItWasReadIsReadAgain) {
    TempDir dir;
    const QString ini = dir.write(QStringLiteral("Tavik.ini"), "[Log]\r\nToFile=0\r\n");
    const FileStamp stamp = StampOf(ini);
    // Read within the settling time: coarse file times could hide the next change.
    TestClock now{std::max(stamp.modifiedNs, stamp.changedNs) + 1};
    LogSettingsReader reader(dir.path(), now.clock());
    EXPECT_FALSE(reader.current().toFile);
    EXPECT_FALSE(reader.current().toFile);
    EXPECT_EQ(reader.reads(), 2);
    // Once a read began long enough after the change, the file's times are trusted.
    now.ns += LogSettingsReader::kSettleNs;
    EXPECT_FALSE(reader.current().toFile);
    EXPECT_FALSE(reader.current().toFile);
    EXPECT_EQ(reader.reads(), 3);
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
