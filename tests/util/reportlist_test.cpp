#include "util/reportlist.h"

#include "support/errorof.h"
#include "util/wincolor.h"

#include <QAbstractItemDelegate>
#include <QHeaderView>
#include <QStyleOptionViewItem>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;

namespace {

struct ThreeRows {
    ReportList list;
    ThreeRows() {
        list.AddColumn("Key", 1500);
        list.AddColumn("Titel", 3000);
        list.AddItem("a", "A");
        list.AddItem("b", "B");
        list.AddItem("c", "C");
    }
};

QStringList texts(const ReportList& list, int column = 0) {
    QStringList out;
    for (int i = 1; i <= list.Count(); ++i)
        out << (column == 0 ? list.ListItems(i)->Text() : list.ListItems(i)->SubItems(column));
    return out;
}

} // namespace

TEST(ReportList, ItemsCountFromOne) {
    ThreeRows f;
    EXPECT_EQ(f.list.Count(), 3);
    EXPECT_EQ(f.list.ListItems(1)->Text(), "a");
    EXPECT_EQ(f.list.ListItems(3)->Text(), "c");
    EXPECT_EQ(f.list.ListItems(2)->Index(), 2);
}

TEST(ReportList, ItemZeroOrPastTheCountIsOutOfBounds) {
    ThreeRows f;
    EXPECT_EQ(errorOf([&] { f.list.ListItems(0); }), 35600);
    EXPECT_EQ(errorOf([&] { f.list.ListItems(4); }), 35600);
    EXPECT_EQ(errorOf([&] { f.list.RemoveItem(4); }), 35600);
    EXPECT_EQ(RuntimeError(35600).description(), "Index out of bounds");
}

TEST(ReportList, DuplicateKeyIsRefused) {
    ThreeRows f;
    EXPECT_EQ(errorOf([&] { f.list.AddItem("d", "B"); }), 35602);
    EXPECT_EQ(errorOf([&] { f.list.ListItems(1)->SetKey("C"); }), 35602);
    EXPECT_EQ(f.list.Count(), 3);
    EXPECT_EQ(f.list.ListItems(1)->Key(), "A");
    EXPECT_EQ(RuntimeError(35602).description(), "Key is not unique in collection");
}

TEST(ReportList, KeysCompareWithoutRegardToCase) {
    ThreeRows f;
    EXPECT_EQ(errorOf([&] { f.list.AddItem("d", "b"); }), 35602);
    EXPECT_EQ(f.list.FindItemByKey("c"), f.list.ListItems(3));
}

TEST(ReportList, ItemsWithoutKeyMayBeMany) {
    ThreeRows f;
    f.list.AddItem("x");
    f.list.AddItem("y");
    EXPECT_EQ(f.list.Count(), 5);
    EXPECT_EQ(f.list.FindItemByKey(""), nullptr);
}

TEST(ReportList, KeyFreedByRemovalOrRekeyCanBeUsedAgain) {
    ThreeRows f;
    f.list.RemoveItem(2);
    EXPECT_EQ(f.list.FindItemByKey("B"), nullptr);
    EXPECT_EQ(f.list.AddItem("b2", "B")->Index(), 3);
    f.list.ListItems(1)->SetKey("Z");
    EXPECT_EQ(f.list.AddItem("a2", "A")->Key(), "A");
    EXPECT_EQ(f.list.FindItemByKey("Z"), f.list.ListItems(1));
}

TEST(ReportList, ClearEmptiesListAndKeys) {
    ThreeRows f;
    f.list.ClearItems();
    EXPECT_EQ(f.list.Count(), 0);
    EXPECT_EQ(f.list.FindItemByKey("A"), nullptr);
    EXPECT_EQ(f.list.AddItem("a", "A")->Index(), 1);
}

