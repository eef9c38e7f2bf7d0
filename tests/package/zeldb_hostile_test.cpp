#include "fuzz/package_index_input.h"
#include "package/clszeldb.h"
#include "package/zeldbbytes.h"
#include "util/runtimeerror.h"

#include "support/errorof.h"

#include <gtest/gtest.h>
#include <random>

using namespace tavik;
using tavik::test::Bytes;
using tavik::test::errorOf;

namespace {

using Status = ZeldbReadReport::Status;

bool open(clsZELDB& store, const QByteArray& bytes) {
    return store.openBytes(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size());
}

qint64 storedItems(const clsZELDB& store) {
    qint64 total = 0;
    for (qint64 i = 0; i < store.keySlots().storedCount(); ++i)
        total += store.keySlots().get(i).Items.storedCount();
    return total;
}

QByteArray samplePackage() {
    return Bytes()
        .magic()
        .emptyHeader(3)
        .key(-1, "INFO", 2, 2)
        .stringItem(-1, "Name", "Beispiel")
        .stringItem(-1, "Autor", "Tavik")
        .key(-1, "INDEX", 3, 3)
        .stringItem(-1, "1", "0000~Gong")
        .stringItem(-1, "2", "0001~Achtung an Gleis 1")
        .longItem("Count", 2)
        .key(-1, "0000", 3, 3)
        .longItem("Color", 255)
        .i16(-1)
        .str("NameVisible")
        .i16(0)
        .i16(11)
        .i16(0)
        .longItem("AutoPlace", -1)
        .freeKey();
}

} // namespace

TEST(ZeldbHostile, ATinyFileClaimingHugeCountsAndNamesAllocatesNothingForThem) {
    Bytes bytes;
    bytes.magic().emptyHeader(32767);
    bytes.i16(-1).i16(-1); // a key whose name claims 65,535 bytes
    while (bytes.data().size() < 200)
        bytes.raw("A");
    clsZELDB store;
    EXPECT_TRUE(open(store, bytes));
    EXPECT_EQ(store.lastRead().status, Status::Truncated);
    EXPECT_EQ(store.keySlots().size(), 32768);
    EXPECT_EQ(store.keySlots().storedCount(), 1);
    EXPECT_LE(store.keySlots().get(0).Name.size(), 200);
    // The slots the file never held still behave as free slots.
    EXPECT_FALSE(store.KeyExists("x"));
    store.SaveSetting("x", "y", Variant::fromInteger(1));
    EXPECT_TRUE(store.KeyExists("x"));
    EXPECT_EQ(store.keySlots().storedCount(), 2);
}

TEST(ZeldbHostile, AnItemArrayLargerThanAnyStoreWritesIsBrokenAndNotAllocated) {
    const QByteArray bytes =
        Bytes().magic().emptyHeader(1).i16(-1).str("K").i16(1).i16(1).i32(2000000000).i32(0);
    clsZELDB store;
    open(store, bytes);
    EXPECT_EQ(store.lastRead().status, Status::Broken);
    EXPECT_EQ(storedItems(store), 0);
    EXPECT_FALSE(store.keySlots().get(0).Items.allocated());
}

TEST(ZeldbHostile, OddArrayDescriptorsAndValueTypesMarkTheFileBroken) {
    const QByteArray twoDims =
        Bytes().magic().emptyHeader(1).i16(-1).str("K").i16(1).i16(2).i32(1).i32(0).i32(1).i32(0);
    const QByteArray lowerBound =
        Bytes().magic().emptyHeader(1).i16(-1).str("K").i16(1).i16(1).i32(1).i32(5);
    const QByteArray badType =
        Bytes().magic().emptyHeader(1).key(-1, "K", 1, 1).i16(-1).str("a").i16(0).i16(17).i16(1);
    for (const QByteArray& bytes : {twoDims, lowerBound, badType}) {
        clsZELDB store;
        open(store, bytes);
        EXPECT_EQ(store.lastRead().status, Status::Broken)
            << store.lastRead().problem.toStdString();
        EXPECT_TRUE(store.KeyExists("K"));
    }
}

