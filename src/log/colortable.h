#pragma once

#include <QList>
#include <QString>

namespace tavik {

// The colours of an RTF text's colour table as Windows colour values: element 0 stands for
// the auto colour (value 0), element k for colour index k. Without a table only the auto
// element is there.
QList<quint32> ReadColorTable(const QString& rtf);

// The RTF colour index of `color` in `table`; -1 when it is not there. The auto colour is
// never an index to use, so a match on element 0 counts as absent.
int ColorIndex(const QList<quint32>& table, quint32 color);

} // namespace tavik
