// An open that keeps one key answers every look-up in that key as a whole open does: in files
// with the key twice, the first one free, many items, counts past the arrays, and cut at every
// byte.
#include "package/clszeldb.h"
#include "package/zeldbbytes.h"
#include "support/errorof.h"
#include "support/tempdir.h"
#include "util/conversions.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::Bytes;
using tavik::test::errorOf;
using tavik::test::TempDir;

namespace {

// What an open and the look-ups in key "INFO" say, as one text to compare.
QString answers(clsZELDB& store, bool opened) {
    QString out = QStringLiteral("opened=%1 status=%2 problem=%3 at=%4 count=%5 texts=%6|%7|%8")
                      .arg(opened)
                      .arg(static_cast<int>(store.lastRead().status))
                      .arg(store.lastRead().problem)
                      .arg(store.lastRead().offset)
                      .arg(store.KeyCountAtOpen)
                      .arg(store.HeaderText1, store.HeaderText2, store.HeaderText3);
    for (const char* item : {"Name", "Autor", "dup", "17", "39", "missing"}) {
        QString value;
        const int error = errorOf([&] {
            value = CStr(store.GetSetting(QStringLiteral("INFO"), QString::fromLatin1(item),
                                          QStringLiteral("<none>")));
        });
        out += QStringLiteral(" %1=%2/%3").arg(QLatin1String(item), value).arg(error);
    }
    const int keyError = errorOf([&] { out += store.KeyExists("INFO") ? " key" : " nokey"; });
    out += QStringLiteral(" keyError=%1").arg(keyError);
    return out;
}

void expectSameAnswers(const QByteArray& file) {
    TempDir dir;
    const QString path = dir.write("Package.io", file);
    clsZELDB whole;
    const bool wholeOpened = whole.OpenIOFile(path);
    clsZELDB one;
    const bool oneOpened = one.OpenIOFileForKey(path, QStringLiteral("INFO"));
    EXPECT_EQ(answers(one, oneOpened), answers(whole, wholeOpened)) << file.size() << " bytes";
}

// Every prefix of `file`, the whole file included.
void expectSameAnswersForEveryCut(const QByteArray& file) {
    for (qsizetype size = 0; size <= file.size(); ++size)
        expectSameAnswers(file.left(size));
}

Bytes infoKey(std::int16_t inUse, const QByteArray& name) {
    Bytes b;
    b.key(inUse, "INFO", 2, 2).stringItem(-1, "Name", name).stringItem(-1, "Autor", "Bench");
    return b;
}

} // namespace

TEST(ClsZeldbKeyOpen, TheFirstKeyInUseAnswersAsInAWholeOpenEvenWhenTheFileIsCut) {
    const QByteArray file = Bytes()
                                .magic()
                                .emptyHeader(4)
                                .raw(infoKey(0, "free"))
                                .key(-1, "INDEX", 2, 2)
                                .stringItem(-1, "1", "0000~Gong")
                                .longItem("Count", 1)
                                .raw(infoKey(-1, "first"))
                                .raw(infoKey(-1, "second"));
    expectSameAnswersForEveryCut(file);
}

TEST(ClsZeldbKeyOpen, AKeyOfManyItemsAndCountsPastTheArraysAnswerAsInAWholeOpen) {
    Bytes many;
    many.key(-1, "INFO", 42, 42);
    for (int i = 1; i <= 40; ++i)
        many.stringItem(-1, QByteArray::number(i), "v" + QByteArray::number(i));
    many.stringItem(-1, "dup", "first").stringItem(-1, "dup", "second");
    expectSameAnswersForEveryCut(Bytes().magic().emptyHeader(1).raw(many));

    // An item count beyond the items the array holds: a scan past it is the subscript error.
    const QByteArray past =
        Bytes().magic().emptyHeader(2).key(-1, "INFO", 5, 1).stringItem(-1, "Autor", "A");
    expectSameAnswers(past);
    // The key only in the slot past the count, a negative count, a file that is no index.
    expectSameAnswers(Bytes().magic().emptyHeader(1).key(-1, "X", 0, 0).raw(infoKey(-1, "n")));
    expectSameAnswers(Bytes().magic().emptyHeader(-3).raw(infoKey(-1, "n")));
    expectSameAnswers(QByteArray("not an index at all"));
}

TEST(ClsZeldbKeyOpen, OnlyTheKeyAskedForIsKept) {
    TempDir dir;
    const QString path = dir.write("Package.io", Bytes()
                                                     .magic()
                                                     .emptyHeader(2)
                                                     .key(-1, "INDEX", 1, 1)
                                                     .stringItem(-1, "1", "0000~Gong")
                                                     .raw(infoKey(-1, "Paket")));
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFileForKey(path, QStringLiteral("INFO")));
    EXPECT_EQ(store.GetSetting("INFO", "Name", ""), Variant::fromString("Paket"));
    EXPECT_FALSE(store.KeyExists("INDEX"));
    EXPECT_EQ(store.keySlots().get(0).Items.storedCount(), 0);
}
