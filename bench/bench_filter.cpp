// Times the search box above the package list: each key stroke of "gleis 7" typed and taken
// back again, on lists of 1,000, 10,000 and 30,000 announcements, shown on screen. The
// reference is a bare filter in the same run: a plain QTreeWidget whose rows are hidden by a
// case-insensitive QString::contains, which knows no accents. Run by hand from the build folder
// (`bench/bench_filter`); BENCH_SIZES="1000 10000" chooses the sizes.
#include "app/listfilterbar.h"
#include "util/reportlist.h"

#include "benchutil.h"

#include <QApplication>
#include <QLineEdit>
#include <QTreeWidget>
#include <cstdio>
#include <vector>

using namespace tavik;
using tavik::bench::median;
using tavik::bench::timeMs;

namespace {

const char* const kPlaces[] = {"Zürich Hbf", "Gleis", "Bahnsteig",  "Abfahrt",  "Ankunft",
                               "Orléans",    "Köln",  "Verspätung", "Einfahrt", "Hinweis"};

QString titleOf(int i) {
    return QString::fromUtf8(kPlaces[i % 10]) + u' ' + QString::number(i % 23) +
           QStringLiteral(" Linie ") + QString::number(i % 97);
}

// The key strokes of "gleis 7" and the back spaces after them.
QStringList strokes() {
    const QString word = QStringLiteral("gleis 7");
    QStringList texts;
    for (int i = 1; i <= word.size(); ++i)
        texts << word.left(i);
    for (int i = word.size() - 1; i >= 0; --i)
        texts << word.left(i);
    return texts;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen")
                                                                    : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    QList<int> sizes{1000, 10000, 30000};
    if (!qEnvironmentVariableIsEmpty("BENCH_SIZES")) {
        sizes.clear();
        for (const QString& s : qEnvironmentVariable("BENCH_SIZES").split(u' ', Qt::SkipEmptyParts))
            sizes << s.toInt();
    }
    std::printf("%-8s %12s %12s %12s %12s %8s\n", "rows", "editor med", "editor max", "bare med",
                "bare max", "ratio");
    for (const int rows : sizes) {
        ReportList list;
        list.AddColumn(QStringLiteral("Key"), 1000);
        list.AddColumn(QStringLiteral("Title"), 5000);
        for (int i = 0; i < rows; ++i) {
            ReportListItem* row = list.AddItem(QString::number(i).rightJustified(4, u'0'));
            row->SetSubItems(1, titleOf(i));
        }
        ListFilterBar bar(&list, nullptr);
        list.resize(640, 480);
        list.show();
        bar.show();
        QApplication::processEvents();

        QTreeWidget bare;
        bare.setColumnCount(2);
        QList<QTreeWidgetItem*> items;
        for (int i = 0; i < rows; ++i)
            items << new QTreeWidgetItem(
                QStringList{QString::number(i).rightJustified(4, u'0'), titleOf(i)});
        bare.addTopLevelItems(items);
        bare.resize(640, 480);
        bare.show();
        QApplication::processEvents();

        std::vector<double> editor, reference;
        for (int round = 0; round < 3; ++round) {
            for (const QString& text : strokes()) {
                editor.push_back(timeMs([&] {
                    bar.box()->setText(text);
                    QApplication::processEvents();
                }));
                reference.push_back(timeMs([&] {
                    for (int r = 0; r < bare.topLevelItemCount(); ++r) {
                        QTreeWidgetItem* row = bare.topLevelItem(r);
                        const bool match = text.isEmpty() ||
                                           row->text(0).contains(text, Qt::CaseInsensitive) ||
                                           row->text(1).contains(text, Qt::CaseInsensitive);
                        if (row->isHidden() == match)
                            row->setHidden(!match);
                    }
                    QApplication::processEvents();
                }));
            }
        }
        const double em = median(editor), rm = median(reference);
        std::printf("%-8d %9.2f ms %9.2f ms %9.2f ms %9.2f ms %7.2fx%s\n", rows, em,
                    *std::max_element(editor.begin(), editor.end()), rm,
                    *std::max_element(reference.begin(), reference.end()), em / rm,
                    rows == 10000 ? (*std::max_element(editor.begin(), editor.end()) < 50
                                         ? "  (every stroke under 50 ms)"
                                         : "  (A STROKE TOOK 50 ms OR MORE)")
                                  : "");
    }
    return 0;
}
