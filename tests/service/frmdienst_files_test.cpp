// The service editor and its files: saving, the list of services, opening, deleting, and
// service files that were not written by the editor.
#include "service/dienstfixture.h"
#include "service/servicebytes.h"
#include "service/servicefile.h"
#include "settings/langtexts.h"
#include "support/tempdir.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::columnTexts;
using tavik::test::DienstHost;
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

// The menu's save, the header texts typed in, and the page's save button.
void saveService(frmDienst* editor, const QString& title, const QString& id,
                 const QString& author = QStringLiteral("Tavik"),
                 const QString& description = QStringLiteral("Werktags")) {
    editor->mnuSave()->trigger();
    for (const auto& [box, text] :
         {std::pair{editor->txtTitle(), title}, std::pair{editor->txtAutor(), author},
          std::pair{editor->txtComment(), description}, std::pair{editor->txtID(), id}}) {
        box->selectAll();
        box->del();
        QTest::keyClicks(box, text);
    }
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
}

void chooseService(frmDienst* editor, int index) {
    QListWidget* list = editor->lstOpen();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(index)).center());
}

QByteArray twoSentenceService(const QByteArray& title) {
    return ServiceBytes()
        .header(title, "Tavik", "Werktags", "000007")
        .count(2)
        .sentence("4711", "Gong ", {{"0000", 0}})
        .sentence("0815", "Achtung an Gleis 1 ", {{"0001", -20}, {"0002", 0}});
}

} // namespace

TEST(frmDienstFiles, ThePropertiesPageSavesUnderItsIdNumberAndAnotherIdMakesASecondFile) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    const QString key = addSentence(editor);
    editor->mnuSave()->trigger();
    EXPECT_EQ(editor->CurrentPage(), 0);
    EXPECT_FALSE(editor->mnuSave()->isEnabled());
    EXPECT_FALSE(editor->mnuNew()->isEnabled());
    EXPECT_FALSE(editor->mnuOpen()->isEnabled());
    saveService(editor, QStringLiteral("Linie 4"), QStringLiteral("000000"));
    EXPECT_EQ(editor->CurrentPage(), 1);
    EXPECT_TRUE(editor->mnuNew()->isEnabled());

    const QByteArray expected =
        ServiceBytes()
            .header("Linie 4", "Tavik", "Werktags", "000000")
            .count(1)
            .sentence(key.toLatin1(), "Gong Achtung an Gleis 1 ", {{"0000", 0}, {"0001", 0}});
    EXPECT_EQ(readAll(host.serviceFile(QStringLiteral("000000"))), expected);

    // Asked whether the new ID renames the service, the user keeps a copy.
    host.answers.push_back(MsgResult::No);
    saveService(editor, QStringLiteral("Linie 4"), QStringLiteral("000001"));
    EXPECT_EQ(readAll(host.serviceFile(QStringLiteral("000000"))), expected);
    QByteArray second = expected;
    second.replace("000000", "000001");
    EXPECT_EQ(readAll(host.serviceFile(QStringLiteral("000001"))), second);
}

TEST(frmDienstFiles, AnEmptyIdNumberGivesTheFileUnderscoreDotUnderscore) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    saveService(editor, QStringLiteral("Ohne Nummer"), QString());
    EXPECT_TRUE(QFile::exists(host.serviceFile(QString())));
}

TEST(frmDienstFiles, AServiceWithAnEmptyTitleIsWrittenButNeverListed) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    saveService(editor, QStringLiteral("Linie 4"), QStringLiteral("000001"));
    // Saved without a name, as a copy under the new ID.
    host.answers.insert(host.answers.end(), {MsgResult::Yes, MsgResult::No});
    saveService(editor, QString(), QStringLiteral("000002"));
    ASSERT_TRUE(QFile::exists(host.serviceFile(QStringLiteral("000002"))));

    editor->mnuOpen()->trigger();
    QTest::mouseClick(editor->cmdRefresh(), Qt::LeftButton);
    ASSERT_EQ(editor->lstOpen()->count(), 1);
    EXPECT_EQ(editor->lstOpen()->item(0)->text(), QStringLiteral("Linie 4"));
    EXPECT_FALSE(editor->File1.contains(host.serviceFile(QStringLiteral("000002"))));
}

