#include "dialogs/soundimport.h"
#include "package/clszeldb.h"
#include "package/packagesettings.h"
#include "support/errorof.h"
#include "support/links.h"
#include "support/tempdir.h"
#include "support/treesnapshot.h"
#include "support/writefault.h"
#include "util/conversions.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::readAll;
using tavik::test::TempDir;

namespace {

QString indexOf(const TempDir& package) {
    return package.file("Package.io");
}

QString entry(clsZELDB& store, int position) {
    return CStr(store.GetSetting("INDEX", QString::number(position), ""));
}

} // namespace

TEST(PathFileName, TakesTheTextAfterTheLastSeparator) {
    EXPECT_EQ(PathFileName("C:\\Sounds\\Gleis 1.wav", false), QStringLiteral("Gleis 1.wav"));
    EXPECT_EQ(PathFileName("/home/a/Gleis 1.wav", false), QStringLiteral("Gleis 1.wav"));
    EXPECT_EQ(PathFileName("Gleis.wav", false), QStringLiteral("Gleis.wav"));
}

TEST(PathFileName, StrippingCutsAtTheFirstDot) {
    EXPECT_EQ(PathFileName("/x/Ansage.teil2.wav", true), QStringLiteral("Ansage"));
    EXPECT_EQ(PathFileName("/x.d/Ansage", true), QStringLiteral("Ansage"));
}

TEST(ImportExtension, IsTheTextAfterTheLastDot) {
    EXPECT_EQ(ImportExtension("/x/Ansage.teil2.wav"), QStringLiteral("wav"));
    EXPECT_EQ(ImportExtension("/x/Ansage.MP3"), QStringLiteral("MP3"));
    EXPECT_EQ(ImportExtension("Ansage"), QStringLiteral("Ansage"));
}

TEST(ImportSoundFiles, TakesTheFreeKeysBetweenExistingFiles) {
    TempDir source, package;
    package.write("0000.wav", "old0");
    package.write("0002.mp3", "old2");
    const QString a = source.write("Gleis 1.wav", "first");
    const QString b = source.write("Gleis 2.ogg", "second");
    clsZELDB store;
    const QStringList keys =
        ImportSoundFiles({{a, "Gleis 1"}, {b, "Gleis 2"}}, package.path(), store, indexOf(package));
    EXPECT_EQ(keys, (QStringList{"0001", "0003"}));
    EXPECT_EQ(readAll(package.file("0001.wav")), QByteArray("first"));
    EXPECT_EQ(readAll(package.file("0003.ogg")), QByteArray("second"));
    EXPECT_EQ(readAll(package.file("0000.wav")), QByteArray("old0"));
    EXPECT_EQ(entry(store, 1), QStringLiteral("0001~Gleis 1"));
    EXPECT_EQ(entry(store, 2), QStringLiteral("0003~Gleis 2"));
    EXPECT_EQ(ReadIndexCount(store), 2);
}

TEST(ImportSoundFiles, AppendsBehindTheEntriesTheIndexAlreadyHas) {
    TempDir source, package;
    clsZELDB store;
    store.SaveSetting("INDEX", "1", Variant::fromString("0000~Eins"));
    store.SaveSetting("INDEX", "2", Variant::fromString("0001~Zwei"));
    store.SaveSetting("INDEX", "Count", Variant::fromLong(2));
    package.write("0000.wav", "x");
    package.write("0001.wav", "x");
    ImportSoundFiles({{source.write("drei.wav", "3"), "Drei"}}, package.path(), store,
                     indexOf(package));
    EXPECT_EQ(entry(store, 3), QStringLiteral("0002~Drei"));
    EXPECT_EQ(store.GetSetting("INDEX", "Count", ""), Variant::fromLong(3));
}

TEST(ImportSoundFiles, KeepsTheSecondDotOfANameOutOfTheExtension) {
    TempDir source, package;
    clsZELDB store;
    ImportSoundFiles({{source.write("Ansage.teil2.wav", "x"), "Ansage"}}, package.path(), store,
                     indexOf(package));
    EXPECT_TRUE(QFile::exists(package.file("0000.wav")));
    EXPECT_EQ(entry(store, 1), QStringLiteral("0000~Ansage"));
}

TEST(ImportSoundFiles, AnEmptyTitleIsCountedAsItStands) {
    TempDir source, package;
    clsZELDB store;
    ImportSoundFiles({{source.write("a.wav", "x"), ""}}, package.path(), store, indexOf(package));
    EXPECT_EQ(entry(store, 1), QStringLiteral("0000~"));
    EXPECT_EQ(ReadIndexCount(store), 1);
}

