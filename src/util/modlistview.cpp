#include "modlistview.h"

#include "reportlist.h"

namespace tavik {

void SortListByColumn(ReportList* list, int column) {
    list->SetSortKey(column);
    list->SetSorted(true);
    list->SetSortOrder(list->SortOrder() == lvw::Ascending ? lvw::Descending : lvw::Ascending);
}

} // namespace tavik
