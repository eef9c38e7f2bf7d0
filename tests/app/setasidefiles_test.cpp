#include "app/setasidefiles.h"
#include "support/errorof.h"
#include "support/scratchtrash.h"
#include "support/tempdir.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::readAll;
using tavik::test::TempDir;

namespace {

// The system's trash of this test: a scratch folder.
struct ScratchTrash {
    TempDir home;
    ScratchTrash() { qputenv("XDG_DATA_HOME", home.path().toLocal8Bit()); }
    ~ScratchTrash() { qunsetenv("XDG_DATA_HOME"); }
    QStringList files() const {
        return QDir(home.file(QStringLiteral("Trash/files"))).entryList(QDir::Files);
    }
};

} // namespace

TEST(SetAsideFiles, AFileSetAsideLeavesItsFolderAndComesBackWithItsBytes) {
    TempDir package;
    const QString file = package.write("0003.wav", "RIFF-bytes");
    SetAsideFiles aside;
    aside.put(file);
    EXPECT_FALSE(QFileInfo::exists(file));
    EXPECT_TRUE(aside.holds(file));
    aside.bringBack(file);
    EXPECT_EQ(readAll(file), QByteArray("RIFF-bytes"));
    EXPECT_FALSE(aside.holds(file));
}

TEST(SetAsideFiles, AMissingFileRaises53AndAnOccupiedPlaceKeepsTheFileAside) {
    ScratchTrash trash; // where the file goes when the set-aside files go
    TempDir package;
    SetAsideFiles aside;
    EXPECT_EQ(errorOf([&] { aside.put(package.file("0009.wav")); }), rt::FileNotFound);
    EXPECT_EQ(errorOf([&] { aside.put(QString()); }), rt::FileNotFound);
    const QString file = package.write("0001.wav", "old");
    aside.put(file);
    package.write("0001.wav", "new");
    EXPECT_EQ(errorOf([&] { aside.bringBack(file); }), 58);
    EXPECT_TRUE(aside.holds(file));
    EXPECT_EQ(readAll(file), QByteArray("new"));
}

TEST(SetAsideFiles, SettlingSendsUnlistedFilesToTheTrashAndListedOnesBack) {
    if (!test::TrashCanBeScratch())
        GTEST_SKIP() << test::WhyNoScratchTrash().toStdString();
    ScratchTrash trash;
    TempDir package;
    const QString saved = package.write("0001.wav", "removed and saved");
    const QString unsaved = package.write("0002.wav", "removed, not saved");
    {
        SetAsideFiles aside;
        aside.put(saved);
        aside.put(unsaved);
        aside.settle([&](const QString& path) { return path == unsaved; });
        EXPECT_TRUE(aside.paths().isEmpty());
    }
    EXPECT_FALSE(QFileInfo::exists(saved));
    EXPECT_EQ(readAll(unsaved), QByteArray("removed, not saved"));
    EXPECT_EQ(trash.files(), QStringList{QStringLiteral("0001.wav")});
}

TEST(SetAsideFiles, WhatIsStillHeldWhenItGoesComesBack) {
    TempDir package;
    const QString file = package.write("0004.wav", "kept");
    {
        SetAsideFiles aside;
        aside.put(file);
    }
    EXPECT_EQ(readAll(file), QByteArray("kept"));
}
