// The search box above the package list: typing filters rows by key or title without case or
// accents, "n of N" counts them, Escape clears, moves rest while rows are hidden, and Save
// writes the whole list in its order whatever the filter shows.
#include "app/frmmain.h"
#include "app/listfilterbar.h"
#include "package/clszeldb.h"
#include "package/packagesettings.h"
#include "support/editorfixture.h"
#include "util/conversions.h"
#include "util/zelcmd.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

struct FilteredPackage {
    EditorFixture editor{QStringLiteral("English.lng")};
    QString folder;

    FilteredPackage() {
        folder = editor.writePackage(QStringLiteral("Linie7"), QStringLiteral("Linie 7"),
                                     {{QStringLiteral("0000"), QStringLiteral("Gong"), 20},
                                      {QStringLiteral("0001"), QStringLiteral("Gleis 7"), 20},
                                      {QStringLiteral("0002"), QStringLiteral("Zürich Hbf"), 20},
                                      {QStringLiteral("0003"), QStringLiteral("GLEIS 17"), 20},
                                      {QStringLiteral("0004"), QStringLiteral("Abfahrt"), 20}});
        EXPECT_TRUE(editor.main->FormLoad());
        editor.main->show();
        editor.open(folder);
    }
    ListFilterBar* bar() const { return editor.main->filterBar(); }
    void type(const QString& text) {
        QLineEdit* box = bar()->box();
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Backspace);
        QTest::keyClicks(box, text);
    }
    // The keys of the rows the user sees, top to bottom.
    QStringList shownKeys() const {
        QStringList keys;
        ReportList* list = editor.main->lsvPack();
        for (int i = 1; i <= list->Count(); ++i) {
            if (!list->ListItems(i)->isHidden())
                keys << list->ListItems(i)->Text();
        }
        return keys;
    }
};

} // namespace

TEST(ListFilter, TypingShowsTheRowsWhoseKeyOrTitleHoldTheTextWithoutCaseOrAccents) {
    FilteredPackage p;
    p.type(QStringLiteral("gleis 7"));
    EXPECT_EQ(p.shownKeys(), (QStringList{"0001"}));
    EXPECT_EQ(p.bar()->countLabel()->text(), QStringLiteral("1 of 5"));
    p.type(QStringLiteral("gleis"));
    EXPECT_EQ(p.shownKeys(), (QStringList{"0001", "0003"}));
    EXPECT_EQ(p.bar()->countLabel()->text(), QStringLiteral("2 of 5"));
    p.type(QStringLiteral("zurich"));
    EXPECT_EQ(p.shownKeys(), (QStringList{"0002"}));
    p.type(QStringLiteral("0004"));
    EXPECT_EQ(p.shownKeys(), (QStringList{"0004"}));
    p.type(QStringLiteral("kein"));
    EXPECT_TRUE(p.shownKeys().isEmpty());
    EXPECT_EQ(p.bar()->countLabel()->text(), QStringLiteral("0 of 5"));
}

TEST(ListFilter, CtrlFGoesToTheBoxAndEscapeClearsItAndShowsEveryRow) {
    FilteredPackage p;
    p.editor.main->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(p.editor.main.get()));
    p.editor.main->lsvPack()->setFocus();
    QTest::keyClick(p.editor.main->lsvPack(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(p.bar()->box()->hasFocus());
    QTest::keyClicks(p.bar()->box(), QStringLiteral("Gong"));
    EXPECT_EQ(p.shownKeys(), (QStringList{"0000"}));
    QTest::keyClick(p.bar()->box(), Qt::Key_Escape);
    EXPECT_TRUE(p.bar()->box()->text().isEmpty());
    EXPECT_EQ(p.shownKeys().size(), 5);
    EXPECT_TRUE(p.bar()->countLabel()->text().isEmpty());
}

TEST(ListFilter, MovesRestWhileRowsAreHiddenAndSayWhy) {
    FilteredPackage p;
    ASSERT_TRUE(p.editor.main->cmdUp()->isEnabled());
    const QString ownTip = p.editor.main->cmdUp()->toolTip();
    p.type(QStringLiteral("gleis"));
    for (zelcmd* button : {p.editor.main->cmdUp(), p.editor.main->cmdDown(),
                           p.editor.main->cmdFUp(), p.editor.main->cmdFDown()}) {
        EXPECT_FALSE(button->isEnabled()) << button->objectName().toStdString();
        EXPECT_TRUE(button->toolTip().contains(QStringLiteral("filter")))
            << button->toolTip().toStdString();
    }
    // The move itself is refused too, however it is asked for.
    ReportList* list = p.editor.main->lsvPack();
    list->ListItems(4)->SetSelected(true);
    p.editor.main->cmdFUp_Click();
    EXPECT_EQ(p.editor.column(0), (QStringList{"0000", "0001", "0002", "0003", "0004"}));
    // A filter that hides nothing does not stop them.
    p.type(QStringLiteral("0"));
    EXPECT_TRUE(p.editor.main->cmdUp()->isEnabled());
    EXPECT_EQ(p.editor.main->cmdUp()->toolTip(), ownTip);
}

TEST(ListFilter, SaveWritesTheWholeListInItsOrderWhateverTheFilterShows) {
    FilteredPackage p;
    ReportList* list = p.editor.main->lsvPack();
    list->ListItems(5)->SetSelected(true);
    p.editor.main->cmdFUp_Click();
    const QStringList order{"0004", "0000", "0001", "0002", "0003"};
    ASSERT_EQ(p.editor.column(0), order);
    p.type(QStringLiteral("gleis"));
    ASSERT_EQ(p.shownKeys(), (QStringList{"0001", "0003"}));
    QTest::mouseClick(p.editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(EditorFixture::savedKeys(p.folder), order);
    // The reload after the save keeps the filter on the new rows.
    EXPECT_EQ(p.shownKeys(), (QStringList{"0001", "0003"}));
    EXPECT_EQ(p.editor.column(0), order);
}

TEST(ListFilter, AHiddenRowIsNeverTheSelectedOne) {
    FilteredPackage p;
    ReportList* list = p.editor.main->lsvPack();
    list->ListItems(1)->SetSelected(true);
    p.type(QStringLiteral("gleis"));
    EXPECT_EQ(list->SelectedItem(), nullptr);
}

TEST(ListFilter, RowsThatArriveWhileAFilterIsTypedAreFilteredToo) {
    FilteredPackage p;
    p.type(QStringLiteral("abfahrt"));
    ASSERT_EQ(p.shownKeys(), (QStringList{"0004"}));
    ReportList* list = p.editor.main->lsvPack();
    ReportListItem* row = list->AddItem(QStringLiteral("0005"));
    row->SetSubItems(1, QStringLiteral("Gleis 5"));
    ReportListItem* other = list->AddItem(QStringLiteral("0006"));
    other->SetSubItems(1, QStringLiteral("Abfahrt Süd"));
    QTest::qWait(50);
    EXPECT_EQ(p.shownKeys(), (QStringList{"0004", "0006"}));
    EXPECT_EQ(p.bar()->countLabel()->text(), QStringLiteral("2 of 7"));
}
