// Several `tavik` processes writing one package at once: each change goes in under the
// package's lock, and a writer that cannot get it says who holds it and exits 3.
#include "package/clszeldb.h"
#include "support/buildpaths.h"
#include "support/links.h"
#include "support/tempdir.h"
#include "support/treesnapshot.h"
#include "util/conversions.h"
#include "util/packagelock.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <vector>

using namespace tavik;
using tavik::test::TempDir;

namespace {

// A shell loop of `tavik set` calls, each item once; a call the lock turned away (exit 3) is
// made again, as a script does. Prints the exit codes other than 0 and 3.
std::unique_ptr<QProcess> startSetLoop(const QString& package, int writer, int updates) {
    auto shell = std::make_unique<QProcess>();
    shell->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QString script =
        QStringLiteral("i=1; busy=0; while [ $i -le %2 ]; do "
                       "\"$TAVIK\" set \"$PKG\" ITEMS w%1_$i $i; rc=$?; "
                       "if [ $rc -eq 3 ]; then busy=$((busy+1)); continue; fi; "
                       "if [ $rc -ne 0 ]; then echo failed $rc; fi; i=$((i+1)); done; "
                       "echo busy $busy")
            .arg(writer)
            .arg(updates);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("TAVIK"), tavik::test::ToolPath());
    env.insert(QStringLiteral("PKG"), package);
    shell->setProcessEnvironment(env);
    shell->start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    return shell;
}

// Runs `writers` loops of `updates` each at once and returns how many updates are missing.
int lostUpdates(int writers, int updates) {
    TempDir dir;
    const QString package = dir.file(QStringLiteral("Paket"));
    QDir().mkpath(package);
    std::vector<std::unique_ptr<QProcess>> loops;
    for (int w = 1; w <= writers; ++w)
        loops.push_back(startSetLoop(package, w, updates));
    int busy = 0;
    for (auto& loop : loops) {
        EXPECT_TRUE(loop->waitForFinished(100000));
        const QString output = QString::fromLocal8Bit(loop->readAllStandardOutput());
        EXPECT_FALSE(output.contains(QStringLiteral("failed"))) << output.toStdString();
        busy += output.section(QStringLiteral("busy "), 1).trimmed().toInt();
    }
    clsZELDB store;
    EXPECT_TRUE(store.OpenIOFile(package + QStringLiteral("/Package.io")));
    int lost = 0;
    for (int w = 1; w <= writers; ++w) {
        for (int i = 1; i <= updates; ++i) {
            const QString item = QStringLiteral("w%1_%2").arg(w).arg(i);
            if (CStr(store.GetSetting(QStringLiteral("ITEMS"), item, QString())) !=
                QString::number(i))
                ++lost;
        }
    }
    std::cout << "[ figures ] " << writers << " concurrent writers x " << updates
              << " updates: " << lost << " lost, " << busy << " calls turned away busy\n";
    return lost;
}

} // namespace

TEST(ConcurrentWriters, TwoSetLoopsOnOnePackageLoseNothing) {
    EXPECT_EQ(lostUpdates(2, 60), 0);
}

TEST(ConcurrentWriters, EightSetLoopsOnOnePackageLoseNothing) {
    EXPECT_EQ(lostUpdates(8, 20), 0);
}

TEST(PackageLock, AWriterThatCannotGetTheLockExitsThreeNamingTheHolder) {
    TempDir dir;
    const QString package = dir.file(QStringLiteral("Paket"));
    QDir().mkpath(package);
    const PackageWriteLock held(package);
    const tavik::test::TreeSnapshot before(dir.path());
    QProcess set;
    set.start(tavik::test::ToolPath(), {QStringLiteral("set"), package, QStringLiteral("INFO"),
                                        QStringLiteral("Autor"), QStringLiteral("X")});
    ASSERT_TRUE(set.waitForFinished(60000));
    EXPECT_EQ(set.exitCode(), 3);
    const QString err = QString::fromLocal8Bit(set.readAllStandardError());
    EXPECT_TRUE(err.contains(QStringLiteral("process %1").arg(QCoreApplication::applicationPid())))
        << err.toStdString();
    EXPECT_TRUE(err.contains(QStringLiteral("not changed"))) << err.toStdString();
    EXPECT_EQ(tavik::test::TreeSnapshot(dir.path()).changesSince(before), QStringList());
}

TEST(PackageLock, TakingTheLockPutsNothingIntoThePackageFolder) {
    TempDir dir;
    const QString package = dir.file(QStringLiteral("Paket"));
    QDir().mkpath(package);
    dir.write(QStringLiteral("Paket/Package.io"), "x");
    const tavik::test::TreeSnapshot before(dir.path());
    {
        const PackageWriteLock lock(package);
        EXPECT_EQ(tavik::test::TreeSnapshot(dir.path()).changesSince(before), QStringList());
    }
    EXPECT_EQ(tavik::test::TreeSnapshot(dir.path()).changesSince(before), QStringList());
}

TEST(PackageLock, EverySpellingOfAFolderSharesOneLock) {
    TempDir dir;
    const QString package = dir.file(QStringLiteral("Paket"));
    QDir().mkpath(package);
    TAVIK_LINK_OR_SKIP(package, dir.file(QStringLiteral("Verweis")));
    const QString lock = PackageLockFile(package);
    EXPECT_EQ(PackageLockFile(package + QStringLiteral("/")), lock);
    EXPECT_EQ(PackageLockFile(dir.file(QStringLiteral("Paket/../Paket"))), lock);
    EXPECT_EQ(PackageLockFile(dir.file(QStringLiteral("Verweis"))), lock);
    EXPECT_NE(PackageLockFile(dir.file(QStringLiteral("Anderes"))), lock);
    EXPECT_FALSE(lock.startsWith(dir.path()));
}

TEST(PackageLock, TakenAgainInTheSameProcessItNests) {
    TempDir dir;
    const QString package = dir.file(QStringLiteral("Paket"));
    QDir().mkpath(package);
    {
        const PackageWriteLock outer(package);
        const PackageWriteLock inner(package, 0);
        EXPECT_FALSE(LockHolder(PackageLockFile(package)).isEmpty());
    }
    EXPECT_TRUE(LockHolder(PackageLockFile(package)).isEmpty());
}
