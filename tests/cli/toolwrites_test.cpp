#include "package/clszeldb.h"
#include "support/buildpaths.h"
#include "support/links.h"
#include "support/smallfilesystem.h"
#include "support/tempdir.h"
#include "support/toolrun.h"
#include "support/treesnapshot.h"
#include "support/writefault.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::namesIn;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::SmallFileSystem;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;
using tavik::test::TreeSnapshot;

namespace {

// A package index of about the demo package's size, far below a buffer's 16 KiB.
QByteArray demoSizedIndex(const QString& path) {
    clsZELDB store;
    store.SaveSetting("INFO", "Name", Variant::fromString("Beispielpaket"));
    store.SaveSetting("INFO", "Autor", Variant::fromString("Tavik"));
    for (int i = 1; i <= 9; ++i) {
        const QString key = QStringLiteral("%1").arg(i - 1, 4, 10, QChar(u'0'));
        store.SaveSetting("INDEX", QString::number(i),
                          Variant::fromString(key + QStringLiteral("~Ansage %1").arg(i)));
        store.SaveSetting(key, "Color", Variant::fromLong(255 * i));
        store.SaveSetting(key, "NameVisible", Variant::fromBoolean(true));
        store.SaveSetting(key, "AutoPlace", Variant::fromLong(-1));
    }
    store.SaveSetting("INDEX", "Count", Variant::fromLong(9));
    store.SaveIOFile(path);
    return readAll(path);
}

int lineCount(const QString& text) {
    return static_cast<int>(text.count(u'\n'));
}

} // namespace

TEST(ToolSet, OnAFullDiskExitsTwoWithOneLineAndLeavesTheIndexByteForByte) {
    TempDir dir;
    SmallFileSystem disk(dir.file("disk"), 64 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    const QString path = disk.path() + QStringLiteral("/Package.io");
    const QByteArray old = demoSizedIndex(path);
    ASSERT_LT(old.size(), 16 * 1024);
    ASSERT_GT(disk.fill(), 0);

    const ToolRun r = tool({"set", disk.path(), "INFO", "Name", "Mein Paket"});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(lineCount(r.err), 1) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("61"))) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("Datenträger voll"))) << r.err.toStdString();
    EXPECT_EQ(readAll(path), old);
    EXPECT_EQ(namesIn(disk.path(), false), QStringList{"Package.io"});

    // The same as a program of its own, exit code and all.
    QProcess set;
    set.start(tavik::test::ToolPath(), {"set", path, "INFO", "Autor", "Jemand"});
    ASSERT_TRUE(set.waitForFinished(30000));
    EXPECT_EQ(set.exitCode(), 2);
    EXPECT_EQ(set.readAllStandardError().count('\n'), 1);
    EXPECT_EQ(readAll(path), old);
}

TEST(ToolSet, AFailedWriteExitsTwoAndLeavesTheIndexByteForByte) {
    TempDir dir;
    const QString path = dir.file("Package.io");
    const QByteArray old = demoSizedIndex(path);
    for (const WriteStep step : {WriteStep::Write, WriteStep::Sync, WriteStep::Commit}) {
        ScopedWriteFault fault(step, ENOSPC);
        const ToolRun r = tool({"set", path, "INFO", "Name", "x"});
        EXPECT_EQ(r.code, 2);
        EXPECT_EQ(lineCount(r.err), 1);
        EXPECT_EQ(readAll(path), old);
    }
    EXPECT_EQ(namesIn(dir.path(), false), QStringList{"Package.io"});
}

TEST(ToolSet, ALinkedIndexIsRefusedWith75AndNothingOutsideChanges) {
    TempDir dir;
    const QString outside = dir.file("outside/Package.io");
    QDir().mkpath(dir.file("outside"));
    demoSizedIndex(outside);
    QDir().mkpath(dir.file("package"));
    TAVIK_LINK_OR_SKIP(outside, dir.file("package/Package.io"));
    const TreeSnapshot before(dir.path());
    const ToolRun r = tool({"set", dir.file("package"), "INFO", "Name", "evil"});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(lineCount(r.err), 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("75"))) << r.err.toStdString();
    EXPECT_EQ(TreeSnapshot(dir.path()).changesSince(before), QStringList());
}

TEST(ToolIni, SetOnAFullDiskExitsTwoWithOneLineAndLeavesTheFileByteForByte) {
    TempDir dir;
    SmallFileSystem disk(dir.file("disk"), 64 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    const QString path = disk.path() + QStringLiteral("/Formats.ini");
    const QByteArray old("[Installed]\r\n1=wav\r\n2=mp3\r\n[wav]\r\nFormat=waveaudio\r\n");
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        ASSERT_EQ(f.write(old), old.size());
    }
    ASSERT_GT(disk.fill(), 0);
    const ToolRun r = tool({"ini", path, "Installed", "3", "--set", "ogg"});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(lineCount(r.err), 1) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("disk is full"))) << r.err.toStdString();
    EXPECT_EQ(readAll(path), old);
    EXPECT_EQ(namesIn(disk.path(), false), QStringList{"Formats.ini"});
}

TEST(ToolIni, SetThatFailsToWriteExitsTwoAndLeavesTheFile) {
    TempDir dir;
    const QString path = dir.write("Tavik.ini", "[SOUND]\r\nUseFormat=0\r\n");
    ScopedWriteFault fault(WriteStep::Sync, ENOSPC);
    const ToolRun r = tool({"ini", path, "SOUND", "UseFormat", "--set", "1"});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(lineCount(r.err), 1);
    EXPECT_EQ(readAll(path), QByteArray("[SOUND]\r\nUseFormat=0\r\n"));
}