TEST(frmDienstFiles, SentencesRemovedFromTheListAreNotWrittenButStayInMemory) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    const QString first = addSentence(editor);
    const QString second = addSentence(editor);
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdRem());
    saveService(editor, QStringLiteral("Linie 4"), QStringLiteral("000000"));

    const ServiceReadResult read = ReadServiceFile(host.serviceFile(QStringLiteral("000000")));
    ASSERT_TRUE(read.ok());
    ASSERT_EQ(read.sentences.size(), 1);
    EXPECT_EQ(read.sentences[0].Key, second);
    EXPECT_EQ(editor->SatzCount(), 2);
    EXPECT_EQ(editor->Saetze()[0].Key, first);
}

TEST(frmDienstFiles, ANewSentenceNotYetKeptIsNotWrittenHalfMade) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    const QString key = editor->lsvDienst()->ListItems(1)->Text();
    // Back to the service page by its tab, leaving the sentence page unsaved.
    QTabBar* tabs = editor->ridDienst();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    EXPECT_TRUE(editor->NewSatzPending);
    host.messages.clear();
    saveService(editor, QStringLiteral("Linie 4"), QStringLiteral("000000"));

    // A sentence without entries would play nothing and fail the package check: the save
    // says why and writes nothing.
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].text, host.language.GetLangString(LangText::ServiceWithoutSentence));
    EXPECT_FALSE(QFile::exists(host.serviceFile(QStringLiteral("000000"))));
    EXPECT_EQ(editor->lsvDienst()->ListItems(1)->Text(), key);
}

TEST(frmDienstFiles, AShorterServiceOverALongerFileKeepsTheOldTailWhichReadingIgnores) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    for (int i = 0; i < 3; ++i)
        addSentence(editor);
    saveService(editor, QStringLiteral("Linie 4"), QStringLiteral("000000"));
    const QByteArray longer = readAll(host.serviceFile(QStringLiteral("000000")));

    for (int i = 0; i < 2; ++i) {
        editor->lsvDienst()->ListItems(1)->SetSelected(true);
        press(editor, editor->cmdRem());
    }
    saveService(editor, QStringLiteral("Linie 4"), QStringLiteral("000000"));
    const QByteArray written = readAll(host.serviceFile(QStringLiteral("000000")));
    const QByteArray shorter =
        ServiceFileBytes({"Linie 4", "Tavik", "Werktags", "000000"}, {editor->Saetze()[2]});
    ASSERT_EQ(written.size(), longer.size());
    EXPECT_EQ(written.left(shorter.size()), shorter);
    EXPECT_EQ(written.mid(shorter.size()), longer.mid(shorter.size()));

    QTest::mouseClick(editor->cmdRefresh(), Qt::LeftButton);
    editor->mnuOpen()->trigger();
    QTest::keyClick(editor->lstOpen(), Qt::Key_T);
    chooseService(editor, 0);
    QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
    EXPECT_EQ(editor->lsvDienst()->Count(), 1);
    EXPECT_EQ(editor->SatzCount(), 1);
}

TEST(frmDienstFiles, AZeroLengthServiceFileIsDeletedWhenTheListIsFilled) {
    DienstHost host(station());
    const QString empty = host.root.write(QStringLiteral("Data/Linie/_leer._"), {});
    host.root.write(QStringLiteral("Data/Linie/_000007._"), twoSentenceService("Linie 7"));
    frmDienst* editor = host.openEditor();
    EXPECT_FALSE(QFile::exists(empty));
    EXPECT_EQ(editor->lstOpen()->count(), 1);
}

