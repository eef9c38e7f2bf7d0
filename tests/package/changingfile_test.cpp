// Readers of package and service files while another program rewrites them in place: one
// consistent copy each time, or a refusal, and never a fault.
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "service/servicefile.h"
#include "support/buildpaths.h"
#include "support/tempdir.h"
#include "util/conversions.h"
#include "util/wholeread.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <iostream>
#include <thread>

using namespace tavik;
using tavik::test::TempDir;

namespace {

QByteArray indexWithEntries(int count) {
    clsZELDB store;
    for (int i = 1; i <= count; ++i)
        store.SaveSetting(QStringLiteral("INDEX"), QString::number(i),
                          Variant::fromString(FormatKey(i) + QStringLiteral("~Ansage %1").arg(i)));
    store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"), Variant::fromLong(count));
    return store.toBytes();
}

// Truncates and writes, as a program that rewrites a file in place does.
void rewriteInPlace(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

} // namespace

TEST(ChangingIndexFile, RewrittenInPlaceWhileReadEachOpenSeesOneWholeVersionOrRefuses) {
    TempDir dir;
    const QString path = dir.file(QStringLiteral("Package.io"));
    const QByteArray large = indexWithEntries(10000);
    const QByteArray small = indexWithEntries(3000);
    rewriteInPlace(path, large);

    constexpr int kRewrites = 1000;
    std::atomic<bool> done{false};
    std::thread writer([&] {
        // A short breath between rewrites, as a program writing in a loop takes; the rewrite
        // itself is as abrupt as it gets.
        for (int i = 0; i < kRewrites; ++i) {
            rewriteInPlace(path, i % 2 ? small : large);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        done = true;
    });
    int reads = 0;
    int whole = 0;
    int mixed = 0;
    while (!done || reads < 10) {
        clsZELDB store;
        const bool opened = store.OpenIOFile(path);
        ++reads;
        if (store.lastRead().status != ZeldbReadReport::Status::Complete)
            continue;
        const std::int16_t count = ReadIndexCount(store);
        const QString last =
            CStr(store.GetSetting(QStringLiteral("INDEX"), QString::number(count), QString()));
        if (opened && (count == 10000 || count == 3000) &&
            last == FormatKey(count) + QStringLiteral("~Ansage %1").arg(count))
            ++whole;
        else
            ++mixed;
    }
    writer.join();
    std::cout << "[ figures ] " << kRewrites << " rewrites in place, " << reads << " reads, "
              << whole << " whole, " << reads - whole - mixed << " refused or empty, " << mixed
              << " mixed, 0 signals\n";
    EXPECT_EQ(mixed, 0);
    EXPECT_GT(whole, 0);
}

TEST(ChangingIndexFile, TheToolDumpsAnIndexRewrittenInPlaceWithoutASignal) {
    TempDir dir;
    const QString path = dir.file(QStringLiteral("Package.io"));
    const QByteArray large = indexWithEntries(3000);
    const QByteArray small = indexWithEntries(500);
    rewriteInPlace(path, large);
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int i = 0; !done; ++i) {
            rewriteInPlace(path, i % 2 ? small : large);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    constexpr int kRuns = 60;
    int signals = 0;
    int whole = 0;
    for (int run = 0; run < kRuns; ++run) {
        QProcess dump;
        dump.start(tavik::test::ToolPath(), {QStringLiteral("dump"), path});
        dump.waitForFinished(60000);
        if (dump.exitStatus() == QProcess::CrashExit)
            ++signals;
        else if (dump.exitCode() == 0)
            ++whole;
    }
    done = true;
    writer.join();
    std::cout << "[ figures ] tavik dump during rewrites in place: " << kRuns << " runs, " << whole
              << " whole dumps, " << signals << " signals\n";
    EXPECT_EQ(signals, 0);
}

TEST(ChangingServiceFile, RewrittenInPlaceWhileReadNeverFaults) {
    TempDir dir;
    const QString path = dir.file(QStringLiteral("_1._"));
    ServiceHeader header;
    header.Title = QStringLiteral("Dienst");
    header.Id = QStringLiteral("1");
    const auto sentences = [](int count) {
        QList<SatzRecord> list;
        for (int i = 0; i < count; ++i)
            list.append({QString::number(i),
                         QStringLiteral("Satz"),
                         {{QStringLiteral("0001"), 0}},
                         0,
                         true});
        return list;
    };
    const QByteArray large = ServiceFileBytes(header, sentences(2000));
    const QByteArray small = ServiceFileBytes(header, sentences(10));
    rewriteInPlace(path, large);
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int i = 0; i < 300; ++i)
            rewriteInPlace(path, i % 2 ? small : large);
        done = true;
    });
    while (!done) {
        const ServiceReadResult read = ReadServiceFile(path, false);
        if (read.ok()) {
            EXPECT_TRUE(read.sentences.size() == 2000 || read.sentences.size() == 10);
        }
    }
    writer.join();
    EXPECT_TRUE(ReadServiceFile(path, false).ok());
}

TEST(WholeRead, ReadsAFileWholeWithItsStamp) {
    TempDir dir;
    const QString path = dir.write(QStringLiteral("a.bin"), QByteArray(70000, 'x'));
    const WholeRead read = ReadWholeFile(path);
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.bytes, QByteArray(70000, 'x'));
    EXPECT_EQ(read.stamp, StampOf(path));
    EXPECT_EQ(read.stamp.size, 70000);
}

TEST(WholeRead, AMissingFileCannotBeOpened) {
    TempDir dir;
    EXPECT_EQ(ReadWholeFile(dir.file(QStringLiteral("none"))).status,
              WholeRead::Status::CannotOpen);
    EXPECT_FALSE(StampOf(dir.file(QStringLiteral("none"))).exists);
}

TEST(WholeRead, AStampChangesWithTheContent) {
    TempDir dir;
    const QString path = dir.write(QStringLiteral("a.bin"), "one");
    const FileStamp before = StampOf(path);
    rewriteInPlace(path, "two!");
    EXPECT_NE(StampOf(path), before);
}

TEST(FolderStamps, StampEachFileAsItsFullPathDoes) {
    TempDir dir;
    dir.write(QStringLiteral("0001.wav"), "RIFF");
    dir.write(QStringLiteral("Package.io"), "index");
    ASSERT_TRUE(
        QFile::link(dir.file(QStringLiteral("0001.wav")), dir.file(QStringLiteral("0002.wav"))));
    QDir(dir.path()).mkdir(QStringLiteral("0003"));
    const FolderStamps stamps(dir.path());
    for (const char* name : {"0001.wav", "0002.wav", "0003", "Package.io", "0004.wav"}) {
        SCOPED_TRACE(name);
        const QString n = QString::fromLatin1(name);
        EXPECT_EQ(stamps.of(n), StampOf(dir.file(n)));
    }
    EXPECT_TRUE(stamps.of(QStringLiteral("0001.wav")).exists);
    EXPECT_FALSE(stamps.of(QStringLiteral("0004.wav")).exists);
    // A folder that is not there stamps nothing.
    const FolderStamps none(dir.file(QStringLiteral("nowhere")));
    EXPECT_FALSE(none.of(QStringLiteral("0001.wav")).exists);
}
