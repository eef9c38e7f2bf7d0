// The service's texts as its file keeps them: characters code page 1252 cannot hold, the ID
// box, renaming a service by its ID, time shifts out of range and the name box's note.
#include "service/dienstfixture.h"
#include "support/tempdir.h"
#include "support/typetext.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::DienstHost;
using tavik::test::press;
using tavik::test::readAll;
using Entry = DienstHost::Entry;

namespace {

std::vector<Entry> station() {
    return {{"0000", "Gong", 60, 0, true, 1}, {"0001", "Achtung an Gleis 1", 60, 0, true, 2}};
}

void addSentence(frmDienst* editor) {
    press(editor, editor->cmdAdd());
    press(editor, editor->cmdSave());
}

void retype(QLineEdit* box, const QString& text) {
    box->selectAll();
    box->del();
    tavik::test::typeText(box, text);
}

QLabel* note(frmDienst* editor) {
    return editor->picTab(0)->findChild<QLabel*>(QStringLiteral("lblCodePage"));
}

QPushButton* closest(frmDienst* editor) {
    return editor->picTab(0)->findChild<QPushButton*>(QStringLiteral("cmdClosest"));
}

std::vector<QString> messageTexts(const DienstHost& host) {
    std::vector<QString> texts;
    for (const MessageRequest& m : host.messages)
        texts.push_back(m.text);
    return texts;
}

bool anyMessageContains(const DienstHost& host, const QString& part) {
    for (const QString& text : messageTexts(host))
        if (text.contains(part))
            return true;
    return false;
}

} // namespace

TEST(frmDienstTexts, EachPropertiesBoxShowsWhatTheFileCannotHoldAndSaveWaits) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->mnuSave()->trigger();
    EXPECT_FALSE(note(editor)->isVisible());
    EXPECT_TRUE(editor->cmdSv()->isEnabled());

    const std::pair<QLineEdit*, QString> cases[] = {
        {editor->txtTitle(), QStringLiteral("Probe → Süd")},
        {editor->txtAutor(), QStringLiteral("Łukasz")},
        {editor->txtComment(), QStringLiteral("Zug \U0001F686 fährt")},
        {editor->txtID(), QStringLiteral("Поезд")},
    };
    const QString shown[] = {QStringLiteral("\"→\" (U+2192, Stelle 7)"),
                             QStringLiteral("\"Ł\" (U+0141, Stelle 1)"),
                             QStringLiteral("\"\U0001F686\" (U+1F686, Stelle 5)"), QString()};
    for (int i = 0; i < 4; ++i) {
        const QString before = cases[i].first->text();
        retype(cases[i].first, cases[i].second);
        if (i == 3) {
            // The ID names the file: what the file name cannot hold is refused as typed.
            EXPECT_EQ(cases[i].first->text(), QString());
            cases[i].first->setText(before);
            continue;
        }
        EXPECT_TRUE(note(editor)->isVisible()) << i;
        EXPECT_TRUE(note(editor)->text().contains(shown[i])) << note(editor)->text().toStdString();
        EXPECT_FALSE(editor->cmdSv()->isEnabled()) << i;
        QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
        EXPECT_FALSE(QFile::exists(host.serviceFile(editor->txtID()->text())));
        // Save from the unsaved-changes question is refused too, with a message.
        const std::size_t asked = host.messages.size();
        EXPECT_FALSE(editor->SaveService());
        ASSERT_EQ(host.messages.size(), asked + 1);
        EXPECT_TRUE(host.messages.back().text.contains(shown[i]));
        retype(cases[i].first, QStringLiteral("Linie"));
        EXPECT_FALSE(note(editor)->isVisible());
        EXPECT_TRUE(editor->cmdSv()->isEnabled());
    }
}

TEST(frmDienstTexts, TheClosestLettersReplaceOnTheUsersWordAndTheServiceSaves) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->mnuSave()->trigger();
    retype(editor->txtTitle(), QStringLiteral("Probe → Süd"));
    retype(editor->txtAutor(), QStringLiteral("Łukasz"));
    retype(editor->txtComment(), QStringLiteral("Москва \U0001F686"));
    retype(editor->txtID(), QStringLiteral("000004"));
    ASSERT_TRUE(closest(editor)->isVisible());
    QTest::mouseClick(closest(editor), Qt::LeftButton);
    EXPECT_EQ(editor->txtTitle()->text(), QStringLiteral("Probe -> Süd"));
    EXPECT_EQ(editor->txtAutor()->text(), QStringLiteral("Lukasz"));
    EXPECT_EQ(editor->txtComment()->text(), QStringLiteral("?????? ?"));
    EXPECT_FALSE(note(editor)->isVisible());
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    const QByteArray file = readAll(host.serviceFile(QStringLiteral("000004")));
    EXPECT_TRUE(file.contains("Probe -> S\xfc"
                              "d"));
    EXPECT_TRUE(file.contains("Lukasz"));
}

TEST(frmDienstTexts, TheIdBoxRefusesAsTypedWhatNoFileNameHolds) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    editor->mnuSave()->trigger();
    retype(editor->txtID(), QStringLiteral("00/0:1\\2*3?4<5>6|7\"8..9"));
    EXPECT_EQ(editor->txtID()->text(), QStringLiteral("00012345678.9"));
    retype(editor->txtID(), QStringLiteral("abc12"));
    EXPECT_EQ(editor->txtID()->text(), QStringLiteral("abc12")) << "a file name may hold letters";
}

