// The extended panel's package check: the findings of the open package in a list, each
// double-click on one that names an announcement selecting it in the main list.
#include "app/frmcheck.h"
#include "service/servicebytes.h"
#include "settings/langtexts.h"
#include "support/editorfixture.h"
#include "util/zelcmd.h"

#include <QLabel>
#include <QRegularExpression>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ServiceBytes;

namespace {

void doubleClick(QTreeWidget* list, QTreeWidgetItem* item) {
    const QPoint at = list->visualItemRect(item).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
}

// Opens the extended panel and clicks its check button.
frmCheck* clickCheck(EditorFixture& editor) {
    QTest::mouseClick(editor.main->cmdExpand(), Qt::LeftButton);
    EXPECT_TRUE(editor.main->cmdCheck()->isVisible());
    QTest::mouseClick(editor.main->cmdCheck(), Qt::LeftButton);
    return editor.main->checkWindow();
}

} // namespace

TEST(CheckWindow, ListsTheFindingsOfTheOpenPackageInTheLanguageOfTheEditor) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    const QString folder = editor.writePackage(
        "Linie7", "Linie 7", {{"0000", "Gong", 400}, {"0001", "Zug", -1}, {"0002", "Gleis", 300}});
    editor.root.write("Data/Linie7/_000001._", ServiceBytes()
                                                   .header("Dienst", "", "", "000001")
                                                   .count(1)
                                                   .sentence("0472", "", {{"0009", 0}}));
    editor.open(folder);
    editor.messages.clear();

    frmCheck* window = clickCheck(editor);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), editor.language.GetLangString(LangText::CheckCaption));
    ReportList* list = window->lsvFindings();
    ASSERT_EQ(list->Count(), 2);
    const QString error = editor.language.GetLangString(LangText::CheckError);
    EXPECT_EQ(list->ListItems(1)->Text(), error);
    EXPECT_EQ(list->ListItems(1)->SubItems(1), QStringLiteral("Package.io"));
    EXPECT_EQ(list->ListItems(1)->SubItems(2), QStringLiteral("INDEX 2 / 0001"));
    EXPECT_EQ(list->ListItems(1)->SubItems(3),
              editor.language.GetLangString(LangText::CheckFirstFinding + 4, "\"Zug\""));
    EXPECT_EQ(list->ListItems(2)->Text(), error);
    EXPECT_EQ(list->ListItems(2)->SubItems(1), QStringLiteral("_000001._"));
    EXPECT_EQ(list->ListItems(2)->SubItems(2), QStringLiteral("0472 / 1 / 0009"));
    // With findings the summary only tells of the loudness once it is measured.
    QTRY_VERIFY_WITH_TIMEOUT(!window->MeasuringLoudness(), 20000);
    EXPECT_EQ(list->Count(), 2);
    EXPECT_FALSE(
        window->lblSummary()->text().contains(editor.language.GetLangString(LangText::CheckClean)));
    EXPECT_TRUE(editor.messages.empty());
}

TEST(CheckWindow, DoubleClickingAFindingSelectsItsAnnouncement) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    const QString folder = editor.writePackage(
        "Linie7", "Linie 7", {{"0000", "Gong", 400}, {"0001", "Zug", 300}, {"0002", "Gleis", 0}});
    editor.open(folder);
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);

    frmCheck* window = clickCheck(editor);
    ASSERT_NE(window, nullptr);
    ReportList* findings = window->lsvFindings();
    ASSERT_EQ(findings->Count(), 1);
    EXPECT_EQ(findings->ListItems(1)->SubItems(2), QStringLiteral("INDEX 3 / 0002"));
    doubleClick(findings, findings->ListItems(1));
    ReportListItem* selected = editor.main->lsvPack()->SelectedItem();
    ASSERT_NE(selected, nullptr);
    EXPECT_EQ(selected->Text(), QStringLiteral("0002"));
}

TEST(CheckWindow, SaysSoWhenThePackageIsCleanAndChecksAfreshOnEveryClick) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    const QString folder =
        editor.writePackage("Linie7", "Linie 7", {{"0000", "Gong", 400}, {"0001", "Zug", 300}});
    editor.open(folder);

    frmCheck* window = clickCheck(editor);
    ASSERT_NE(window, nullptr);
    // The package is clean only once its loudness is measured too.
    QTRY_VERIFY_WITH_TIMEOUT(!window->MeasuringLoudness(), 20000);
    EXPECT_EQ(window->lsvFindings()->Count(), 0);
    EXPECT_TRUE(window->lblSummary()->isVisible());
    const QStringList lines = window->lblSummary()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 2) << window->lblSummary()->text().toStdString();
    EXPECT_EQ(lines[0], editor.language.GetLangString(LangText::CheckClean));
    const QString median =
        QRegularExpression(QStringLiteral("-?[0-9]+\\.[0-9]")).match(lines[1]).captured();
    EXPECT_EQ(lines[1], editor.language.GetLangString(LangText::CheckLoudnessSummary, median,
                                                      QStringLiteral("2")));

    editor.root.write("Data/Linie7/0005.wav", "x");
    QTest::mouseClick(editor.main->cmdCheck(), Qt::LeftButton);
    EXPECT_EQ(editor.main->checkWindow(), window);
    ASSERT_EQ(window->lsvFindings()->Count(), 1);
    EXPECT_EQ(window->lsvFindings()->ListItems(1)->SubItems(1), QStringLiteral("0005.wav"));
    QTRY_VERIFY_WITH_TIMEOUT(!window->MeasuringLoudness(), 20000);
    EXPECT_EQ(window->lsvFindings()->Count(), 1);
    EXPECT_FALSE(
        window->lblSummary()->text().contains(editor.language.GetLangString(LangText::CheckClean)));
}
