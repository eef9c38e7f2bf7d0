#include "util/pacer.h"

#include <gtest/gtest.h>

using namespace tavik;

TEST(Pacer, IsDueAtTheFirstQuestionAndThenOnceTheIntervalHasPassed) {
    qint64 now = 1000;
    Pacer pace(50, [&] { return now; });
    EXPECT_TRUE(pace.due());
    EXPECT_FALSE(pace.due());
    now += 49;
    EXPECT_FALSE(pace.due());
    now += 1;
    EXPECT_TRUE(pace.due());
    EXPECT_FALSE(pace.due());
    // Counted from when it last said so, not from a fixed grid.
    now += 120;
    EXPECT_TRUE(pace.due());
    now += 30;
    EXPECT_FALSE(pace.due());
    now += 20;
    EXPECT_TRUE(pace.due());
}

TEST(Pacer, ThousandsOfRowsInOneIntervalAreOneUpdate) {
    qint64 now = 0;
    Pacer pace(50, [&] { return now; });
    int updates = 0;
    for (int row = 0; row < 10000; ++row) {
        now = row / 100; // a hundred rows a millisecond: 100 ms in all
        updates += pace.due() ? 1 : 0;
    }
    EXPECT_EQ(updates, 2);
}
