#include "util/sortvalue.h"

#include <QStringList>
#include <algorithm>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

QStringList sorted(QStringList texts, int type) {
    std::stable_sort(texts.begin(), texts.end(), [type](const QString& a, const QString& b) {
        return CompareSortValues(MakeSortValue(a, type), MakeSortValue(b, type)) < 0;
    });
    return texts;
}

} // namespace

TEST(SortValue, TextSortComparesPlayTimesAsTextWithoutRegardToCase) {
    EXPECT_EQ(sorted({"9.2", "10.5", "b", "A"}, lvw::TextSort),
              (QStringList{"10.5", "9.2", "A", "b"}));
}

TEST(SortValue, NumberSortReadsPlayTimesWithEitherSeparatorAndKeysWithLeadingZeros) {
    EXPECT_EQ(sorted({"10,5", "9.2", "0.8", "1000", "0009", "0010"}, lvw::NumberSort),
              (QStringList{"0.8", "0009", "9.2", "0010", "10,5", "1000"}));
}

TEST(SortValue, CellsThatAreNoNumbersComeAfterTheNumbersAsText) {
    EXPECT_EQ(sorted({"", "x1", "12", "???", "3", "inf", "nan"}, lvw::NumberSort),
              (QStringList{"3", "12", "", "???", "inf", "nan", "x1"}));
}

TEST(SortValue, EqualNumbersCompareEqualSoTheirRowsKeepTheirOrder) {
    EXPECT_EQ(CompareSortValues(MakeSortValue("1.50", lvw::NumberSort),
                                MakeSortValue("1,5", lvw::NumberSort)),
              0);
    EXPECT_EQ(sorted({"2.0", "1", "2"}, lvw::NumberSort), (QStringList{"1", "2.0", "2"}));
}

TEST(SortValue, ANewColumnStartsAscendingAndTheSortedColumnTurnsRound) {
    const ListSortState none;
    EXPECT_EQ(NextSortState(none, 0, lvw::TextSort).order, lvw::Ascending);
    EXPECT_TRUE(NextSortState(none, 0, lvw::TextSort).sorted);
    const ListSortState byTitle{true, 1, lvw::Ascending, lvw::TextSort};
    const ListSortState again = NextSortState(byTitle, 1, lvw::TextSort);
    EXPECT_EQ(again.order, lvw::Descending);
    EXPECT_EQ(NextSortState(again, 1, lvw::TextSort).order, lvw::Ascending);
    const ListSortState other = NextSortState(again, 3, lvw::NumberSort);
    EXPECT_EQ(other.column, 3);
    EXPECT_EQ(other.order, lvw::Ascending);
    EXPECT_EQ(other.type, lvw::NumberSort);
    // A list that keeps its own order is sorted anew, even by the column it last sorted.
    const ListSortState ended{false, 1, lvw::Descending, lvw::TextSort};
    EXPECT_EQ(NextSortState(ended, 1, lvw::TextSort).order, lvw::Ascending);
}
