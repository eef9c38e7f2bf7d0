#include "package/clszeldb.h"
#include "package/zeldbbytes.h"
#include "support/errorof.h"
#include "support/tempdir.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::Bytes;
using tavik::test::errorOf;
using tavik::test::readAll;
using tavik::test::TempDir;

namespace {

const Variant kX = Variant::fromString(QStringLiteral("x"));

QByteArray infoNameX() {
    return Bytes().magic().emptyHeader(1).key(-1, "INFO", 1, 1).stringItem(-1, "Name", "x");
}

} // namespace

TEST(ClsZeldb, ANewStoreWithOneSettingSavesExactlyTheDocumentedBytes) {
    TempDir dir;
    clsZELDB store;
    EXPECT_TRUE(store.SaveSetting("INFO", "Name", kX));
    EXPECT_TRUE(store.SaveIOFile(dir.file("Package.io")));
    EXPECT_EQ(readAll(dir.file("Package.io")), infoNameX());
}

TEST(ClsZeldb, SavingAfterAnOpenAppendsOneFreeKeyRecordAndKeepsTheCount) {
    TempDir dir;
    const QString path = dir.write("Package.io", infoNameX());
    clsZELDB store;
    EXPECT_TRUE(store.OpenIOFile(path));
    EXPECT_EQ(store.KeyCountAtOpen, 1);
    EXPECT_TRUE(store.SaveIOFile(dir.file("again.io")));
    const QByteArray expected = Bytes().raw(infoNameX()).freeKey();
    EXPECT_EQ(readAll(dir.file("again.io")), expected);

    clsZELDB reopened;
    EXPECT_TRUE(reopened.OpenIOFile(dir.file("again.io")));
    EXPECT_EQ(reopened.lastRead().status, ZeldbReadReport::Status::Complete);
    EXPECT_EQ(reopened.keySlots().storedCount(), 2);
    EXPECT_EQ(reopened.GetSetting("INFO", "Name", ""), kX);
    // One more cycle adds no further record: the array is sized from the header's count.
    EXPECT_TRUE(reopened.SaveIOFile(dir.file("third.io")));
    EXPECT_EQ(readAll(dir.file("third.io")), expected);
}

TEST(ClsZeldb, AFreshFileReadsItsMissingLastKeySlotAsFreeAndEmpty) {
    TempDir dir;
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("Package.io", infoNameX())));
    EXPECT_EQ(store.lastRead().status, ZeldbReadReport::Status::Complete);
    ASSERT_EQ(store.keySlots().size(), 2);
    const ZeldbKey& extra = store.keySlots().get(1);
    EXPECT_EQ(extra.InUse, 0);
    EXPECT_EQ(extra.Name, QString());
    EXPECT_EQ(extra.ItemCount, 0);
    EXPECT_FALSE(extra.Items.allocated());
}

TEST(ClsZeldb, AddingAKeyAfterAnOpenUsesTheTrailingSlot) {
    TempDir dir;
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("Package.io", infoNameX())));
    store.SaveSetting("INDEX", "Count", Variant::fromLong(0));
    store.SaveIOFile(dir.file("out.io"));
    const QByteArray expected = Bytes()
                                    .magic()
                                    .emptyHeader(2)
                                    .key(-1, "INFO", 1, 1)
                                    .stringItem(-1, "Name", "x")
                                    .key(-1, "INDEX", 1, 1)
                                    .longItem("Count", 0);
    EXPECT_EQ(readAll(dir.file("out.io")), expected);
}

