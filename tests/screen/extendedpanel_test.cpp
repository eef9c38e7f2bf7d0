#include "screen/screenfixture.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QHeaderView>
#include <QScrollBar>

using namespace tavik;
using namespace tavik::test;

namespace {

// The list's and the panel's rectangles in the main window's coordinates.
QRect inWindow(const QWidget* widget, const QWidget* window) {
    return QRect(widget->mapTo(window, QPoint(0, 0)), widget->size());
}

void expectPanelBesideTheList(ScreenFixture& f) {
    const QRect list = inWindow(f.main->lsvPack(), f.main.get());
    const QRect panel = inWindow(f.main->picExpand(), f.main.get());
    EXPECT_FALSE(list.intersects(panel)) << "list " << list.x() << "+" << list.width() << ", panel "
                                         << panel.x() << "+" << panel.width();
    EXPECT_LE(list.right(), panel.left());
    EXPECT_TRUE(f.main->rect().contains(panel)) << "the panel is cut off by the window's edge";
}

// The right edge of the play-time column inside the list's visible area.
bool playTimeColumnShows(const ReportList* list) {
    const QHeaderView* header = list->header();
    const int right = header->sectionViewportPosition(3) + header->sectionSize(3);
    return right <= list->viewport()->width();
}

} // namespace

TEST(ExtendedPanel, OpeningItWidensTheWindowSoThePlayTimeColumnStaysInSight) {
    ScreenFixture f;
    f.start();
    ASSERT_TRUE(playTimeColumnShows(f.main->lsvPack()));
    const int listWidth = f.main->lsvPack()->width();

    QTest::mouseClick(f.main->cmdExpand(), Qt::LeftButton);
    ScreenFixture::settle();
    ASSERT_TRUE(f.main->picExpand()->isVisible());
    expectPanelBesideTheList(f);
    EXPECT_TRUE(playTimeColumnShows(f.main->lsvPack()));
    EXPECT_GE(f.main->lsvPack()->width(), listWidth);
    expectOnScreen(f.main->frameGeometry(), f.available(), "main window");
}

TEST(ExtendedPanel, ClosingItGivesTheWindowItsWidthBack) {
    ScreenFixture f;
    f.start();
    const QSize before = f.main->size();
    QTest::mouseClick(f.main->cmdExpand(), Qt::LeftButton);
    ScreenFixture::settle();
    ASSERT_GT(f.main->width(), before.width());
    QTest::mouseClick(f.main->cmdUnexpand(), Qt::LeftButton);
    ScreenFixture::settle();
    EXPECT_FALSE(f.main->picExpand()->isVisible());
    EXPECT_EQ(f.main->size(), before);
    EXPECT_TRUE(f.main->cmdExpand()->isEnabled());
}

TEST(ExtendedPanel, NearTheRightEdgeTheWiderWindowMovesLeftOntoTheScreen) {
    ScreenFixture f;
    f.start();
    const QRect area = f.available();
    f.moveMain(QPoint(area.right() + 1 - f.main->frameGeometry().width(), area.top() + 40));
    ASSERT_TRUE(area.contains(f.main->frameGeometry()));
    QTest::mouseClick(f.main->cmdExpand(), Qt::LeftButton);
    ScreenFixture::settle();
    expectPanelBesideTheList(f);
    expectOnScreen(f.main->frameGeometry(), area, "main window");
}

TEST(ExtendedPanel, AWindowAsWideAsTheScreenKeepsItsWidthAndItsList) {
    ScreenFixture f;
    f.start();
    const QRect area = f.available();
    const QMargins frame(f.main->geometry().left() - f.main->frameGeometry().left(),
                         f.main->geometry().top() - f.main->frameGeometry().top(),
                         f.main->frameGeometry().right() - f.main->geometry().right(),
                         f.main->frameGeometry().bottom() - f.main->geometry().bottom());
    f.main->resize(area.width() - frame.left() - frame.right(), f.main->height());
    f.moveMain(area.topLeft());
    const int width = f.main->width();

    QTest::mouseClick(f.main->cmdExpand(), Qt::LeftButton);
    ScreenFixture::settle();
    ASSERT_TRUE(f.main->picExpand()->isVisible());
    expectPanelBesideTheList(f);
    expectOnScreen(f.main->frameGeometry(), area, "main window");
    EXPECT_EQ(f.main->width(), width);
}

TEST(ExtendedPanel, ASmallerWindowNeverPutsThePanelOverTheList) {
    ScreenFixture f;
    f.start();
    QTest::mouseClick(f.main->cmdExpand(), Qt::LeftButton);
    ScreenFixture::settle();
    // Dragged back down to its smallest size while the panel is open.
    f.main->resize(f.main->MinWidth(), f.main->MinHeight());
    ScreenFixture::settle();
    expectPanelBesideTheList(f);
}

// Run on a screen too narrow for the window and the panel side by side.
TEST(SmallScreen, TheListGivesWayWhenTheWindowCannotGrow) {
    ScreenFixture f;
    f.start(QPoint(0, 0));
    const QRect area = f.available();
    const int panelWidth = f.main->picExpand()->sizeHint().width();
    ASSERT_GT(f.main->frameGeometry().width() + panelWidth, area.width())
        << "the screen is wide enough for both; run this on a narrow one";
    const int listWidth = f.main->lsvPack()->width();

    QTest::mouseClick(f.main->cmdExpand(), Qt::LeftButton);
    ScreenFixture::settle();
    ASSERT_TRUE(f.main->picExpand()->isVisible());
    expectPanelBesideTheList(f);
    expectOnScreen(f.main->frameGeometry(), area, "main window");
    EXPECT_LT(f.main->lsvPack()->width(), listWidth);
    // Every column stays reachable: in sight, or by scrolling the list sideways.
    const ReportList* list = f.main->lsvPack();
    const int hidden = list->header()->length() - list->viewport()->width();
    EXPECT_TRUE(hidden <= 0 || list->horizontalScrollBar()->maximum() >= hidden)
        << "columns " << list->header()->length() << ", viewport " << list->viewport()->width();
}
