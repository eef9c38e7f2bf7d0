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