TEST(ImportSoundFiles, AFailedCopyLeavesThePackageAndTheStoreAsTheyWere) {
    TempDir source, package;
    clsZELDB store;
    store.SaveSetting("INDEX", "1", Variant::fromString("0005~Alt"));
    store.SaveSetting("INDEX", "Count", Variant::fromLong(1));
    store.SaveIOFile(indexOf(package));
    package.write("0005.wav", "old");
    const QByteArray index = readAll(indexOf(package));
    const QByteArray storeBefore = store.toBytes();
    const QString a = source.write("a.wav", "a");
    const QString gone = source.file("vanished.wav");
    const QString c = source.write("c.wav", "c");
    QStringList reported;
    ImportProgress progress;
    progress.beforeCopy = [&](const QString& name) { reported << name; };
    EXPECT_EQ(errorOf([&] {
                  ImportSoundFiles({{a, "A"}, {gone, "B"}, {c, "C"}}, package.path(), store,
                                   indexOf(package), progress);
              }),
              53);
    EXPECT_EQ(reported, (QStringList{"a.wav", "vanished.wav"}));
    EXPECT_EQ(tavik::test::namesIn(package.path()), (QStringList{"0005.wav", "Package.io"}));
    EXPECT_EQ(readAll(indexOf(package)), index);
    EXPECT_EQ(store.toBytes(), storeBefore);
}

TEST(ImportSoundFiles, WritesTheIndexAndLeavesNoTemporaryBehind) {
    TempDir source, package;
    clsZELDB store;
    ImportSoundFiles({{source.write("a.wav", "a"), "A"}, {source.write("b.mp3", "b"), "B"}},
                     package.path(), store, indexOf(package));
    EXPECT_EQ(tavik::test::namesIn(package.path()),
              (QStringList{"0000.wav", "0001.mp3", "Package.io"}));
    clsZELDB saved;
    ASSERT_TRUE(saved.OpenIOFile(indexOf(package)));
    EXPECT_EQ(entry(saved, 2), QStringLiteral("0001~B"));
    EXPECT_EQ(ReadIndexCount(saved), 2);
}

TEST(ImportSoundFiles, AKeyTheIndexStillListsIsNotGivenOutWhenItsSoundIsGone) {
    TempDir source, package;
    clsZELDB store;
    store.SaveSetting("INDEX", "1", Variant::fromString("0000~Entfernt"));
    store.SaveSetting("INDEX", "2", Variant::fromString("0001~Da"));
    store.SaveSetting("INDEX", "Count", Variant::fromLong(2));
    package.write("0001.wav", "x");
    EXPECT_EQ(ImportSoundFiles({{source.write("neu.wav", "n"), "Neu"}}, package.path(), store,
                               indexOf(package)),
              QStringList{"0002"});
    EXPECT_FALSE(QFile::exists(package.file("0000.wav")));
}

TEST(ImportSoundFiles, AKeyTheListStillHoldsIsNotGivenOut) {
    TempDir source, package;
    clsZELDB store;
    EXPECT_EQ(ImportSoundFiles({{source.write("neu.wav", "n"), "Neu"}}, package.path(), store,
                               indexOf(package), {}, {"0000", "0001"}),
              QStringList{"0002"});
}

TEST(ImportSoundFiles, AnExtensionWithAFolderInItFailsInsideThePackage) {
    TempDir source, package;
    QDir(source.path()).mkdir("my.sounds");
    const QString noExtension = source.write("my.sounds/track", "x");
    clsZELDB store;
    EXPECT_EQ(errorOf([&] {
                  ImportSoundFiles({{noExtension, "T"}}, package.path(), store, indexOf(package));
              }),
              76);
    EXPECT_TRUE(QDir(package.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).isEmpty());
    EXPECT_TRUE(QDir(source.path()).entryList(QDir::Files).isEmpty());
    EXPECT_EQ(ReadIndexCount(store), 0);
}

TEST(ImportSoundFiles, ACopyThatFailsMidwayLeavesNoSoundFileAtAll) {
    TempDir source, package;
    clsZELDB store;
    const QString a = source.write("a.wav", QByteArray(5000, 'a'));
    const QString b = source.write("b.wav", QByteArray(5000, 'b'));
    tavik::test::ScopedWriteFault fault(WriteStep::Write, ENOSPC, 2);
    EXPECT_EQ(errorOf([&] {
                  ImportSoundFiles({{a, "A"}, {b, "B"}}, package.path(), store, indexOf(package));
              }),
              rt::DiskFull);
    EXPECT_EQ(QDir(package.path())
                  .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
              QStringList{});
    EXPECT_EQ(ReadIndexCount(store), 0);
}

TEST(ImportSoundFiles, ALinkNamedLikeAKeyIsPassedOverAndItsTargetStays) {
    TempDir root;
    clsZELDB store;
    const QString outside = root.write("outside/victim.wav", "victim");
    const QString sound = root.write("in/new.wav", "new sound");
    QDir().mkpath(root.file("package"));
    TAVIK_LINK_OR_SKIP(outside, root.file("package/0000.wav"));
    const tavik::test::TreeSnapshot before(root.path(), {root.file("package")});
    EXPECT_EQ(ImportSoundFiles({{sound, "Neu"}}, root.file("package"), store,
                               root.file("package/Package.io")),
              QStringList{"0001"});
    EXPECT_EQ(readAll(root.file("package/0001.wav")), QByteArray("new sound"));
    EXPECT_EQ(tavik::test::TreeSnapshot(root.path(), {root.file("package")}).changesSince(before),
              QStringList());
}
