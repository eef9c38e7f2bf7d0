#pragma once

#include <QString>

namespace tavik {

// How a list compares the cells of its sort column.
namespace lvw {
inline constexpr int Ascending = 0;
inline constexpr int Descending = 1;
inline constexpr int TextSort = 0;   // every cell as text, without regard to case
inline constexpr int NumberSort = 1; // cells that read as numbers by their value, first
} // namespace lvw

// How the list sorts: whether it does, by which column, which way, as text or by number.
struct ListSortState {
    bool sorted = false;
    int column = 0;
    int order = lvw::Ascending;
    int type = lvw::TextSort;
};

// The sort a choice of `column` leads to from `current`: the column sorted so far the other
// way round, any other column ascending.
ListSortState NextSortState(const ListSortState& current, int column, int type);

// One cell as the sort compares it, read once per sort rather than at every comparison.
struct SortValue {
    QString text;
    double number = 0.0;
    bool isNumber = false;
};

// A play time such as "10,5" or "9.2" and a key such as "0012" read as numbers; with
// TextSort, or when the cell is no number, the cell compares as text.
SortValue MakeSortValue(const QString& text, int sortType);

// Negative, zero or positive as `a` sorts before, with or after `b` in ascending order.
// Numbers come before texts and compare by value; texts compare without regard to case.
int CompareSortValues(const SortValue& a, const SortValue& b);

} // namespace tavik
