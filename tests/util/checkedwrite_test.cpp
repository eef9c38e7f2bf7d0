#include "support/errorof.h"
#include "support/links.h"
#include "support/tempdir.h"
#include "support/writefault.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::namesIn;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::TempDir;

TEST(SystemErrors, AFullDiskIs61AndARefusedAccess75) {
    EXPECT_EQ(rt::FromSystemError(ENOSPC), rt::DiskFull);
#ifdef EDQUOT // a full quota; Windows has no such error number
    EXPECT_EQ(rt::FromSystemError(EDQUOT), rt::DiskFull);
#endif
    EXPECT_EQ(rt::FromSystemError(EACCES), rt::PathFileAccess);
    EXPECT_EQ(rt::FromSystemError(EROFS), rt::PathFileAccess);
    EXPECT_EQ(rt::FromSystemError(ENOENT), rt::PathNotFound);
    EXPECT_EQ(rt::FromSystemError(EIO), rt::DeviceIO);
    EXPECT_EQ(RuntimeError(rt::DiskFull).description(), QStringLiteral("Datenträger voll"));
}

TEST(WriteFileAtomically, AFailureAtAnyStepKeepsTheOldFileAndLeavesNoTemporary) {
    TempDir dir;
    const QString file = dir.write("Package.io", "old bytes");
    const struct {
        WriteStep step;
        int systemError;
        int expected;
    } cases[] = {
        {WriteStep::Open, EACCES, rt::PathFileAccess},
        {WriteStep::Write, ENOSPC, rt::DiskFull},
        {WriteStep::Write, EIO, rt::DeviceIO},
        {WriteStep::Sync, ENOSPC, rt::DiskFull},
        {WriteStep::Sync, EIO, rt::DeviceIO},
        {WriteStep::Commit, EACCES, rt::PathFileAccess},
    };
    for (const auto& c : cases) {
        ScopedWriteFault fault(c.step, c.systemError);
        EXPECT_EQ(errorOf([&] { WriteFileAtomically(file, QByteArray(5000, 'n')); }), c.expected)
            << int(c.step) << " " << c.systemError;
        EXPECT_EQ(readAll(file), QByteArray("old bytes"));
        EXPECT_EQ(namesIn(dir.path()), QStringList{"Package.io"});
    }
}

TEST(WriteFileAtomically, AFailureCreatesNoFileWhereThereWasNone) {
    TempDir dir;
    ScopedWriteFault fault(WriteStep::Write, ENOSPC);
    EXPECT_EQ(errorOf([&] { WriteFileAtomically(dir.file("new.txt"), "abc"); }), rt::DiskFull);
    EXPECT_TRUE(namesIn(dir.path()).isEmpty());
}

TEST(WriteFileAtomically, TheFaultHitsOnlyTheWriteItNames) {
    TempDir dir;
    ScopedWriteFault fault(WriteStep::Write, ENOSPC, 3);
    WriteFileAtomically(dir.file("a"), "1");
    WriteFileAtomically(dir.file("b"), "2");
    EXPECT_EQ(errorOf([&] { WriteFileAtomically(dir.file("c"), "3"); }), rt::DiskFull);
    WriteFileAtomically(dir.file("d"), "4");
    EXPECT_EQ(namesIn(dir.path()), (QStringList{"a", "b", "d"}));
    EXPECT_EQ(readAll(dir.file("d")), QByteArray("4"));
}

TEST(WriteFileAtomically, NeverWritesThroughALink) {
    TempDir dir;
    const QString outside = dir.write("outside/secret.txt", "outside");
    QDir().mkpath(dir.file("package"));
    const QString link = dir.file("package/Package.txt");
    TAVIK_LINK_OR_SKIP(outside, link);
    EXPECT_EQ(errorOf([&] { WriteFileAtomically(link, "new"); }), rt::PathFileAccess);
    EXPECT_EQ(readAll(outside), QByteArray("outside"));
    EXPECT_TRUE(QFileInfo(link).isSymbolicLink());
    EXPECT_EQ(namesIn(dir.file("package")), QStringList{"Package.txt"});

    // A link to nowhere would make the file outside.
    const QString dangling = dir.file("package/Package.img");
    TAVIK_LINK_OR_SKIP(dir.file("outside/new.img"), dangling);
    EXPECT_EQ(errorOf([&] { WriteFileAtomically(dangling, "new"); }), rt::PathFileAccess);
    EXPECT_FALSE(QFileInfo::exists(dir.file("outside/new.img")));
}

