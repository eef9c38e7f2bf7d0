#pragma once

#include "util/reportlist.h"

#include <QString>

namespace tavik::test {

// A four-column list like the package list: key, title, format, play time. Row n carries
// data of its own in every field, so a moved row can be told from the rows it passed.
inline void fillPackageList(ReportList& list, int rows) {
    list.AddColumn("Key", 1000);
    list.AddColumn("Titel", 5430.6143);
    list.AddColumn("Format", 900);
    list.AddColumn("Zeit", 900);
    for (int n = 1; n <= rows; ++n) {
        const QString key = QString::number(n).rightJustified(4, '0');
        ReportListItem* row = list.AddItem(key, key);
        row->SetTag("C:\\Pack\\" + key + ".wav");
        row->SetToolTipText("tip " + key);
        row->SetBold(n % 2 == 0);
        row->SetForeColor(static_cast<quint32>(n) * 0x010203u);
        row->SetChecked(n % 3 == 0);
        row->SetGhosted(n % 4 == 0);
        row->SetIcon(n);
        row->SetSmallIcon(QString("small" + key));
        for (int j = 1; j <= 3; ++j) {
            ReportListSubItem sub = row->SubItem(j);
            sub.SetText(QStringLiteral("r%1c%2").arg(n).arg(j));
            sub.SetKey(QStringLiteral("k%1").arg(j));
            sub.SetTag(QStringLiteral("t%1.%2").arg(n).arg(j));
            sub.SetToolTipText(QStringLiteral("tt%1.%2").arg(n).arg(j));
            sub.SetBold((n + j) % 2 == 0);
            sub.SetForeColor(static_cast<quint32>(n * 16 + j));
            sub.SetReportIcon(n * 10 + j);
        }
    }
}

} // namespace tavik::test
