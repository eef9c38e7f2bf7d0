#include "package/clszeldb.h"
#include "package/packagefolder.h"
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
#include <tuple>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::TempDir;
using tavik::test::TreeSnapshot;

namespace {

QString saved(const QString& folder) {
    clsZELDB store;
    store.SaveSetting("INFO", "Name", Variant::fromString("Paket"));
    const QString path = folder + QStringLiteral("/Package.io");
    store.SaveIOFile(path);
    return path;
}

} // namespace

TEST(PackageIndexSave, AFailedWriteKeepsTheOldIndexByteForByte) {
    TempDir dir;
    const QString path = saved(dir.path());
    const QByteArray old = readAll(path);
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(path));
    store.SaveSetting("INFO", "Name", Variant::fromString(QString(3000, u'x')));
    for (const auto& [step, systemError, expected] :
         {std::tuple{WriteStep::Write, ENOSPC, rt::DiskFull},
          std::tuple{WriteStep::Sync, EIO, rt::DeviceIO},
          std::tuple{WriteStep::Commit, EACCES, rt::PathFileAccess}}) {
        ScopedWriteFault fault(step, systemError);
        EXPECT_EQ(errorOf([&] { store.SaveIOFile(path); }), expected);
        EXPECT_EQ(readAll(path), old);
        EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"Package.io"});
    }
}

TEST(PackageIndexSave, ALinkedIndexIsRefusedWith75AndItsTargetStays) {
    TempDir dir;
    const QString outside = dir.write("outside/victim.io", "victim");
    QDir().mkpath(dir.file("package"));
    TAVIK_LINK_OR_SKIP(outside, dir.file("package/Package.io"));
    const TreeSnapshot before(dir.path());
    clsZELDB store;
    store.SaveSetting("INFO", "Name", Variant::fromString("x"));
    EXPECT_EQ(errorOf([&] { store.SaveIOFile(dir.file("package/Package.io")); }),
              rt::PathFileAccess);
    EXPECT_EQ(TreeSnapshot(dir.path()).changesSince(before), QStringList());
}

TEST(NextFreeKey, CountsALinkNamedLikeAKeyAsTaken) {
    TempDir dir;
    QDir().mkpath(dir.file("package"));
    const QString outside = dir.write("outside/victim.wav", "victim");
    TAVIK_LINK_OR_SKIP(outside, dir.file("package/0000.wav"));
    EXPECT_EQ(NextFreeKey(dir.file("package")), QStringLiteral("0001"));
    // A link to nothing would let a copy make a file outside: taken as well.
    TAVIK_LINK_OR_SKIP(dir.file("outside/new.wav"), dir.file("package/0001.wav"));
    EXPECT_EQ(NextFreeKey(dir.file("package")), QStringLiteral("0002"));
    TAVIK_LINK_OR_SKIP(dir.file("outside"), dir.file("package/0002"));
    EXPECT_EQ(NextFreeKey(dir.file("package")), QStringLiteral("0003"));
}