TEST(ReportList, AddAtIndexInsertsThere) {
    ThreeRows f;
    f.list.AddItem("first", "F", 1);
    EXPECT_EQ(texts(f.list), QStringList({"first", "a", "b", "c"}));
    EXPECT_EQ(errorOf([&] { f.list.AddItem("far", "X", 7); }), 35600);
}

TEST(ReportList, ARowMadeFirstIsAnnouncedOnceWhenItIsAdded) {
    ThreeRows f;
    int changed = 0;
    int inserted = 0;
    QObject::connect(f.list.model(), &QAbstractItemModel::dataChanged, [&] { ++changed; });
    QObject::connect(f.list.model(), &QAbstractItemModel::rowsInserted, [&] { ++inserted; });
    ReportListItem* row = f.list.MakeItem("d");
    row->SetSubItems(1, "Gleis 4");
    row->SetTag("/p/0004.wav");
    row->SetForeColor(255);
    row->SetBold(true);
    EXPECT_EQ(f.list.Count(), 3);
    f.list.AddMadeItem(row, 2);
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(inserted, 1);
    EXPECT_EQ(texts(f.list), QStringList({"a", "d", "b", "c"}));
    EXPECT_EQ(f.list.ListItems(2), row);
    EXPECT_EQ(row->SubItems(1), "Gleis 4");
    EXPECT_EQ(row->Tag(), "/p/0004.wav");
    EXPECT_EQ(row->ForeColor(), 255u);
    EXPECT_TRUE(row->Bold());
    EXPECT_EQ(row->Key(), QString());
    EXPECT_EQ(row->Index(), 2);
    // Its place is checked as AddItem checks it; the row stays the caller's when refused.
    ReportListItem* other = f.list.MakeItem("e");
    EXPECT_EQ(errorOf([&] { f.list.AddMadeItem(other, 6); }), 35600);
    delete other;
    EXPECT_EQ(f.list.Count(), 4);
}

TEST(ReportList, SubItemsCountFromOneUpToTheColumns) {
    ThreeRows f;
    ReportListItem* row = f.list.ListItems(1);
    EXPECT_EQ(row->SubItemCount(), 1);
    row->SetSubItems(1, "Titel a");
    EXPECT_EQ(row->SubItem(1).Text(), "Titel a");
    EXPECT_EQ(row->text(1), "Titel a");
    EXPECT_EQ(errorOf([&] { row->SubItem(0); }), 35600);
    EXPECT_EQ(errorOf([&] { row->SubItem(2); }), 35600);
}

TEST(ReportList, TheLastColumnCanBeTakenAwayAndAddedAgainEmpty) {
    ThreeRows f;
    f.list.AddColumn("Extra", 1000);
    ReportListItem* row = f.list.ListItems(1);
    row->SetSubItems(2, "x");
    f.list.RemoveLastColumn();
    EXPECT_EQ(f.list.ColumnHeadersCount(), 2);
    EXPECT_EQ(f.list.columnCount(), 2);
    EXPECT_EQ(row->SubItemCount(), 1);
    EXPECT_EQ(errorOf([&] { row->SubItem(2); }), 35600);
    f.list.AddColumn("Extra", 1000);
    EXPECT_EQ(row->SubItems(2), QString());
    f.list.RemoveLastColumn();
    f.list.RemoveLastColumn();
    f.list.RemoveLastColumn();
    EXPECT_EQ(f.list.ColumnHeadersCount(), 0);
    EXPECT_EQ(errorOf([&] { f.list.RemoveLastColumn(); }), 35600);
}

TEST(ReportList, SubItemKeysAreUniqueWithinTheirRow) {
    ReportList list;
    list.AddColumn("A");
    list.AddColumn("B");
    list.AddColumn("C");
    ReportListItem* one = list.AddItem("1", "one");
    ReportListItem* two = list.AddItem("2", "two");
    one->SubItem(1).SetKey("s");
    two->SubItem(1).SetKey("s");
    EXPECT_EQ(errorOf([&] { one->SubItem(2).SetKey("S"); }), 35602);
    one->SubItem(1).SetKey("s");
    EXPECT_EQ(one->SubItem(1).Key(), "s");
}