TEST(frmDienstTexts, ANewIdOfAnOpenedServiceRenamesItAsOneStepOnTheUsersWord) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->mnuSave()->trigger();
    retype(editor->txtTitle(), QStringLiteral("Linie 4"));
    retype(editor->txtID(), QStringLiteral("000001"));
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    ASSERT_TRUE(QFile::exists(host.serviceFile(QStringLiteral("000001"))));

    // Yes to the rename; the folder in the old file's place is another program's change, and
    // the user saves over it.
    host.answers.push_back(MsgResult::Yes);
    host.answers.push_back(MsgResult::Save);
    editor->mnuSave()->trigger();
    retype(editor->txtID(), QStringLiteral("000009"));
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_TRUE(anyMessageContains(host, QStringLiteral("000001")));
    EXPECT_EQ(host.messages.back().buttons, MsgButtons::YesNo);
    EXPECT_FALSE(QFile::exists(host.serviceFile(QStringLiteral("000001")))) << "the old file went";
    EXPECT_TRUE(readAll(host.serviceFile(QStringLiteral("000009"))).contains("000009"));
    const QStringList services = QDir(host.folder).entryList({QStringLiteral("*._")}, QDir::Files);
    EXPECT_EQ(services, QStringList{QStringLiteral("_000009._")});

    // A copy keeps the renamed file beside the new one.
    host.answers.push_back(MsgResult::No);
    editor->mnuSave()->trigger();
    retype(editor->txtID(), QStringLiteral("000010"));
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_TRUE(QFile::exists(host.serviceFile(QStringLiteral("000009"))));
    EXPECT_TRUE(QFile::exists(host.serviceFile(QStringLiteral("000010"))));
}

TEST(frmDienstTexts, ARenameThatCannotRemoveTheOldFileChangesNothing) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    editor->mnuSave()->trigger();
    retype(editor->txtTitle(), QStringLiteral("Linie 4"));
    retype(editor->txtID(), QStringLiteral("000001"));
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    const QString old = host.serviceFile(QStringLiteral("000001"));
    const QByteArray oldBytes = readAll(old);
    // The old name turns into a folder: it cannot be removed as a file.
    ASSERT_TRUE(QFile::remove(old));
    ASSERT_TRUE(QDir().mkdir(old));

    // Yes to the rename; the folder in the old file's place is another program's change, and
    // the user saves over it.
    host.answers.push_back(MsgResult::Yes);
    host.answers.push_back(MsgResult::Save);
    editor->mnuSave()->trigger();
    retype(editor->txtID(), QStringLiteral("000009"));
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    EXPECT_FALSE(QFile::exists(host.serviceFile(QStringLiteral("000009"))))
        << "the new file is taken back";
    EXPECT_TRUE(QFileInfo(old).isDir());
    EXPECT_TRUE(anyMessageContains(host, QStringLiteral("nichts geändert")));
    EXPECT_EQ(editor->CurrentPage(), 0) << "the page stays for another try";
    QDir().rmdir(old);
}

TEST(frmDienstTexts, ATimeShiftOutOfRangeIsRefusedWithAMessageAndItsDigitsStay) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    press(editor, editor->cmdAdd());
    ReportList* list = editor->lsvTarget();
    ASSERT_GE(list->Count(), 1);
    for (const QString& typed : {QStringLiteral("40000"), QStringLiteral("-32769")}) {
        ReportListItem* item = list->ListItems(1);
        list->setCurrentItem(item, 0);
        QTest::keyClick(list, Qt::Key_F2);
        auto* box = list->viewport()->findChild<QLineEdit*>();
        ASSERT_NE(box, nullptr);
        box->selectAll();
        QTest::keyClicks(box, typed);
        EXPECT_EQ(box->text(), typed) << "no digit is cut";
        const std::size_t asked = host.messages.size();
        QTest::keyClick(box, Qt::Key_Return);
        QCoreApplication::processEvents();
        ASSERT_GT(host.messages.size(), asked);
        EXPECT_TRUE(host.messages.back().text.contains(typed));
        EXPECT_TRUE(host.messages.back().text.contains(QStringLiteral("-32768 bis 32767")));
        // Leaving the cell keeps the shift the row had.
        QTest::keyClick(box, Qt::Key_Escape);
        QCoreApplication::processEvents();
        EXPECT_EQ(list->ListItems(1)->Text(), QStringLiteral("0"));
    }
}

TEST(frmDienstTexts, TheNameBoxSaysTheFileKeepsTheTextBuiltFromTheEntries) {
    for (const char* file : {"Deutsch.lng", "English.lng"}) {
        DienstHost host(station(), QString::fromLatin1(file));
        frmDienst* editor = host.openEditor();
        const QString expected = QString::fromLatin1(file) == u"English.lng"
                                     ? QStringLiteral("Shown in this list only")
                                     : QStringLiteral("Wird nur in dieser Liste angezeigt");
        EXPECT_EQ(editor->txtText()->placeholderText(), expected);
        EXPECT_TRUE(editor->txtText()->toolTip().contains(
            QString::fromLatin1(file) == u"English.lng" ? QStringLiteral("keeps the text built")
                                                        : QStringLiteral("behält den Text")))
            << editor->txtText()->toolTip().toStdString();
    }
}
