// Times the report list: filling 1,000 rows of four columns as the package list is filled,
// moving the last row to the top by neighbour swaps, and sorting by the title column. Prints
// its figures; run by hand from the build folder.
#include "util/listrows.h"
#include "util/modlistview.h"
#include "util/reportlist.h"

#include "benchutil.h"

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tavik;
using tavik::bench::median;
using tavik::bench::report;
using tavik::bench::timeMs;

namespace {

void fill(ReportList& list, int rows) {
    for (int i = 1; i <= rows; ++i) {
        const QString key = QString::number(i).rightJustified(4, '0');
        ReportListItem* row = list.AddItem(key, key);
        row->SetSubItems(1, "Ansage " + QString::number((i * 7919) % rows));
        row->SetTag(key + ".wav");
        row->SetSubItems(2, "wav");
        row->SetSubItems(3, QString::number(i * 0.37, 'f', 2).replace('.', ','));
        if (i % 5 == 0) {
            row->SetForeColor(255);
            row->SetBold(true);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int runs = 7;
    std::vector<double> filling, toTop, sorting;
    for (int r = 0; r < runs; ++r) {
        ReportList list;
        list.AddColumn("Key", 1000);
        list.AddColumn("Titel", 5190.2363);
        list.AddColumn("Format", 900);
        list.AddColumn("Zeit", 900);
        list.resize(640, 480);
        list.show();
        filling.push_back(timeMs([&] { fill(list, 1000); }));
        QApplication::processEvents();
        list.ListItems(1000)->SetSelected(true);
        toTop.push_back(timeMs([&] {
            MoveRowToTop(&list);
            QApplication::processEvents();
        }));
        if (list.ListItems(1)->Key() != "1000")
            std::printf("the last row did not reach the top\n");
        sorting.push_back(timeMs([&] {
            SortListByColumn(&list, 1);
            QApplication::processEvents();
        }));
    }
    report("fill 1,000 rows of 4 columns", runs, filling, 0);
    report("move row 1,000 to the top (999 swaps)", runs, toTop, 1000.0);
    report("sort 1,000 rows by title", runs, sorting, 0);
    return 0;
}
