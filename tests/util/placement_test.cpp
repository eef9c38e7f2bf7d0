#include "util/placement.h"

#include <gtest/gtest.h>

using namespace tavik;

namespace {

const QRect kScreen(0, 0, 1280, 800);

} // namespace

TEST(WindowPlacement, AWindowIsCentredOnItsOwner) {
    const QRect owner(100, 50, 800, 600);
    const QRect placed = CentredOn(QSize(400, 300), owner, kScreen);
    EXPECT_EQ(placed, QRect(300, 200, 400, 300));
    EXPECT_EQ(placed.center(), owner.center());
}

TEST(WindowPlacement, AWindowOfOddSizeHasItsMiddleOnTheOwnersMiddle) {
    EXPECT_EQ(CentredOn(QSize(401, 301), QRect(0, 0, 800, 600), kScreen),
              QRect(200, 150, 401, 301));
}

TEST(WindowPlacement, AWindowLargerThanItsOwnerIsCentredOverIt) {
    const QRect placed = CentredOn(QSize(600, 400), QRect(400, 300, 200, 100), kScreen);
    EXPECT_EQ(placed, QRect(200, 150, 600, 400));
}

TEST(WindowPlacement, AnOwnerNearTheBottomLeftCornerKeepsTheWindowOnScreen) {
    // The owner hangs over the left and the bottom edge of the screen.
    const QRect owner(-200, 600, 700, 500);
    const QRect placed = CentredOn(QSize(660, 470), owner, kScreen);
    EXPECT_EQ(placed, QRect(0, 330, 660, 470));
    EXPECT_TRUE(kScreen.contains(placed));
}

TEST(WindowPlacement, AnOwnerNearTheTopRightCornerKeepsTheWindowOnScreen) {
    const QRect owner(1000, -100, 500, 300);
    const QRect placed = CentredOn(QSize(400, 300), owner, kScreen);
    EXPECT_EQ(placed, QRect(880, 0, 400, 300));
}

TEST(WindowPlacement, TheAvailableAreaNeedNotStartAtTheOrigin) {
    // A panel on the left and one at the top of a second screen to the right.
    const QRect area(1330, 30, 1230, 770);
    const QRect placed = CentredOn(QSize(300, 200), QRect(1200, 0, 300, 100), area);
    EXPECT_EQ(placed, QRect(1330, 30, 300, 200));
}

TEST(WindowPlacement, AWindowLargerThanTheAreaKeepsItsTitleBarOnScreen) {
    const QRect placed = CentredOn(QSize(1400, 900), QRect(0, 0, 1280, 800), kScreen);
    EXPECT_EQ(placed.topLeft(), QPoint(0, 0));
    EXPECT_EQ(placed.size(), QSize(1400, 900));
}

TEST(WindowPlacement, AWindowOnScreenStaysWhereItIs) {
    const QRect window(10, 20, 300, 200);
    EXPECT_EQ(KeepInside(window, kScreen), window);
}

TEST(WindowPlacement, AWindowPastTheRightEdgeMovesLeftJustEnough) {
    EXPECT_EQ(KeepInside(QRect(1100, 100, 300, 200), kScreen), QRect(980, 100, 300, 200));
}

TEST(WindowPlacement, WithoutAnAreaTheCentredPlaceIsKept) {
    EXPECT_EQ(CentredOn(QSize(100, 100), QRect(-500, -500, 100, 100), QRect()),
              QRect(-500, -500, 100, 100));
}

TEST(WindowPlacement, ExtremeCoordinatesDoNotOverflow) {
    const QRect owner(QPoint(2'000'000'000, 2'000'000'000), QSize(100'000'000, 100'000'000));
    const QRect placed = CentredOn(QSize(100, 100), owner, kScreen);
    EXPECT_EQ(placed, QRect(1180, 700, 100, 100));
}
