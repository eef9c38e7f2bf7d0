#include "audio/emulatorbackend.h"
#include "audio/mcipackagesounds.h"
#include "service/packagefixture.h"
#include "support/errorof.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::PackageFixture;

TEST(LoadAnnouncementTable, FillsOneRecordPerShownEntryWithItsSettingsAndMeasuredLength) {
    PackageFixture package({{"0000", "Gong", 1000, false},
                            {"0001", "Ohne Datei", -1},
                            {"0002", "", 500},
                            {"0003", "Achtung", 500}});
    EmulatorBackend emulator;
    modMCI mci(emulator, {});
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(package.index));
    AnnouncementTable table;
    QStringList missing;
    AnnouncementLoadHooks hooks;
    hooks.missingFile = [&](const QString& key, const QString& title) { missing << key + title; };
    LoadAnnouncementTable(store, package.folder, mci, table, hooks);

    ASSERT_EQ(table.AnnouncementCount, 3);
    EXPECT_EQ(table.Announcements[0].Key, "0000");
    EXPECT_EQ(table.Announcements[0].Length, 1000);
    EXPECT_FALSE(table.Announcements[0].NameVisible);
    EXPECT_EQ(table.Announcements[1].Key, "0001");
    EXPECT_TRUE(table.Announcements[1].Missing);
    EXPECT_EQ(table.Announcements[1].Length, 0);
    EXPECT_EQ(table.Announcements[2].Key, "0003");
    EXPECT_EQ(table.Announcements[2].Title, "Achtung");
    EXPECT_EQ(table.Announcements[2].Length, 500);
    EXPECT_EQ(missing, QStringList({"0001Ohne Datei"}));
    UnloadAnnouncementSounds(mci, table);
    EXPECT_EQ(table.AnnouncementCount, 0);
}

TEST(LoadAnnouncementTable, AnAliasStillOpenIsReportedOnceThenClosedAndOpenedAgain) {
    PackageFixture package({{"0000", "Gong", 400}, {"0001", "Achtung", 300}});
    EmulatorBackend emulator;
    modMCI mci(emulator, {});
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(package.index));
    AnnouncementTable table;
    LoadAnnouncementTable(store, package.folder, mci, table);
    table.AnnouncementCount = 0; // a second load without unloading first
    int warnings = 0;
    AnnouncementLoadHooks hooks;
    hooks.aliasInUse = [&] { ++warnings; };
    LoadAnnouncementTable(store, package.folder, mci, table, hooks);
    EXPECT_EQ(warnings, 1);
    EXPECT_EQ(table.Announcements[0].Length, 400);
    EXPECT_EQ(table.Announcements[1].Length, 300);
    UnloadAnnouncementSounds(mci, table);
}
