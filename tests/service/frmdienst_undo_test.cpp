// The service editor's undo history, its modified mark, the questions before unsaved changes
// are lost, and the checks before a service file is written.
#include "audio/mcipackagesounds.h"
#include "service/dienstfixture.h"
#include "service/servicebytes.h"
#include "service/servicecheck.h"
#include "service/servicefile.h"
#include "settings/langtexts.h"
#include "support/tempdir.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QUndoStack>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::columnTexts;
using tavik::test::DienstHost;
using tavik::test::openServiceTitled;
using tavik::test::press;
using tavik::test::readAll;
using tavik::test::ServiceBytes;
using Entry = DienstHost::Entry;

namespace {

std::vector<Entry> station() {
    return {{"0000", "Gong", 60, 0, true, 1},
            {"0001", "Achtung an Gleis 1", 60, 0, true, 2},
            {"0002", "Signal", 60, 0, false}};
}

QString addSentence(frmDienst* editor) {
    press(editor, editor->cmdAdd());
    const QString key = editor->lsvDienst()->ListItems(editor->lsvDienst()->Count())->Text();
    press(editor, editor->cmdSave());
    return key;
}

void type(QLineEdit* box, const QString& text) {
    box->selectAll();
    box->del();
    QTest::keyClicks(box, text);
}

// The menu's save with a title typed in and the ID as it stands.
void saveWithTitle(frmDienst* editor, const QString& title) {
    editor->mnuSave()->trigger();
    type(editor->txtTitle(), title);
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
}

// Every error `tavik check` finds in the service files of the package.
QStringList checkErrors(DienstHost& host) {
    QStringList errors;
    MciPackageSounds sounds(host.mci);
    for (const Finding& f : CheckPackage(host.folder, sounds).findings) {
        if (f.severity == Severity::Error && f.file.startsWith(u'_'))
            errors << f.file + QStringLiteral(": ") + f.detail;
    }
    return errors;
}

} // namespace

TEST(frmDienstUndo, ANewServiceTakesTheLowestFreeId) {
    DienstHost host(station());
    host.root.write(
        QStringLiteral("Data/Linie/_000000._"),
        ServiceBytes().header("A", "", "", "000000").count(1).sentence("1111", "", {{"0000", 0}}));
    host.root.write(
        QStringLiteral("Data/Linie/_000001._"),
        ServiceBytes().header("B", "", "", "000001").count(1).sentence("2222", "", {{"0000", 0}}));
    frmDienst* editor = host.openEditor();
    EXPECT_EQ(editor->txtID()->text(), QStringLiteral("000002"));
    addSentence(editor);
    saveWithTitle(editor, QStringLiteral("C"));
    EXPECT_TRUE(QFile::exists(host.serviceFile("000002")));
    editor->mnuNew()->trigger();
    EXPECT_EQ(editor->txtID()->text(), QStringLiteral("000003"));
}

TEST(frmDienstUndo, SavingUnderAnotherServicesIdAsksAndNoKeepsThatFile) {
    DienstHost host(station());
    const QByteArray other = ServiceBytes()
                                 .header("Andere", "", "", "000005")
                                 .count(1)
                                 .sentence("1111", "", {{"0000", 0}});
    host.root.write(QStringLiteral("Data/Linie/_000005._"), other);
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->mnuSave()->trigger();
    type(editor->txtTitle(), QStringLiteral("Neu"));
    type(editor->txtID(), QStringLiteral("000005"));
    host.messages.clear();
    host.answers.push_back(MsgResult::No);
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_TRUE(host.messages[0].text.contains(QStringLiteral("Andere")));
    EXPECT_EQ(host.messages[0].defaultButton, MsgResult::No);
    EXPECT_EQ(readAll(host.serviceFile("000005")), other);
    EXPECT_EQ(editor->CurrentPage(), 0); // another ID can be typed
    EXPECT_FALSE(editor->undoStack()->isClean());

    // Its own file is replaced without a question.
    type(editor->txtID(), QStringLiteral("000006"));
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    host.messages.clear();
    editor->mnuSave()->trigger();
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_TRUE(host.messages.empty());
    EXPECT_TRUE(editor->undoStack()->isClean());
}

