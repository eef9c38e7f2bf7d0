#include "dialogs/filebrowsing.h"
#include "support/tempdir.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

TEST(ListPatternFiles, MatchesEachPatternOfTheListWithoutRegardToCase) {
    TempDir dir;
    dir.write("b.wav", "x");
    dir.write("A.MP3", "x");
    dir.write("c.ogg", "x");
    dir.write("notes", "x");
    QDir(dir.path()).mkdir("d.wav");
    EXPECT_EQ(ListPatternFiles(dir.path(), "*.wav;*.mp3"), (QStringList{"A.MP3", "b.wav"}));
    EXPECT_EQ(ListPatternFiles(dir.path(), "*.ogg"), QStringList{"c.ogg"});
}

TEST(ListPatternFiles, StarDotStarListsNamesWithoutADotToo) {
    TempDir dir;
    dir.write("b.wav", "x");
    dir.write("notes", "x");
    EXPECT_EQ(ListPatternFiles(dir.path(), "*.*"), (QStringList{"b.wav", "notes"}));
}

TEST(ListPatternFiles, AnEmptyPatternListsNothing) {
    TempDir dir;
    dir.write("b.wav", "x");
    EXPECT_TRUE(ListPatternFiles(dir.path(), "").isEmpty());
    EXPECT_TRUE(ListPatternFiles(dir.file("missing"), "*.*").isEmpty());
}

TEST(ListFolders, ListsSubfoldersSortedWithoutFiles) {
    TempDir dir;
    QDir(dir.path()).mkdir("beta");
    QDir(dir.path()).mkdir("Alpha");
    dir.write("file.wav", "x");
    EXPECT_EQ(ListFolders(dir.path()), (QStringList{"Alpha", "beta"}));
}

TEST(DriveRoots, OffersTheRootAndTheFolderOfATempFileLiesOnOne) {
    const QStringList roots = DriveRoots();
    ASSERT_FALSE(roots.isEmpty());
#ifndef Q_OS_WIN
    EXPECT_EQ(roots.front(), QStringLiteral("/"));
#endif
    TempDir dir;
    EXPECT_TRUE(roots.contains(DriveOf(dir.path())));
}

TEST(JoinFolderFile, AddsOneSeparatorOnlyWhenMissing) {
    const QString sep = QDir::separator();
    EXPECT_EQ(JoinFolderFile("/a", "b.wav"), "/a" + sep + "b.wav");
    EXPECT_EQ(JoinFolderFile("/", "b.wav"), QStringLiteral("/b.wav"));
}

namespace {

// An installation root in a scratch folder for the length of a test.
struct ScratchInstallation {
    tavik::test::TempDir root;
    ScratchInstallation() {
        QDir(root.path()).mkpath(QStringLiteral("bin"));
        QDir(root.path()).mkpath(QStringLiteral("Data/Linie1"));
        qputenv("TAVIK_HOME", root.path().toLocal8Bit());
    }
    ~ScratchInstallation() { qunsetenv("TAVIK_HOME"); }
    QString canonical(const QString& name) const { return QDir(root.file(name)).canonicalPath(); }
};

} // namespace

TEST(DialogFolders, DialogsAboutPackagesStartInTheDataFolder) {
    ScratchInstallation install;
    const QString folder = tavik::PackagesDialogFolder();
    EXPECT_EQ(QDir(folder).canonicalPath(), install.canonical(QStringLiteral("Data")));
    // A plain path a file dialog shows as it is: no "bin/.." and no doubled separator.
    EXPECT_FALSE(QDir::fromNativeSeparators(folder).contains(QStringLiteral("..")));
    EXPECT_FALSE(QDir::fromNativeSeparators(folder).contains(QStringLiteral("//")));
}

TEST(DialogFolders, APackageDialogStartsInThePackageFolderWhenItExistsElseInTheDataFolder) {
    ScratchInstallation install;
    EXPECT_EQ(QDir(tavik::PackageDialogFolder(install.root.file(QStringLiteral("Data/Linie1"))))
                  .canonicalPath(),
              install.canonical(QStringLiteral("Data/Linie1")));
    // The doubled separator the open dialog forms after "Data" names the same folder.
    EXPECT_EQ(QDir(tavik::PackageDialogFolder(install.root.file(QStringLiteral("Data//Linie1"))))
                  .canonicalPath(),
              install.canonical(QStringLiteral("Data/Linie1")));
    for (const QString& none : {QString(), install.root.file(QStringLiteral("Data/Weg"))})
        EXPECT_EQ(QDir(tavik::PackageDialogFolder(none)).canonicalPath(),
                  install.canonical(QStringLiteral("Data")))
            << none.toStdString();
}

TEST(PictureFilter, PutsEveryReadableFormatFirstAndKeepsTheDesignedEntries) {
    const QString designed = QStringLiteral("JPEG Bild [*.jpg]|*.jpg|Alle Dateien [*.*]|*.*");
    EXPECT_EQ(tavik::PictureFilter(QStringLiteral("Alle Bilder"), designed,
                                   {"png", "jpeg", "jpg", "BMP", "gif", "png"}),
              QStringLiteral("Alle Bilder|*.bmp;*.gif;*.jpeg;*.jpg;*.png|") + designed);
}

TEST(PictureFilter, WithoutFormatsOnlyTheDesignedEntriesAndNoWildcardSlipsIn) {
    const QString designed = QStringLiteral("Icon [*.ico]|*.ico");
    EXPECT_EQ(tavik::PictureFilter(QStringLiteral("Alle Bilder"), designed, {}), designed);
    EXPECT_EQ(
        tavik::PictureFilter(QStringLiteral("Alle Bilder"), designed, {"*", "a|b", "x;y", ""}),
        designed);
    EXPECT_EQ(tavik::PictureFilter(QStringLiteral("All pictures"), QString(), {"png"}),
              QStringLiteral("All pictures|*.png"));
}