TEST(ReportList, ForeColorIsRedInTheLowByte) {
    ThreeRows f;
    ReportListItem* row = f.list.ListItems(1);
    EXPECT_EQ(row->ForeColor(), WindowTextColor);
    EXPECT_EQ(row->foreground(0).style(), Qt::NoBrush);
    row->SetForeColor(0x00336699); // blue 0x33, green 0x66, red 0x99
    EXPECT_EQ(row->ForeColor(), 0x00336699u);
    EXPECT_EQ(row->foreground(0).color(), QColor(0x99, 0x66, 0x33));
    row->SubItem(1).SetForeColor(255);
    EXPECT_EQ(row->foreground(1).color(), QColor(Qt::red));
    row->SetForeColor(WindowTextColor);
    EXPECT_EQ(row->foreground(0).style(), Qt::NoBrush);
}

TEST(ReportList, BoldAppliesToItsOwnColumn) {
    ThreeRows f;
    ReportListItem* row = f.list.ListItems(2);
    row->SetBold(true);
    EXPECT_TRUE(row->Bold());
    EXPECT_TRUE(row->font(0).bold());
    EXPECT_FALSE(row->SubItem(1).Bold());
    row->SubItem(1).SetBold(true);
    EXPECT_TRUE(row->font(1).bold());
}

TEST(ReportList, ColumnWidthsAreTwipsOfWholePixels) {
    ThreeRows f;
    EXPECT_EQ(f.list.ColumnHeadersCount(), 2);
    EXPECT_EQ(f.list.columnWidth(1), 200);
    f.list.SetColumnWidth(2, 5430.6143);
    EXPECT_EQ(f.list.columnWidth(1), 362);
    EXPECT_DOUBLE_EQ(f.list.ColumnWidth(2), 5430.0);
    f.list.SetColumnWidth(1, 0);
    EXPECT_EQ(f.list.columnWidth(0), 0);
    EXPECT_EQ(errorOf([&] { f.list.SetColumnWidth(3, 100); }), 35600);
    EXPECT_EQ(errorOf([&] { f.list.SetColumnWidth(1, -1); }), 5);
    f.list.SetColumnWidth(1, 1e300);
    EXPECT_EQ(f.list.columnWidth(0), 32767);
    f.list.SetColumnText(2, "Title");
    EXPECT_EQ(f.list.headerItem()->text(1), "Title");
}

TEST(ReportList, ClickingARowSelectsIt) {
    ThreeRows f;
    f.list.resize(300, 200);
    f.list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&f.list));
    EXPECT_EQ(f.list.SelectedItem(), nullptr);
    const QRect r = f.list.visualItemRect(f.list.ListItems(2));
    QTest::mouseClick(f.list.viewport(), Qt::LeftButton, {}, r.center());
    EXPECT_EQ(f.list.SelectedItem(), f.list.ListItems(2));
    f.list.ListItems(3)->SetSelected(true);
    EXPECT_EQ(f.list.SelectedItem(), f.list.ListItems(3));
    EXPECT_FALSE(f.list.ListItems(2)->Selected());
}

TEST(ReportList, SortingComparesEveryColumnAsText) {
    ReportList list;
    list.AddColumn("Key");
    list.AddColumn("Zeit");
    const QStringList times = {"9,2", "10,5", "2", "", "1,25"};
    for (int i = 0; i < times.size(); ++i)
        list.AddItem(QString::number(i), {})->SetSubItems(1, times[i]);
    list.SetSortKey(1);
    list.SetSorted(true);
    EXPECT_EQ(texts(list, 1), QStringList({"", "1,25", "10,5", "2", "9,2"}));
    list.SetSortOrder(lvw::Descending);
    EXPECT_EQ(texts(list, 1), QStringList({"9,2", "2", "10,5", "1,25", ""}));
}

