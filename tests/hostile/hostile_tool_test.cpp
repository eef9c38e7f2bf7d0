// The headless tool on hostile service files and packages, run as a user runs it: each run
// ends with exit 0, or 2 and one line on standard error; never a crash, never a write.
#include "hostile/hostilecorpus.h"
#include "hostile/treesnapshot.h"
#include "support/buildpaths.h"
#include "support/namedpipe.h"
#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>

using namespace tavik;
using tavik::test::HostileService;
using tavik::test::snapshotTree;
using tavik::test::TempDir;
using tavik::test::treeChanges;

namespace {

struct ToolRun {
    bool finished = false;
    bool crashed = false;
    int code = -1;
    QByteArray out;
    QByteArray err;
};

// An installation root with the hostile package, its surroundings and the service corpus.
struct HostileRoot {
    TempDir dir;
    QString package;

    HostileRoot() {
        QDir(dir.path()).mkpath(QStringLiteral("bin"));
        QFile::copy(QStringLiteral(TAVIK_SOURCE_DIR "/bin/Formats.ini"),
                    dir.file(QStringLiteral("bin/Formats.ini")));
        package = dir.file(QStringLiteral("Data/Feindlich"));
        test::writeHostilePackage(dir.path(), package);
        for (const HostileService& s : test::escapingServices())
            dir.write(QStringLiteral("Data/Feindlich/") + s.fileName, s.bytes);
        for (const HostileService& s : test::brokenServices())
            dir.write(QStringLiteral("Data/Feindlich/") + s.fileName, s.bytes);
        dir.write(QStringLiteral("Data/Feindlich/_30._"), test::serviceWithHostileEntries());
        dir.write(QStringLiteral("Data/Feindlich/_31._"), test::plainService("Gut", "31"));
    }

    ToolRun tool(const QStringList& args) const {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("TAVIK_HOME"), dir.path());
        env.insert(QStringLiteral("TAVIK_AUDIO"), QStringLiteral("null"));
        p.setProcessEnvironment(env);
        p.start(tavik::test::ToolPath(), args);
        ToolRun r;
        r.finished = p.waitForFinished(60000);
        r.crashed = p.exitStatus() != QProcess::NormalExit;
        r.code = p.exitCode();
        r.out = p.readAllStandardOutput();
        r.err = p.readAllStandardError();
        return r;
    }

    QMap<QString, QString> snapshot() const {
        return snapshotTree(dir.path(), {QStringLiteral("bin")});
    }
};

// The run ended by itself, without a crash, with one of `codes`.
::testing::AssertionResult endedWith(const ToolRun& r, std::initializer_list<int> codes) {
    if (!r.finished)
        return ::testing::AssertionFailure() << "still running";
    if (r.crashed)
        return ::testing::AssertionFailure() << "crashed: " << r.err.toStdString();
    if (std::find(codes.begin(), codes.end(), r.code) == codes.end())
        return ::testing::AssertionFailure() << "exit " << r.code << ": " << r.err.toStdString();
    return ::testing::AssertionSuccess();
}

void expectOneLineFailure(const ToolRun& r, const QString& file) {
    ASSERT_TRUE(endedWith(r, {2}));
    EXPECT_EQ(r.err.count('\n'), 1) << r.err.toStdString();
    EXPECT_TRUE(QString::fromLocal8Bit(r.err).contains(file)) << r.err.toStdString();
}

} // namespace

TEST(HostileTool, DumpOfACutOrBrokenServiceFileEndsWithOneLineAndExitTwo) {
    HostileRoot root;
    const auto before = root.snapshot();
    for (const HostileService& s : test::brokenServices()) {
        SCOPED_TRACE(s.fileName.toStdString());
        const QString path = root.package + u'/' + s.fileName;
        expectOneLineFailure(root.tool({QStringLiteral("dump"), path}), path);
    }
    EXPECT_EQ(treeChanges(before, root.snapshot()), QString());
}

TEST(HostileTool, DumpOfAServiceWhoseIdLeadsOutsideShowsTheIdAndWritesNothing) {
    HostileRoot root;
    const auto before = root.snapshot();
    for (const HostileService& s : test::escapingServices()) {
        SCOPED_TRACE(s.fileName.toStdString());
        const ToolRun r = root.tool({QStringLiteral("dump"), root.package + u'/' + s.fileName});
        ASSERT_TRUE(endedWith(r, {0}));
        EXPECT_TRUE(r.err.isEmpty()) << r.err.toStdString();
    }
    EXPECT_EQ(treeChanges(before, root.snapshot()), QString());
}

TEST(HostileTool, PlayOfACutOrBrokenServiceEndsWithOneLineAndExitTwo) {
    HostileRoot root;
    const auto before = root.snapshot();
    for (const HostileService& s : test::brokenServices()) {
        SCOPED_TRACE(s.fileName.toStdString());
        const QString path = root.package + u'/' + s.fileName;
        expectOneLineFailure(root.tool({QStringLiteral("play"), root.package, path}), path);
    }
    EXPECT_EQ(treeChanges(before, root.snapshot()), QString());
}

