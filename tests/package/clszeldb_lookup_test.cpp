// The store finds keys and items through hashes; these check that every answer is still the
// one a scan of the slots gives, in files with duplicate names, free slots and counts that run
// past their arrays, and that the bytes written stay the same.
#include "package/clszeldb.h"
#include "package/zeldbbytes.h"
#include "support/errorof.h"
#include "support/tempdir.h"
#include "util/conversions.h"
#include "util/runtimeerror.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::Bytes;
using tavik::test::errorOf;
using tavik::test::readAll;
using tavik::test::TempDir;

namespace {

QString text(clsZELDB& store, const QString& key, const QString& item) {
    return CStr(store.GetSetting(key, item, QStringLiteral("<none>")));
}

// A key "BIG" of `items` string items "1" to "N" valued "vN", then `extra` appended as is.
Bytes bigKey(int items, const QList<QPair<QByteArray, QByteArray>>& extra = {},
             std::int16_t inUse = -1) {
    Bytes b;
    b.key(inUse, "BIG", static_cast<std::int16_t>(items + extra.size()),
          static_cast<std::int32_t>(items + extra.size()));
    for (int i = 1; i <= items; ++i)
        b.stringItem(-1, QByteArray::number(i), "v" + QByteArray::number(i));
    for (const auto& [name, value] : extra)
        b.stringItem(-1, name, value);
    return b;
}

} // namespace

TEST(ClsZeldbLookup, TheFirstKeySlotInUseOfANameWinsAndAFreeOneIsNeverFound) {
    TempDir dir;
    const QByteArray file = Bytes()
                                .magic()
                                .emptyHeader(3)
                                .key(0, "K", 1, 1)
                                .stringItem(-1, "a", "free")
                                .key(-1, "K", 1, 1)
                                .stringItem(-1, "a", "first")
                                .key(-1, "K", 1, 1)
                                .stringItem(-1, "a", "second");
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("Package.io", file)));
    EXPECT_EQ(text(store, "K", "a"), "first");
    store.SaveSetting("K", "a", Variant::fromString("changed"));
    EXPECT_EQ(text(store, "K", "a"), "changed");
    ASSERT_TRUE(store.SaveIOFile(dir.file("out.io")));
    clsZELDB reread;
    ASSERT_TRUE(reread.OpenIOFile(dir.file("out.io")));
    EXPECT_EQ(reread.keySlots().get(1).Items.get(0).Value.stringValue(), "changed");
    EXPECT_EQ(reread.keySlots().get(2).Items.get(0).Value.stringValue(), "second");
}

TEST(ClsZeldbLookup, InAKeyOfManyItemsTheFirstOfTwoNamesWinsUntilItIsDeleted) {
    TempDir dir;
    const QByteArray file =
        Bytes().magic().emptyHeader(1).raw(bigKey(40, {{"dup", "first"}, {"dup", "second"}}));
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("Package.io", file)));
    EXPECT_EQ(text(store, "BIG", "17"), "v17");
    EXPECT_EQ(text(store, "BIG", "dup"), "first");
    store.DeleteItem("BIG", "dup");
    EXPECT_EQ(text(store, "BIG", "dup"), "second");
    store.DeleteItem("BIG", "dup");
    EXPECT_FALSE(store.ItemExists("BIG", "dup"));
    EXPECT_EQ(store.keySlots().get(0).ItemCount, 42);
}

TEST(ClsZeldbLookup, DeletedSlotsOfAKeyOfManyItemsAreReusedLowestFirst) {
    TempDir dir;
    clsZELDB store;
    ASSERT_TRUE(
        store.OpenIOFile(dir.write("Package.io", Bytes().magic().emptyHeader(1).raw(bigKey(30)))));
    store.DeleteItem("BIG", "20");
    store.DeleteItem("BIG", "5");
    store.SaveSetting("BIG", "new1", Variant::fromString("n1"));
    store.SaveSetting("BIG", "new2", Variant::fromString("n2"));
    store.SaveSetting("BIG", "new3", Variant::fromString("n3"));
    const ZeldbKey& key = store.keySlots().get(0);
    EXPECT_EQ(key.Items.get(4).Name, "new1");
    EXPECT_EQ(key.Items.get(19).Name, "new2");
    EXPECT_EQ(key.Items.get(30).Name, "new3");
    EXPECT_EQ(key.ItemCount, 31);
    EXPECT_EQ(text(store, "BIG", "new2"), "n2");
    EXPECT_EQ(text(store, "BIG", "5"), "<none>");
}

