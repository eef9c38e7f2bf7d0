// The service editor window: opening and closing it, its pages and the service page.
#include "package/packagefolder.h"
#include "service/dienstfixture.h"
#include "service/serviceeditorrules.h"
#include "settings/windowtexts.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QClipboard>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::columnTexts;
using tavik::test::DienstHost;
using tavik::test::doubleClick;
using tavik::test::press;
using Entry = DienstHost::Entry;

namespace {

// Places 1, 2 and 2, one without a place and one with place 7.
std::vector<Entry> station() {
    return {
        {"0000", "Gong", 120, 255, true, 1},
        {"0001", "Achtung an Gleis 1", 80, 0, true, 2},
        {"0002", "Bahnsteig", 80},
        {"0003", "Einfahrt", 80, 0, true, 2},
        {"0004", "Zug nach Berlin", 80, 0, true, 7},
    };
}

// Adds a sentence with the new-entry button and keeps it with the sentence page's save.
QString addSentence(frmDienst* editor) {
    editor->cmdAdd()->click();
    const QString key = editor->lsvDienst()->ListItems(editor->lsvDienst()->Count())->Text();
    press(editor, editor->cmdSave());
    return key;
}

} // namespace

TEST(frmDienst, TheServiceButtonOpensTheEditorAndDisablesTheMainWindowButNotTheEditor) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(editor->isWindow());
    EXPECT_EQ(editor->parentWidget(), host.main.get());
    EXPECT_FALSE(host.main->isEnabled());
    EXPECT_FALSE(host.main->cmdOpen()->isEnabled());
    EXPECT_TRUE(editor->isEnabled());
    EXPECT_TRUE(editor->cmdAdd()->isEnabled());

    // The editor takes real clicks while its owner is disabled.
    QTest::mouseClick(editor->cmdAdd(), Qt::LeftButton);
    EXPECT_EQ(editor->lsvDienst()->Count(), 1);
}

TEST(frmDienst, ClosingEnablesTheMainWindowAgainAndTheNextOpeningMakesAFreshEditor) {
    DienstHost host(station());
    QPointer<frmDienst> first = host.openEditor();
    ASSERT_TRUE(first);
    first->cmdAdd()->click();
    first->mnuClose()->trigger();
    EXPECT_TRUE(host.main->isEnabled());
    EXPECT_TRUE(host.main->cmdOpen()->isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([&] { return first.isNull(); }, 2000));
    EXPECT_EQ(host.main->serviceEditor(), nullptr);

    frmDienst* second = host.openEditor();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->lsvDienst()->Count(), 0);
    EXPECT_EQ(second->SatzCount(), 0);
}

TEST(frmDienst, LabelsItselfFromTheLanguageFileAndKeepsItsTextBoxes) {
    DienstHost host(station(), QStringLiteral("English.lng"));
    frmDienst* editor = host.openEditor();
    EXPECT_EQ(editor->windowTitle(), QStringLiteral("Service editor[*]"));
    EXPECT_EQ(editor->findChild<QLabel*>(QStringLiteral("lblTitle"))->text(),
              QStringLiteral("Service na&me:"));
    EXPECT_EQ(editor->cmdAdd()->toolTip(), QStringLiteral("New entry"));
    EXPECT_EQ(editor->cmdAdd()->text(), QString());
    EXPECT_EQ(editor->fraSource()->title(), QStringLiteral("Choices"));
    EXPECT_EQ(editor->mnuClose()->text(), QStringLiteral("Close"));
    EXPECT_EQ(editor->txtID()->text(), QStringLiteral("000000"));
    // The tab strip takes numbered texts, not a control key.
    EXPECT_EQ(editor->ridDienst()->tabText(0), QStringLiteral("Properties"));
    EXPECT_EQ(editor->ridDienst()->tabText(2), QStringLiteral("Sentence"));
}