TEST(HostileTool, PlayOverKeysThatAreNoNumbersPlaysOnlyThePackagesOwnSounds) {
    HostileRoot root;
    const auto before = root.snapshot();
    const ToolRun good =
        root.tool({QStringLiteral("play"), root.package, root.package + QStringLiteral("/_31._")});
    ASSERT_TRUE(endedWith(good, {0}));
    EXPECT_TRUE(good.out.contains("\tPLAY '0000' 'Gong'")) << good.out.toStdString();
    // Every entry without a sound is named; none of them found one of the package's files.
    for (const QString& entry : test::hostileIndexEntries()) {
        const QString key = entry.left(entry.indexOf(u'~'));
        const QByteArray line = "no sound file for " + key.toUtf8() + " '";
        EXPECT_EQ(good.err.contains(line), !test::keysWithSound().contains(key))
            << key.toStdString();
    }
    // Entries whose keys name no announcement: the subscript error, in one line.
    const QString hostile = root.package + QStringLiteral("/_30._");
    const ToolRun bad =
        root.tool({QStringLiteral("play"), root.package, hostile, QStringLiteral("3333")});
    ASSERT_TRUE(endedWith(bad, {2}));
    const QList<QByteArray> lines = bad.err.trimmed().split('\n');
    EXPECT_TRUE(lines.last().contains("runtime error 9")) << bad.err.toStdString();
    EXPECT_EQ(treeChanges(before, root.snapshot()), QString());
}

TEST(HostileTool, ASettingThatIsNoBooleanLeavesTheDefaultForEveryVerbThatOpensSounds) {
    HostileRoot root;
    root.dir.write(QStringLiteral("bin/Tavik.ini"), "[SOUND]\r\nUseFormat=abc\r\n");
    const ToolRun play =
        root.tool({QStringLiteral("play"), root.package, root.package + QStringLiteral("/_31._")});
    ASSERT_TRUE(endedWith(play, {0}));
    const ToolRun measure =
        root.tool({QStringLiteral("measure"), root.package + QStringLiteral("/0000.wav")});
    ASSERT_TRUE(endedWith(measure, {0}));
    EXPECT_TRUE(measure.out.startsWith("60\t")) << measure.out.toStdString();
    // The check names what it finds in the hostile package, but the setting is no failure.
    const ToolRun check = root.tool({QStringLiteral("check"), root.package});
    ASSERT_TRUE(endedWith(check, {1}));
    EXPECT_TRUE(check.err.isEmpty()) << check.err.toStdString();
    const QString wave = root.dir.file(QStringLiteral("satz.wav"));
    const ToolRun render =
        root.tool({QStringLiteral("render"), root.package, root.package + QStringLiteral("/_31._"),
                   QStringLiteral("4711"), QStringLiteral("-o"), wave});
    ASSERT_TRUE(endedWith(render, {0}));
    EXPECT_GT(QFileInfo(wave).size(), 44);
}

// A pipe has no writer: opening it as a file would wait for ever.
TEST(HostileTool, PipesNamedLikeThePackagesFilesAreRefusedWithoutWaiting) {
    HostileRoot root;
    const QString good = root.dir.file(QStringLiteral("Data/Gut"));
    test::writeHostilePackage(root.dir.path(), good);
    using tavik::test::NamedPipe;
    const NamedPipe comment(good + QStringLiteral("/Package.txt"));
    const NamedPipe service(root.package + QStringLiteral("/_31._"));
    const NamedPipe index(root.package + QStringLiteral("/Package.io"));
    const NamedPipe settings(root.dir.file(QStringLiteral("bin/Tavik.ini")));
    ASSERT_TRUE(comment.made() && service.made() && index.made() && settings.made());

    const ToolRun checkGood = root.tool({QStringLiteral("check"), good});
    ASSERT_TRUE(endedWith(checkGood, {0, 1}));
    // The dump names the package's links first, as always; its last line is the failure.
    const ToolRun dump = root.tool({QStringLiteral("dump"), root.package});
    ASSERT_TRUE(endedWith(dump, {2}));
    EXPECT_TRUE(dump.err.trimmed().split('\n').last().contains("Package.io"))
        << dump.err.toStdString();
    const ToolRun check = root.tool({QStringLiteral("check"), root.package});
    ASSERT_TRUE(endedWith(check, {2}));
    EXPECT_TRUE(check.out.contains("error: Package.io: the package index cannot be read"))
        << check.out.toStdString();
    expectOneLineFailure(
        root.tool({QStringLiteral("dump"), root.package + QStringLiteral("/_31._")}),
        QStringLiteral("_31._"));
    expectOneLineFailure(
        root.tool({QStringLiteral("play"), good, root.package + QStringLiteral("/_31._")}),
        QStringLiteral("31"));
    expectOneLineFailure(
        root.tool({QStringLiteral("write"), root.package + QStringLiteral("/_31._"),
                   root.dir.file(QStringLiteral("neu.io"))}),
        QStringLiteral("_31._"));
    EXPECT_FALSE(comment.hadToFreeAReader());
    EXPECT_FALSE(service.hadToFreeAReader());
    EXPECT_FALSE(index.hadToFreeAReader());
    EXPECT_FALSE(settings.hadToFreeAReader());
}