TEST(ClsZeldb, DeleteThenSaveReusesTheDeletedSlot) {
    TempDir dir;
    clsZELDB store;
    store.SaveSetting("K", "a", Variant::fromString("1"));
    store.SaveSetting("K", "b", Variant::fromString("2"));
    EXPECT_FALSE(store.DeleteItem("K", "a"));
    EXPECT_FALSE(store.ItemExists("K", "a"));
    EXPECT_EQ(store.keySlots().get(0).ItemCount, 2);
    const ZeldbItem& freed = store.keySlots().get(0).Items.get(0);
    EXPECT_EQ(freed.InUse, 0);
    EXPECT_EQ(freed.Name, QString());
    EXPECT_EQ(freed.Value, Variant::fromString(QString()));

    store.SaveSetting("K", "c", Variant::fromInteger(3));
    EXPECT_EQ(store.keySlots().get(0).ItemCount, 2);
    EXPECT_EQ(store.keySlots().get(0).Items.get(0).Name, QStringLiteral("c"));
    store.SaveIOFile(dir.file("out.io"));
    const QByteArray expected = Bytes()
                                    .magic()
                                    .emptyHeader(1)
                                    .key(-1, "K", 2, 2)
                                    .i16(-1)
                                    .str("c")
                                    .i16(0)
                                    .i16(2)
                                    .i16(3)
                                    .stringItem(-1, "b", "2");
    EXPECT_EQ(readAll(dir.file("out.io")), expected);
}

TEST(ClsZeldb, ADeletedItemIsWrittenAsAFreeSlotWithAnEmptyText) {
    TempDir dir;
    clsZELDB store;
    store.SaveSetting("K", "a", Variant::fromLong(5));
    store.DeleteItem("K", "a");
    store.SaveIOFile(dir.file("out.io"));
    EXPECT_EQ(readAll(dir.file("out.io")),
              Bytes().magic().emptyHeader(1).key(-1, "K", 1, 1).stringItem(0, "", "").data());
}

TEST(ClsZeldb, DeleteItemIsAlwaysFalseAndIgnoresWhatIsNotThere) {
    clsZELDB store;
    EXPECT_FALSE(store.DeleteItem("K", "a"));
    store.SaveSetting("K", "a", kX);
    EXPECT_FALSE(store.DeleteItem("K", "zzz"));
    EXPECT_TRUE(store.ItemExists("K", "a"));
}

TEST(ClsZeldb, GetSettingOfAMissingItemReturnsTheDefaultAsText) {
    clsZELDB store;
    store.SaveSetting("INDEX", "Count", Variant::fromLong(3));
    const Variant missing = store.GetSetting("INDEX", "Nothing", "0");
    EXPECT_EQ(missing.type(), VarType::String);
    EXPECT_EQ(missing.stringValue(), QStringLiteral("0"));
    EXPECT_EQ(store.GetSetting("NOKEY", "Count", "-1"), Variant::fromString("-1"));
    EXPECT_EQ(store.GetSetting("INDEX", "Count", "0"), Variant::fromLong(3));
    EXPECT_FALSE(store.KeyExists("NOKEY"));
}

TEST(ClsZeldb, NamesCompareExactly) {
    clsZELDB store;
    store.SaveSetting("INFO", "Name", kX);
    EXPECT_TRUE(store.KeyExists("INFO"));
    EXPECT_FALSE(store.KeyExists("info"));
    EXPECT_FALSE(store.ItemExists("INFO", "name"));
    EXPECT_FALSE(store.ItemExists("INFO", "Name "));
    EXPECT_TRUE(store.ItemExists("INFO", "Name"));
}

TEST(ClsZeldb, AValidFileWithNoKeysOpensFalseButIsLoaded) {
    TempDir dir;
    const QByteArray bytes =
        Bytes().magic().str("one").str("two").str("three").raw("ABCDEF").str("res").i16(0);
    clsZELDB store;
    EXPECT_FALSE(store.OpenIOFile(dir.write("Package.io", bytes)));
    EXPECT_EQ(store.lastRead().status, ZeldbReadReport::Status::Complete);
    EXPECT_EQ(store.HeaderText1, QStringLiteral("one"));
    EXPECT_EQ(store.HeaderText3, QStringLiteral("three"));
    EXPECT_EQ(store.KeyCountAtOpen, 0);
    EXPECT_EQ(store.keySlots().size(), 1);
}

