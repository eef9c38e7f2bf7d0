#include "reportlist.h"

#include "runtimeerror.h"
#include "wincolor.h"

#include <QHeaderView>
#include <QIcon>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>
#include <vector>

namespace tavik {

namespace {

constexpr double TwipsPerPixel = 15.0;

// Data the view does not show, kept beside what it does.
enum Role {
    KeyRole = Qt::UserRole + 1,
    TagRole,
    ForeColorRole,
    CheckedRole,
    GhostedRole,
    IconRole,
    SmallIconRole,
};

void outOfBounds() {
    throw RuntimeError(rt::IndexOutOfBounds);
}

bool boldAt(const QTreeWidgetItem* item, int column) {
    return item->font(column).bold();
}

void setBoldAt(QTreeWidgetItem* item, int column, bool bold) {
    // A cell already of that weight keeps no font of its own: each one a load stored for
    // "not bold" cost a row hundreds of bytes and drew the same.
    if (boldAt(item, column) == bold)
        return;
    QFont f = item->font(column);
    f.setBold(bold);
    item->setFont(column, f);
}

quint32 foreColorAt(const QTreeWidgetItem* item, int column) {
    const QVariant v = item->data(column, ForeColorRole);
    return v.isValid() ? v.toUInt() : WindowTextColor;
}

void setForeColorAt(QTreeWidgetItem* item, int column, quint32 color) {
    item->setData(column, ForeColorRole, color);
    const QColor c = WinColorToQColor(color);
    item->setData(column, Qt::ForegroundRole, c.isValid() ? QVariant(QBrush(c)) : QVariant());
}

// A picture given as an icon is shown; any other value (an image list index or key) is kept.
void setPictureAt(QTreeWidgetItem* item, int column, int role, const QVariant& icon) {
    item->setData(column, role, icon);
    item->setData(column, Qt::DecorationRole,
                  icon.metaType() == QMetaType::fromType<QIcon>() ? icon : QVariant());
}

QString textAt(const QTreeWidgetItem* item, int column) {
    return item->data(column, Qt::DisplayRole).toString();
}

QString foldKey(const QString& key) {
    return key.toCaseFolded();
}

// No cell shows more characters than its column has pixels, and no column is wider than this.
constexpr qsizetype kLongestShownText = 32767;
// Laying out a text costs its whole length even where a few hundred characters show: a cell
// is drawn from the characters that fit its column, so a 64 KB title draws as fast as a short
// one and looks the same.
class ShownTextDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const auto* view = qobject_cast<const QTreeView*>(parent());
        const qsizetype shown =
            view ? std::min<qsizetype>(view->columnWidth(index.column()) + 1, kLongestShownText)
                 : kLongestShownText;
        if (option->text.size() > shown)
            option->text.truncate(shown);
    }
};

} // namespace

// --- sub-items ---

bool ReportListSubItem::Bold() const {
    return boldAt(item_, index_);
}
void ReportListSubItem::SetBold(bool bold) {
    setBoldAt(item_, index_, bold);
}
quint32 ReportListSubItem::ForeColor() const {
    return foreColorAt(item_, index_);
}
void ReportListSubItem::SetForeColor(quint32 color) {
    setForeColorAt(item_, index_, color);
}
QString ReportListSubItem::Key() const {
    return item_->data(index_, KeyRole).toString();
}
void ReportListSubItem::SetKey(const QString& key) {
    if (!key.isEmpty()) {
        const QString folded = foldKey(key);
        for (int c = 1; c < item_->columnCount(); ++c)
            if (c != index_ && foldKey(item_->data(c, KeyRole).toString()) == folded)
                throw RuntimeError(rt::KeyNotUnique);
    }
    item_->setData(index_, KeyRole, key);
}
QVariant ReportListSubItem::ReportIcon() const {
    return item_->data(index_, IconRole);
}
void ReportListSubItem::SetReportIcon(const QVariant& icon) {
    setPictureAt(item_, index_, IconRole, icon);
}
QString ReportListSubItem::Tag() const {
    return item_->data(index_, TagRole).toString();
}
void ReportListSubItem::SetTag(const QString& tag) {
    item_->setData(index_, TagRole, tag);
}
QString ReportListSubItem::Text() const {
    return textAt(item_, index_);
}
void ReportListSubItem::SetText(const QString& text) {
    item_->setText(index_, text);
}
QString ReportListSubItem::ToolTipText() const {
    return item_->toolTip(index_);
}
void ReportListSubItem::SetToolTipText(const QString& text) {
    item_->setToolTip(index_, text);
}