TEST(frmDienstFiles, OpeningAServiceListsItsSentencesAndTextsAndShowsTheServicePage) {
    DienstHost host(station());
    host.root.write(QStringLiteral("Data/Linie/_000007._"), twoSentenceService("Linie 7"));
    frmDienst* editor = host.openEditor();
    editor->mnuOpen()->trigger();
    EXPECT_EQ(editor->CurrentPage(), 3);
    EXPECT_FALSE(editor->cmdOpen()->isEnabled());
    ASSERT_EQ(editor->lstOpen()->count(), 1);
    chooseService(editor, 0);
    EXPECT_EQ(editor->txtInfo(0)->text(), QStringLiteral("Tavik"));
    EXPECT_EQ(editor->txtInfo(1)->text(), QStringLiteral("Werktags"));
    ASSERT_TRUE(editor->cmdOpen()->isEnabled());

    QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
    EXPECT_EQ(editor->CurrentPage(), 1);
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{"4711", "0815"}));
    EXPECT_EQ(columnTexts(editor->lsvDienst(), 1), (QStringList{"Gong ", "Achtung an Gleis 1 "}));
    EXPECT_EQ(editor->txtTitle()->text(), QStringLiteral("Linie 7"));
    EXPECT_EQ(editor->txtAutor()->text(), QStringLiteral("Tavik"));
    EXPECT_EQ(editor->txtComment()->text(), QStringLiteral("Werktags"));
    EXPECT_EQ(editor->txtID()->text(), QStringLiteral("000007"));
    EXPECT_EQ(editor->SatzCount(), 2);
    EXPECT_TRUE(editor->mnuSave()->isEnabled());
    EXPECT_TRUE(editor->mnuNew()->isEnabled());

    // Its second sentence opens on the sentence page with its shift.
    editor->lsvDienst()->ListItems(2)->SetSelected(true);
    press(editor, editor->cmdEdit());
    EXPECT_EQ(columnTexts(editor->lsvTarget()), (QStringList{"-20", "0"}));
    EXPECT_EQ(columnTexts(editor->lsvTarget(), 1), (QStringList{"Achtung an Gleis 1", "Signal"}));
    // A new sentence's key never equals one the file brought.
    press(editor, editor->cmdCancel());
    press(editor, editor->cmdAdd());
    const QString key = editor->lsvDienst()->ListItems(3)->Text();
    EXPECT_NE(key, QStringLiteral("4711"));
    EXPECT_NE(key, QStringLiteral("0815"));
}

TEST(frmDienstFiles, TheLowerCaseTRefreshesTheListAndTheFunctionKeyF5DoesNot) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    host.root.write(QStringLiteral("Data/Linie/_000007._"), twoSentenceService("Linie 7"));
    editor->mnuOpen()->trigger();
    EXPECT_EQ(editor->lstOpen()->count(), 0);
    QTest::keyClick(editor->lstOpen(), Qt::Key_F5);
    EXPECT_EQ(editor->lstOpen()->count(), 0);
    QTest::keyClicks(editor->lstOpen(), QStringLiteral("T"));
    EXPECT_EQ(editor->lstOpen()->count(), 0);
    QTest::keyClick(editor->lstOpen(), Qt::Key_T);
    EXPECT_EQ(editor->lstOpen()->count(), 1);
    EXPECT_EQ(editor->File1.size(), 1);
}