TEST(ReportList, SortIgnoresCase) {
    ReportList list;
    list.AddColumn("Titel");
    for (const char* t : {"beta", "Alpha", "Gamma", "alpha2"})
        list.AddItem(t);
    list.SetSorted(true);
    EXPECT_EQ(texts(list), QStringList({"Alpha", "alpha2", "beta", "Gamma"}));
}

TEST(ReportList, EditedRowsKeepTheirPlaceWhileSorted) {
    ThreeRows f;
    f.list.SetSorted(true);
    f.list.ListItems(1)->SetText("zzz");
    EXPECT_EQ(texts(f.list), QStringList({"zzz", "b", "c"}));
}

TEST(ReportList, AddWhileSortedInsertsInOrder) {
    ThreeRows f;
    f.list.SetSorted(true);
    f.list.AddItem("bb", "BB");
    EXPECT_EQ(texts(f.list), QStringList({"a", "b", "bb", "c"}));
}

TEST(ReportList, RowsFilledBeforeTheyArePlacedSortByTheirWholeContentStably) {
    ReportList list;
    list.AddColumn("Key");
    list.AddColumn("Titel");
    list.SetSortKey(1);
    list.SetSorted(true);
    const QStringList keys = {"0000", "0001", "0002", "0003", "0004"};
    const QStringList titles = {"Gong", "Achtung", "Gong", "Zug", "Achtung"};
    for (int i = 0; i < keys.size(); ++i) {
        ReportListItem* row = list.AddItem(keys[i], {}, list.Count() + 1);
        row->SetSubItems(1, titles[i]);
        list.PlaceSorted(row);
    }
    EXPECT_EQ(texts(list), QStringList({"0001", "0004", "0000", "0002", "0003"}));
    EXPECT_EQ(texts(list, 1), QStringList({"Achtung", "Achtung", "Gong", "Gong", "Zug"}));

    // Descending keeps rows that compare equal in the order they were placed, too.
    list.ClearItems();
    list.SetSortOrder(lvw::Descending);
    for (int i = 0; i < keys.size(); ++i) {
        ReportListItem* row = list.AddItem(keys[i], {}, list.Count() + 1);
        row->SetSubItems(1, titles[i]);
        list.PlaceSorted(row);
    }
    EXPECT_EQ(texts(list), QStringList({"0003", "0000", "0002", "0001", "0004"}));
}

TEST(ReportList, PlacingAllRowsAtOnceGivesTheOrderOfPlacingEachWhenItIsFilled) {
    // Titles with many equal ones and case differences, in both orders and on each column.
    QStringList titles;
    for (int i = 0; i < 300; ++i)
        titles << QStringList(
                      {"Gong", "achtung", "Achtung", "zug", "Gleis 1", "gong"})[(i * 7) % 6] +
                      (i % 5 == 0 ? QString() : QString::number(i % 3));
    for (int order : {lvw::Ascending, lvw::Descending}) {
        for (int column : {0, 1}) {
            ReportList oneByOne;
            ReportList atOnce;
            for (ReportList* list : {&oneByOne, &atOnce}) {
                list->AddColumn("Key");
                list->AddColumn("Titel");
                list->SetSortKey(column);
                list->SetSortOrder(order);
                list->SetSorted(true);
            }
            for (int i = 0; i < titles.size(); ++i) {
                const QString key = QStringLiteral("%1").arg(i % 50, 4, 10, QLatin1Char('0'));
                ReportListItem* row = oneByOne.AddItem(key, {}, oneByOne.Count() + 1);
                row->SetSubItems(1, titles[i]);
                oneByOne.PlaceSorted(row);
                atOnce.AddItem(key, {}, atOnce.Count() + 1)->SetSubItems(1, titles[i]);
            }
            atOnce.PlaceAllSorted();
            EXPECT_EQ(texts(atOnce), texts(oneByOne)) << order << column;
            EXPECT_EQ(texts(atOnce, 1), texts(oneByOne, 1)) << order << column;
        }
    }
    ThreeRows off;
    off.list.ListItems(1)->SetText("zzz");
    off.list.PlaceAllSorted();
    EXPECT_EQ(texts(off.list), QStringList({"zzz", "b", "c"}));
}