TEST(ClsZeldb, TheHeaderIsKeptWholeAcrossOpenAndSave) {
    TempDir dir;
    const QByteArray bytes = Bytes()
                                 .magic()
                                 .str("T1")
                                 .str("")
                                 .str("T3")
                                 .raw(QByteArray("\x01\x02\xff\x00\x7f\x80", 6))
                                 .str("reserved text")
                                 .i16(1)
                                 .key(-1, "INFO", 1, 1)
                                 .stringItem(-1, "Name", "x")
                                 .freeKey();
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("in.io", bytes)));
    EXPECT_EQ(store.HeaderText1, QStringLiteral("T1"));
    store.SaveIOFile(dir.file("out.io"));
    EXPECT_EQ(readAll(dir.file("out.io")), bytes);

    store.HeaderText2 = QStringLiteral("neu");
    store.SaveIOFile(dir.file("changed.io"));
    clsZELDB changed;
    changed.OpenIOFile(dir.file("changed.io"));
    EXPECT_EQ(changed.HeaderText2, QStringLiteral("neu"));
    EXPECT_EQ(changed.header().ReservedText, QStringLiteral("reserved text"));
    EXPECT_EQ(changed.header().Reserved[2], 0xff);
}

TEST(ClsZeldb, AMissingOrEmptyFileOpensFalseAndLeavesTheStoreAsItWas) {
    TempDir dir;
    clsZELDB store;
    store.HeaderText1 = QStringLiteral("kept");
    store.SaveSetting("K", "a", kX);
    EXPECT_FALSE(store.OpenIOFile(dir.file("missing.io")));
    EXPECT_FALSE(store.OpenIOFile(dir.write("empty.io", "")));
    EXPECT_EQ(store.HeaderText1, QStringLiteral("kept"));
    EXPECT_EQ(store.GetSetting("K", "a", ""), kX);
}

TEST(ClsZeldb, AWrongMagicOpensFalseWithTheStoreReset) {
    TempDir dir;
    clsZELDB store;
    store.HeaderText1 = QStringLiteral("old");
    store.SaveSetting("K", "a", kX);
    QByteArray bytes = infoNameX();
    bytes[9] = '1';
    EXPECT_FALSE(store.OpenIOFile(dir.write("bad.io", bytes)));
    EXPECT_EQ(store.lastRead().status, ZeldbReadReport::Status::WrongMagic);
    EXPECT_EQ(store.HeaderText1, QString());
    EXPECT_EQ(store.keySlots().size(), 1);
    EXPECT_EQ(store.keySlots().get(0).InUse, 0);
    EXPECT_FALSE(store.OpenIOFile(dir.write("short.io", "IOZELDB")));
}