TEST(frmDienstUndo, AServiceWithoutSentenceIsNotSavedAndOneWithoutTitleOnlyAfterAWarning) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    const QString id = editor->txtID()->text();
    host.messages.clear();
    saveWithTitle(editor, QStringLiteral("Leer"));
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].text, host.language.GetLangString(LangText::ServiceWithoutSentence));
    EXPECT_FALSE(QFile::exists(host.serviceFile(id)));

    QTest::mouseClick(editor->cmdEsc(), Qt::LeftButton);
    addSentence(editor);
    host.messages.clear();
    host.answers.push_back(MsgResult::No);
    saveWithTitle(editor, QString());
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].text, host.language.GetLangString(LangText::ServiceWithoutTitle));
    EXPECT_FALSE(QFile::exists(host.serviceFile(id)));
    host.answers.push_back(MsgResult::Yes);
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_TRUE(QFile::exists(host.serviceFile(id)));
}

TEST(frmDienstUndo, RemovalMovesReversalAndTypingAreUndoneAndRedone) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    const QString a = addSentence(editor);
    const QString b = addSentence(editor);
    const QString c = addSentence(editor);
    const QStringList made{a, b, c};
    ASSERT_EQ(columnTexts(editor->lsvDienst()), made);
    EXPECT_TRUE(editor->isWindowModified());
    press(editor, editor->cmdTausch());
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{c, b, a}));
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdRem());
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{b, a}));
    editor->mnuSave()->trigger();
    type(editor->txtTitle(), QStringLiteral("Linie"));
    editor->cmdEsc()->click();

    editor->mnuUndo()->trigger(); // the title, typed as one step
    EXPECT_EQ(editor->txtTitle()->text(), QString());
    editor->mnuUndo()->trigger();
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{c, b, a}));
    editor->mnuUndo()->trigger();
    EXPECT_EQ(columnTexts(editor->lsvDienst()), made);
    editor->mnuRedo()->trigger();
    editor->mnuRedo()->trigger();
    editor->mnuRedo()->trigger();
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{b, a}));
    EXPECT_EQ(editor->txtTitle()->text(), QStringLiteral("Linie"));
    editor->mnuSave()->trigger();
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_TRUE(editor->undoStack()->isClean());
    EXPECT_FALSE(editor->isWindowModified());
    const ServiceReadResult read = ReadServiceFile(host.serviceFile(editor->txtID()->text()));
    ASSERT_TRUE(read.ok());
    ASSERT_EQ(read.sentences.size(), 2);
    EXPECT_EQ(read.sentences[0].Key, b);
    EXPECT_EQ(read.sentences[1].Key, a);
}

TEST(frmDienstUndo, ClosingNewAndOpeningAskOnlyWhenSomethingIsUnsaved) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    host.messages.clear();
    editor->mnuNew()->trigger();
    EXPECT_TRUE(host.messages.empty());
    addSentence(editor);
    host.answers.push_back(MsgResult::Cancel);
    editor->mnuClose()->trigger();
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].buttons, MsgButtons::SaveDiscardCancel);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(editor->lsvDienst()->Count(), 1);
    host.answers.push_back(MsgResult::Cancel);
    editor->mnuNew()->trigger();
    EXPECT_EQ(editor->lsvDienst()->Count(), 1);

    // Save from the question writes the service, and the editor closes.
    const QString id = editor->txtID()->text();
    editor->txtTitle()->setText(QStringLiteral("Gespeichert"));
    host.answers.push_back(MsgResult::Save);
    const QPointer<frmDienst> alive(editor);
    editor->mnuClose()->trigger();
    EXPECT_TRUE(QFile::exists(host.serviceFile(id)));
    EXPECT_TRUE(!alive || !alive->isVisible());
}

