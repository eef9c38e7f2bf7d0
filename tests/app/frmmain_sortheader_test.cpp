// Sorting as users know it: a click on a column header sorts by that column and shows Qt's
// sort indicator, a second click turns it round; the sort menu checks the column and the
// direction the list is sorted by, and a new column starts ascending.
#include "app/frmmain.h"
#include "package/clszeldb.h"
#include "package/packagesettings.h"
#include "support/editorfixture.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QTest>
#include <QUndoStack>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

// Four announcements whose keys, titles and play times sort differently as text and as
// numbers: 9.2 s and 10.5 s, keys 0009 and 0010 against 1000.
struct SortEditor : EditorFixture {
    QString folder;
    SortEditor() {
        EXPECT_TRUE(main->FormLoad());
        folder = writePackage(QStringLiteral("p"), QStringLiteral("P"),
                              {{"0010", "bravo", 9200},
                               {"1000", "Alpha", 10500},
                               {"0009", "charlie", 800},
                               {"0100", "Delta", 1500}});
        open(folder);
        messages.clear();
        main->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&*main));
    }
    void clickHeader(int column) {
        QHeaderView* header = main->lsvPack()->header();
        const QPoint middle(header->sectionViewportPosition(column) +
                                header->sectionSize(column) / 2,
                            header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle);
    }
    int indicatorColumn() const { return main->lsvPack()->header()->sortIndicatorSection(); }
    Qt::SortOrder indicatorOrder() const { return main->lsvPack()->header()->sortIndicatorOrder(); }
    // The column entry and the direction entry that are checked ("" for none).
    QString checkedEntries() const {
        QStringList names;
        for (QAction* action : {main->mnuIndex(), main->mnuTitel(), main->mnuFormat(),
                                main->mnuLenght(), main->mnuAscending(), main->mnuDescending()})
            if (action->isChecked())
                names << action->objectName();
        return names.join(u' ');
    }
    QStringList keysOnDisk() const {
        clsZELDB store;
        EXPECT_TRUE(store.OpenIOFile(folder + QStringLiteral("/Package.io")));
        QStringList keys;
        for (const IndexEntry& entry : ReadShownEntries(store))
            keys << entry.Key;
        return keys;
    }
};

} // namespace

TEST(MainWindowSortByHeader, AClickOnAHeaderSortsWithTheIndicatorAndASecondClickReverses) {
    SortEditor editor;
    EXPECT_TRUE(editor.main->lsvPack()->header()->isSortIndicatorShown());
    EXPECT_EQ(editor.indicatorColumn(), -1); // the saved order: no indicator
    editor.clickHeader(1);
    EXPECT_EQ(editor.column(1), (QStringList{"Alpha", "bravo", "charlie", "Delta"}));
    EXPECT_EQ(editor.indicatorColumn(), 1);
    EXPECT_EQ(editor.indicatorOrder(), Qt::AscendingOrder);
    editor.clickHeader(1);
    EXPECT_EQ(editor.column(1), (QStringList{"Delta", "charlie", "bravo", "Alpha"}));
    EXPECT_EQ(editor.indicatorColumn(), 1);
    EXPECT_EQ(editor.indicatorOrder(), Qt::DescendingOrder);
    // Another column starts ascending again.
    editor.clickHeader(2);
    EXPECT_EQ(editor.indicatorColumn(), 2);
    EXPECT_EQ(editor.indicatorOrder(), Qt::AscendingOrder);
}

TEST(MainWindowSortByHeader, HeaderClicksSortPlayTimesAndKeysAsNumbersTheMenuAsText) {
    SortEditor editor;
    editor.clickHeader(3);
    EXPECT_EQ(editor.column(3), (QStringList{"0.8", "1.5", "9.2", "10.5"}));
    editor.clickHeader(0);
    EXPECT_EQ(editor.column(0), (QStringList{"0009", "0010", "0100", "1000"}));
    editor.clickHeader(0);
    EXPECT_EQ(editor.column(0), (QStringList{"1000", "0100", "0010", "0009"}));

    // The sort menu keeps the designed text sort: "10.5" before "9.2".
    editor.main->mnuLenght()->trigger();
    EXPECT_EQ(editor.column(3), (QStringList{"0.8", "1.5", "10.5", "9.2"}));
    EXPECT_EQ(editor.main->lsvPack()->SortType(), lvw::TextSort);
    // A header click on the column the menu sorted turns it round, now by number.
    editor.clickHeader(3);
    EXPECT_EQ(editor.column(3), (QStringList{"10.5", "9.2", "1.5", "0.8"}));
    EXPECT_EQ(editor.main->lsvPack()->SortType(), lvw::NumberSort);
}

