#include "colortable.h"

#include "rtfdocument.h"
#include "util/conversions.h"
#include "util/vbstrings.h"

#include <algorithm>

namespace tavik {

namespace {

int component(const QStringList& pieces, qsizetype index, qsizetype nameLength) {
    if (index >= pieces.size())
        return 0;
    // RGB() takes values above 255 as 255.
    return static_cast<int>(std::clamp(Val(pieces[index].mid(nameLength)), 0.0, 255.0));
}

} // namespace

QList<quint32> ReadColorTable(const QString& rtf) {
    QList<quint32> table{0};
    const qsizetype p = rtf.indexOf(QStringLiteral("{\\colortbl"));
    if (p < 0)
        return table;
    const qsizetype q = rtf.indexOf(u'}', p);
    if (q < 0)
        return table;
    const QStringList entries = Split(rtf.mid(p, q - p + 1), QStringLiteral(";"));
    // The first piece is the control word, the last the closing brace.
    for (qsizetype i = 1; i + 1 < entries.size(); ++i) {
        QString entry = entries[i];
        if (entry.isEmpty())
            continue;
        if (entry.startsWith(u'\\'))
            entry.remove(0, 1);
        const QStringList pieces = Split(entry, QStringLiteral("\\"));
        table.append(
            WinRgb(component(pieces, 0, 3), component(pieces, 1, 5), component(pieces, 2, 4)));
    }
    return table;
}

int ColorIndex(const QList<quint32>& table, quint32 color) {
    const qsizetype at = table.indexOf(color);
    return at > 0 ? static_cast<int>(at) : -1;
}

} // namespace tavik
