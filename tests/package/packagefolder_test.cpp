#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "support/errorof.h"
#include "support/tempdir.h"
#include "util/apppath.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::TempDir;

namespace {

void setIndex(clsZELDB& store, const QStringList& entries) {
    for (int i = 0; i < entries.size(); ++i)
        store.SaveSetting("INDEX", QString::number(i + 1), Variant::fromString(entries[i]));
    store.SaveSetting("INDEX", "Count",
                      Variant::fromLong(static_cast<std::int32_t>(entries.size())));
}

} // namespace

TEST(FormatKey, PadsToFourDigitsBelowOneThousand) {
    EXPECT_EQ(FormatKey(0), QStringLiteral("0000"));
    EXPECT_EQ(FormatKey(7), QStringLiteral("0007"));
    EXPECT_EQ(FormatKey(12), QStringLiteral("0012"));
    EXPECT_EQ(FormatKey(999), QStringLiteral("0999"));
    EXPECT_EQ(FormatKey(1234), QStringLiteral("1234"));
    EXPECT_EQ(FormatKey(10000), QStringLiteral("10000"));
}

TEST(NextFreeKey, TakesTheLowestNumberWithoutAFile) {
    TempDir dir;
    EXPECT_EQ(NextFreeKey(dir.path()), QStringLiteral("0000"));
    dir.write("0000.wav", "x");
    dir.write("0002.mp3", "x");
    EXPECT_EQ(NextFreeKey(dir.path()), QStringLiteral("0001"));
    dir.write("0001.ogg", "x");
    EXPECT_EQ(NextFreeKey(dir.path()), QStringLiteral("0003"));
}

TEST(NextFreeKey, CountsAnyFileWhoseNameBeginsWithTheKey) {
    TempDir dir;
    dir.write("0000", "x");          // no extension
    dir.write("0001 copy.wav", "x"); // begins with the key
    dir.write("Package.io", "x");
    QDir(dir.path()).mkdir("0002"); // a folder names no key
    EXPECT_EQ(NextFreeKey(dir.path()), QStringLiteral("0002"));
}

TEST(GetFileName, FindsTheFirstFileBeginningWithTheKey) {
    TempDir dir;
    dir.write("0007.wav", "x");
    dir.write("0007b.mp3", "x");
    EXPECT_EQ(GetFileName(dir.path(), "0007"),
              NativePath(dir.path() + QStringLiteral("\\0007.wav")));
    EXPECT_EQ(GetFileName(dir.path(), "0008"), QString());
}

TEST(GetFileName, AKeyWithASeparatorDotsOrAWildcardFindsNothing) {
    TempDir dir;
    dir.write("pkg/0001.wav", "x");
    dir.write("secret.wav", "x");
    const QString folder = dir.file("pkg");
    EXPECT_EQ(GetFileName(folder, "../secret"), QString());
    EXPECT_EQ(GetFileName(folder, "..\\secret"), QString());
    EXPECT_EQ(GetFileName(folder, "0*"), QString());
    EXPECT_EQ(GetFileName(folder, "000?"), QString());
    EXPECT_EQ(GetFileName(folder, "..0001"), QString());
    EXPECT_EQ(GetFileName(dir.path(), "pkg/0001"), QString());
    EXPECT_EQ(GetFileName(folder, "0001"), NativePath(folder + QStringLiteral("\\0001.wav")));
}

TEST(PackageFileList, FindsTheSameFilesAsASearchPerKey) {
    TempDir dir;
    for (const char* name : {"0001b.wav", "0001.mp3", "00010.wav", "0002.WAV", "0003x.ogg",
                             "Package.io", "a0004.wav", "0005.MP3", "0005.mp3"})
        dir.write(name, "x");
    QDir(dir.path()).mkpath("0006 folder");
    const PackageFileList list(dir.path());
    for (const char* key : {"0001", "00010", "0002", "0003", "0004", "0005", "0006", "0007", "000",
                            "", "../0001", "0*", "0001?"})
        EXPECT_EQ(list.GetFileName(key), GetFileName(dir.path(), key)) << key;
    EXPECT_TRUE(list.GetFileName("0001").endsWith("0001.mp3"));
    EXPECT_EQ(list.GetFileName("../0001"), QString());
}

