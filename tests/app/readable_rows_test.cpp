#include "app/frmmain.h"
#include "support/editorfixture.h"
#include "util/reportlist.h"

#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QMap>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

// How many pixels of a cell stand out clearly from the colour most of it has: its text, when
// the text can be read.
int contrastingPixels(const QImage& cell) {
    QMap<QRgb, int> counts;
    for (int y = 0; y < cell.height(); ++y)
        for (int x = 0; x < cell.width(); ++x)
            ++counts[cell.pixel(x, y)];
    QRgb background = 0;
    int most = -1;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (it.value() > most) {
            most = it.value();
            background = it.key();
        }
    int contrasting = 0;
    for (int y = 0; y < cell.height(); ++y)
        for (int x = 0; x < cell.width(); ++x)
            if (std::abs(qGray(cell.pixel(x, y)) - qGray(background)) > 90)
                ++contrasting;
    return contrasting;
}

QImage cellImage(ReportList* list, int row, int column) {
    QTreeWidgetItem* item = list->ListItems(row);
    const QRect rect = list->visualItemRect(item);
    const int left = list->header()->sectionViewportPosition(column);
    const QRect cell(left, rect.top(), list->columnWidth(column), rect.height());
    return list->viewport()->grab(cell).toImage();
}

} // namespace

TEST(ReadableRows, ASelectedRowWhoseSoundIsMissingCanBeReadInEveryColumn) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("Linie"), QStringLiteral("Linie"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 200},
                             {QStringLiteral("0001"), QStringLiteral("Fehlt"), -1}});
    editor.open(folder);
    editor.main->show();
    ReportList* list = editor.main->lsvPack();
    ASSERT_EQ(list->Count(), 2);
    list->ListItems(2)->SetSelected(true);
    for (const bool focused : {true, false}) {
        if (focused)
            list->setFocus();
        else
            editor.main->findChild<QWidget*>(QStringLiteral("cmdOpen"))->setFocus();
        QCoreApplication::processEvents();
        for (int column = 0; column < 2; ++column)
            EXPECT_GT(contrastingPixels(cellImage(list, 2, column)), 8)
                << "column " << column << (focused ? " with" : " without") << " focus";
    }
}