// --- items ---

ReportListItem::~ReportListItem() {
    if (owner_)
        owner_->forgetKey(this);
}

namespace {

bool keptApart(int role) {
    return role == TagRole || role == Qt::ToolTipRole;
}

} // namespace

QVariant ReportListItem::data(int column, int role) const {
    if (!keptApart(role))
        return QTreeWidgetItem::data(column, role);
    for (const CellData& cell : cellData_)
        if (cell.column == column && cell.role == role)
            return cell.value;
    return {};
}

void ReportListItem::setData(int column, int role, const QVariant& value) {
    if (!keptApart(role)) {
        QTreeWidgetItem::setData(column, role, value);
        return;
    }
    if (column < 0)
        return;
    auto cell = std::find_if(cellData_.begin(), cellData_.end(), [&](const CellData& c) {
        return c.column == column && c.role == role;
    });
    if (cell != cellData_.end()) {
        if (cell->value == value)
            return;
        cell->value = value;
    } else {
        if (!value.isValid())
            return;
        if (cellData_.empty())
            cellData_.reserve(2); // a tag and a tool tip, as the rows of a package have
        cellData_.push_back({column, role, value});
    }
    // A row in a list tells its views, as for any other change of its data.
    if (treeWidget())
        emitDataChanged();
}

int ReportListItem::Index() const {
    if (!owner_ || treeWidget() != owner_)
        return 0;
    return owner_->indexOfTopLevelItem(const_cast<ReportListItem*>(this)) + 1;
}

