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
