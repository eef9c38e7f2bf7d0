#include "dialogs/announcementcolors.h"

#include <gtest/gtest.h>

using namespace tavik;

TEST(AnnouncementColors, AreTheNineSwatchesWithBlackSecond) {
    const std::array<std::int32_t, 9> expected = {8421504, 0,        255,      33023,   49344,
                                                  49152,   12632064, 16711680, 16711935};
    EXPECT_EQ(kAnnouncementColors, expected);
    EXPECT_EQ(kAnnouncementColors[kNoHighlightOption], 0);
    // Red in the low byte: orange is 255 red and 128 green.
    EXPECT_EQ(kAnnouncementColors[3], 255 + 256 * 128);
}

TEST(ColorOptionOf, FindsTheOptionOfASwatchColour) {
    EXPECT_EQ(ColorOptionOf(8421504), 0);
    EXPECT_EQ(ColorOptionOf(0), 1);
    EXPECT_EQ(ColorOptionOf(255), 2);
    EXPECT_EQ(ColorOptionOf(16711935), 8);
}

TEST(ColorOptionOf, IsNoneForAnyOtherColour) {
    EXPECT_EQ(ColorOptionOf(0xFFFFFF), -1);
    EXPECT_EQ(ColorOptionOf(0x123456), -1);
    // The list's default: the system's window text colour.
    EXPECT_EQ(ColorOptionOf(0x80000008u), -1);
}

TEST(ChooseColor, BlackDrawsTheEntryInBlackNotBoldAndStoresZero) {
    const ColorChoice choice = ChooseColor(kNoHighlightOption);
    EXPECT_TRUE(choice.changesLook);
    EXPECT_EQ(choice.foreColor, 0u);
    EXPECT_FALSE(choice.bold);
    EXPECT_EQ(choice.stored, 0);
}

TEST(ChooseColor, AColourDrawsTheEntryBoldInItAndStoresIt) {
    const ColorChoice choice = ChooseColor(3);
    EXPECT_TRUE(choice.changesLook);
    EXPECT_EQ(choice.foreColor, 33023u);
    EXPECT_TRUE(choice.bold);
    EXPECT_EQ(choice.stored, 33023);
    EXPECT_EQ(ChooseColor(0).stored, 8421504);
}

TEST(ChooseColor, NoOptionLeavesTheLookAndStoresZero) {
    const ColorChoice choice = ChooseColor(-1);
    EXPECT_FALSE(choice.changesLook);
    EXPECT_EQ(choice.stored, 0);
}
