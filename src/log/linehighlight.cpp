#include "linehighlight.h"

#include "util/vbstrings.h"

namespace tavik {

bool MarkerInsideQuotes(const QString& line, qsizetype markerPos) {
    if (!line.contains(u'"'))
        return false;
    const QString before = line.left(markerPos);
    if (!before.contains(u'"'))
        return false;
    // Splitting at n quotes gives the highest index n.
    return before.count(u'"') % 2 == 1;
}

LineHighlightResult HighlightLines(const QString& rtf, const QString& marker, int index) {
    static const QString kLineEnd = QStringLiteral("\r\n");
    QStringList lines = Split(rtf, kLineEnd);
    const QString open = QStringLiteral("\\highlight%1 ").arg(index);
    const QString close = QStringLiteral("\\highlight0 ");
    for (QString& line : lines) {
        if (line.startsWith(QStringLiteral("\\par \\'af")))
            continue;
        const qsizetype k = marker.isEmpty() ? -1 : line.indexOf(marker);
        if (k < 0 || MarkerInsideQuotes(line, k))
            continue;
        line = line.left(k) + open + line.mid(k) + close;
    }
    return {lines.join(kLineEnd), lines.size()};
}

} // namespace tavik
