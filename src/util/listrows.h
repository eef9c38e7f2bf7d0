#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace tavik {

class ReportList;
class ReportListItem;

// What a sub-item shows.
struct ListSubItemSnapshot {
    bool Bold = false;
    quint32 ForeColor = 0;
    QString Key;
    QVariant ReportIcon;
    QString Tag;
    QString Text;
    QString ToolTipText;

    bool operator==(const ListSubItemSnapshot&) const = default;
};

// Everything a list row shows, used to exchange two rows. SubItems[j - 1] is sub-item j.
struct ListRowSnapshot {
    bool Bold = false;
    bool Checked = false;
    quint32 ForeColor = 0;
    bool Ghosted = false;
    QVariant Icon;
    QString Key;
    bool Selected = false;
    QVariant SmallIcon;
    QString Tag;
    QString Text;
    QString ToolTipText;
    QList<ListSubItemSnapshot> SubItems;

    bool operator==(const ListRowSnapshot&) const = default;
};

// The key a row holds for a moment while two rows exchange theirs; no row may use it.
inline constexpr char TempRowKey[] = "~temp";

ListRowSnapshot ReadListRow(ReportListItem* row);
// Writes the fields in the order of the snapshot, then sub-items 1 to the row's count; a
// snapshot with fewer sub-items than the row raises 9 at the first missing one.
void WriteListRow(ReportListItem* row, const ListRowSnapshot& snapshot);
// Exchanges everything two rows show, keys included.
void SwapListRows(ReportListItem* a, ReportListItem* b);

// Move the selected row one place, keeping it selected; nothing without a selected row or at
// the end of the list.
void MoveRowUp(ReportList* list);
void MoveRowDown(ReportList* list);
// Move the selected row to the first or last place by neighbour swaps; a failing swap is
// skipped.
void MoveRowToTop(ReportList* list);
void MoveRowToBottom(ReportList* list);

} // namespace tavik