TEST(FileCopy, AFailedCopyLeavesNoPartialFile) {
    TempDir dir;
    // Larger than one copy block, so the copy fails in the middle.
    QByteArray sound(3 * 1024 * 1024 + 17, Qt::Uninitialized);
    for (qsizetype i = 0; i < sound.size(); ++i)
        sound[i] = char(i * 7);
    const QString source = dir.write("in/sound.wav", sound);
    QDir().mkpath(dir.file("package"));
    {
        ScopedWriteFault fault(WriteStep::Write, ENOSPC);
        EXPECT_EQ(errorOf([&] { FileCopy(source, dir.file("package/0000.wav")); }), rt::DiskFull);
    }
    EXPECT_TRUE(namesIn(dir.file("package")).isEmpty());
    FileCopy(source, dir.file("package/0000.wav"));
    EXPECT_EQ(readAll(dir.file("package/0000.wav")), sound);
}

TEST(FileCopy, NeverCopiesOntoALink) {
    TempDir dir;
    const QString outside = dir.write("outside/victim.wav", "victim");
    const QString source = dir.write("in/sound.wav", "sound");
    QDir().mkpath(dir.file("package"));
    TAVIK_LINK_OR_SKIP(outside, dir.file("package/0000.wav"));
    EXPECT_EQ(errorOf([&] { FileCopy(source, dir.file("package/0000.wav")); }), rt::PathFileAccess);
    EXPECT_EQ(readAll(outside), QByteArray("victim"));
}

TEST(AppendToFile, AddsTheBytesBehindTheOldOnes) {
    TempDir dir;
    const QString log = dir.file("Tavik.log");
    AppendToFile(log, "one\r\n");
    AppendToFile(log, "two\r\n");
    EXPECT_EQ(readAll(log), QByteArray("one\r\ntwo\r\n"));
}

TEST(AppendToFile, AFailedAppendLeavesTheFileAsItWas) {
    TempDir dir;
    const QString log = dir.write("Tavik.log", "\"old\"\r\n");
    for (const WriteStep step : {WriteStep::Open, WriteStep::Write, WriteStep::Sync}) {
        ScopedWriteFault fault(step, ENOSPC);
        EXPECT_EQ(errorOf([&] { AppendToFile(log, QByteArray(100, 'x')); }), rt::DiskFull);
        EXPECT_EQ(readAll(log), QByteArray("\"old\"\r\n"));
    }
    EXPECT_EQ(namesIn(dir.path()), QStringList{"Tavik.log"});
}

TEST(AppendToFile, NeverAppendsThroughALink) {
    TempDir dir;
    const QString outside = dir.write("outside/other.log", "other");
    TAVIK_LINK_OR_SKIP(outside, dir.file("Tavik.log"));
    EXPECT_EQ(errorOf([&] { AppendToFile(dir.file("Tavik.log"), "x"); }), rt::PathFileAccess);
    EXPECT_EQ(readAll(outside), QByteArray("other"));
    EXPECT_EQ(errorOf([&] { AppendToFile(dir.file("no/such/Tavik.log"), "x"); }), rt::PathNotFound);
}

TEST(ListFilesAndLinks, ListsFilesAndEveryLinkButNoFolders) {
    TempDir dir;
    dir.write("0000.wav", "x");
    QDir(dir.path()).mkdir("0001");
    TAVIK_LINK_OR_SKIP(dir.write("elsewhere/a", "a"), dir.file("0002.wav"));
    TAVIK_LINK_OR_SKIP(dir.file("nowhere"), dir.file("0003.wav"));
    TAVIK_LINK_OR_SKIP(dir.file("elsewhere"), dir.file("0004"));
    QStringList names = ListFilesAndLinks(dir.path());
    names.sort();
    EXPECT_EQ(names, (QStringList{"0000.wav", "0002.wav", "0003.wav", "0004"}));
}
