#include "package/announcementrecord.h"
#include "support/errorof.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;

namespace {

AnnouncementTable table(const QStringList& keys, std::int16_t count) {
    AnnouncementTable t;
    for (const QString& key : keys)
        t.Announcements.append({key, {}, key, 0, true, -1, 0, false});
    t.AnnouncementCount = count;
    return t;
}

} // namespace

TEST(FindAnnouncementByKey, FindsTheFirstRecordWithTheExactKey) {
    const AnnouncementTable t = table({"0000", "0001", "0001", "x"}, 3);
    EXPECT_EQ(FindAnnouncementByKey(t, "0000"), 0);
    EXPECT_EQ(FindAnnouncementByKey(t, "0001"), 1);
}

TEST(FindAnnouncementByKey, LooksOneRecordPastTheCountIntoStorageLeftFromAnEarlierLoad) {
    const AnnouncementTable t = table({"0000", "0001", "0007"}, 2);
    EXPECT_EQ(FindAnnouncementByKey(t, "0007"), 2);
    EXPECT_EQ(FindAnnouncementByKey(t, "0099"), -1);
}

TEST(FindAnnouncementByKey, AKeyNotInAFullTableRaisesTheSubscriptError) {
    const AnnouncementTable t = table({"0000", "0001"}, 2);
    EXPECT_EQ(errorOf([&] { FindAnnouncementByKey(t, "0099"); }), rt::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { FindAnnouncementByKey(t, "0001"); }), 0);
    EXPECT_EQ(errorOf([&] { FindAnnouncementByKey(table({}, 0), "0000"); }),
              rt::SubscriptOutOfRange);
}

TEST(FindAnnouncementByKey, AnswersForTheRecordsAsTheyAreAfterALoadWroteThemAgain) {
    AnnouncementTable t = table({"0000", "0001", "0002"}, 3);
    EXPECT_EQ(FindAnnouncementByKey(t, "0002"), 2);
    // A second load writes other keys from index 0 and counts anew.
    t.Announcements[0].Key = "0002";
    t.AnnouncementCount = 1;
    EXPECT_EQ(FindAnnouncementByKey(t, "0002"), 0);
    EXPECT_EQ(FindAnnouncementByKey(t, "0001"), 1); // the one record past the count
    EXPECT_EQ(FindAnnouncementByKey(t, "0000"), -1);
    t.Announcements.append({"0009", {}, "0009", 0, true, -1, 0, false});
    t.AnnouncementCount = 4;
    EXPECT_EQ(FindAnnouncementByKey(t, "0009"), 3);
    EXPECT_EQ(errorOf([&] { FindAnnouncementByKey(t, "0000"); }), rt::SubscriptOutOfRange);
    // A copy answers for its own records.
    AnnouncementTable copy = t;
    copy.Announcements[3].Key = "0010";
    copy.AnnouncementCount = 3;
    EXPECT_EQ(FindAnnouncementByKey(copy, "0010"), 3);
    EXPECT_EQ(FindAnnouncementByKey(t, "0009"), 3);
}

TEST(FindAnnouncementByKey, ANegativeCountSearchesNothing) {
    const AnnouncementTable t = table({"0000"}, -1);
    EXPECT_EQ(FindAnnouncementByKey(t, "0000"), -1);
}

TEST(FindAnnouncementByKey, FindsEachOfThousandsOfRecordsAtItsFirstIndex) {
    QStringList keys;
    for (int i = 0; i < 5000; ++i)
        keys << QString::number(i % 4000);
    const AnnouncementTable t = table(keys, 5000);
    for (int i = 0; i < 5000; ++i)
        ASSERT_EQ(FindAnnouncementByKey(t, keys[i]), i % 4000);
}

TEST(FindAnnouncementByKey, ARecordWrittenInPlaceIsFoundOnceTheIndexIsForgotten) {
    // Count, storage and place come back to what they were, with another key in the last slot
    // in use: the way an undone removal puts a record back after a reload.
    AnnouncementTable t = table({"0000", "0001", "0002"}, 3);
    EXPECT_EQ(FindAnnouncementByKey(t, "0002"), 2);
    t.AnnouncementCount = 2;
    t.Announcements[2].Key = QStringLiteral("0005");
    t.AnnouncementCount = 3;
    ForgetKeyIndex(t);
    EXPECT_EQ(FindAnnouncementByKey(t, "0005"), 2);
    EXPECT_EQ(errorOf([&] { FindAnnouncementByKey(t, "0002"); }), rt::SubscriptOutOfRange);
}
