// An announcement that services use: the question before its removal names them, and a
// sentence whose announcement is gone names it with the runtime's error.
#include "service/dienstfixture.h"
#include "service/servicebytes.h"
#include "service/serviceuses.h"
#include "settings/langtexts.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QListWidget>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::DienstHost;
using tavik::test::openServiceTitled;
using tavik::test::press;
using tavik::test::ServiceBytes;
using Entry = DienstHost::Entry;

namespace {

std::vector<Entry> station() {
    return {{"0000", "Gong", 60, 0, true, -1}, {"0001", "Achtung an Gleis 1", 60, 0, true, -1}};
}

// Two services: "Linie 4" uses 0001 in one of its two sentences, "Linie 7" in its only one,
// and 0007, which the package does not have.
void writeServices(DienstHost& host) {
    host.root.write(QStringLiteral("Data/Linie/_000004._"),
                    ServiceBytes()
                        .header("Linie 4", "Tavik", "Werktags", "000004")
                        .count(2)
                        .sentence("4711", "Gong ", {{"0000", 0}})
                        .sentence("0815", "Gong Achtung an Gleis 1 ", {{"0000", 0}, {"0001", 0}}));
    host.root.write(QStringLiteral("Data/Linie/_000007._"),
                    ServiceBytes()
                        .header("Linie 7", "Tavik", "Sonntags", "000007")
                        .count(1)
                        .sentence("1234", "Achtung an Gleis 1 Zug ", {{"0001", 0}, {"0007", 0}}));
}

} // namespace

TEST(ServiceUses, AreFoundInEveryServiceFileOfThePackage) {
    DienstHost host(station());
    writeServices(host);
    QList<ServiceUse> uses = FindServiceUses(host.folder, QStringLiteral("0001"));
    std::sort(uses.begin(), uses.end(),
              [](const ServiceUse& a, const ServiceUse& b) { return a.file < b.file; });
    ASSERT_EQ(uses.size(), 2);
    EXPECT_EQ(uses[0], (ServiceUse{"Linie 4", "_000004._", "0815", "Gong Achtung an Gleis 1"}));
    EXPECT_EQ(uses[1], (ServiceUse{"Linie 7", "_000007._", "1234", "Achtung an Gleis 1 Zug"}));
    EXPECT_TRUE(FindServiceUses(host.folder, QStringLiteral("0002")).isEmpty());
    EXPECT_EQ(ServiceUsesParagraph(host.language, {}), QString());
}

TEST(ServiceUses, TheRemoveQuestionListsTheServicesAndSentencesThatUseTheAnnouncement) {
    DienstHost host(station());
    writeServices(host);
    host.main->lsvPack()->ListItems(2)->SetSelected(true);
    host.answers.push_back(MsgResult::No);
    QTest::mouseClick(host.main->cmdRemove(), Qt::LeftButton);
    ASSERT_EQ(host.messages.size(), 1u);
    const QString question = host.messages[0].text;
    // The question as before, then the uses.
    EXPECT_TRUE(question.startsWith(host.language.GetLangString(
        LangText::RemoveNamedQuestion, "0001", "Achtung an Gleis 1", "0001.wav")));
    EXPECT_TRUE(question.contains(
        QStringLiteral("Dienst \"Linie 4\" (_000004._), Satz 0815 \"Gong Achtung an Gleis 1\"")))
        << question.toStdString();
    EXPECT_TRUE(question.contains(
        QStringLiteral("Dienst \"Linie 7\" (_000007._), Satz 1234 \"Achtung an Gleis 1 Zug\"")));
    EXPECT_FALSE(question.contains(QStringLiteral("4711")));
    EXPECT_EQ(host.messages[0].defaultButton, MsgResult::No);
    EXPECT_EQ(host.main->lsvPack()->Count(), 2) << "No keeps the announcement";
}

TEST(ServiceUses, EditingASentenceWhoseAnnouncementIsMissingNamesKeyAndSentence) {
    DienstHost host(station());
    writeServices(host);
    frmDienst* editor = host.openEditor();
    openServiceTitled(editor, QStringLiteral("Linie 7"));
    ASSERT_EQ(editor->lsvDienst()->Count(), 1);
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    host.errors.clear();
    press(editor, editor->cmdEdit());
    ASSERT_EQ(host.errors.size(), 1);
    const QString& error = host.errors[0];
    EXPECT_TRUE(error.contains(QStringLiteral("Laufzeitfehler '9'"))) << error.toStdString();
    EXPECT_TRUE(error.contains(QStringLiteral("Index außerhalb des gültigen Bereichs")));
    EXPECT_TRUE(error.contains(
        QStringLiteral("Der Satz 1234 \"Achtung an Gleis 1 Zug\" nennt die Ansage 0007")));
}

TEST(ServiceUses, PlayingASentenceWhoseAnnouncementIsMissingNamesKeyAndSentence) {
    DienstHost host(station());
    writeServices(host);
    frmDienst* editor = host.openEditor();
    openServiceTitled(editor, QStringLiteral("Linie 7"));
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    editor->Timer1_Timer();
    host.errors.clear();
    press(editor, editor->cmdPlay());
    ASSERT_EQ(host.errors.size(), 1);
    EXPECT_TRUE(host.errors[0].contains(QStringLiteral("Laufzeitfehler '9'")));
    EXPECT_TRUE(host.errors[0].contains(QStringLiteral("1234"))) << host.errors[0].toStdString();
    EXPECT_TRUE(host.errors[0].contains(QStringLiteral("0007")));
    EXPECT_FALSE(editor->IsPlaying);
    EXPECT_FALSE(host.eventLines().join(u'\n').contains(QStringLiteral("ANNOUNCE")))
        << "nothing is played";
}
