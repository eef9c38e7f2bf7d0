#include "listrows.h"

#include "reportlist.h"
#include "runtimeerror.h"

namespace tavik {

ListRowSnapshot ReadListRow(ReportListItem* row) {
    ListRowSnapshot s;
    s.Bold = row->Bold();
    s.Checked = row->Checked();
    s.ForeColor = row->ForeColor();
    s.Ghosted = row->Ghosted();
    s.Icon = row->Icon();
    s.Key = row->Key();
    s.Selected = row->Selected();
    s.SmallIcon = row->SmallIcon();
    s.Tag = row->Tag();
    s.Text = row->Text();
    s.ToolTipText = row->ToolTipText();
    const int count = row->SubItemCount();
    s.SubItems.reserve(count);
    for (int j = 1; j <= count; ++j) {
        const ReportListSubItem sub = row->SubItem(j);
        s.SubItems.append({sub.Bold(), sub.ForeColor(), sub.Key(), sub.ReportIcon(), sub.Tag(),
                           sub.Text(), sub.ToolTipText()});
    }
    return s;
}

void WriteListRow(ReportListItem* row, const ListRowSnapshot& s) {
    row->SetBold(s.Bold);
    row->SetChecked(s.Checked);
    row->SetForeColor(s.ForeColor);
    row->SetGhosted(s.Ghosted);
    row->SetIcon(s.Icon);
    row->SetKey(s.Key);
    row->SetSelected(s.Selected);
    row->SetSmallIcon(s.SmallIcon);
    row->SetTag(s.Tag);
    row->SetText(s.Text);
    row->SetToolTipText(s.ToolTipText);
    const int count = row->SubItemCount();
    for (int j = 1; j <= count; ++j) {
        if (j > s.SubItems.size())
            throw RuntimeError(rt::SubscriptOutOfRange);
        const ListSubItemSnapshot& from = s.SubItems[j - 1];
        ReportListSubItem sub = row->SubItem(j);
        sub.SetBold(from.Bold);
        sub.SetForeColor(from.ForeColor);
        sub.SetKey(from.Key);
        sub.SetReportIcon(from.ReportIcon);
        sub.SetTag(from.Tag);
        sub.SetText(from.Text);
        sub.SetToolTipText(from.ToolTipText);
    }
}

void SwapListRows(ReportListItem* a, ReportListItem* b) {
    const ListRowSnapshot snapA = ReadListRow(a);
    ListRowSnapshot snapB = ReadListRow(b);
    const QString keyB = snapB.Key;
    // Row keys are unique, so A holds a stand-in key until B has taken A's.
    snapB.Key = QString::fromLatin1(TempRowKey);
    WriteListRow(a, snapB);
    WriteListRow(b, snapA);
    a->SetKey(keyB);
}

void MoveRowUp(ReportList* list) {
    ReportListItem* row = list->SelectedItem();
    if (!row)
        return;
    const int i = row->Index();
    if (i > 1) {
        ReportListItem* above = list->ListItems(i - 1);
        SwapListRows(row, above);
        above->SetSelected(true);
    }
}

void MoveRowDown(ReportList* list) {
    ReportListItem* row = list->SelectedItem();
    if (!row)
        return;
    const int i = row->Index();
    if (i < list->Count()) {
        ReportListItem* below = list->ListItems(i + 1);
        SwapListRows(row, below);
        below->SetSelected(true);
    }
}

void MoveRowToTop(ReportList* list) {
    ReportListItem* row = list->SelectedItem();
    if (!row)
        return;
    const int steps = row->Index() - 1;
    for (int k = 0; k < steps; ++k) {
        try {
            MoveRowUp(list);
        } catch (const RuntimeError&) {
        }
    }
}

void MoveRowToBottom(ReportList* list) {
    ReportListItem* row = list->SelectedItem();
    if (!row)
        return;
    const int steps = list->Count() - row->Index();
    for (int k = 0; k < steps; ++k) {
        try {
            MoveRowDown(list);
        } catch (const RuntimeError&) {
        }
    }
}

} // namespace tavik
