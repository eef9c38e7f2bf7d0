// Loudness in the editor: the check window's warnings and median once the sounds are measured
// away from the window, and the main list's loudness column switched on in the View menu.
#include "app/frmcheck.h"
#include "package/soundloudness.h"
#include "settings/langtexts.h"
#include "support/editorfixture.h"
#include "support/soundfixtures.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::writeLevelSine;

namespace {

// A package of stereo sines at these peaks (each measures as many LUFS).
QString levelPackage(EditorFixture& editor, const QList<double>& peaks) {
    std::vector<EditorFixture::Entry> entries;
    for (qsizetype i = 0; i < peaks.size(); ++i)
        entries.push_back({QStringLiteral("000%1").arg(i), QStringLiteral("Ansage %1").arg(i), 10});
    const QString folder = editor.writePackage("Pegel", "Pegel", entries);
    for (qsizetype i = 0; i < peaks.size(); ++i)
        writeLevelSine(folder + QStringLiteral("/000%1.wav").arg(i), peaks[i], 2, 3.0);
    return folder;
}

} // namespace

TEST(CheckWindowLoudness, AWarningAndTheMedianJoinTheFindingsInTheEditorsLanguage) {
    EditorFixture editor; // German
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    editor.open(levelPackage(editor, {-23.0, -23.0, -23.0, -15.0}));

    QTest::mouseClick(editor.main->cmdExpand(), Qt::LeftButton);
    QTest::mouseClick(editor.main->cmdCheck(), Qt::LeftButton);
    frmCheck* window = editor.main->checkWindow();
    ASSERT_NE(window, nullptr);
    // The click returns before the sounds are measured; the summary says what goes on.
    ASSERT_TRUE(window->MeasuringLoudness());
    EXPECT_TRUE(
        QRegularExpression(QStringLiteral("^Lautheit wird gemessen: [0-4] von 4 Klängen\\.\\.\\.$"))
            .match(window->lblSummary()->text())
            .hasMatch())
        << window->lblSummary()->text().toStdString();
    QTRY_VERIFY_WITH_TIMEOUT(!window->MeasuringLoudness(), 20000);

    ReportList* list = window->lsvFindings();
    ASSERT_EQ(list->Count(), 1);
    EXPECT_EQ(list->ListItems(1)->Text(), editor.language.GetLangString(LangText::CheckWarning));
    EXPECT_EQ(list->ListItems(1)->SubItems(1), QStringLiteral("0003.wav"));
    EXPECT_EQ(list->ListItems(1)->SubItems(2), QStringLiteral("INDEX 4 / 0003"));
    EXPECT_EQ(list->ListItems(1)->SubItems(3),
              QStringLiteral("Die Lautheit liegt mehr als 3 LU vom Median des Pakets entfernt: "
                             "Hörer hören einen Sprung (-15.0 LUFS, 8.0 LU über dem Median von "
                             "-23.0 LUFS)"));
    EXPECT_EQ(window->lblSummary()->text(),
              QStringLiteral("Lautheit: Median -23.0 LUFS über 4 Klänge."));

    // The warning still selects its announcement in the main list.
    const QPoint at = list->visualItemRect(list->ListItems(1)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    ASSERT_NE(editor.main->lsvPack()->SelectedItem(), nullptr);
    EXPECT_EQ(editor.main->lsvPack()->SelectedItem()->Text(), QStringLiteral("0003"));
}

TEST(MainListLoudness, TheColumnShowsEachSoundsLoudnessOnceSwitchedOnAndFollowsTheList) {
    EditorFixture editor{QStringLiteral("English.lng")};
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->show();
    const QString folder = levelPackage(editor, {-23.0, -20.0, -300.0});
    editor.open(folder);
    frmMain& main = *editor.main;
    EXPECT_FALSE(main.LoudnessColumnShown());
    // Off, the column is not there at all (screen readers see the four columns).
    EXPECT_EQ(main.lsvPack()->columnCount(), 4);
    EXPECT_EQ(main.mnuView()->title(), QStringLiteral("&View"));
    ASSERT_TRUE(main.mnuView()->actions().contains(main.mnuLoudness()));

    const auto widths = [&main] {
        int sum = 0;
        for (int c = 0; c < main.lsvPack()->columnCount(); ++c)
            sum += main.lsvPack()->isColumnHidden(c) ? 0 : main.lsvPack()->columnWidth(c);
        return sum;
    };
    const int titleWidth = main.lsvPack()->columnWidth(1);
    const int allWidths = widths();
    main.mnuLoudness()->trigger();
    EXPECT_TRUE(main.LoudnessColumnShown());
    // The title column makes room: the list is no wider than before.
    EXPECT_LT(main.lsvPack()->columnWidth(1), titleWidth);
    EXPECT_EQ(widths(), allWidths);
    EXPECT_TRUE(main.mnuLoudness()->isChecked());
    EXPECT_EQ(main.lsvPack()->headerItem()->text(4), QStringLiteral("Loudness"));
    QTRY_VERIFY_WITH_TIMEOUT(!main.MeasuringListLoudness(), 20000);
    EXPECT_EQ(editor.column(4), (QStringList{"-23.0", "-20.0", "-inf"}));
    EXPECT_EQ(main.lsvPack()->ListItems(2)->SubItem(4).ToolTipText(),
              QStringLiteral("Integrated loudness -20.0 LUFS, true peak -20.0 dBTP"));

    // A changed sound and the list loaded again: the column follows.
    writeLevelSine(folder + QStringLiteral("/0001.wav"), -26.0, 2, 2.0);
    main.lsvPack()->ClearItems();
    editor.open(folder);
    QTRY_VERIFY_WITH_TIMEOUT(!main.MeasuringListLoudness(), 20000);
    EXPECT_EQ(editor.column(4), (QStringList{"-23.0", "-26.0", "-inf"}));
    EXPECT_EQ(widths(), allWidths); // the load's title width made room again

    main.mnuLoudness()->trigger();
    EXPECT_FALSE(main.LoudnessColumnShown());
    EXPECT_EQ(main.lsvPack()->columnCount(), 4);
    EXPECT_EQ(main.lsvPack()->columnWidth(1), titleWidth);
    EXPECT_FALSE(main.MeasuringListLoudness());
}
