// The service editor's sentence page: automatic placement, the entries, their time shifts,
// the search, and playing.
#include "service/dienstfixture.h"
#include "util/inputbox.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::columnTexts;
using tavik::test::DienstHost;
using tavik::test::doubleClick;
using tavik::test::press;
using Entry = DienstHost::Entry;

namespace {

// Answers every input box with the next of `answers` and keeps what was asked.
class InputAnswers {
public:
    explicit InputAnswers(QStringList answers) : answers_(std::move(answers)) {
        SetInputHandler([this](const InputRequest& request) {
            asked.append(request);
            return answers_.isEmpty() ? QString() : answers_.takeFirst();
        });
    }
    ~InputAnswers() { SetInputHandler({}); }
    QList<InputRequest> asked;

private:
    QStringList answers_;
};

// Selects a source row and adds it with the add button.
void addEntry(frmDienst* editor, int sourceRow) {
    editor->lsvSource()->ListItems(sourceRow)->SetSelected(true);
    press(editor, editor->cmdHinzu());
}

// Types `text` over the time shift of target row `row`, in place, as the user edits it.
void typeTimeShift(frmDienst* editor, int row, const QString& text) {
    ReportList* list = editor->lsvTarget();
    ReportListItem* item = list->ListItems(row);
    item->SetSelected(true);
    list->setCurrentItem(item, 0);
    QTest::keyClick(list, Qt::Key_F2);
    auto* box = list->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(box, nullptr) << "no editor opened";
    box->selectAll();
    QTest::keyClicks(box, text);
    QTest::keyClick(box, Qt::Key_Return);
    // The view takes the text and closes the editor from its event queue.
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

qint64 timeOf(const DienstHost& host, const QString& command) {
    for (const RecordingBackend::Entry& e : host.recorder.entries())
        if (e.command == command)
            return e.time;
    return -1;
}

} // namespace

TEST(frmDienstSentence, APackageWithoutPlacesGivesAnEmptySentenceWhoseSaveAndPlayWaitForARow) {
    DienstHost host({{"0000", "Gong", 80}, {"0001", "Einfahrt", 80}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    EXPECT_EQ(editor->CurrentPage(), 2);
    EXPECT_EQ(editor->lsvTarget()->Count(), 0);
    QTest::qWait(150);
    EXPECT_FALSE(editor->cmdSave()->isEnabled());
    EXPECT_FALSE(editor->cmdAbsp()->isEnabled());
    EXPECT_FALSE(editor->cmdEntf()->isEnabled());

    editor->lsvSource()->ListItems(2)->SetSelected(true);
    QTest::mouseClick(editor->cmdHinzu(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor->cmdSave()->isEnabled(); }, 1000));
    EXPECT_TRUE(editor->cmdAbsp()->isEnabled());
    EXPECT_EQ(columnTexts(editor->lsvTarget()), QStringList{"0"});
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1), QStringList{"Einfahrt"});
    EXPECT_EQ(editor->lsvTarget()->ListItems(1)->Tag(), QStringLiteral("0001"));
}

TEST(frmDienstSentence, PlaceOneComesFirstThenBothOfPlaceTwoInPackageOrderAndPlaceSevenNever) {
    DienstHost host({{"0000", "Einfahrt", 80, 0, true, 2},
                     {"0001", "Zug nach Berlin", 80, 0, true, 7},
                     {"0002", "Gong", 80, 0, true, 1},
                     {"0003", "Bitte Vorsicht", 80, 0, true, 2}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1),
              (QStringList{"Gong", "Einfahrt", "Bitte Vorsicht"}));
    EXPECT_EQ(columnTexts(editor->lsvTarget()), (QStringList{"0", "0", "0"}));
    // The last one added is selected.
    EXPECT_EQ(editor->lsvTarget()->SelectedItem()->Index(), 3);
}

TEST(frmDienstSentence, PlacementGoesByTableIndexEvenWhenAnEarlierSoundIsMissing) {
    DienstHost host(
        {{"0000", "Ohne Datei", -1}, {"0001", "Gong", 80, 0, true, 1}, {"0002", "Einfahrt", 80}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    // Announcement 1 names source row 2, which is the one after it.
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1), QStringList{"Einfahrt"});
}