TEST(frmDienst, EveryControlTheLanguageFilesNameIsAControlOfTheEditor) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    int listed = 0;
    for (const WindowTexts& window : LocalisedWindows()) {
        if (QLatin1StringView(window.window) != QLatin1StringView("frmDienst"))
            continue;
        for (const char* name : window.controls) {
            EXPECT_NE(editor->findChild<QObject*>(QString::fromLatin1(name)), nullptr) << name;
            ++listed;
        }
    }
    EXPECT_EQ(listed, 35);
    EXPECT_EQ(editor->findChildren<QWidget*>(QStringLiteral("picTab")).size(), 4);
    EXPECT_EQ(editor->findChildren<QLineEdit*>(QStringLiteral("txtInfo")).size(), 2);
    EXPECT_EQ(editor->Timer1()->interval(), 100);
    EXPECT_TRUE(editor->Timer1()->isActive());
}

TEST(frmDienst, ListsEveryAnnouncementWithASoundInTableOrderWithItsColour) {
    DienstHost host(
        {{"0000", "Gong", 80, 255}, {"0001", "Ohne Datei", -1}, {"0002", "Einfahrt", 80}});
    frmDienst* editor = host.openEditor();
    EXPECT_EQ(columnTexts(editor->lsvSource()), (QStringList{"Gong", "Einfahrt"}));
    EXPECT_EQ(editor->lsvSource()->ListItems(1)->ForeColor(), 255u);
    EXPECT_EQ(editor->lsvSource()->ListItems(2)->Tag(), QStringLiteral("2"));
    EXPECT_EQ(editor->List1()->count(), 2);
    EXPECT_EQ(editor->List1()->item(1)->text(), QStringLiteral("Einfahrt"));
}

TEST(frmDienst, TheSourceColumnNarrowsOnceTheEighthAnnouncementIsListed) {
    std::vector<Entry> seven, eight;
    for (int i = 0; i < 8; ++i) {
        const Entry e{FormatKey(i), QStringLiteral("Ansage %1").arg(i), 40};
        if (i < 7)
            seven.push_back(e);
        eight.push_back(e);
    }
    DienstHost few(seven);
    EXPECT_EQ(few.openEditor()->lsvSource()->ColumnWidth(1), 4605.0);
    DienstHost more(eight);
    EXPECT_EQ(more.openEditor()->lsvSource()->ColumnWidth(1), 4365.0);
}

TEST(frmDienst, TheTabsShowTheirPagesAndThePropertiesPageHasNoMenuOfItsOwn) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    EXPECT_EQ(editor->CurrentPage(), 1);
    QTabBar* tabs = editor->ridDienst();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
    EXPECT_EQ(editor->CurrentPage(), 2);
    EXPECT_TRUE(editor->picTab(2)->isVisible());
    EXPECT_FALSE(editor->picTab(1)->isVisible());
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
    EXPECT_EQ(editor->CurrentPage(), 0);

    editor->mnuOpen()->trigger();
    EXPECT_EQ(editor->CurrentPage(), 3);
    EXPECT_FALSE(editor->mnuNew()->isEnabled());
    EXPECT_FALSE(editor->mnuOpen()->isEnabled());
    EXPECT_FALSE(editor->mnuSave()->isEnabled());
    editor->cmdAbbr()->click();
    EXPECT_EQ(editor->CurrentPage(), 1);
    EXPECT_TRUE(editor->mnuNew()->isEnabled());
    EXPECT_TRUE(editor->mnuOpen()->isEnabled());
    EXPECT_TRUE(editor->mnuSave()->isEnabled());
}

TEST(frmDienst, CancellingANewSentenceLeavesTheListAsBeforeAndItsKeyStaysTaken) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    const QString kept = addSentence(editor);
    const QStringList before = columnTexts(editor->lsvDienst());

    editor->cmdAdd()->click();
    const QString cancelled = editor->lsvDienst()->ListItems(2)->Text();
    EXPECT_TRUE(editor->NewSatzPending);
    EXPECT_EQ(editor->CurrentPage(), 2);
    editor->cmdCancel()->click();
    EXPECT_FALSE(editor->NewSatzPending);
    EXPECT_EQ(editor->CurrentPage(), 1);
    EXPECT_EQ(columnTexts(editor->lsvDienst()), before);
    // The cancelled record stays in memory, so its key is not handed out again.
    EXPECT_EQ(editor->SatzCount(), 2);
    EXPECT_EQ(editor->Saetze()[1].Key, cancelled);

    editor->cmdAdd()->click();
    const QString next = editor->lsvDienst()->ListItems(2)->Text();
    EXPECT_NE(next, cancelled);
    EXPECT_NE(next, kept);
    EXPECT_EQ(next.size(), 4);
}

