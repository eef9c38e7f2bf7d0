// The play-time column shows seconds rounded to hundredths; the cell's tool tip gives the
// measured length to the millisecond.
#include "support/editorfixture.h"

#include <QHeaderView>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

TEST(MeasuredLength, ThePlayTimeCellsToolTipIsTheMeasuredLengthInMilliseconds) {
    for (const QString& languageFile :
         {QStringLiteral("Deutsch.lng"), QStringLiteral("English.lng")}) {
        EditorFixture editor(languageFile);
        ASSERT_TRUE(editor.main->FormLoad());
        editor.open(editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                                        {{QStringLiteral("0000"), QStringLiteral("Gong"), 1234},
                                         {QStringLiteral("0001"), QStringLiteral("Zug"), 2007},
                                         {QStringLiteral("0002"), QStringLiteral("Fehlt"), -1}}));
        ReportList* list = editor.main->lsvPack();
        ASSERT_EQ(list->Count(), 3);
        for (int i = 1; i <= 2; ++i)
            EXPECT_EQ(list->ListItems(i)->SubItem(3).ToolTipText(),
                      QStringLiteral("%1 ms").arg(editor.main->table.Announcements[i - 1].Length));
        EXPECT_EQ(list->ListItems(1)->SubItem(3).ToolTipText(), QStringLiteral("1234 ms"));
        // The column itself stays as it was: two rounded decimals.
        EXPECT_EQ(list->ListItems(1)->SubItems(3).size(), 4);
        // A sound that is missing has no play time and no tool tip.
        EXPECT_EQ(list->ListItems(3)->SubItem(3).ToolTipText(), QString());

        // The tool tip is what the list shows when the pointer rests on the cell.
        editor.main->show();
        QTreeWidgetItem* row = list->ListItems(1);
        const QRect cell = list->visualItemRect(row).intersected(
            QRect(list->header()->sectionViewportPosition(3), 0, list->columnWidth(3), 100000));
        ASSERT_FALSE(cell.isEmpty());
        EXPECT_EQ(list->model()->data(list->indexAt(cell.center()), Qt::ToolTipRole).toString(),
                  QStringLiteral("1234 ms"));
    }
}
