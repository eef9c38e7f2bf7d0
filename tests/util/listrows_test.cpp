#include "util/listrows.h"

#include "listfixture.h"
#include "support/errorof.h"
#include "util/modlistview.h"
#include "util/reportlist.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::fillPackageList;

namespace {

struct PackageList {
    ReportList list;
    explicit PackageList(int rows = 7) {
        fillPackageList(list, rows);
        list.resize(500, 400);
        list.show();
    }
    QList<ListRowSnapshot> rows() {
        QList<ListRowSnapshot> out;
        for (int i = 1; i <= list.Count(); ++i) {
            ListRowSnapshot s = ReadListRow(list.ListItems(i));
            s.Selected = false; // compared apart
            out << s;
        }
        return out;
    }
    QStringList keys() const {
        QStringList out;
        for (int i = 1; i <= list.Count(); ++i)
            out << list.ListItems(i)->Key();
        return out;
    }
    // Selects row i as the user does, by clicking it.
    void click(int i) {
        ReportListItem* row = list.ListItems(i);
        list.scrollToItem(row);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(row).center());
    }
};

} // namespace

TEST(ListRows, ReadListRowReadsEveryField) {
    PackageList f;
    ReportListItem* row = f.list.ListItems(4);
    row->SetSelected(true);
    const ListRowSnapshot s = ReadListRow(row);
    EXPECT_TRUE(s.Bold);
    EXPECT_FALSE(s.Checked);
    EXPECT_EQ(s.ForeColor, 4u * 0x010203u);
    EXPECT_TRUE(s.Ghosted);
    EXPECT_EQ(s.Icon, QVariant(4));
    EXPECT_EQ(s.Key, "0004");
    EXPECT_TRUE(s.Selected);
    EXPECT_EQ(s.SmallIcon, QVariant(QString("small0004")));
    EXPECT_EQ(s.Tag, "C:\\Pack\\0004.wav");
    EXPECT_EQ(s.Text, "0004");
    EXPECT_EQ(s.ToolTipText, "tip 0004");
    ASSERT_EQ(s.SubItems.size(), 3);
    const ListSubItemSnapshot& sub = s.SubItems[1]; // sub-item 2
    EXPECT_TRUE(sub.Bold);
    EXPECT_EQ(sub.ForeColor, 66u);
    EXPECT_EQ(sub.Key, "k2");
    EXPECT_EQ(sub.ReportIcon, QVariant(42));
    EXPECT_EQ(sub.Tag, "t4.2");
    EXPECT_EQ(sub.Text, "r4c2");
    EXPECT_EQ(sub.ToolTipText, "tt4.2");
}

TEST(ListRows, WriteListRowThenReadGivesTheSnapshot) {
    PackageList f;
    ListRowSnapshot s = ReadListRow(f.list.ListItems(2));
    s.Key = "new";
    s.Text = "new text";
    s.SubItems[2].Text = "12,5";
    WriteListRow(f.list.ListItems(5), s);
    EXPECT_EQ(ReadListRow(f.list.ListItems(5)), s);
    EXPECT_EQ(f.list.FindItemByKey("new"), f.list.ListItems(5));
    EXPECT_EQ(f.list.FindItemByKey("0005"), nullptr);
}

TEST(ListRows, WriteWithTooFewSubItemsStopsAtTheFirstMissing) {
    PackageList f;
    ListRowSnapshot s = ReadListRow(f.list.ListItems(2));
    s.Key = "x";
    s.SubItems.resize(1);
    EXPECT_EQ(errorOf([&] { WriteListRow(f.list.ListItems(3), s); }), 9);
    EXPECT_EQ(f.list.ListItems(3)->SubItems(1), "r2c1");
    EXPECT_EQ(f.list.ListItems(3)->SubItems(2), "r3c2");
}

TEST(ListRows, WriteTakingAKeyInUseFails) {
    PackageList f;
    ListRowSnapshot s = ReadListRow(f.list.ListItems(2));
    EXPECT_EQ(errorOf([&] { WriteListRow(f.list.ListItems(3), s); }), 35602);
}

TEST(ListRows, SwapExchangesEveryFieldOfBothRows) {
    PackageList f;
    const QList<ListRowSnapshot> before = f.rows();
    SwapListRows(f.list.ListItems(2), f.list.ListItems(6));
    const QList<ListRowSnapshot> after = f.rows();
    EXPECT_EQ(after[1], before[5]);
    EXPECT_EQ(after[5], before[1]);
    for (int i : {0, 2, 3, 4, 6})
        EXPECT_EQ(after[i], before[i]) << "row " << i + 1;
    EXPECT_EQ(f.list.FindItemByKey("0002"), f.list.ListItems(6));
    EXPECT_EQ(f.list.FindItemByKey("0006"), f.list.ListItems(2));
}