TEST(frmDienstFiles, AfterADeletionTheEntryInTheDeletedOnesPlaceResolvesToTheDeletedFile) {
    DienstHost host(station());
    host.root.write(QStringLiteral("Data/Linie/_1._"), twoSentenceService("Abend"));
    host.root.write(QStringLiteral("Data/Linie/_2._"), twoSentenceService("Mittag"));
    host.root.write(QStringLiteral("Data/Linie/_3._"), twoSentenceService("Morgen"));
    frmDienst* editor = host.openEditor();
    editor->mnuOpen()->trigger();
    ASSERT_EQ(editor->lstOpen()->count(), 3);
    chooseService(editor, 1);
    host.answers.push_back(MsgResult::Yes);
    QTest::mouseClick(editor->cmdKill(), Qt::LeftButton);
    ASSERT_EQ(host.messages.size(), 1);
    EXPECT_EQ(host.messages[0].icon, MsgIcon::Question);
    EXPECT_EQ(host.messages[0].buttons, MsgButtons::YesNo);
    EXPECT_TRUE(host.messages[0].text.startsWith(QStringLiteral("Soll der gewählte Dienst")));
    EXPECT_FALSE(QFile::exists(host.serviceFile(QStringLiteral("2"))));
    EXPECT_TRUE(editor->txtInfo(0)->text().isEmpty());

    // The list shows Abend and Morgen; the path list holds every listing so far.
    ASSERT_EQ(editor->lstOpen()->count(), 2);
    EXPECT_EQ(editor->lstOpen()->item(1)->text(), QStringLiteral("Morgen"));
    EXPECT_EQ(editor->File1.size(), 5);
    chooseService(editor, 1);
    EXPECT_TRUE(editor->txtInfo(0)->text().isEmpty());
    QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
    ASSERT_EQ(host.messages.size(), 2);
    EXPECT_EQ(host.messages[1].icon, MsgIcon::Exclamation);
    EXPECT_TRUE(host.messages[1].text.startsWith(QStringLiteral("Die Dienstdatei fehlt")));
    EXPECT_EQ(editor->lsvDienst()->Count(), 0);
    EXPECT_TRUE(editor->txtTitle()->text().isEmpty());
    EXPECT_TRUE(host.errors.isEmpty());

    // Deleting it again finds no file: the runtime's error, and the others stay.
    editor->mnuOpen()->trigger();
    chooseService(editor, 1);
    QTest::mouseClick(editor->cmdKill(), Qt::LeftButton);
    ASSERT_EQ(host.errors.size(), 1);
    EXPECT_TRUE(host.errors[0].contains(QStringLiteral("'53'"))) << host.errors[0].toStdString();
    EXPECT_TRUE(QFile::exists(host.serviceFile(QStringLiteral("3"))));
}

TEST(frmDienstFiles, AnsweringNoToTheDeleteQuestionKeepsTheFile) {
    DienstHost host(station());
    host.root.write(QStringLiteral("Data/Linie/_1._"), twoSentenceService("Abend"));
    frmDienst* editor = host.openEditor();
    editor->mnuOpen()->trigger();
    chooseService(editor, 0);
    host.answers.push_back(MsgResult::No);
    QTest::mouseClick(editor->cmdKill(), Qt::LeftButton);
    EXPECT_TRUE(QFile::exists(host.serviceFile(QStringLiteral("1"))));
    EXPECT_EQ(editor->lstOpen()->count(), 1);
    EXPECT_EQ(editor->txtInfo(0)->text(), QStringLiteral("Tavik"));
}

TEST(frmDienstFiles, ANewServiceTakesTheLowestFreeIdAndLeavesThePreviousFile) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    saveService(editor, QStringLiteral("Alt"), QStringLiteral("000042"));

    editor->mnuNew()->trigger();
    EXPECT_EQ(editor->lsvDienst()->Count(), 0);
    EXPECT_EQ(editor->lsvTarget()->Count(), 0);
    EXPECT_TRUE(editor->txtTitle()->text().isEmpty());
    EXPECT_TRUE(editor->txtAutor()->text().isEmpty());
    EXPECT_TRUE(editor->txtComment()->text().isEmpty());
    EXPECT_EQ(editor->txtID()->text(), QStringLiteral("000000"));
    EXPECT_EQ(editor->List1()->currentRow(), 0);
    // Keys of the earlier sentences stay taken.
    EXPECT_EQ(editor->SatzCount(), 1);

    addSentence(editor);
    editor->mnuSave()->trigger();
    editor->txtTitle()->setText(QStringLiteral("Neu"));
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_EQ(ReadServiceFile(host.serviceFile(QStringLiteral("000042"))).header.Title,
              QStringLiteral("Alt"));
    const ServiceReadResult read = ReadServiceFile(host.serviceFile(QStringLiteral("000000")));
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.header.Title, QStringLiteral("Neu"));
    EXPECT_EQ(read.sentences.size(), 1);
    EXPECT_EQ(read.sentences[0].Key, editor->Saetze()[1].Key);
}