TEST(frmDienstUndo, DuplicateSentenceKeysAreReportedOnceAndEachSentenceKeepsItsEntries) {
    DienstHost host(station());
    host.root.write(QStringLiteral("Data/Linie/_000007._"),
                    ServiceBytes()
                        .header("Doppelt", "", "", "000007")
                        .count(3)
                        .sentence("4711", "Gong ", {{"0000", 0}})
                        .sentence("0815", "Signal ", {{"0002", 5}})
                        .sentence("4711", "Achtung an Gleis 1 ", {{"0001", -20}, {"0002", 0}}));
    EXPECT_TRUE(checkErrors(host).join(u'\n').contains(QStringLiteral("sentences 1 and 3")))
        << checkErrors(host).join(u'\n').toStdString();
    frmDienst* editor = host.openEditor();
    host.messages.clear();
    openServiceTitled(editor, QStringLiteral("Doppelt"));
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_TRUE(host.messages[0].text.contains(QStringLiteral("4711")));
    const QStringList keys = columnTexts(editor->lsvDienst());
    ASSERT_EQ(keys.size(), 3);
    EXPECT_EQ(keys[0], QStringLiteral("4711"));
    EXPECT_NE(keys[2], QStringLiteral("4711"));
    editor->mnuSave()->trigger();
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_EQ(host.messages.size(), 1u); // told once; its own file is replaced without a word
    const ServiceReadResult read = ReadServiceFile(host.serviceFile("000007"));
    ASSERT_TRUE(read.ok());
    ASSERT_EQ(read.sentences.size(), 3);
    EXPECT_EQ(read.sentences[0].Targets.size(), 1);
    EXPECT_EQ(read.sentences[0].Targets[0].AnnouncementKey, QStringLiteral("0000"));
    ASSERT_EQ(read.sentences[2].Targets.size(), 2);
    EXPECT_EQ(read.sentences[2].Targets[0].AnnouncementKey, QStringLiteral("0001"));
    EXPECT_EQ(read.sentences[2].Targets[0].TimeOffset, -20);
    EXPECT_TRUE(checkErrors(host).isEmpty()) << checkErrors(host).join(u'\n').toStdString();
}

TEST(frmDienstUndo, EveryKindOfServiceTheEditorWritesIsReadBackAndPassesTheCheck) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    QStringList written;
    const auto save = [&](const QString& title) {
        saveWithTitle(editor, title);
        written << editor->txtID()->text();
        EXPECT_TRUE(editor->undoStack()->isClean()) << title.toStdString();
        editor->mnuNew()->trigger();
    };
    // One sentence.
    addSentence(editor);
    save(QStringLiteral("Eins"));
    // Several, reversed, one moved and one removed (its record stays in memory).
    for (int i = 0; i < 4; ++i)
        addSentence(editor);
    press(editor, editor->cmdTausch());
    editor->lsvDienst()->ListItems(2)->SetSelected(true);
    press(editor, editor->cmdDown());
    press(editor, editor->cmdRem());
    save(QStringLiteral("Mehrere"));
    // A sentence added and cancelled, and one with a typed display name.
    addSentence(editor);
    press(editor, editor->cmdAdd());
    press(editor, editor->cmdCancel());
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    editor->lsvDienst_ItemClick();
    type(editor->txtText(), QStringLiteral("Anders"));
    save(QStringLiteral("Abgebrochen"));
    // Without a title (after the warning).
    addSentence(editor);
    host.answers.push_back(MsgResult::Yes);
    save(QString());
    // A shorter service written over a longer one of its own.
    openServiceTitled(editor, QStringLiteral("Mehrere"));
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdRem());
    editor->mnuSave()->trigger();
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_TRUE(editor->undoStack()->isClean());
    // A new sentence still open on its page is not written half-made: the save refuses.
    editor->mnuNew()->trigger();
    addSentence(editor);
    press(editor, editor->cmdAdd());
    host.messages.clear();
    saveWithTitle(editor, QStringLiteral("Halb"));
    EXPECT_EQ(host.messages.size(), 1u);
    EXPECT_FALSE(QFile::exists(host.serviceFile(editor->txtID()->text())));

    ASSERT_EQ(written.size(), 4);
    for (const QString& id : written) {
        const ServiceReadResult read = ReadServiceFile(host.serviceFile(id));
        EXPECT_TRUE(read.ok()) << id.toStdString() << " " << read.problem.toStdString();
        EXPECT_GE(read.sentences.size(), 1);
    }
    EXPECT_TRUE(checkErrors(host).isEmpty()) << checkErrors(host).join(u'\n').toStdString();
}
