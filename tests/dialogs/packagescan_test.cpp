#include "dialogs/packagescan.h"
#include "package/clszeldb.h"
#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <fstream>
#include <gtest/gtest.h>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace tavik;
using tavik::test::TempDir;

namespace {

// A package folder below `data` whose index names it `name`.
void makePackage(const TempDir& data, const QString& folder, const QString& name) {
    QDir(data.path()).mkpath(folder);
    clsZELDB store;
    store.SaveSetting("INFO", "Name", Variant::fromString(name));
    store.SaveIOFile(data.file(folder + "/Package.io"));
}

QString dataFolder(const TempDir& data) {
    return data.path() + QDir::separator();
}

} // namespace

TEST(ScanPackages, ListsNamedPackagesInTheOrderOfTheListing) {
    TempDir data;
    makePackage(data, "Linie2", "Linie 2");
    makePackage(data, "linie1", "Linie 1");
    const QList<PackageCandidate> found = ScanPackages(dataFolder(data));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].Name, QStringLiteral("Linie 1"));
    EXPECT_EQ(found[0].Folder, dataFolder(data) + QDir::separator() + "linie1");
    EXPECT_EQ(found[1].Name, QStringLiteral("Linie 2"));
}

TEST(ScanPackages, AnEmptyDataFolderListsNothing) {
    TempDir data;
    EXPECT_TRUE(ScanPackages(dataFolder(data)).isEmpty());
    EXPECT_TRUE(ScanPackages(data.file("missing/")).isEmpty());
}

TEST(ScanPackages, LeavesOutAnEmptyNameAndAFolderWithoutIndex) {
    TempDir data;
    makePackage(data, "A", "Erstes");
    makePackage(data, "B", "");
    QDir(data.path()).mkdir("C");
    data.write("D/Package.io", "not an index");
    const QList<PackageCandidate> found = ScanPackages(dataFolder(data));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].Name, QStringLiteral("Erstes"));
}

TEST(ScanPackages, AFolderWhoseIndexDoesNotOpenIsNotListedUnderTheNameReadBefore) {
    TempDir data;
    makePackage(data, "A", "Erstes");
    QDir(data.path()).mkdir("B"); // no index at all: the store keeps what it read from A
    makePackage(data, "C", "Drittes");
    data.write("D/Package.io", "not an index");
    // Without its own check the scan would list B under the name the store still holds.
    clsZELDB probe;
    ASSERT_TRUE(probe.OpenIOFile(data.file("A/Package.io")));
    ASSERT_FALSE(probe.OpenIOFile(data.file("B/Package.io")));
    ASSERT_EQ(probe.GetSetting("INFO", "Name", ""), Variant::fromString("Erstes"));

    const QList<PackageCandidate> found = ScanPackages(dataFolder(data));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].Name, QStringLiteral("Erstes"));
    EXPECT_EQ(found[0].Folder, dataFolder(data) + QDir::separator() + "A");
    EXPECT_EQ(found[1].Name, QStringLiteral("Drittes"));
    EXPECT_EQ(found[1].Folder, dataFolder(data) + QDir::separator() + "C");
}

TEST(ScanPackages, DeletesZeroLengthFilesAndKeepsOthers) {
    TempDir data;
    makePackage(data, "A", "Erstes");
    data.write("empty.txt", "");
    data.write("notes.txt", "something");
    data.write("A/empty.wav", "");
    EXPECT_EQ(ScanPackages(dataFolder(data)).size(), 1);
    EXPECT_FALSE(QFile::exists(data.file("empty.txt")));
    EXPECT_TRUE(QFile::exists(data.file("notes.txt")));
    // Only files lying directly in the data folder are touched.
    EXPECT_TRUE(QFile::exists(data.file("A/empty.wav")));
}

TEST(FolderOfChosenFile, KeepsTheTrailingSeparator) {
    const QString sep = QDir::separator();
    EXPECT_EQ(FolderOfChosenFile("/Pakete/Linie1/Package.io"),
              QDir::toNativeSeparators("/Pakete/Linie1/"));
    EXPECT_TRUE(FolderOfChosenFile("/Pakete/Linie1/Package.io").endsWith(sep));
}

TEST(IndexFileOf, AppendsThePackageIndexFileName) {
    EXPECT_EQ(IndexFileOf("/d/Linie1"), "/d/Linie1" + QString(QDir::separator()) + "Package.io");
}

#ifdef Q_OS_UNIX
TEST(ScanPackages, AFolderWhoseNameIsNotUtf8IsLeftOutAndNothingIsMadeUnderAnotherName) {
    TempDir data;
    makePackage(data, "Linie1", "Linie 1");
    // Made by its bytes: a name Qt would read back as another one.
    const QByteArray raw = QFile::encodeName(data.path()) + "/Paket\xff";
    ASSERT_EQ(::mkdir(raw.constData(), 0700), 0);
    {
        clsZELDB index;
        index.SaveSetting("INFO", "Name", Variant::fromString("Bytes"));
        std::ofstream(raw.constData() + std::string("/Package.io"), std::ios::binary)
            << index.toBytes().toStdString();
    }
    const QStringList before = QDir(data.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    const QList<PackageCandidate> found = ScanPackages(dataFolder(data));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].Name, QStringLiteral("Linie 1"));
    EXPECT_EQ(QDir(data.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
    ::unlink((raw + "/Package.io").constData());
    ::rmdir(raw.constData());
}
#endif
