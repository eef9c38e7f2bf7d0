#include "dialogs/importformats.h"
#include "support/tempdir.h"
#include "util/apppath.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

TEST(InstalledFormats, ReadsTheDeliveredListInOrder) {
    qunsetenv("TAVIK_HOME");
    EXPECT_EQ(InstalledFormats(AppPath() + QStringLiteral("\\Formats.ini")),
              (QStringList{"wav", "mp3", "ogg", "flac"}));
}

TEST(InstalledFormats, StopsAtTheFirstMissingKey) {
    TempDir dir;
    const QString file = dir.write(
        "Formats.ini", "[Installed]\r\n1=wav\r\n2=mp3\r\n4=flac\r\n[wav]\r\nFormat=x\r\n");
    EXPECT_EQ(InstalledFormats(file), (QStringList{"wav", "mp3"}));
}

TEST(InstalledFormats, NoInstalledSectionGivesNoFormats) {
    TempDir dir;
    EXPECT_TRUE(
        InstalledFormats(dir.write("Formats.ini", "[wav]\r\nFormat=waveaudio\r\n")).isEmpty());
    EXPECT_TRUE(InstalledFormats(dir.file("missing.ini")).isEmpty());
}

TEST(FormatFilterEntries, PutsTheTwoFixedEntriesInFront) {
    EXPECT_EQ(FormatFilterEntries({"wav", "mp3"}),
              (QStringList{"Alle Dateien", "Alle Medientypen!", "*.wav", "*.mp3"}));
    EXPECT_EQ(FormatFilterEntries({}), (QStringList{"Alle Dateien", "Alle Medientypen!"}));
}

TEST(FilterPattern, AllFilesAllMediaTypesAndOneFormat) {
    const QStringList entries = FormatFilterEntries({"wav", "mp3"});
    EXPECT_EQ(FilterPattern(entries, 0), QStringLiteral("*.*"));
    EXPECT_EQ(FilterPattern(entries, 1), QStringLiteral("*.wav;*.mp3"));
    EXPECT_EQ(FilterPattern(entries, 2), QStringLiteral("*.wav"));
    EXPECT_EQ(FilterPattern(entries, 3), QStringLiteral("*.mp3"));
}

TEST(FilterPattern, AllMediaTypesWithoutInstalledFormatsIsEmpty) {
    EXPECT_EQ(FilterPattern(FormatFilterEntries({}), 1), QString());
}

TEST(IsInstalledFormat, ComparesTheExtensionWithoutRegardToCase) {
    const QStringList formats{"wav", "mp3"};
    EXPECT_TRUE(IsInstalledFormat(QStringLiteral("/x/Ansage.WAV"), formats));
    EXPECT_TRUE(IsInstalledFormat(QStringLiteral("/x/a.b.mp3"), formats));
    EXPECT_FALSE(IsInstalledFormat(QStringLiteral("/x/notes.txt"), formats));
    EXPECT_FALSE(IsInstalledFormat(QStringLiteral("/x.wav/wav"), formats));
}
