#pragma once

#include <QtGlobal>
#include <algorithm>

namespace tavik {

// The place scroll bar of the properties dialog steps through the places of the list, 1 to
// its length. A vertical scroll bar's upper arrow lowers its value, so the bar runs from
// -last to -1 and the place is the value negated: the upper arrow gives a larger place.
struct PlaceSteps {
    int listLength = 0;

    int lastPlace() const { return qMax(1, listLength); }
    int minimumValue() const { return -lastPlace(); }
    int maximumValue() const { return -1; }
    static qint64 placeOf(int value) { return -static_cast<qint64>(value); }
    // Where the bar stands for a place; a place outside the list stands at the nearer end.
    int valueOf(qint64 place) const {
        return static_cast<int>(-std::clamp<qint64>(place, 1, lastPlace()));
    }
    // Whether a place names a position of the list; others are kept but marked.
    bool inList(qint64 place) const { return place >= 1 && place <= listLength; }
};

} // namespace tavik
