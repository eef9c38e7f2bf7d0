// Assistive technology reads the package list row by row and cell by cell.
#include "support/editorfixture.h"

#include <QAccessible>
#include <QAccessibleTableInterface>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

TEST(ReportListAccessibility, ThePackageListExposesItsRowsAndCells) {
    EditorFixture editor;
    const QString folder =
        editor.writePackage(QStringLiteral("p"), QStringLiteral("P"),
                            {{QStringLiteral("0000"), QStringLiteral("Erste"), 200},
                             {QStringLiteral("0001"), QStringLiteral("Zweite"), 300},
                             {QStringLiteral("0002"), QStringLiteral("Dritte"), -1}});
    ASSERT_TRUE(editor.main->FormLoad());
    editor.open(folder);
    editor.main->show();
    ReportList* list = editor.main->lsvPack();
    ASSERT_EQ(list->Count(), 3);

    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(list);
    ASSERT_NE(access, nullptr);
    EXPECT_FALSE(access->text(QAccessible::Name).isEmpty());
    QAccessibleTableInterface* table = access->tableInterface();
    ASSERT_NE(table, nullptr);
    ASSERT_EQ(table->rowCount(), 3);
    ASSERT_EQ(table->columnCount(), 4);
    for (int column = 0; column < 4; ++column) {
        const QStringList expected = editor.column(column);
        EXPECT_EQ(table->columnDescription(column), list->headerItem()->text(column));
        for (int row = 0; row < 3; ++row) {
            QAccessibleInterface* cell = table->cellAt(row, column);
            ASSERT_NE(cell, nullptr) << row << "," << column;
            EXPECT_EQ(cell->text(QAccessible::Name), expected[row]) << row << "," << column;
            ASSERT_NE(cell->tableCellInterface(), nullptr);
            EXPECT_EQ(cell->tableCellInterface()->rowIndex(), row);
            EXPECT_EQ(cell->tableCellInterface()->columnIndex(), column);
        }
    }

    list->ListItems(2)->SetSelected(true);
    EXPECT_EQ(table->selectedRows(), QList<int>{1});
    EXPECT_TRUE(table->cellAt(1, 1)->state().selected);
    EXPECT_FALSE(table->cellAt(0, 1)->state().selected);
}