TEST(ListRows, SwapLeavesNoTemporaryKey) {
    PackageList f;
    SwapListRows(f.list.ListItems(1), f.list.ListItems(2));
    SwapListRows(f.list.ListItems(3), f.list.ListItems(2));
    EXPECT_EQ(f.list.FindItemByKey("~temp"), nullptr);
    EXPECT_FALSE(f.keys().contains("~temp"));
    EXPECT_EQ(f.keys(), QStringList({"0002", "0003", "0001", "0004", "0005", "0006", "0007"}));
}

TEST(ListRows, SwapCarriesTheSelectionWithTheRow) {
    PackageList f;
    f.click(3);
    SwapListRows(f.list.ListItems(3), f.list.ListItems(4));
    EXPECT_FALSE(f.list.ListItems(3)->Selected());
    EXPECT_TRUE(f.list.ListItems(4)->Selected());
    EXPECT_EQ(f.list.SelectedItem()->Key(), "0003");
}

TEST(ListRows, RowsWithoutKeysSwapToo) {
    ReportList list;
    list.AddColumn("Key");
    list.AddColumn("Titel");
    list.AddItem("0003")->SetSubItems(1, "Gleis");
    list.AddItem("0003")->SetSubItems(1, "Bahnsteig");
    list.ListItems(2)->SetSelected(true);
    MoveRowUp(&list);
    EXPECT_EQ(list.ListItems(1)->SubItems(1), "Bahnsteig");
    EXPECT_EQ(list.ListItems(2)->SubItems(1), "Gleis");
    EXPECT_EQ(list.ListItems(1)->Key(), "");
    EXPECT_EQ(list.ListItems(2)->Key(), "");
    EXPECT_EQ(list.FindItemByKey("~temp"), nullptr);
}

TEST(ListRows, RowKeyedTempCannotBeSwapped) {
    PackageList f;
    f.list.ListItems(5)->SetKey("~temp");
    EXPECT_EQ(errorOf([&] { SwapListRows(f.list.ListItems(1), f.list.ListItems(2)); }), 35602);
}

TEST(ListRows, MoveUpSwapsWithTheRowAboveAndFollowsIt) {
    PackageList f;
    f.click(4);
    const QList<ListRowSnapshot> before = f.rows();
    MoveRowUp(&f.list);
    const QList<ListRowSnapshot> after = f.rows();
    EXPECT_EQ(after[2], before[3]);
    EXPECT_EQ(after[3], before[2]);
    EXPECT_EQ(f.list.SelectedItem(), f.list.ListItems(3));
    EXPECT_EQ(f.list.selectedItems().size(), 1);
}

TEST(ListRows, MoveDownSwapsWithTheRowBelowAndFollowsIt) {
    PackageList f;
    f.click(4);
    const QList<ListRowSnapshot> before = f.rows();
    MoveRowDown(&f.list);
    const QList<ListRowSnapshot> after = f.rows();
    EXPECT_EQ(after[4], before[3]);
    EXPECT_EQ(after[3], before[4]);
    EXPECT_EQ(f.list.SelectedItem(), f.list.ListItems(5));
}

TEST(ListRows, MovingTheFirstRowUpOrTheLastRowDownDoesNothing) {
    PackageList f;
    const QList<ListRowSnapshot> before = f.rows();
    f.click(1);
    MoveRowUp(&f.list);
    MoveRowToTop(&f.list);
    EXPECT_EQ(f.rows(), before);
    EXPECT_EQ(f.list.SelectedItem(), f.list.ListItems(1));
    f.click(7);
    MoveRowDown(&f.list);
    MoveRowToBottom(&f.list);
    EXPECT_EQ(f.rows(), before);
    EXPECT_EQ(f.list.SelectedItem(), f.list.ListItems(7));
}

TEST(ListRows, MovesWithoutASelectedRowDoNothing) {
    PackageList f;
    const QList<ListRowSnapshot> before = f.rows();
    ASSERT_EQ(f.list.SelectedItem(), nullptr);
    MoveRowUp(&f.list);
    MoveRowDown(&f.list);
    MoveRowToTop(&f.list);
    MoveRowToBottom(&f.list);
    EXPECT_EQ(f.rows(), before);
    ReportList empty;
    MoveRowUp(&empty);
    MoveRowToBottom(&empty);
    EXPECT_EQ(empty.Count(), 0);
}

TEST(ListRows, ToTopFromPositionFivePassesEachPlaceAndKeepsAllData) {
    PackageList f;
    f.click(5);
    const QList<ListRowSnapshot> before = f.rows();
    QList<int> places;
    // The same steps as the to-top command, one at a time, to see each place passed.
    for (int k = 0; k < 4; ++k) {
        MoveRowUp(&f.list);
        places << f.list.FindItemByKey("0005")->Index();
    }
    EXPECT_EQ(places, QList<int>({4, 3, 2, 1}));
    const QList<ListRowSnapshot> after = f.rows();
    EXPECT_EQ(after[0], before[4]);
    EXPECT_FALSE(after[0].Bold);
    EXPECT_EQ(after[0].ForeColor, 5u * 0x010203u);
    EXPECT_EQ(after[0].Tag, "C:\\Pack\\0005.wav");
    EXPECT_EQ(after[0].SubItems[0].Text, "r5c1");
    for (int i = 1; i <= 4; ++i)
        EXPECT_EQ(after[i], before[i - 1]) << "passed row " << i;
    EXPECT_EQ(after[5], before[5]);
    EXPECT_EQ(after[6], before[6]);
}