TEST(ClsZeldb, EveryValueTypeIsWrittenBackWithItsOwnCodeAndBytes) {
    TempDir dir;
    const QByteArray bytes = Bytes()
                                 .magic()
                                 .emptyHeader(1)
                                 .key(-1, "V", 7, 7)
                                 .i16(-1)
                                 .str("empty")
                                 .i16(0)
                                 .i16(0)
                                 .i16(-1)
                                 .str("int")
                                 .i16(0)
                                 .i16(2)
                                 .i16(-12345)
                                 .i16(-1)
                                 .str("long")
                                 .i16(0)
                                 .i16(3)
                                 .i32(-123456789)
                                 .i16(-1)
                                 .str("double")
                                 .i16(0)
                                 .i16(5)
                                 .u64(0x400921FB54442D18ull)
                                 .i16(-1)
                                 .str("date")
                                 .i16(7)
                                 .i16(7)
                                 .u64(0x40E5F4C000000000ull)
                                 .i16(-1)
                                 .str("text")
                                 .i16(0)
                                 .i16(8)
                                 .str("Gr\xfc\xdf"
                                      "e")
                                 .i16(-1)
                                 .str("bool")
                                 .i16(0)
                                 .i16(11)
                                 .i16(-1)
                                 .freeKey();
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("in.io", bytes)));
    EXPECT_EQ(store.GetSetting("V", "empty", "d").type(), VarType::Empty);
    EXPECT_EQ(store.GetSetting("V", "int", "d"), Variant::fromInteger(-12345));
    EXPECT_EQ(store.GetSetting("V", "long", "d"), Variant::fromLong(-123456789));
    EXPECT_DOUBLE_EQ(store.GetSetting("V", "double", "d").doubleValue(), 3.141592653589793);
    EXPECT_EQ(store.GetSetting("V", "date", "d").type(), VarType::Date);
    EXPECT_EQ(store.GetSetting("V", "text", "d"), Variant::fromString(QStringLiteral("Grüße")));
    EXPECT_EQ(store.GetSetting("V", "bool", "d"), Variant::fromBoolean(true));
    EXPECT_EQ(store.keySlots().get(0).Items.get(4).Reserved, 7);
    store.SaveIOFile(dir.file("out.io"));
    EXPECT_EQ(readAll(dir.file("out.io")), bytes);
}

TEST(ClsZeldb, SavingReplacesALongerOldFileWhole) {
    TempDir dir;
    const QString path = dir.write("Package.io", QByteArray(5000, 'z'));
    clsZELDB store;
    store.SaveSetting("INFO", "Name", kX);
    store.SaveIOFile(path);
    EXPECT_EQ(readAll(path), infoNameX());
}

TEST(ClsZeldb, SavingToAnUnwritablePathRaisesTheFileErrorAndKeepsTheOldFile) {
    TempDir dir;
    clsZELDB store;
    store.SaveSetting("INFO", "Name", kX);
    EXPECT_EQ(errorOf([&] { store.SaveIOFile(dir.file("missing/Package.io")); }), rt::PathNotFound);
    QDir(dir.path()).mkdir("Package.io");
    EXPECT_EQ(errorOf([&] { store.SaveIOFile(dir.file("Package.io")); }), rt::PathFileAccess);
}

TEST(ClsZeldb, AKeyHoldsAtMost32767ItemsThenOverflows) {
    TempDir dir;
    Bytes bytes;
    bytes.magic().emptyHeader(1).key(-1, "K", 32766, 32766);
    for (int i = 0; i < 32766; ++i)
        bytes.i16(-1).str(QByteArray::number(i)).i16(0).i16(0);
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("full.io", bytes)));
    store.SaveSetting("K", "last", kX);
    EXPECT_EQ(store.keySlots().get(0).ItemCount, 32767);
    EXPECT_EQ(errorOf([&] { store.SaveSetting("K", "one more", kX); }), rt::Overflow);
    EXPECT_EQ(store.keySlots().get(0).ItemCount, 32767);
    // A freed slot is still taken without growing the count.
    store.DeleteItem("K", "5");
    EXPECT_TRUE(store.SaveSetting("K", "one more", kX));
    EXPECT_EQ(store.keySlots().get(0).Items.get(5).Name, QStringLiteral("one more"));
}

TEST(ClsZeldb, AStoreHoldsAtMost32767KeysThenOverflows) {
    TempDir dir;
    // A file that claims 32,767 keys, all of them in use, reaches the limit quickly.
    Bytes bytes;
    bytes.magic().emptyHeader(32767);
    for (int i = 0; i < 32767; ++i)
        bytes.i16(-1).str(QByteArray::number(i)).i16(0).i16(0);
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("full.io", bytes)));
    EXPECT_TRUE(store.KeyExists("32766"));
    // The slot the open appended takes one more key; the count then cannot grow.
    EXPECT_EQ(errorOf([&] { store.SaveSetting("new", "a", kX); }), rt::Overflow);
}
