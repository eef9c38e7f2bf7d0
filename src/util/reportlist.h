#pragma once

#include "util/sortvalue.h"

#include <QHash>
#include <QString>
#include <QTreeWidget>
#include <QTreeWidgetItem>
#include <QVariant>
#include <vector>

namespace tavik {

class ReportList;

// The colour value items start with: the system's window text colour.
inline constexpr quint32 WindowTextColor = 0x80000008u;

// One sub-item (a column right of the first) of a list item, counted from 1.
class ReportListSubItem {
public:
    ReportListSubItem(QTreeWidgetItem* item, int index) : item_(item), index_(index) {}

    int Index() const { return index_; }
    bool Bold() const;
    void SetBold(bool bold);
    quint32 ForeColor() const;
    void SetForeColor(quint32 color);
    QString Key() const;
    // Unique among the item's sub-items; a duplicate raises 35602.
    void SetKey(const QString& key);
    QVariant ReportIcon() const;
    void SetReportIcon(const QVariant& icon);
    QString Tag() const;
    void SetTag(const QString& tag);
    QString Text() const;
    void SetText(const QString& text);
    QString ToolTipText() const;
    void SetToolTipText(const QString& text);

private:
    QTreeWidgetItem* item_;
    int index_;
};

// One row of a report list. Its own properties belong to the first column; each sub-item
// carries its own, as in the Windows control.
class ReportListItem : public QTreeWidgetItem {
public:
    ~ReportListItem() override;

    // The position in the list, from 1; 0 once the item has left its list.
    int Index() const;

    bool Bold() const;
    void SetBold(bool bold);
    bool Checked() const;
    void SetChecked(bool checked);
    quint32 ForeColor() const;
    void SetForeColor(quint32 color);
    bool Ghosted() const;
    void SetGhosted(bool ghosted);
    QVariant Icon() const;
    void SetIcon(const QVariant& icon);
    QString Key() const;
    // Unique in the list (without regard to case); a duplicate raises 35602. "" is no key.
    void SetKey(const QString& key);
    bool Selected() const;
    // Selecting an item of a single-selection list deselects the others.
    void SetSelected(bool selected);
    QVariant SmallIcon() const;
    void SetSmallIcon(const QVariant& icon);
    QString Tag() const;
    void SetTag(const QString& tag);
    QString Text() const;
    void SetText(const QString& text);
    QString ToolTipText() const;
    void SetToolTipText(const QString& text);

    // One sub-item per column right of the first.
    int SubItemCount() const;
    // Sub-item 1 to SubItemCount(); any other index raises 35600.
    ReportListSubItem SubItem(int index);
    QString SubItems(int index);
    void SetSubItems(int index, const QString& text);

    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant& value) override;

private:
    friend class ReportList;
    explicit ReportListItem(ReportList* owner) : owner_(owner) {}

    ReportList* owner_;
    // The cells' tags and tool tips, which no view draws: kept in one small array for the row
    // instead of in the item's list of lists per column, which cost a row of a big package
    // three allocations.
    struct CellData {
        int column;
        int role;
        QVariant value;
    };
    std::vector<CellData> cellData_;
};

// A report-style list view: column headers with widths in twips, items counted from 1 with
// unique keys, and sorting by one column, as text or by number. Rows keep their place when edited;
// sorting happens when switched on, when the sort key or order changes while on, and when an item
// is added while on.
class ReportList : public QTreeWidget {
    Q_OBJECT
public:
    explicit ReportList(QWidget* parent = nullptr);
    ~ReportList() override;

    // Column headers, counted from 1.
    int AddColumn(const QString& text, double widthTwips = 1440.0);
    // Takes the last column away, its cells with it; a list without columns raises 35600.
    void RemoveLastColumn();
    int ColumnHeadersCount() const { return columns_; }
    QString ColumnText(int index) const;
    void SetColumnText(int index, const QString& text);
    // In twips; the control keeps whole pixels of 15 twips each.
    double ColumnWidth(int index) const;
    void SetColumnWidth(int index, double twips);

    // List items, counted from 1.
    int Count() const { return topLevelItemCount(); }
    // Adds at `index` (0: at the end, or in sorted order while sorting is on).
    ReportListItem* AddItem(const QString& text, const QString& key = {}, int index = 0);
    // A row without a key that is not in the list yet, for AddMadeItem: what is set on it
    // reaches no view, so a row filled first is announced to the views once, not once for
    // every text. Until it is added it is the caller's.
    ReportListItem* MakeItem(const QString& text);
    // Adds a row from MakeItem at `index` as AddItem adds one.
    void AddMadeItem(ReportListItem* item, int index = 0);
    // Item 1 to Count(); any other index raises 35600.
    ReportListItem* ListItems(int index) const;
    ReportListItem* FindItemByKey(const QString& key) const;
    void RemoveItem(int index);
    void ClearItems();
    ReportListItem* SelectedItem() const;
    // Moves `item` to where the sort column puts it, after the rows that compare equal to it.
    // A row added at the end and placed once its sub-items are filled sorts by its whole
    // content, and rows placed in the order they were added keep that order among equals.
    // Nothing happens while sorting is off.
    void PlaceSorted(ReportListItem* item);
    // Places every row as PlaceSorted would place each one in list order, in one pass: rows
    // that compare equal keep their order. Nothing happens while sorting is off.
    void PlaceAllSorted();

    // The sort column: 0 is the item text, n the n-th sub-item.
    int SortKey() const { return sortKey_; }
    void SetSortKey(int column);
    bool Sorted() const { return sorted_; }
    void SetSorted(bool sorted);
    int SortOrder() const { return sortOrder_; }
    void SetSortOrder(int order);
    // lvw::TextSort (the designed one) or lvw::NumberSort.
    int SortType() const { return sortType_; }
    void SetSortType(int type);

    // Column headers the user can click, with the header's sort indicator on the sort column
    // while the list is sorted. What a click does is the owner's (headerClicked).
    void SetHeaderSorting(bool enabled);

Q_SIGNALS:
    // Whether the list sorts, its sort column, order or type changed.
    void SortChanged();

private:
    friend class ReportListItem;
    void checkColumn(int index) const;
    void registerKey(ReportListItem* item, const QString& oldKey, const QString& newKey);
    void forgetKey(ReportListItem* item);
    bool before(const QTreeWidgetItem* a, const QTreeWidgetItem* b) const;
    int sortedPosition(const QTreeWidgetItem* item) const;
    void insertAt(ReportListItem* item, int index);
    void sortItems();
    void sortStateChanged();

    QHash<QString, ReportListItem*> keys_;
    int columns_ = 0;
    int sortKey_ = 0;
    bool sorted_ = false;
    int sortOrder_ = lvw::Ascending;
    int sortType_ = lvw::TextSort;
};

} // namespace tavik