bool ReportListItem::Bold() const {
    return boldAt(this, 0);
}
void ReportListItem::SetBold(bool bold) {
    setBoldAt(this, 0, bold);
}
bool ReportListItem::Checked() const {
    return data(0, CheckedRole).toBool();
}
void ReportListItem::SetChecked(bool checked) {
    setData(0, CheckedRole, checked);
}
quint32 ReportListItem::ForeColor() const {
    return foreColorAt(this, 0);
}
void ReportListItem::SetForeColor(quint32 color) {
    setForeColorAt(this, 0, color);
}
bool ReportListItem::Ghosted() const {
    return data(0, GhostedRole).toBool();
}
void ReportListItem::SetGhosted(bool ghosted) {
    setData(0, GhostedRole, ghosted);
}
QVariant ReportListItem::Icon() const {
    return data(0, IconRole);
}
void ReportListItem::SetIcon(const QVariant& icon) {
    // The large icon belongs to the icon view; the report view shows the small one.
    setData(0, IconRole, icon);
}
QString ReportListItem::Key() const {
    return data(0, KeyRole).toString();
}
void ReportListItem::SetKey(const QString& key) {
    const QString old = Key();
    if (owner_)
        owner_->registerKey(this, old, key);
    setData(0, KeyRole, key);
}
bool ReportListItem::Selected() const {
    return isSelected();
}
void ReportListItem::SetSelected(bool selected) {
    if (selected && owner_ && treeWidget() == owner_ &&
        owner_->selectionMode() == QAbstractItemView::SingleSelection)
        // The whole row, as a click selects it: assistive technology reads rows, not cells.
        owner_->setCurrentItem(this, 0,
                               QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    else
        setSelected(selected);
}
QVariant ReportListItem::SmallIcon() const {
    return data(0, SmallIconRole);
}
void ReportListItem::SetSmallIcon(const QVariant& icon) {
    setPictureAt(this, 0, SmallIconRole, icon);
}
QString ReportListItem::Tag() const {
    return data(0, TagRole).toString();
}
void ReportListItem::SetTag(const QString& tag) {
    setData(0, TagRole, tag);
}
QString ReportListItem::Text() const {
    return textAt(this, 0);
}
void ReportListItem::SetText(const QString& text) {
    setText(0, text);
}
QString ReportListItem::ToolTipText() const {
    return toolTip(0);
}
void ReportListItem::SetToolTipText(const QString& text) {
    setToolTip(0, text);
}

int ReportListItem::SubItemCount() const {
    return owner_ ? std::max(0, owner_->ColumnHeadersCount() - 1) : 0;
}
ReportListSubItem ReportListItem::SubItem(int index) {
    if (index < 1 || index > SubItemCount())
        outOfBounds();
    return ReportListSubItem(this, index);
}
QString ReportListItem::SubItems(int index) {
    return SubItem(index).Text();
}
void ReportListItem::SetSubItems(int index, const QString& text) {
    SubItem(index).SetText(text);
}

// --- the list ---

ReportList::ReportList(QWidget* parent) : QTreeWidget(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setItemsExpandable(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSortingEnabled(false);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    setColumnCount(1);
    setHeaderLabels({QString()});
    setItemDelegate(new ShownTextDelegate(this));
}

ReportList::~ReportList() {
    // The items leave while the key table is still there.
    ClearItems();
}

void ReportList::checkColumn(int index) const {
    if (index < 1 || index > columns_)
        outOfBounds();
}

int ReportList::AddColumn(const QString& text, double widthTwips) {
    ++columns_;
    if (columns_ > columnCount())
        setColumnCount(columns_);
    headerItem()->setText(columns_ - 1, text);
    SetColumnWidth(columns_, widthTwips);
    return columns_;
}

void ReportList::RemoveLastColumn() {
    checkColumn(columns_);
    // The items keep a column's data past the column count: wiped, so that a column added
    // again starts empty.
    const int column = columns_ - 1;
    const int roles[] = {Qt::DisplayRole, Qt::ToolTipRole,    Qt::ForegroundRole,
                         Qt::FontRole,    Qt::DecorationRole, KeyRole,
                         TagRole,         ForeColorRole,      CheckedRole,
                         GhostedRole,     IconRole,           SmallIconRole};
    for (int i = 0; i < topLevelItemCount(); ++i) {
        for (const int role : roles)
            topLevelItem(i)->setData(column, role, QVariant());
    }
    --columns_;
    setColumnCount(std::max(columns_, 1));
}

QString ReportList::ColumnText(int index) const {
    checkColumn(index);
    return headerItem()->text(index - 1);
}

void ReportList::SetColumnText(int index, const QString& text) {
    checkColumn(index);
    headerItem()->setText(index - 1, text);
}

double ReportList::ColumnWidth(int index) const {
    checkColumn(index);
    return columnWidth(index - 1) * TwipsPerPixel;
}

void ReportList::SetColumnWidth(int index, double twips) {
    checkColumn(index);
    if (!std::isfinite(twips) || twips < 0)
        throw RuntimeError(rt::InvalidCall);
    const double pixels = std::min(twips / TwipsPerPixel, 32767.0);
    setColumnWidth(index - 1, static_cast<int>(std::lround(pixels)));
}

ReportListItem* ReportList::AddItem(const QString& text, const QString& key, int index) {
    if (index < 0 || index > Count() + 1)
        outOfBounds();
    if (!key.isEmpty() && keys_.contains(foldKey(key)))
        throw RuntimeError(rt::KeyNotUnique);
    auto* item = new ReportListItem(this);
    item->setText(0, text);
    item->SetKey(key);
    insertAt(item, index);
    return item;
}

ReportListItem* ReportList::MakeItem(const QString& text) {
    auto* item = new ReportListItem(this);
    item->setText(0, text);
    return item;
}

void ReportList::AddMadeItem(ReportListItem* item, int index) {
    if (index < 0 || index > Count() + 1)
        outOfBounds();
    insertAt(item, index);
}

void ReportList::insertAt(ReportListItem* item, int index) {
    int at = index == 0 ? Count() : index - 1;
    if (index == 0 && sorted_)
        at = sortedPosition(item);
    insertTopLevelItem(at, item);
}

ReportListItem* ReportList::ListItems(int index) const {
    if (index < 1 || index > Count())
        outOfBounds();
    return static_cast<ReportListItem*>(topLevelItem(index - 1));
}

ReportListItem* ReportList::FindItemByKey(const QString& key) const {
    if (key.isEmpty())
        return nullptr;
    return keys_.value(foldKey(key), nullptr);
}

void ReportList::RemoveItem(int index) {
    delete ListItems(index);
}

void ReportList::ClearItems() {
    clear();
    keys_.clear();
}

ReportListItem* ReportList::SelectedItem() const {
    const QList<QTreeWidgetItem*> selected = selectedItems();
    if (selected.isEmpty())
        return nullptr;
    QTreeWidgetItem* current = currentItem();
    return static_cast<ReportListItem*>(current && current->isSelected() ? current
                                                                         : selected.first());
}

void ReportList::PlaceSorted(ReportListItem* item) {
    const int from = indexOfTopLevelItem(item);
    if (!sorted_ || from < 0)
        return;
    const bool selected = item->isSelected();
    const bool current = currentItem() == item;
    takeTopLevelItem(from);
    insertTopLevelItem(sortedPosition(item), item);
    if (current)
        setCurrentItem(item, 0, QItemSelectionModel::NoUpdate);
    item->setSelected(selected);
}

void ReportList::PlaceAllSorted() {
    sortItems();
}

void ReportList::registerKey(ReportListItem* item, const QString& oldKey, const QString& newKey) {
    const QString oldFolded = foldKey(oldKey);
    const QString newFolded = foldKey(newKey);
    if (oldFolded == newFolded && !newKey.isEmpty())
        return;
    if (!newKey.isEmpty()) {
        if (keys_.contains(newFolded))
            throw RuntimeError(rt::KeyNotUnique);
        keys_.insert(newFolded, item);
    }
    if (!oldKey.isEmpty() && keys_.value(oldFolded) == item)
        keys_.remove(oldFolded);
}

void ReportList::forgetKey(ReportListItem* item) {
    const QString key = item->Key();
    if (!key.isEmpty() && keys_.value(foldKey(key)) == item)
        keys_.remove(foldKey(key));
}

void ReportList::SetSortKey(int column) {
    if (column < 0)
        throw RuntimeError(rt::InvalidCall);
    sortKey_ = column;
    sortStateChanged();
}

void ReportList::SetSorted(bool sorted) {
    sorted_ = sorted;
    sortStateChanged();
}

void ReportList::SetSortOrder(int order) {
    if (order != lvw::Ascending && order != lvw::Descending)
        throw RuntimeError(rt::InvalidCall);
    sortOrder_ = order;
    sortStateChanged();
}

void ReportList::SetSortType(int type) {
    if (type != lvw::TextSort && type != lvw::NumberSort)
        throw RuntimeError(rt::InvalidCall);
    sortType_ = type;
    sortStateChanged();
}

void ReportList::SetHeaderSorting(bool enabled) {
    header()->setSectionsClickable(enabled);
    header()->setSortIndicatorShown(enabled);
    sortStateChanged();
}

void ReportList::sortStateChanged() {
    sortItems();
    // No section shows the indicator while the list keeps its own order.
    header()->setSortIndicator(sorted_ && sortKey_ < columnCount() ? sortKey_ : -1,
                               sortOrder_ == lvw::Ascending ? Qt::AscendingOrder
                                                            : Qt::DescendingOrder);
    Q_EMIT SortChanged();
}

bool ReportList::before(const QTreeWidgetItem* a, const QTreeWidgetItem* b) const {
    const int c = CompareSortValues(MakeSortValue(textAt(a, sortKey_), sortType_),
                                    MakeSortValue(textAt(b, sortKey_), sortType_));
    return sortOrder_ == lvw::Ascending ? c < 0 : c > 0;
}

int ReportList::sortedPosition(const QTreeWidgetItem* item) const {
    int lo = 0;
    int hi = Count();
    while (lo < hi) {
        const int mid = lo + (hi - lo) / 2;
        if (before(item, topLevelItem(mid)))
            hi = mid;
        else
            lo = mid + 1;
    }
    return lo;
}

void ReportList::sortItems() {
    if (!sorted_ || Count() < 2)
        return;
    QList<QTreeWidgetItem*> selected = selectedItems();
    QTreeWidgetItem* current = currentItem();
    // Each row's cell read once, not at every comparison.
    struct Row {
        SortValue value;
        QTreeWidgetItem* item;
    };
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(Count()));
    for (QTreeWidgetItem* item : invisibleRootItem()->takeChildren())
        rows.push_back({MakeSortValue(textAt(item, sortKey_), sortType_), item});
    const bool ascending = sortOrder_ == lvw::Ascending;
    std::stable_sort(rows.begin(), rows.end(), [ascending](const Row& a, const Row& b) {
        const int c = CompareSortValues(a.value, b.value);
        return ascending ? c < 0 : c > 0;
    });
    QList<QTreeWidgetItem*> items;
    items.reserve(static_cast<qsizetype>(rows.size()));
    for (const Row& row : rows)
        items.append(row.item);
    addTopLevelItems(items);
    if (current)
        setCurrentItem(current, 0, QItemSelectionModel::NoUpdate);
    for (QTreeWidgetItem* item : selected)
        item->setSelected(true);
}

} // namespace tavik
