#pragma once

#include <QString>

namespace tavik {

// True when the marker at `markerPos` of an RTF line lies inside a double-quoted text: an odd
// number of double quotes stands before it.
bool MarkerInsideQuotes(const QString& line, qsizetype markerPos);

struct LineHighlightResult {
    QString rtf;
    // Number of RTF lines walked; the undo of a temporary colouring starts its search there.
    qsizetype linesWalked = 0;
};

// The line pass's text edit: in every RTF line holding `marker` outside a double-quoted text,
// a background highlight with colour index `index` runs from the marker to the line end.
LineHighlightResult HighlightLines(const QString& rtf, const QString& marker, int index);

} // namespace tavik