TEST(frmDienst, ANewSentenceKeyIsFourDigitsAndNeverOneAlreadyHeld) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    // Keys drawn within one second, from a generator that repeats itself early.
    editor->generator = RandomGenerator(7, [] { return 3600.0; });
    QSet<QString> keys;
    for (int i = 0; i < 40; ++i) {
        editor->cmdAdd()->click();
        editor->cmdCancel()->click();
        const QString key = editor->Saetze()[i].Key;
        EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9]{4}$")).match(key).hasMatch())
            << key.toStdString();
        EXPECT_FALSE(keys.contains(key)) << key.toStdString();
        keys.insert(key);
    }
}

TEST(frmDienst, TheFourteenthServiceRowNarrowsTheTextColumnAndRemovingRowsWidensItAgain) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    for (int i = 0; i < 13; ++i)
        addSentence(editor);
    EXPECT_EQ(editor->lsvDienst()->ColumnWidth(2), 4125.0);
    addSentence(editor);
    EXPECT_EQ(editor->lsvDienst()->Count(), 14);
    EXPECT_EQ(editor->lsvDienst()->ColumnWidth(2), 3885.0);

    editor->lsvDienst()->ListItems(3)->SetSelected(true);
    press(editor, editor->cmdRem());
    EXPECT_EQ(editor->lsvDienst()->Count(), 13);
    EXPECT_EQ(editor->lsvDienst()->ColumnWidth(2), 4125.0);
    // The key column stays hidden throughout.
    EXPECT_EQ(editor->lsvDienst()->ColumnWidth(1), 0.0);
}

TEST(frmDienst, RemovingASentenceRowKeepsItsRecordAndEnablesTheSaveMenu) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    const QString second = addSentence(editor);
    editor->mnuSave()->setEnabled(false);
    editor->lsvDienst()->ListItems(2)->SetSelected(true);
    press(editor, editor->cmdRem());
    EXPECT_EQ(columnTexts(editor->lsvDienst()).size(), 1);
    EXPECT_EQ(editor->Saetze()[1].Key, second);
    EXPECT_TRUE(editor->mnuSave()->isEnabled());
}

TEST(frmDienst, WithinATimerTickOfTheLastRowGoingTheServiceCommandsAreDisabledAndTheNameEmptied) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    QTest::qWait(150);
    ASSERT_TRUE(editor->cmdRem()->isEnabled());
    editor->txtText()->setText(QStringLiteral("Ansage am Morgen"));

    QElapsedTimer clock;
    clock.start();
    QTest::mouseClick(editor->cmdRem(), Qt::LeftButton);
    ASSERT_EQ(editor->lsvDienst()->Count(), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !editor->cmdRem()->isEnabled(); }, 1000));
    // One tick of 100 ms, and some room for a busy machine.
    EXPECT_LT(clock.elapsed(), 300);
    for (zelcmd* b : {editor->cmdEdit(), editor->cmdRem(), editor->cmdUp(), editor->cmdDown(),
                      editor->cmdPlay()})
        EXPECT_FALSE(b->isEnabled()) << b->objectName().toStdString();
    EXPECT_TRUE(editor->txtText()->text().isEmpty());
    EXPECT_FALSE(editor->txtText()->isEnabled());
    EXPECT_TRUE(editor->cmdAdd()->isEnabled());
}

TEST(frmDienst, UpDownAndReverseReorderTheServiceRows) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    const QString a = addSentence(editor);
    const QString b = addSentence(editor);
    const QString c = addSentence(editor);
    editor->mnuSave()->setEnabled(false);

    editor->lsvDienst()->ListItems(3)->SetSelected(true);
    press(editor, editor->cmdUp());
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{a, c, b}));
    EXPECT_TRUE(editor->mnuSave()->isEnabled());
    press(editor, editor->cmdUp());
    press(editor, editor->cmdUp()); // already first: nothing
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{c, a, b}));
    press(editor, editor->cmdDown());
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{a, c, b}));
    EXPECT_EQ(editor->lsvDienst()->SelectedItem()->Text(), c);

    editor->cmdTausch()->click();
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{b, c, a}));
    EXPECT_EQ(editor->lsvDienst()->SelectedItem()->Index(), 1);
}

