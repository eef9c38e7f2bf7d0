#include "settings/lastpackage.h"
#include "support/tempdir.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::TempDir;

namespace {

struct Installation {
    TempDir root;
    Installation() {
        QDir(root.path()).mkpath(QStringLiteral("bin"));
        qputenv("TAVIK_HOME", root.path().toLocal8Bit());
    }
    ~Installation() { qunsetenv("TAVIK_HOME"); }
    QString settings() const { return root.file(QStringLiteral("bin/Tavik.ini")); }
};

} // namespace

TEST(LastPackage, NoneIsKeptUntilAPackageIsLoaded) {
    Installation install;
    EXPECT_EQ(ReadLastPackage(), QString());
    EXPECT_FALSE(QFile::exists(install.settings()));
}

TEST(LastPackage, TheFolderIsKeptBesideTheOtherSettingsAndWrittenOnlyWhenItChanges) {
    Installation install;
    install.root.write(QStringLiteral("bin/Tavik.ini"), "[Settings]\r\nLanguage=x.lng\r\n");
    const QString folder = install.root.file(QStringLiteral("Data/Linie1"));
    WriteLastPackage(folder);
    EXPECT_EQ(QDir::fromNativeSeparators(ReadLastPackage()), folder);
    const QByteArray written = readAll(install.settings());
    EXPECT_TRUE(written.startsWith("[Settings]\r\nLanguage=x.lng\r\n")) << written.constData();
    EXPECT_TRUE(written.contains("LastPackage=")) << written.constData();

    // The same folder written another way changes no byte.
    const qint64 modified = QFileInfo(install.settings()).lastModified().toMSecsSinceEpoch();
    WriteLastPackage(install.root.file(QStringLiteral("Data//Linie1/")));
    EXPECT_EQ(readAll(install.settings()), written);
    EXPECT_EQ(QFileInfo(install.settings()).lastModified().toMSecsSinceEpoch(), modified);

    WriteLastPackage(QString()); // no package: the last one stays
    EXPECT_EQ(QDir::fromNativeSeparators(ReadLastPackage()), folder);
}

TEST(LastPackage, IndexOfFolderFindsTheSameFolderWrittenAnotherWay) {
    const QStringList folders{QStringLiteral("/x/Data//A"), QStringLiteral("/x/Data//B")};
    EXPECT_EQ(IndexOfFolder(folders, QStringLiteral("/x/Data/B")), 1);
    EXPECT_EQ(IndexOfFolder(folders, QStringLiteral("/x/bin/../Data/A/")), 0);
    EXPECT_EQ(IndexOfFolder(folders, QStringLiteral("/x/Data/C")), -1);
    EXPECT_EQ(IndexOfFolder(folders, QString()), -1);
    EXPECT_EQ(IndexOfFolder({}, QStringLiteral("/x/Data/A")), -1);
}
