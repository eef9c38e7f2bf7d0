#include "service/servicebytes.h"
#include "service/servicefile.h"
#include "service/servicesentences.h"
#include "support/errorof.h"
#include "support/tempdir.h"

#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::readAll;
using tavik::test::ServiceBytes;
using tavik::test::TempDir;

namespace {

// Every draw within the same second: keys must still differ.
RandomGenerator sameSecond(std::uint64_t seed = 1) {
    return RandomGenerator(seed, [] { return 43200.0; });
}

AnnouncementTable tableOf(const QList<AnnouncementRecord>& records) {
    AnnouncementTable table;
    table.Announcements = records;
    table.AnnouncementCount = static_cast<std::int16_t>(records.size());
    return table;
}

AnnouncementRecord announcement(const QString& key, const QString& title, bool nameVisible) {
    return {title, {}, key, 1000, nameVisible, -1, 0, false};
}

} // namespace

TEST(RandomInRange, StaysBetweenMinAndMax) {
    RandomGenerator generator = sameSecond();
    QSet<int> seen;
    for (int i = 0; i < 2000; ++i) {
        const int r = RandomInRange(generator, 1, 10);
        ASSERT_GE(r, 1);
        ASSERT_LE(r, 10);
        seen.insert(r);
    }
    EXPECT_EQ(seen.size(), 10);
}

TEST(RandomInRange, ReSeedsFromTheNegatedTimeOfDayBeforeEveryDraw) {
    int clockReads = 0;
    RandomGenerator generator(5, [&] {
        ++clockReads;
        return 1.5;
    });
    for (int i = 0; i < 50; ++i)
        RandomInRange(generator, 1, 10);
    EXPECT_GE(clockReads, 50);
}

TEST(RandomInRange, AMaxBelowMinRaisesTheInvalidCallErrorInsteadOfLoopingForever) {
    RandomGenerator generator = sameSecond();
    EXPECT_EQ(errorOf([&] { RandomInRange(generator, 5, 2); }), rt::InvalidCall);
}

TEST(GenerateKey, TheSameSeedAndClockGiveTheSameKeys) {
    RandomGenerator a = sameSecond(99);
    RandomGenerator b = sameSecond(99);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(GenerateKey(a, 4), GenerateKey(b, 4));
}

TEST(GenerateKey, GivesThatManyDecimalDigits) {
    RandomGenerator generator = sameSecond();
    EXPECT_EQ(GenerateKey(generator, 0), "");
    const QRegularExpression digits("^[0-9]{6}$");
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(digits.match(GenerateKey(generator, 6)).hasMatch());
}

TEST(CreateItem, ANewKeyIsFourDigitsAndNeverEqualToAKeyAlreadyHeld) {
    ServiceSentences state;
    RandomGenerator generator = sameSecond(3);
    const QRegularExpression fourDigits("^[0-9]{4}$");
    QSet<QString> keys;
    for (int i = 0; i < 3000; ++i) {
        const std::int16_t index = state.CreateItem(generator);
        ASSERT_EQ(index, i);
        const QString key = state.Saetze[index].Key;
        ASSERT_TRUE(fourDigits.match(key).hasMatch()) << key.toStdString();
        ASSERT_FALSE(keys.contains(key)) << key.toStdString();
        keys.insert(key);
    }
    EXPECT_EQ(state.SatzCount, 3000);
    EXPECT_EQ(state.Saetze.size(), 3000);
}

TEST(CreateItem, WithAllButOneKeyTakenFindsTheLastOne) {
    ServiceSentences state;
    for (int k = 0; k < 10000; ++k)
        if (k != 4711)
            state.Saetze.append({QStringLiteral("%1").arg(k, 4, 10, QChar('0')), {}, {}, 0});
    state.SatzCount = static_cast<std::int16_t>(state.Saetze.size());
    RandomGenerator generator = sameSecond(11);
    const std::int16_t index = state.CreateItem(generator);
    EXPECT_EQ(state.Saetze[index].Key, "4711");
    EXPECT_EQ(errorOf([&] { state.CreateItem(generator); }), rt::Overflow);
}

TEST(CreateItem, ANewSentenceHasNoEntriesSetAndLastTargetZero) {
    ServiceSentences state;
    RandomGenerator generator = sameSecond();
    const SatzRecord& s = state.Saetze[state.CreateItem(generator)];
    EXPECT_FALSE(s.TargetsDimensioned);
    EXPECT_EQ(s.LastTarget, 0);
    EXPECT_EQ(s.Text, "");
}

TEST(FindTargetByKey, FindsTheSlotHoldingTheKey) {
    ServiceSentences state;
    state.Load({{"0001", {}, {}, 0}, {"0002", {}, {}, 0}});
    EXPECT_EQ(state.FindTargetByKey("0002"), 1);
    EXPECT_EQ(state.FindTargetByKey("0001"), 0);
}