TEST(frmDienstSentence, TheAddRemoveAndMoveCommandsWorkOnTheEntries) {
    DienstHost host({{"0000", "Gong", 80}, {"0001", "Einfahrt", 80}, {"0002", "Zug", 80}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    addEntry(editor, 1);
    doubleClick(editor->lsvSource(), editor->lsvSource()->ListItems(2));
    editor->List1()->show();
    editor->lsvSource()->ListItems(3)->SetSelected(true);
    QListWidget* list1 = editor->List1();
    QTest::mouseClick(list1->viewport(), Qt::LeftButton, {},
                      list1->visualItemRect(list1->item(0)).center());
    QTest::mouseDClick(list1->viewport(), Qt::LeftButton, {},
                       list1->visualItemRect(list1->item(0)).center());
    // A double click in the plain list adds the selected source row, not its own entry.
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1), (QStringList{"Gong", "Einfahrt", "Zug"}));

    editor->lsvTarget()->ListItems(3)->SetSelected(true);
    press(editor, editor->cmdAuf());
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1), (QStringList{"Gong", "Zug", "Einfahrt"}));
    press(editor, editor->cmdAb());
    press(editor, editor->cmdAb()); // already last: nothing
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1), (QStringList{"Gong", "Einfahrt", "Zug"}));
    editor->lsvTarget()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdEntf());
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1), (QStringList{"Einfahrt", "Zug"}));
    EXPECT_EQ(columnTexts(editor->lsvTarget()), (QStringList{"0", "0"}));
}

