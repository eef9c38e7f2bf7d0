#include "service/servicebytes.h"
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "service/servicesentences.h"
#include "support/tempdir.h"
#include "util/apppath.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::ServiceBytes;
using tavik::test::TempDir;

namespace {

QByteArray serviceTitled(const QByteArray& title) {
    return ServiceBytes().header(title, "A", "B", "1").count(1).unsetSentence("0001");
}

void save(const QString& folder, const QString& title, const QString& id) {
    ServiceSentences state;
    state.Load({{"0001", "", {{"0000", 0}}, 0}});
    SaveToFile(ServiceFilePath(folder, id), {title, "", "", id}, state, {"0001"});
}

} // namespace

TEST(ServiceFilePath, IsThePackageFolderUnderscoreIdAndDotUnderscore) {
    EXPECT_EQ(ServiceFilePath("C:\\Tavik\\bin\\..\\Data\\\\Linie", "000000"),
              NativePath("C:\\Tavik\\bin\\..\\Data\\\\Linie\\_000000._"));
}

TEST(ServiceFilePath, SavingUnderAnotherIdMakesASecondFileAndKeepsTheFirst) {
    TempDir dir;
    save(dir.path(), "Dienst", "000000");
    EXPECT_TRUE(QFile::exists(dir.file("_000000._")));
    save(dir.path(), "Dienst", "000001");
    EXPECT_TRUE(QFile::exists(dir.file("_000000._")));
    EXPECT_TRUE(QFile::exists(dir.file("_000001._")));
}

TEST(ServiceListFolder, UndoesTheDoubledSeparatorBehindTheDataFolder) {
    EXPECT_EQ(ServiceListFolder(NativePath("C:\\Tavik\\bin\\..\\Data\\\\Linie")),
              NativePath("C:\\Tavik\\Data\\Linie\\"));
    EXPECT_EQ(ServiceListFolder(NativePath("D:\\Pakete\\Linie")),
              NativePath("D:\\Pakete\\Linie\\"));
}

TEST(FindFiles, ListsTheTitleAndPathOfEveryServiceFileInDirectoryOrder) {
    TempDir dir;
    dir.write("_2._", serviceTitled("Zwei"));
    dir.write("_1._", serviceTitled("Eins"));
    dir.write("Package.io", "IOZELDBV10");
    dir.write("0000 Gong.wav", "RIFF");
    QStringList lstOpen, File1;
    FindFiles(dir.path(), lstOpen, File1);
    EXPECT_EQ(lstOpen, QStringList({"Eins", "Zwei"}));
    EXPECT_EQ(File1, QStringList({ServiceListFolder(dir.path()) + "_1._",
                                  ServiceListFolder(dir.path()) + "_2._"}));
}

TEST(FindFiles, AServiceWithAnEmptyTitleIsWrittenButNeverListed) {
    TempDir dir;
    save(dir.path(), "", "000000");
    save(dir.path(), "Sichtbar", "000001");
    EXPECT_TRUE(QFile::exists(dir.file("_000000._")));
    QStringList lstOpen, File1;
    FindFiles(dir.path(), lstOpen, File1);
    EXPECT_EQ(lstOpen, QStringList({"Sichtbar"}));
    EXPECT_EQ(File1.size(), 1);
}

TEST(FindFiles, AZeroLengthServiceFileIsDeletedWhenTheListIsFilled) {
    TempDir dir;
    const QString empty = dir.write("_leer._", {});
    dir.write("_1._", serviceTitled("Eins"));
    QStringList lstOpen, File1;
    FindFiles(dir.path(), lstOpen, File1);
    EXPECT_FALSE(QFile::exists(empty));
    EXPECT_EQ(lstOpen, QStringList({"Eins"}));
}

TEST(FindFiles, ThePathListIsNeverClearedSoEachListingAppends) {
    TempDir dir;
    dir.write("_1._", serviceTitled("Eins"));
    QStringList lstOpen, File1;
    FindFiles(dir.path(), lstOpen, File1);
    dir.write("_0._", serviceTitled("Null"));
    FindFiles(dir.path(), lstOpen, File1);
    EXPECT_EQ(lstOpen, QStringList({"Null", "Eins"}));
    ASSERT_EQ(File1.size(), 3);
    // The first entry of the new listing resolves to the path of the earlier one.
    EXPECT_TRUE(File1[0].endsWith("_1._"));
}

TEST(FindFiles, ListsThroughTheBinDataPathThePackageIsHeldUnder) {
    TempDir root;
    ASSERT_TRUE(QDir(root.path()).mkpath("bin"));
    ASSERT_TRUE(QDir(root.path()).mkpath("Data/Linie"));
    const QString held = NativePath(root.path() + "\\bin\\..\\Data\\\\Linie");
    save(held, "Dienst", "5");
    EXPECT_TRUE(QFile::exists(root.file("Data/Linie/_5._")));
    QStringList lstOpen, File1;
    FindFiles(held, lstOpen, File1);
    EXPECT_EQ(lstOpen, QStringList({"Dienst"}));
    EXPECT_EQ(File1[0], NativePath(root.path() + "\\Data\\Linie\\_5._"));
}

TEST(LowestFreeServiceId, IsTheFirstSixDigitIdWithoutAFile) {
    TempDir package;
    EXPECT_EQ(LowestFreeServiceId(package.path()), QStringLiteral("000000"));
    package.write("_000000._", "x");
    package.write("_000001._", "x");
    package.write("_000003._", "x");
    EXPECT_EQ(LowestFreeServiceId(package.path()), QStringLiteral("000002"));
}