TEST(ReportList, ACellIsDrawnFromNoMoreCharactersThanItsColumnHasPixels) {
    ReportList list;
    list.AddColumn("Key", 1500);
    list.AddColumn("Titel", 3000);
    ReportListItem* row = list.AddItem("0000");
    row->SetSubItems(1, QString(65535, QLatin1Char('T')));
    // The item keeps its whole text; only what is drawn is cut.
    EXPECT_EQ(row->SubItems(1).size(), 65535);
    QStyleOptionViewItem option;
    option.initFrom(&list);
    const QModelIndex index = list.model()->index(0, 1);
    const QSize drawn = list.itemDelegate()->sizeHint(option, index);
    const int whole = option.fontMetrics.horizontalAdvance(QString(65535, QLatin1Char('T')));
    EXPECT_LT(drawn.width(), whole / 10);
    EXPECT_GE(drawn.width(), list.columnWidth(1));
}

TEST(ReportList, PlacingARowWhileSortingIsOffLeavesItWhereItIs) {
    ThreeRows f;
    f.list.ListItems(1)->SetText("zzz");
    f.list.PlaceSorted(f.list.ListItems(1));
    EXPECT_EQ(texts(f.list), QStringList({"zzz", "b", "c"}));
}

TEST(ReportList, APlacedRowKeepsItsSelectionKeyAndData) {
    ThreeRows f;
    f.list.SetSorted(true);
    ReportListItem* row = f.list.ListItems(1);
    row->SetSubItems(1, "Titel");
    row->SetTag("tag");
    row->SetForeColor(255);
    row->SetBold(true);
    row->SetSelected(true);
    f.list.setCurrentItem(row);
    row->SetText("zzz");
    f.list.PlaceSorted(row);
    EXPECT_EQ(texts(f.list), QStringList({"b", "c", "zzz"}));
    EXPECT_EQ(f.list.SelectedItem(), row);
    EXPECT_EQ(f.list.currentItem(), row);
    EXPECT_EQ(row->Index(), 3);
    EXPECT_EQ(f.list.FindItemByKey("A"), row);
    EXPECT_EQ(row->SubItems(1), "Titel");
    EXPECT_EQ(row->Tag(), "tag");
    EXPECT_EQ(row->ForeColor(), 255u);
    EXPECT_TRUE(row->Bold());
}

TEST(ReportList, SortKeepsTheSelection) {
    ThreeRows f;
    f.list.ListItems(1)->SetSelected(true);
    f.list.SetSortOrder(lvw::Descending);
    f.list.SetSorted(true);
    EXPECT_EQ(texts(f.list), QStringList({"c", "b", "a"}));
    EXPECT_EQ(f.list.SelectedItem()->Text(), "a");
    EXPECT_EQ(f.list.SelectedItem()->Index(), 3);
    EXPECT_EQ(f.list.FindItemByKey("A")->Index(), 3);
}

TEST(ReportList, BadSortSettingsAreRefused) {
    ThreeRows f;
    EXPECT_EQ(errorOf([&] { f.list.SetSortOrder(2); }), 5);
    EXPECT_EQ(errorOf([&] { f.list.SetSortKey(-1); }), 5);
    f.list.SetSortKey(9); // a column past the last sorts as empty text
    f.list.SetSorted(true);
    EXPECT_EQ(texts(f.list), QStringList({"a", "b", "c"}));
}