TEST(frmDienstSentence, TheTitleColumnNarrowsOnceTheSeventhEntryIsAdded) {
    DienstHost host({{"0000", "Gong", 40}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    for (int i = 0; i < 6; ++i)
        addEntry(editor, 1);
    EXPECT_EQ(editor->lsvTarget()->ColumnWidth(2), 3750.0);
    addEntry(editor, 1);
    EXPECT_EQ(editor->lsvTarget()->ColumnWidth(2), 3510.0);
    // Removing entries does not widen it again.
    editor->lsvTarget()->ListItems(7)->SetSelected(true);
    press(editor, editor->cmdEntf());
    EXPECT_EQ(editor->lsvTarget()->ColumnWidth(2), 3510.0);
}

TEST(frmDienstSentence, ATimeShiftTypedAsTwelveShowsPlusTwelveWhileMinusThreeAndZeroStay) {
    DienstHost host({{"0000", "Gong", 80}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    for (int i = 0; i < 3; ++i)
        addEntry(editor, 1);
    typeTimeShift(editor, 1, QStringLiteral("12"));
    typeTimeShift(editor, 2, QStringLiteral("-3"));
    typeTimeShift(editor, 3, QStringLiteral("0"));
    EXPECT_EQ(columnTexts(editor->lsvTarget()), (QStringList{"+12", "-3", "0"}));
    // The title is not edited in place.
    ReportListItem* item = editor->lsvTarget()->ListItems(1);
    editor->lsvTarget()->setCurrentItem(item, 1);
    QTest::keyClick(editor->lsvTarget(), Qt::Key_F2);
    EXPECT_EQ(editor->lsvTarget()->viewport()->findChild<QLineEdit*>(), nullptr);

    press(editor, editor->cmdSave());
    const SatzRecord& satz = editor->Saetze()[0];
    ASSERT_EQ(satz.Targets.size(), 3);
    EXPECT_EQ(satz.Targets[0].TimeOffset, 12);
    EXPECT_EQ(satz.Targets[1].TimeOffset, -3);
    EXPECT_EQ(satz.Targets[2].TimeOffset, 0);
    EXPECT_EQ(satz.LastTarget, 2);
}

TEST(frmDienstSentence, ATimeShiftCellTakesOnlyASigned16BitNumber) {
    DienstHost host({{"0000", "Gong", 80}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    for (int i = 0; i < 4; ++i)
        addEntry(editor, 1);
    typeTimeShift(editor, 1, QStringLiteral("bald"));
    // Out of range: refused with a message, and the digits are not cut to 4000.
    typeTimeShift(editor, 2, QStringLiteral("40000"));
    typeTimeShift(editor, 2, QStringLiteral("4000"));
    typeTimeShift(editor, 3, QStringLiteral("--32768"));
    typeTimeShift(editor, 4, QStringLiteral("+1 2x.5"));
    EXPECT_EQ(columnTexts(editor->lsvTarget()), (QStringList{"0", "+4000", "-32768", "+125"}));
    press(editor, editor->cmdSave());
    EXPECT_TRUE(host.errors.isEmpty()) << host.errors.join(u'|').toStdString();
    EXPECT_EQ(editor->CurrentPage(), 1);
    const SatzRecord& satz = editor->Saetze()[0];
    ASSERT_EQ(satz.Targets.size(), 4);
    EXPECT_EQ(satz.Targets[0].TimeOffset, 0);
    EXPECT_EQ(satz.Targets[1].TimeOffset, 4000);
    EXPECT_EQ(satz.Targets[2].TimeOffset, -32768);
    EXPECT_EQ(satz.Targets[3].TimeOffset, 125);
}

TEST(frmDienstSentence, AnEditLeftEmptyOrAtALoneSignKeepsTheShiftTheRowHad) {
    DienstHost host({{"0000", "Gong", 80}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    addEntry(editor, 1);
    typeTimeShift(editor, 1, QStringLiteral("-20"));
    ReportList* list = editor->lsvTarget();
    const auto edit = [&](const QString& typed) -> QLineEdit* {
        list->setCurrentItem(list->ListItems(1), 0);
        QTest::keyClick(list, Qt::Key_F2);
        auto* box = list->viewport()->findChild<QLineEdit*>();
        if (!box)
            return nullptr;
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Backspace);
        QTest::keyClicks(box, typed);
        return box;
    };
    for (const QString& typed : {QString(), QStringLiteral("-"), QStringLiteral("+")}) {
        // Return does not take it ...
        QPointer<QLineEdit> box = edit(typed);
        ASSERT_NE(box, nullptr);
        ASSERT_EQ(box->text(), typed);
        QTest::keyClick(box, Qt::Key_Return);
        EXPECT_EQ(list->ListItems(1)->Text(), QStringLiteral("-20")) << typed.toStdString();
        if (box) {
            QTest::keyClick(box, Qt::Key_Escape);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        // ... and neither does leaving the editor, which hands its text to the list.
        box = edit(typed);
        ASSERT_NE(box, nullptr);
        ASSERT_EQ(box->text(), typed);
        Q_EMIT list->itemDelegate()->commitData(box);
        Q_EMIT list->itemDelegate()->closeEditor(box);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(list->ListItems(1)->Text(), QStringLiteral("-20")) << typed.toStdString();
    }
    press(editor, editor->cmdSave());
    EXPECT_TRUE(host.errors.isEmpty()) << host.errors.join(u'|').toStdString();
    EXPECT_EQ(editor->Saetze()[0].Targets[0].TimeOffset, -20);
}

TEST(frmDienstSentence, SavingASentenceOfHiddenNamesGivesTheEmptyText) {
    DienstHost host({{"0000", "Gong", 80, 0, false}, {"0001", "Signal", 80, 0, false}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    addEntry(editor, 1);
    addEntry(editor, 2);
    press(editor, editor->cmdSave());
    EXPECT_EQ(editor->Saetze()[0].Text, QString());
    EXPECT_EQ(editor->lsvDienst()->ListItems(1)->SubItems(1), QString());
    EXPECT_FALSE(editor->NewSatzPending);
    EXPECT_TRUE(editor->mnuSave()->isEnabled());
}

TEST(frmDienstSentence, TheSearchFindsBahnsteigBySteigOrSTEIGAndStartsAtTheFirstRowEachTime) {
    DienstHost host({{"0000", "Gong", 40},
                     {"0001", "Bahnsteig 1", 40},
                     {"0002", "Einfahrt", 40},
                     {"0003", "Bahnsteig 2", 40}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    InputAnswers answers({"steig", "STEIG", "nirgends", ""});
    ReportList* source = editor->lsvSource();

    QTest::mouseClick(editor->cmdSearch(), Qt::LeftButton);
    ASSERT_EQ(answers.asked.size(), 1);
    EXPECT_EQ(answers.asked[0].prompt,
              QStringLiteral("Titel oder Teil des Titels der gesuchten Ansage:"));
    EXPECT_EQ(answers.asked[0].title, QStringLiteral("Ansage suchen"));
    EXPECT_EQ(source->SelectedItem()->Text(), QStringLiteral("Bahnsteig 1"));

    // The second search begins at the top again, not behind the row found.
    QTest::mouseClick(editor->cmdSearch(), Qt::LeftButton);
    EXPECT_EQ(source->SelectedItem()->Text(), QStringLiteral("Bahnsteig 1"));

    // Nothing found, or nothing asked: no message, the selection stays.
    QTest::mouseClick(editor->cmdSearch(), Qt::LeftButton);
    QTest::mouseClick(editor->cmdSearch(), Qt::LeftButton);
    EXPECT_EQ(source->SelectedItem()->Text(), QStringLiteral("Bahnsteig 1"));
    EXPECT_TRUE(host.messages.empty());
    EXPECT_EQ(answers.asked.size(), 4);
}

TEST(frmDienstSentence, AShiftOfMinus500StartsTheNextAnnouncement500MsBeforeThePreviousEnds) {
    DienstHost host({{"0000", "Einfahrt", 800}, {"0001", "Zug", 300}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    addEntry(editor, 1);
    addEntry(editor, 2);
    typeTimeShift(editor, 1, QStringLiteral("-500"));
    host.recorder.clear();

    press(editor, editor->cmdAbsp());
    const qint64 play0 = timeOf(host, "play 0000");
    const qint64 stop0 = timeOf(host, "stop 0000");
    const qint64 play1 = timeOf(host, "play 0001");
    ASSERT_GE(play0, 0);
    ASSERT_GE(play1, 0);
    // The first one would end at play0 + 800; the next starts 500 ms before that.
    EXPECT_GE(play1 - play0, 300);
    EXPECT_LT(play1 - play0, 450);
    EXPECT_LE(stop0, play1);
    EXPECT_EQ(host.recorder.commands(),
              (QStringList{"seek 0000 to start", "play 0000", "stop 0000", "seek 0001 to start",
                           "play 0001", "stop 0001"}));

    // Playing saved the sentence first, its text included.
    EXPECT_EQ(editor->Saetze()[0].Targets[0].TimeOffset, -500);
    EXPECT_EQ(editor->Saetze()[0].Text, QStringLiteral("Einfahrt Zug "));
    const QStringList lines = host.eventLines();
    ASSERT_GE(lines.size(), 5);
    EXPECT_EQ(lines.mid(lines.size() - 5),
              (QStringList{"", "ANNOUNCE 'Einfahrt Zug '", "\tPLAY '0000' 'Einfahrt'",
                           "\tPLAY '0001' 'Zug'", "READY"}));
    EXPECT_FALSE(editor->IsPlaying);
}

TEST(frmDienstSentence, WhileASentencePlaysItsPlayAddAndEditCommandsAreDisabled) {
    DienstHost host({{"0000", "Einfahrt", 600, 0, true, 1}});
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    press(editor, editor->cmdSave());
    editor->lsvDienst()->ListItems(1)->SetSelected(true);

    struct Seen {
        bool playing = false, play = true, absp = true, add = true, edit = true, rem = false;
    } seen;
    QTimer::singleShot(300, editor, [&] {
        seen = {editor->IsPlaying,
                editor->cmdPlay()->isEnabled(),
                editor->cmdAbsp()->isEnabled(),
                editor->cmdAdd()->isEnabled(),
                editor->cmdEdit()->isEnabled(),
                editor->cmdRem()->isEnabled()};
    });
    press(editor, editor->cmdPlay());
    EXPECT_TRUE(seen.playing);
    EXPECT_FALSE(seen.play);
    EXPECT_FALSE(seen.absp);
    EXPECT_FALSE(seen.add);
    EXPECT_FALSE(seen.edit);
    EXPECT_TRUE(seen.rem);
    EXPECT_FALSE(editor->IsPlaying);
    editor->Timer1_Timer();
    EXPECT_TRUE(editor->cmdPlay()->isEnabled());
    EXPECT_TRUE(editor->cmdAdd()->isEnabled());
    EXPECT_EQ(host.eventLines().last(), QStringLiteral("READY"));
}

TEST(frmDienstSentence, ClosingTheEditorWhileASentencePlaysLetsThePlaybackEndAndTheEditorGo) {
    DienstHost host({{"0000", "Einfahrt", 400, 0, true, 1}, {"0001", "Zug", 200, 0, true, 2}});
    QPointer<frmDienst> editor = host.openEditor();
    press(editor, editor->cmdAdd());
    press(editor, editor->cmdSave());
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    QTimer::singleShot(150, editor, [&] { editor->mnuClose()->trigger(); });
    press(editor, editor->cmdPlay());
    // The sentence was played to its end, and the main window is back.
    EXPECT_EQ(host.eventLines().last(), QStringLiteral("READY"));
    EXPECT_TRUE(host.main->isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([&] { return editor.isNull(); }, 2000));
    EXPECT_TRUE(host.errors.isEmpty());
}
