#pragma once

namespace tavik {

class ReportList;

// The sort menu's command: sorts by `column` (0 the item text, n the n-th sub-item) as text,
// flipping the list's order on every call, so the same choice twice reverses the list.
void SortListByColumn(ReportList* list, int column);

} // namespace tavik