TEST(ClsZeldbLookup, AnItemCountPastTheArrayFindsWhatIsThereAndRaisesTheSubscriptErrorOtherwise) {
    TempDir dir;
    // The key claims 40 item slots, the array holds 20.
    Bytes file;
    file.magic().emptyHeader(1).key(-1, "BIG", 40, 20);
    for (int i = 1; i <= 20; ++i)
        file.stringItem(-1, QByteArray::number(i), "v");
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(dir.write("Package.io", file)));
    EXPECT_EQ(text(store, "BIG", "20"), "v");
    EXPECT_EQ(errorOf([&] { store.GetSetting("BIG", "21", ""); }), rt::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { store.SaveSetting("BIG", "new", Variant::fromString("x")); }),
              rt::SubscriptOutOfRange);
}

TEST(ClsZeldbLookup, AKeyCountPastTheArrayFindsWhatIsThereAndRaisesTheSubscriptErrorOtherwise) {
    TempDir dir;
    const QString good = dir.write("good.io", Bytes()
                                                  .magic()
                                                  .emptyHeader(3)
                                                  .key(-1, "A", 1, 1)
                                                  .stringItem(-1, "x", "1")
                                                  .key(-1, "B", 1, 1)
                                                  .stringItem(-1, "x", "2")
                                                  .key(-1, "C", 1, 1)
                                                  .stringItem(-1, "x", "3"));
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(good));
    EXPECT_EQ(text(store, "C", "x"), "3");
    // A file that is no package index resets the keys to one slot but keeps the count of 3.
    EXPECT_FALSE(store.OpenIOFile(dir.write("bad.io", QByteArray("NOTZELDB00"))));
    EXPECT_EQ(errorOf([&] { store.KeyExists("C"); }), rt::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { store.SaveSetting("D", "x", Variant::fromString("4")); }),
              rt::SubscriptOutOfRange);
}

TEST(ClsZeldbLookup, AnotherOpenForgetsTheKeysOfTheFileBefore) {
    TempDir dir;
    const QString a = dir.write("a.io", Bytes().magic().emptyHeader(1).raw(bigKey(20)));
    const QString b = dir.write(
        "b.io", Bytes().magic().emptyHeader(1).key(-1, "OTHER", 1, 1).stringItem(-1, "x", "y"));
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(a));
    EXPECT_TRUE(store.ItemExists("BIG", "7"));
    ASSERT_TRUE(store.OpenIOFile(b));
    EXPECT_FALSE(store.KeyExists("BIG"));
    EXPECT_EQ(text(store, "OTHER", "x"), "y");
    // A copy answers as the store it was taken from.
    clsZELDB copy = store;
    copy.SaveSetting("NEW", "x", Variant::fromString("z"));
    EXPECT_EQ(text(copy, "NEW", "x"), "z");
    EXPECT_FALSE(store.KeyExists("NEW"));
}

TEST(ClsZeldbLookup, ThousandsOfKeysAndItemsSaveTheBytesAStoreBuiltInAnyOrderWrites) {
    TempDir dir;
    clsZELDB store;
    for (int i = 0; i < 3000; ++i) {
        store.SaveSetting("INDEX", QString::number(i + 1),
                          Variant::fromString(QString::number(i) + "~T"));
        if (i % 3 == 0)
            store.SaveSetting(QString::number(i), "Color", Variant::fromLong(i));
    }
    store.SaveSetting("INDEX", "Count", Variant::fromLong(3000));
    ASSERT_TRUE(store.SaveIOFile(dir.file("one.io")));
    clsZELDB reopened;
    ASSERT_TRUE(reopened.OpenIOFile(dir.file("one.io")));
    EXPECT_EQ(reopened.keySlots().get(0).ItemCount, 3001);
    EXPECT_EQ(CStr(reopened.GetSetting("INDEX", "2999", "")), "2998~T");
    EXPECT_EQ(CLng(reopened.GetSetting("2997", "Color", "0")), 2997);
    EXPECT_EQ(CStr(reopened.GetSetting("2998", "Color", "none")), "none");
    // Rewriting every value in place changes no byte.
    for (int i = 0; i < 3000; ++i)
        reopened.SaveSetting("INDEX", QString::number(i + 1),
                             Variant::fromString(QString::number(i) + "~T"));
    ASSERT_TRUE(reopened.SaveIOFile(dir.file("two.io")));
    ASSERT_TRUE(store.OpenIOFile(dir.file("two.io")));
    ASSERT_TRUE(store.SaveIOFile(dir.file("three.io")));
    EXPECT_EQ(readAll(dir.file("two.io")), readAll(dir.file("three.io")));
}