TEST(frmDienstFiles, AFileWithASentenceCountOfZeroRaisesTheSubscriptErrorAndTheEditorGoesOn) {
    DienstHost host(station());
    host.root.write(QStringLiteral("Data/Linie/_0._"),
                    ServiceBytes().header("Leer", "", "", "0").count(0));
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->mnuOpen()->trigger();
    chooseService(editor, 0);
    QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
    ASSERT_EQ(host.errors.size(), 1);
    EXPECT_TRUE(host.errors[0].contains(QStringLiteral("'9'"))) << host.errors[0].toStdString();
    // The list was cleared before the count was read; the open page stays.
    EXPECT_EQ(editor->lsvDienst()->Count(), 0);
    EXPECT_EQ(editor->CurrentPage(), 3);
    QTest::mouseClick(editor->cmdAbbr(), Qt::LeftButton);
    addSentence(editor);
    EXPECT_EQ(editor->lsvDienst()->Count(), 1);
}

TEST(frmDienstFiles, ATruncatedFileListsTheSentencesReadThenRaisesReadPastEnd) {
    DienstHost host(station());
    const QByteArray whole = ServiceBytes()
                                 .header("Kurz", "", "", "9")
                                 .count(3)
                                 .sentence("1111", "Gong ", {{"0000", 0}})
                                 .sentence("2222", "Gong ", {{"0000", 0}})
                                 .sentence("3333", "Gong ", {{"0000", 0}});
    host.root.write(QStringLiteral("Data/Linie/_9._"), whole.left(whole.size() - 6));
    frmDienst* editor = host.openEditor();
    editor->mnuOpen()->trigger();
    chooseService(editor, 0);
    QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
    ASSERT_EQ(host.errors.size(), 1);
    EXPECT_TRUE(host.errors[0].contains(QStringLiteral("'62'"))) << host.errors[0].toStdString();
    EXPECT_EQ(columnTexts(editor->lsvDienst()), (QStringList{"1111", "2222"}));
    // The header texts are only taken from a whole file.
    EXPECT_TRUE(editor->txtTitle()->text().isEmpty());
}

TEST(frmDienstFiles, HostileServiceFilesGiveAnErrorQuicklyWithoutHangingOrGrowing) {
    DienstHost host(station());
    QByteArray garbage(1 << 20, '\0');
    for (int i = 0; i < garbage.size(); ++i)
        garbage[i] = static_cast<char>((qint64(i) * 7919) % 251);
    const QList<QByteArray> files = {
        // A count of 32767 and one sentence of text lengths at their largest.
        ServiceBytes().header("Riesig", "", "", "1").count(32767).u16(65535).raw("x"),
        // Header lengths of two gigabytes.
        ServiceBytes().i32(0x7fffffff).i32(0x7fffffff).i32(0x7fffffff).i32(0x7fffffff),
        // A negative header length.
        ServiceBytes().i32(-1).i32(0).i32(0).i32(0),
        // A sentence with an entry array of two thousand million entries.
        ServiceBytes()
            .header("Viel", "", "", "3")
            .count(1)
            .counted("1234")
            .counted("")
            .u16(1)
            .i32(0x7fffffff)
            .i32(0),
        garbage,
    };
    for (int i = 0; i < files.size(); ++i)
        host.root.write(QStringLiteral("Data/Linie/_%1._").arg(i), files[i]);

    frmDienst* editor = host.openEditor();
    editor->mnuOpen()->trigger();
    QTest::keyClick(editor->lstOpen(), Qt::Key_T);
    const int listed = editor->lstOpen()->count();
    for (int i = 0; i < listed; ++i) {
        host.errors.clear();
        host.messages.clear();
        editor->mnuOpen()->trigger();
        chooseService(editor, i);
        QElapsedTimer clock;
        clock.start();
        QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
        EXPECT_LT(clock.elapsed(), 2000) << i;
        EXPECT_EQ(host.errors.size() + host.messages.size(), 1u) << i;
        EXPECT_LT(editor->lsvDienst()->Count(), 2) << i;
    }
    // Files whose header cannot be read are not listed at all; each listed one failed above.
    EXPECT_GE(listed, 2);
    // The editor still makes and saves services.
    QTest::mouseClick(editor->cmdAbbr(), Qt::LeftButton);
    addSentence(editor);
    saveService(editor, QStringLiteral("Danach"), QStringLiteral("000099"));
    EXPECT_TRUE(ReadServiceFile(host.serviceFile(QStringLiteral("000099"))).ok());
}