TEST(GetExtension, ReturnsTheLastPartAfterADot) {
    EXPECT_EQ(GetExtension(QStringLiteral("/x/0007.wav")), QStringLiteral("wav"));
    EXPECT_EQ(GetExtension(QStringLiteral("0007.a.b.MP3")), QStringLiteral("MP3"));
    EXPECT_EQ(GetExtension(QStringLiteral("0007")), QStringLiteral("0007"));
    EXPECT_EQ(GetExtension(QString()), QString());
}

TEST(DataFolder, LiesBesideTheProgramFolder) {
    TempDir dir;
    qputenv("TAVIK_HOME", dir.path().toLocal8Bit());
    EXPECT_EQ(DataFolder(),
              dir.path() + QStringLiteral("/bin") + NativePath(QStringLiteral("\\..\\Data\\")));
    qunsetenv("TAVIK_HOME");
}

TEST(IndexEntry, SplitsAtTheFirstTildeAndCutsTheTitleAtTheSecond) {
    const IndexEntry e = SplitIndexEntry(QStringLiteral("0007~Gleis 1"));
    EXPECT_EQ(e.Key, QStringLiteral("0007"));
    EXPECT_EQ(e.Title, QStringLiteral("Gleis 1"));
    const IndexEntry more = SplitIndexEntry(QStringLiteral("0003~Zug~nach~Berlin"));
    EXPECT_EQ(more.Key, QStringLiteral("0003"));
    EXPECT_EQ(more.Title, QStringLiteral("Zug"));
    EXPECT_EQ(SplitIndexEntry(QStringLiteral("0003~")).Title, QString());
    EXPECT_EQ(JoinIndexEntry("0007", "Gleis 1"), QStringLiteral("0007~Gleis 1"));
}

TEST(IndexEntry, AnEntryWithoutTildeOrAnEmptyEntryRaisesTheSubscriptError) {
    EXPECT_EQ(errorOf([] { SplitIndexEntry(QStringLiteral("0003")); }), rt::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([] { SplitIndexEntry(QString()); }), rt::SubscriptOutOfRange);
}

TEST(PackageSettings, APackageWithoutIndexShowsNoEntries) {
    clsZELDB store;
    store.SaveSetting("INFO", "Name", Variant::fromString("Leer"));
    EXPECT_FALSE(store.KeyExists("INDEX"));
    EXPECT_EQ(ReadIndexCount(store), 0);
    EXPECT_TRUE(ReadShownEntries(store).isEmpty());
}

TEST(PackageSettings, AnEntryWithAnEmptyTitleIsNotShown) {
    clsZELDB store;
    setIndex(store, {"0000~Gong", "0003~", "0004~Einfahrt~alt"});
    const QList<IndexEntry> shown = ReadShownEntries(store);
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0].Key, QStringLiteral("0000"));
    EXPECT_EQ(shown[1].Key, QStringLiteral("0004"));
    EXPECT_EQ(shown[1].Title, QStringLiteral("Einfahrt"));
}

TEST(PackageSettings, MissingAnnouncementSettingsReadAsTheirDefaultTexts) {
    clsZELDB store;
    const AnnouncementSettings s = ReadAnnouncementSettings(store, "0007");
    EXPECT_EQ(s.Color, 0);
    EXPECT_TRUE(s.NameVisible);
    EXPECT_EQ(s.AutoPlace, -1);
    EXPECT_EQ(store.GetSetting("0007", "NameVisible", "1"), Variant::fromString("1"));
}

TEST(PackageSettings, AnnouncementSettingsAreStoredUnderTheKeyWithTheirTypes) {
    clsZELDB store;
    WriteAnnouncementSettings(store, "0007", {255, false, 3});
    EXPECT_EQ(store.GetSetting("0007", "Color", "0"), Variant::fromLong(255));
    EXPECT_EQ(store.GetSetting("0007", "NameVisible", "1"), Variant::fromBoolean(false));
    EXPECT_EQ(store.GetSetting("0007", "AutoPlace", "-1"), Variant::fromLong(3));
    const AnnouncementSettings s = ReadAnnouncementSettings(store, "0007");
    EXPECT_EQ(s.Color, 255);
    EXPECT_FALSE(s.NameVisible);
    EXPECT_EQ(s.AutoPlace, 3);
}