TEST(FindTargetByKey, AKeyNotHeldRunsPastTheLastSlot) {
    ServiceSentences state;
    state.Load({{"0001", {}, {}, 0}});
    EXPECT_EQ(errorOf([&] { state.FindTargetByKey("9999"); }), rt::SubscriptOutOfRange);
}

TEST(SaveIntoArray, AllNamesHiddenGivesTheEmptyText) {
    const AnnouncementTable table =
        tableOf({announcement("0000", "Gong", false), announcement("0001", "Achtung", false)});
    SatzRecord satz{"0472", "alt ", {}, 0, false};
    SaveIntoArray(satz, {{"0", "0000"}, {"-200", "0001"}}, table);
    EXPECT_EQ(satz.Text, "");
    EXPECT_EQ(satz.LastTarget, 1);
    EXPECT_TRUE(satz.TargetsDimensioned);
    EXPECT_EQ(satz.Targets[1].TimeOffset, -200);
}

TEST(SaveIntoArray, EachVisibleTitleIsFollowedByOneBlank) {
    const AnnouncementTable table =
        tableOf({announcement("0000", "Gong", false), announcement("0001", "Achtung", true),
                 announcement("0002", "Gleis 1", true)});
    SatzRecord satz{"0472", {}, {}, 0, false};
    SaveIntoArray(satz, {{"0", "0002"}, {"0", "0000"}, {" 15 ", "0001"}}, table);
    EXPECT_EQ(satz.Text, "Gleis 1 Achtung ");
    EXPECT_EQ(satz.Targets[2].TimeOffset, 15);
}

TEST(SaveIntoArray, ATimeShiftThatIsNoNumberRaisesTypeMismatch) {
    const AnnouncementTable table = tableOf({announcement("0000", "Gong", true)});
    SatzRecord satz{"0472", {}, {}, 0, false};
    EXPECT_EQ(errorOf([&] { SaveIntoArray(satz, {{"bald", "0000"}}, table); }), rt::TypeMismatch);
    EXPECT_EQ(errorOf([&] { SaveIntoArray(satz, {{"40000", "0000"}}, table); }), rt::Overflow);
}

TEST(SaveIntoArray, AnEntryWhoseAnnouncementWasDeletedRaisesTheSubscriptError) {
    const AnnouncementTable table = tableOf({announcement("0000", "Gong", true)});
    SatzRecord satz{"0472", {}, {}, 0, false};
    EXPECT_EQ(errorOf([&] {
                  SaveIntoArray(satz, {{"0", "0000"}, {"0", "0007"}}, table);
              }),
              rt::SubscriptOutOfRange);
}

TEST(SaveToFile, SentencesRemovedFromTheListAreNotWrittenButStayInMemory) {
    ServiceSentences state;
    state.Load({{"0001", "a ", {{"0000", 0}}, 0},
                {"0002", "b ", {{"0001", 0}}, 0},
                {"0003", "c ", {{"0002", 0}}, 0}});
    TempDir dir;
    const QString path = dir.file("_1._");
    // Row order is service order: "0002" was removed, "0003" moved up.
    SaveToFile(path, {"T", "", "", "1"}, state, {"0003", "0001"});
    const QByteArray expected = ServiceBytes()
                                    .header("T", "", "", "1")
                                    .count(2)
                                    .sentence("0003", "c ", {{"0002", 0}})
                                    .sentence("0001", "a ", {{"0000", 0}});
    EXPECT_EQ(readAll(path).toHex(' '), expected.toHex(' '));
    EXPECT_EQ(state.Saetze.size(), 3);
    EXPECT_EQ(state.SatzCount, 3);
}

TEST(ServiceSentences, LaterSentencesOfADuplicatedKeyGetFreshKeysAndKeepTheirEntries) {
    ServiceSentences sentences;
    const auto satz = [](const char* key, const char* announcement) {
        SatzRecord s;
        s.Key = QString::fromLatin1(key);
        s.Targets = {SatzTarget{QString::fromLatin1(announcement), 0}};
        s.LastTarget = 0;
        return s;
    };
    sentences.Saetze = {satz("4711", "0000"), satz("0815", "0001"), satz("4711", "0002"),
                        satz("4711", "0003")};
    sentences.SatzCount = 4;
    RandomGenerator generator = sameSecond();
    EXPECT_EQ(sentences.RekeyDuplicates(generator), QStringList{QStringLiteral("4711")});
    QSet<QString> keys;
    for (const SatzRecord& s : sentences.Saetze)
        keys.insert(s.Key);
    EXPECT_EQ(keys.size(), 4);
    EXPECT_EQ(sentences.Saetze[0].Key, QStringLiteral("4711"));
    EXPECT_EQ(sentences.Saetze[1].Key, QStringLiteral("0815"));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(sentences.FindTargetByKey(sentences.Saetze[i].Key), i);
        EXPECT_EQ(sentences.Saetze[i].Targets[0].AnnouncementKey, QStringLiteral("000%1").arg(i));
    }
    EXPECT_TRUE(sentences.RekeyDuplicates(generator).isEmpty());
}