TEST(MainWindowSortMenu, ANewColumnStartsAscendingAndTheSameColumnAgainReverses) {
    SortEditor editor;
    editor.main->mnuTitel()->trigger();
    EXPECT_EQ(editor.column(1), (QStringList{"Alpha", "bravo", "charlie", "Delta"}));
    editor.main->mnuTitel()->trigger();
    EXPECT_EQ(editor.column(1), (QStringList{"Delta", "charlie", "bravo", "Alpha"}));
    // Sorted descending by title: a new column still starts ascending.
    editor.main->mnuIndex()->trigger();
    EXPECT_EQ(editor.column(0), (QStringList{"0009", "0010", "0100", "1000"}));
    editor.main->mnuFormat()->trigger();
    EXPECT_EQ(editor.main->lsvPack()->SortOrder(), lvw::Ascending);
}

TEST(MainWindowSortMenu, TheMenuChecksTheColumnAndDirectionOfTheSortHoweverItWasMade) {
    SortEditor editor;
    EXPECT_EQ(editor.checkedEntries(), QString());
    EXPECT_FALSE(editor.main->mnuAscending()->isEnabled());
    for (QAction* action : editor.main->mnuSort()->actions())
        EXPECT_TRUE(action->isSeparator() || action->isCheckable())
            << action->objectName().toStdString();

    editor.main->mnuTitel()->trigger();
    EXPECT_EQ(editor.checkedEntries(), QStringLiteral("mnuTitel mnuAscending"));
    EXPECT_TRUE(editor.main->mnuDescending()->isEnabled());
    editor.main->mnuTitel()->trigger();
    EXPECT_EQ(editor.checkedEntries(), QStringLiteral("mnuTitel mnuDescending"));
    editor.clickHeader(3);
    EXPECT_EQ(editor.checkedEntries(), QStringLiteral("mnuLenght mnuAscending"));

    // The direction entries turn the sort round.
    editor.main->mnuDescending()->trigger();
    EXPECT_EQ(editor.checkedEntries(), QStringLiteral("mnuLenght mnuDescending"));
    EXPECT_EQ(editor.column(3), (QStringList{"10.5", "9.2", "1.5", "0.8"}));
    EXPECT_EQ(editor.indicatorOrder(), Qt::DescendingOrder);

    // A row moved by hand ends the sort: nothing checked, no indicator.
    editor.main->lsvPack()->setCurrentItem(editor.main->lsvPack()->ListItems(2));
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton);
    EXPECT_EQ(editor.checkedEntries(), QString());
    EXPECT_EQ(editor.indicatorColumn(), -1);
    // Undo brings the sort and its checks back.
    editor.main->undoStack()->undo();
    EXPECT_EQ(editor.checkedEntries(), QStringLiteral("mnuLenght mnuDescending"));
    EXPECT_EQ(editor.indicatorColumn(), 3);
}

TEST(MainWindowSortByHeader, AHeaderSortIsOneUndoStepAndSaveWritesTheOrderShown) {
    SortEditor editor;
    const QStringList loaded = editor.column(0);
    editor.clickHeader(3);
    const QStringList sorted = editor.column(0);
    EXPECT_NE(sorted, loaded);
    EXPECT_TRUE(editor.main->isWindowModified());
    EXPECT_EQ(editor.main->undoStack()->count(), 1);
    editor.main->undoStack()->undo();
    EXPECT_EQ(editor.column(0), loaded);
    EXPECT_EQ(editor.indicatorColumn(), -1);
    editor.main->undoStack()->redo();
    EXPECT_EQ(editor.column(0), sorted);

    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.keysOnDisk(), sorted);
    // The reload keeps the number sort and shows the same rows.
    EXPECT_EQ(editor.column(0), sorted);
    EXPECT_EQ(editor.indicatorColumn(), 3);
    EXPECT_FALSE(editor.main->isWindowModified());
}

TEST(MainWindowSortByHeader, AClickWithoutAPackageSortsNothingAndShowsNoIndicator) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&*editor.main));
    QHeaderView* header = editor.main->lsvPack()->header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(1) + 5, header->height() / 2));
    EXPECT_EQ(header->sortIndicatorSection(), -1);
    EXPECT_FALSE(editor.main->lsvPack()->Sorted());
    EXPECT_EQ(editor.main->undoStack()->count(), 0);
    EXPECT_FALSE(editor.main->isWindowModified());
}