TEST(ZeldbHostile, ANegativeKeyCountOpensFalseAndChangesRaiseTheSubscriptError) {
    const QByteArray bytes = Bytes().magic().emptyHeader(-3).freeKey();
    clsZELDB store;
    EXPECT_FALSE(open(store, bytes));
    EXPECT_EQ(store.lastRead().status, Status::Broken);
    EXPECT_EQ(store.KeyCountAtOpen, -3);
    EXPECT_FALSE(store.KeyExists("INFO"));
    EXPECT_EQ(errorOf([&] { store.SaveSetting("INFO", "Name", Variant::fromString("x")); }),
              rt::SubscriptOutOfRange);
}

TEST(ZeldbHostile, AnItemCountBeyondTheItemArrayRaisesTheSubscriptErrorOnLookUp) {
    const QByteArray bytes =
        Bytes().magic().emptyHeader(1).key(-1, "K", 5, 1).stringItem(-1, "a", "1").freeKey();
    clsZELDB store;
    ASSERT_TRUE(open(store, bytes));
    EXPECT_EQ(store.GetSetting("K", "a", ""), Variant::fromString("1"));
    EXPECT_EQ(errorOf([&] { store.GetSetting("K", "b", ""); }), rt::SubscriptOutOfRange);
}

TEST(ZeldbHostile, EveryTruncationOfAValidFileReadsAsFarAsItGoes) {
    const QByteArray full = samplePackage();
    for (qsizetype length = 0; length < full.size(); ++length) {
        const QByteArray cut = full.left(length);
        clsZELDB store;
        const bool opened = open(store, cut);
        const Status status = store.lastRead().status;
        if (length < 10) {
            EXPECT_EQ(status, Status::WrongMagic) << length;
            continue;
        }
        // Cut just before the trailing free record, the file is what a store saved from
        // scratch looks like, and that is complete.
        const bool endsBeforeTrailingSlot = length == full.size() - 8;
        EXPECT_EQ(status, endsBeforeTrailingSlot ? Status::Complete : Status::Truncated) << length;
        EXPECT_EQ(opened, store.KeyCountAtOpen > 0) << length;
        // Whatever a cut file yields is consistent with the whole file. A cut inside an
        // array descriptor leaves fewer item slots than the item count, and looking past them
        // is the runtime's subscript error.
        try {
            const Variant name = store.GetSetting("INFO", "Name", "?");
            if (name.type() == VarType::String && name.stringValue() != u"?") {
                EXPECT_TRUE(QStringLiteral("Beispiel").startsWith(name.stringValue())) << length;
            }
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.number(), rt::SubscriptOutOfRange) << length;
        }
    }
    clsZELDB whole;
    EXPECT_TRUE(open(whole, full));
    EXPECT_EQ(whole.lastRead().status, Status::Complete);
}

TEST(ZeldbHostile, ThousandsOfMutatedFilesNeverCrashAndStayConsistent) {
    const QByteArray seed = samplePackage();
    std::mt19937 random(20261122);
    for (int round = 0; round < 5000; ++round) {
        QByteArray bytes = seed;
        const int edits = 1 + static_cast<int>(random() % 8);
        for (int e = 0; e < edits; ++e) {
            const auto at = static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()));
            switch (random() % 4) {
            case 0:
                bytes[at] = static_cast<char>(random());
                break;
            case 1:
                bytes[at] = static_cast<char>(0xFF);
                break;
            case 2:
                bytes.truncate(std::max<qsizetype>(at, 1));
                break;
            default:
                bytes.insert(at, static_cast<char>(random()));
                break;
            }
        }
        ASSERT_TRUE(
            tavik::fuzz::packageIndexInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                           static_cast<std::size_t>(bytes.size())))
            << "round " << round << ": " << bytes.toHex().toStdString();
    }
}

TEST(ZeldbHostile, RandomBytesNeverCrash) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes("IOZELDBV10");
        const int length = static_cast<int>(random() % 300);
        for (int i = 0; i < length; ++i)
            bytes.append(static_cast<char>(random()));
        ASSERT_TRUE(
            tavik::fuzz::packageIndexInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                           static_cast<std::size_t>(bytes.size())))
            << bytes.toHex().toStdString();
    }
}
