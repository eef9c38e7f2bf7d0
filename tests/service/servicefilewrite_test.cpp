#include "service/servicefile.h"
#include "support/errorof.h"
#include "support/links.h"
#include "support/tempdir.h"
#include "support/treesnapshot.h"
#include "support/writefault.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::TempDir;
using tavik::test::TreeSnapshot;

TEST(ServiceFileWrite, AFailedWriteKeepsTheOldFileWithItsTail) {
    TempDir dir;
    const QByteArray old = QByteArray(40, 'o') + QByteArray("tail of an older file");
    const QString path = dir.write("_000000._", old);
    for (const WriteStep step : {WriteStep::Write, WriteStep::Sync, WriteStep::Commit}) {
        ScopedWriteFault fault(step, ENOSPC);
        EXPECT_EQ(errorOf([&] { WriteServiceFile(path, QByteArray(30, 'n')); }), rt::DiskFull);
        EXPECT_EQ(readAll(path), old);
        EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"_000000._"});
    }
    WriteServiceFile(path, QByteArray(30, 'n'));
    EXPECT_EQ(readAll(path), QByteArray(30, 'n') + old.mid(30));
}

TEST(ServiceFileWrite, ALinkedServiceFileIsRefusedWith75AndItsTargetStays) {
    TempDir dir;
    const QString outside = dir.write("outside/victim", QByteArray(100, 'v'));
    QDir().mkpath(dir.file("package"));
    TAVIK_LINK_OR_SKIP(outside, dir.file("package/_000000._"));
    const TreeSnapshot before(dir.path());
    EXPECT_EQ(errorOf([&] { WriteServiceFile(dir.file("package/_000000._"), "new"); }),
              rt::PathFileAccess);
    EXPECT_EQ(TreeSnapshot(dir.path()).changesSince(before), QStringList());
}
