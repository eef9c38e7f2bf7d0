#include "service/autoplace.h"
#include "service/serviceeditorrules.h"

#include <gtest/gtest.h>

using namespace tavik;

namespace {

AnnouncementTable placed(const QList<std::int32_t>& places) {
    AnnouncementTable table;
    int n = 0;
    for (const std::int32_t place : places) {
        const QString key = QStringLiteral("%1").arg(n++, 4, 10, QChar(u'0'));
        table.Announcements.append(
            {QStringLiteral("Ansage ") + key, {}, key, 1000, true, place, 0, false});
    }
    table.AnnouncementCount = static_cast<std::int16_t>(table.Announcements.size());
    return table;
}

} // namespace

TEST(AutoPlaceRows, APackageWithoutPlacesGivesNoRows) {
    EXPECT_TRUE(AutoPlaceRows(placed({-1, -1, -1})).isEmpty());
    EXPECT_TRUE(AutoPlaceRows(AnnouncementTable{}).isEmpty());
}

TEST(AutoPlaceRows, PlacesComeInPlaceOrderAndOnePlaceInPackageOrder) {
    // Two announcements with place 2 and one with place 1.
    EXPECT_EQ(AutoPlaceRows(placed({2, -1, 1, 2})), (QList<int>{3, 1, 4}));
}

TEST(AutoPlaceRows, PlacesOutsideOneToFiveAreNeverPlaced) {
    EXPECT_EQ(AutoPlaceRows(placed({7, 0, 5, 6, -2, 1})), (QList<int>{6, 3}));
}

TEST(AutoPlaceRows, RecordsBeyondTheCountInUseAreIgnored) {
    AnnouncementTable table = placed({1, 2, 3});
    table.AnnouncementCount = 2;
    EXPECT_EQ(AutoPlaceRows(table), (QList<int>{1, 2}));
}

TEST(AutoPlaceRows, KeepsTheRowOfTheTableIndexEvenWhenAnEarlierSoundIsMissing) {
    AnnouncementTable table = placed({-1, 1});
    table.Announcements[0].Missing = true;
    // The source list then has one row only; row 2 is still the one named.
    EXPECT_EQ(AutoPlaceRows(table), (QList<int>{2}));
}

TEST(DienstCommandsFor, EmptyListsLeaveOnlyTheNewSentenceCommand) {
    DienstCommandStates expected;
    expected.cmdAdd = true;
    EXPECT_EQ(DienstCommandsFor({false, false, false}), expected);
}

TEST(DienstCommandsFor, ServiceRowsEnableTheServiceCommandsAndTheNameBox) {
    const DienstCommandStates c = DienstCommandsFor({true, false, false});
    EXPECT_TRUE(c.cmdEdit && c.cmdRem && c.cmdUp && c.cmdDown && c.cmdPlay && c.txtText);
    EXPECT_FALSE(c.cmdAuf || c.cmdAb || c.cmdEntf || c.cmdSave || c.cmdAbsp);
    EXPECT_TRUE(c.cmdAdd);
}

TEST(DienstCommandsFor, TargetRowsEnableTheSentenceCommandsAndItsPlay) {
    const DienstCommandStates c = DienstCommandsFor({false, true, false});
    EXPECT_TRUE(c.cmdAuf && c.cmdAb && c.cmdEntf && c.cmdSave && c.cmdAbsp && c.cmdAdd);
    EXPECT_FALSE(c.cmdEdit || c.cmdRem || c.cmdPlay || c.txtText);
}

TEST(DienstCommandsFor, WhilePlayingNothingStartsAnotherPlayOrAddsOrEditsASentence) {
    const DienstCommandStates c = DienstCommandsFor({true, true, true});
    EXPECT_FALSE(c.cmdPlay || c.cmdAbsp || c.cmdAdd || c.cmdEdit);
    // Removing, moving and the sentence page's own commands stay usable.
    EXPECT_TRUE(c.cmdRem && c.cmdUp && c.cmdDown && c.txtText);
    EXPECT_TRUE(c.cmdAuf && c.cmdAb && c.cmdEntf && c.cmdSave);
}

TEST(TimeShiftAfterEdit, APositiveNumberGetsAPlusInFront) {
    EXPECT_EQ(TimeShiftAfterEdit("12"), "+12");
    EXPECT_EQ(TimeShiftAfterEdit("5"), "+5");
}

TEST(TimeShiftAfterEdit, ZeroNegativeAndAlreadySignedNumbersStayAsTyped) {
    EXPECT_EQ(TimeShiftAfterEdit("-3"), "-3");
    EXPECT_EQ(TimeShiftAfterEdit("0"), "0");
    EXPECT_EQ(TimeShiftAfterEdit("+12"), "+12");
    EXPECT_EQ(TimeShiftAfterEdit("-500"), "-500");
    // Rounds to 0 as an integer.
    EXPECT_EQ(TimeShiftAfterEdit("0.4"), "0.4");
}

TEST(TimeShiftAfterEdit, ATextThatIsNoNumberStaysForTheSaveToReject) {
    EXPECT_EQ(TimeShiftAfterEdit("abc"), "abc");
    EXPECT_EQ(TimeShiftAfterEdit(""), "");
}

TEST(ServiceTextColumnWidth, NarrowsFromTheFourteenthRow) {
    EXPECT_DOUBLE_EQ(ServiceTextColumnWidth(0), 4124.977);
    EXPECT_DOUBLE_EQ(ServiceTextColumnWidth(13), 4124.977);
    EXPECT_DOUBLE_EQ(ServiceTextColumnWidth(14), 3885.166);
    EXPECT_DOUBLE_EQ(ServiceTextColumnWidth(500), 3885.166);
}

TEST(FindRowContaining, MatchesAnyPartOfTheTitleWithoutRegardToCase) {
    const QStringList titles{"Gong", "Einfahrt", "Bahnsteig 2", "Bahnsteig 3"};
    EXPECT_EQ(FindRowContaining(titles, "steig"), 2);
    EXPECT_EQ(FindRowContaining(titles, "STEIG"), 2);
    EXPECT_EQ(FindRowContaining(titles, "xyz"), -1);
    EXPECT_EQ(FindRowContaining(titles, ""), -1);
}