TEST(frmDienst, ClickingARowShowsItsNameAndTypingChangesOnlyTheList) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    ReportList* list = editor->lsvDienst();
    const QString saved = editor->Saetze()[0].Text;
    EXPECT_EQ(saved, QStringLiteral("Gong Achtung an Gleis 1 Einfahrt "));
    EXPECT_EQ(list->ListItems(1)->SubItems(1), saved);

    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->ListItems(1)).center());
    EXPECT_EQ(editor->txtText()->text(), saved);
    editor->txtText()->selectAll();
    QTest::keyClicks(editor->txtText(), QStringLiteral("Morgens"));
    EXPECT_EQ(list->ListItems(1)->SubItems(1), QStringLiteral("Morgens"));
    EXPECT_EQ(editor->Saetze()[0].Text, saved);

    // Saving the sentence again does not overwrite the name shown.
    press(editor, editor->cmdEdit());
    press(editor, editor->cmdSave());
    EXPECT_EQ(list->ListItems(1)->SubItems(1), QStringLiteral("Morgens"));
}

TEST(frmDienst, TheServiceAndSourceListsRefuseEditingInPlace) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    for (ReportList* list : {editor->lsvDienst(), editor->lsvSource()}) {
        list->setCurrentItem(list->ListItems(1), 0);
        QTest::keyClick(list, Qt::Key_F2);
        EXPECT_EQ(list->viewport()->findChild<QLineEdit*>(), nullptr)
            << list->objectName().toStdString();
        EXPECT_FALSE(list->ListItems(1)->flags() & Qt::ItemIsEditable);
    }
}

TEST(frmDienst, ClickingAServiceColumnHeaderPutsItsWidthOnTheClipboard) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    QHeaderView* header = editor->lsvDienst()->header();
    QGuiApplication::clipboard()->setText(QStringLiteral("alt"));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(1) + 10, header->height() / 2));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("4125"));
}

TEST(frmDienst, EditingASentenceListsItsEntriesWithTheirShiftsAndTitles) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->Saetze()[0].Targets[1].TimeOffset = 250;
    editor->Saetze()[0].Targets[2].TimeOffset = -40;
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdEdit());
    EXPECT_EQ(editor->CurrentPage(), 2);
    EXPECT_EQ(editor->CurrentSatz, 0);
    EXPECT_EQ(columnTexts(editor->lsvTarget()), (QStringList{"0", "250", "-40"}));
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1),
              (QStringList{"Gong", "Achtung an Gleis 1", "Einfahrt"}));
    EXPECT_EQ(editor->lsvTarget()->ListItems(2)->Tag(), QStringLiteral("0001"));
}

TEST(frmDienst, AnEntryWhoseAnnouncementLeftThePackageIsReportedAndTheEditorGoesOn) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->Saetze()[0].Targets[1].AnnouncementKey = QStringLiteral("0099");
    ReportList* list = editor->lsvDienst();
    doubleClick(list, list->ListItems(1));
    ASSERT_EQ(host.errors.size(), 1);
    EXPECT_TRUE(host.errors[0].contains(QStringLiteral("'9'"))) << host.errors[0].toStdString();
    // The entry before it was listed; the editor still works.
    EXPECT_EQ(editor->lsvTarget()->Count(), 2);
    editor->cmdCancel()->click();
    addSentence(editor);
    EXPECT_EQ(list->Count(), 2);

    // Playing it stops at the same entry, and the play commands come back.
    list->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdPlay());
    EXPECT_EQ(host.errors.size(), 2);
    EXPECT_FALSE(editor->IsPlaying);
    editor->Timer1_Timer();
    EXPECT_TRUE(editor->cmdPlay()->isEnabled());
}
