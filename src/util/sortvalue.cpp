#include "util/sortvalue.h"

#include <cmath>

namespace tavik {

ListSortState NextSortState(const ListSortState& current, int column, int type) {
    const bool again = current.sorted && current.column == column;
    const int order = again && current.order == lvw::Ascending ? lvw::Descending : lvw::Ascending;
    return {true, column, order, type};
}

SortValue MakeSortValue(const QString& text, int sortType) {
    SortValue value{text, 0.0, false};
    if (sortType != lvw::NumberSort)
        return value;
    QString number = text.trimmed();
    // Play times are written with the decimal separator of the program's language.
    number.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double parsed = number.toDouble(&ok);
    if (ok && std::isfinite(parsed)) {
        value.number = parsed;
        value.isNumber = true;
    }
    return value;
}

int CompareSortValues(const SortValue& a, const SortValue& b) {
    if (a.isNumber && b.isNumber)
        return a.number < b.number ? -1 : (b.number < a.number ? 1 : 0);
    if (a.isNumber != b.isNumber)
        return a.isNumber ? -1 : 1;
    return QString::compare(a.text, b.text, Qt::CaseInsensitive);
}

} // namespace tavik