TEST(ListRows, ToTopMovesAMiddleRowFirst) {
    PackageList f;
    f.click(5);
    const QList<ListRowSnapshot> before = f.rows();
    MoveRowToTop(&f.list);
    const QList<ListRowSnapshot> after = f.rows();
    EXPECT_EQ(f.keys(), QStringList({"0005", "0001", "0002", "0003", "0004", "0006", "0007"}));
    EXPECT_EQ(after[0], before[4]);
    EXPECT_EQ(after[4], before[3]);
    EXPECT_EQ(f.list.SelectedItem(), f.list.ListItems(1));
    EXPECT_FALSE(f.keys().contains("~temp"));
}

TEST(ListRows, ToBottomMovesAMiddleRowLast) {
    PackageList f;
    f.click(3);
    const QList<ListRowSnapshot> before = f.rows();
    MoveRowToBottom(&f.list);
    const QList<ListRowSnapshot> after = f.rows();
    EXPECT_EQ(f.keys(), QStringList({"0001", "0002", "0004", "0005", "0006", "0007", "0003"}));
    EXPECT_EQ(after[6], before[2]);
    EXPECT_EQ(after[2], before[3]);
    EXPECT_EQ(f.list.SelectedItem(), f.list.ListItems(7));
}

TEST(ListRows, ToTopAndToBottomIgnoreFailingSwaps) {
    // A row holding the temporary key makes every swap fail half-way.
    PackageList single;
    single.list.ListItems(2)->SetKey("~temp");
    single.click(4);
    EXPECT_EQ(errorOf([&] { MoveRowUp(&single.list); }), 35602);

    PackageList f;
    f.list.ListItems(2)->SetKey("~temp");
    f.click(4);
    EXPECT_EQ(errorOf([&] { MoveRowToTop(&f.list); }), 0);
    f.click(5);
    EXPECT_EQ(errorOf([&] { MoveRowToBottom(&f.list); }), 0);
    EXPECT_EQ(f.list.Count(), 7);
}

TEST(ListRows, SortingByTitleTwiceGivesTheReverse) {
    PackageList f(6);
    const QStringList titles = {"Mitte", "Anfang", "zuletzt", "Bahnhof", "ende", "Ausgang"};
    for (int i = 1; i <= 6; ++i)
        f.list.ListItems(i)->SetSubItems(1, titles[i - 1]);
    SortListByColumn(&f.list, 1);
    const QStringList once = f.keys();
    const int firstOrder = f.list.SortOrder();
    SortListByColumn(&f.list, 1);
    QStringList twice = f.keys();
    std::reverse(twice.begin(), twice.end());
    EXPECT_EQ(twice, once);
    EXPECT_NE(f.list.SortOrder(), firstOrder);
    EXPECT_EQ(f.list.SortKey(), 1);
    EXPECT_TRUE(f.list.Sorted());
    EXPECT_EQ(f.list.ListItems(1)->SubItems(1), "Anfang");
}

TEST(ListRows, SortingFlipsTheListsOrderEachCall) {
    PackageList f(3);
    ASSERT_EQ(f.list.SortOrder(), lvw::Ascending);
    SortListByColumn(&f.list, 0);
    EXPECT_EQ(f.list.SortOrder(), lvw::Descending);
    EXPECT_EQ(f.keys(), QStringList({"0003", "0002", "0001"}));
    SortListByColumn(&f.list, 0);
    EXPECT_EQ(f.keys(), QStringList({"0001", "0002", "0003"}));
}

TEST(ListRows, PlayTimesSortAsText) {
    PackageList f(3);
    f.list.ListItems(1)->SetSubItems(3, "9,2");
    f.list.ListItems(2)->SetSubItems(3, "10,5");
    f.list.ListItems(3)->SetSubItems(3, "3");
    SortListByColumn(&f.list, 3);
    SortListByColumn(&f.list, 3);
    ASSERT_EQ(f.list.SortOrder(), lvw::Ascending);
    EXPECT_EQ(f.list.ListItems(1)->SubItems(3), "10,5");
    EXPECT_EQ(f.list.ListItems(2)->SubItems(3), "3");
    EXPECT_EQ(f.list.ListItems(3)->SubItems(3), "9,2");
}

TEST(ListRows, MovedRowStaysWhereItWasPutInASortedList) {
    PackageList f(4);
    SortListByColumn(&f.list, 0);
    SortListByColumn(&f.list, 0);
    f.click(2);
    MoveRowUp(&f.list);
    EXPECT_EQ(f.keys(), QStringList({"0002", "0001", "0003", "0004"}));
}