TEST(ReportList, ARowMadeNotBoldKeepsNoFontOfItsOwnAndDrawsAsTheList) {
    ReportList list;
    list.AddColumn("Key", 1000);
    list.AddColumn("Titel", 2000);
    ReportListItem* plain = list.AddItem("0001", "0001");
    ReportListItem* unbolded = list.AddItem("0002", "0002");
    ReportListItem* again = list.AddItem("0003", "0003");
    for (ReportListItem* row : {plain, unbolded, again})
        row->SubItem(1).SetText(QStringLiteral("Gleis 7"));
    unbolded->SetBold(false);
    unbolded->SubItem(1).SetBold(false);
    again->SubItem(1).SetBold(true);
    again->SubItem(1).SetBold(false);
    EXPECT_FALSE(unbolded->Bold());
    EXPECT_FALSE(unbolded->SubItem(1).Bold());
    EXPECT_FALSE(again->SubItem(1).Bold());
    // A load makes every row without a colour not bold: that stores nothing.
    EXPECT_FALSE(unbolded->data(0, Qt::FontRole).isValid());
    EXPECT_FALSE(unbolded->data(1, Qt::FontRole).isValid());
    // The title cells draw alike: untouched, made not bold, made bold and not bold again.
    list.setFocusPolicy(Qt::NoFocus);
    list.setCurrentItem(nullptr);
    list.resize(300, 120);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    const QImage shot = list.viewport()->grab().toImage();
    auto titleCell = [&](ReportListItem* row) {
        const QRect r = list.visualItemRect(row);
        return shot.copy(list.header()->sectionViewportPosition(1), r.y(),
                         list.header()->sectionSize(1), r.height());
    };
    EXPECT_EQ(titleCell(plain), titleCell(unbolded));
    EXPECT_EQ(titleCell(plain), titleCell(again));
    // And a bold title does draw otherwise, so the comparison can tell.
    again->SubItem(1).SetBold(true);
    QCoreApplication::processEvents();
    const QImage bold = list.viewport()->grab().toImage();
    const QRect r = list.visualItemRect(again);
    EXPECT_NE(bold.copy(list.header()->sectionViewportPosition(1), r.y(),
                        list.header()->sectionSize(1), r.height()),
              titleCell(plain));
}

TEST(ReportList, TagsAndToolTipsOfEveryCellAreKeptAndTakenAway) {
    ThreeRows f;
    ReportListItem* row = f.list.ListItems(2);
    int changed = 0;
    QObject::connect(f.list.model(), &QAbstractItemModel::dataChanged, [&] { ++changed; });
    row->SetTag("row");
    row->SubItem(1).SetTag("cell");
    row->SetToolTipText("Zeile");
    row->SubItem(1).SetToolTipText("200 ms");
    EXPECT_EQ(row->Tag(), "row");
    EXPECT_EQ(row->SubItem(1).Tag(), "cell");
    EXPECT_EQ(row->ToolTipText(), "Zeile");
    EXPECT_EQ(row->SubItem(1).ToolTipText(), "200 ms");
    EXPECT_EQ(f.list.model()->data(f.list.model()->index(1, 1), Qt::ToolTipRole).toString(),
              "200 ms");
    // The views hear of each change, and of none that changes nothing.
    EXPECT_EQ(changed, 4);
    row->SubItem(1).SetToolTipText("200 ms");
    EXPECT_EQ(changed, 4);
    row->SubItem(1).SetToolTipText("300 ms");
    EXPECT_EQ(row->SubItem(1).ToolTipText(), "300 ms");
    EXPECT_EQ(changed, 5);
    // The last column taken away takes its cells' tags and tool tips with it.
    f.list.RemoveLastColumn();
    f.list.AddColumn("Titel", 3000);
    EXPECT_EQ(row->SubItem(1).Tag(), QString());
    EXPECT_EQ(row->SubItem(1).ToolTipText(), QString());
    EXPECT_EQ(row->Tag(), "row");
    EXPECT_EQ(f.list.ListItems(1)->Tag(), QString());
}
