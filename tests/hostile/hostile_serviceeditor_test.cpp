// The service editor over service files from another machine: IDs that lead out of the
// package, cut and broken files, entries whose keys name no announcement, a "_" folder and
// links to outside files. Open, save and play must never crash nor write outside the package.
#include "hostile/hostilecorpus.h"
#include "hostile/treesnapshot.h"
#include "service/dienstfixture.h"
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "settings/langtexts.h"
#include "support/links.h"
#include "util/reportlist.h"

#include <QAction>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::columnTexts;
using tavik::test::DienstHost;
using tavik::test::HostileService;
using tavik::test::press;
using tavik::test::snapshotTree;
using tavik::test::treeChanges;
using Entry = DienstHost::Entry;

namespace {

std::vector<Entry> station() {
    return {{"0000", "Gong", 60}, {"0001", "Achtung", 60}, {"0002", "Signal", 60}};
}

// The service editor on the package "Linie" with every hostile service file, the "_" folder,
// the links and the surroundings written into it.
struct HostileServices : DienstHost {
    QString packageFolder;
    frmDienst* editor = nullptr;

    HostileServices() : DienstHost(station()) {
        packageFolder = root.file(QStringLiteral("Data/Linie"));
        test::writeSurroundings(root.path());
        QDir().mkpath(packageFolder + QStringLiteral("/_"));
        test::MakeLink(root.file(QStringLiteral("outside/_8._")),
                       packageFolder + QStringLiteral("/_8._"));
        test::MakeLink(root.file(QStringLiteral("outside/secret.wav")),
                       packageFolder + QStringLiteral("/0003.wav"));
        for (const HostileService& s : test::escapingServices())
            root.write(QStringLiteral("Data/Linie/") + s.fileName, s.bytes);
        for (const HostileService& s : test::brokenServices())
            root.write(QStringLiteral("Data/Linie/") + s.fileName, s.bytes);
        root.write(QStringLiteral("Data/Linie/_30._"), test::serviceWithHostileEntries());
        editor = openEditor();
    }

    // Everything of the installation but the program folder and `inside`.
    QMap<QString, QString> around(const QStringList& inside = {}) const {
        return snapshotTree(root.path(), QStringList{QStringLiteral("bin")} + inside);
    }

    // Opens the listed service with this title as the user does; false when it is not listed.
    bool openService(const QString& title) {
        editor->mnuOpen()->trigger();
        QListWidget* list = editor->lstOpen();
        for (int i = 0; i < list->count(); ++i) {
            if (list->item(i)->text() != title)
                continue;
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                              list->visualItemRect(list->item(i)).center());
            QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
            return true;
        }
        return false;
    }

    // The properties page's save with the ID the service brought, or `id` typed over it.
    void save(const QString& id = QStringLiteral("<as read>")) {
        editor->mnuSave()->trigger();
        if (id != QStringLiteral("<as read>")) {
            editor->txtID()->selectAll();
            editor->txtID()->del();
            QTest::keyClicks(editor->txtID(), id);
        }
        QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    }

    // Every row of the service list names a sentence the editor holds within its count.
    void expectStateAgrees() const {
        const int rows = editor->lsvDienst()->Count();
        EXPECT_LE(rows, editor->SatzCount());
        EXPECT_LE(editor->SatzCount(), editor->Saetze().size());
        for (int r = 1; r <= rows; ++r) {
            const std::int32_t i =
                editor->sentences.FindTargetByKey(editor->lsvDienst()->ListItems(r)->Text());
            EXPECT_GE(i, 0);
            EXPECT_LT(i, editor->SatzCount());
        }
    }
};

} // namespace

TEST(HostileServiceEditor, LinksAndFoldersAreNeverListedAsServices) {
    HostileServices host;
    host.editor->mnuOpen()->trigger();
    QStringList titles;
    for (int i = 0; i < host.editor->lstOpen()->count(); ++i)
        titles << host.editor->lstOpen()->item(i)->text();
    EXPECT_FALSE(titles.contains(QStringLiteral("Fremder Dienst")));
    EXPECT_TRUE(titles.contains(QStringLiteral("Schrägstrich")));
    for (const QString& path : std::as_const(host.editor->File1))
        EXPECT_FALSE(QFileInfo(path).isSymLink() || QFileInfo(path).isDir()) << path.toStdString();
}

TEST(HostileServiceEditor, AnIdThatLeadsOutOfThePackageIsRefusedAndNothingIsWritten) {
    HostileServices host;
    int refused = 0;
    for (const HostileService& s : test::escapingServices()) {
        const auto before = host.around();
        const QString title =
            ReadServiceBytes(reinterpret_cast<const uchar*>(s.bytes.constData()), s.bytes.size())
                .header.Title;
        host.errors.clear();
        host.messages.clear();
        ASSERT_TRUE(host.openService(title)) << s.fileName.toStdString();
        ASSERT_EQ(host.errors, QStringList()) << s.fileName.toStdString();
        const QString id = host.editor->txtID()->text();
        host.save();
        EXPECT_EQ(host.errors, QStringList()) << s.fileName.toStdString();
        if (!IsServiceId(id)) {
            ASSERT_EQ(host.messages.size(), 1u) << s.fileName.toStdString();
            EXPECT_EQ(host.messages[0].text,
                      host.language.GetLangString(LangText::ServiceIdRefused));
            EXPECT_EQ(host.messages[0].icon, MsgIcon::Exclamation);
            // The page stays open for another ID.
            EXPECT_EQ(host.editor->CurrentPage(), 0);
            ++refused;
        }
        // Nothing at all was written: not outside, not inside the package.
        EXPECT_EQ(treeChanges(before, host.around()), QString()) << s.fileName.toStdString();
        QTest::mouseClick(host.editor->cmdEsc(), Qt::LeftButton);
    }
    // "/", "\", ":" and ".." always stay in the box; NUL and line ends may be dropped by it.
    EXPECT_GE(refused, 4);
    EXPECT_FALSE(QFileInfo::exists(host.root.file(QStringLiteral("evil._"))));

    // Another ID saves the service in the package, and nothing else changes.
    const auto before = host.around({QStringLiteral("Data/Linie/_000031._")});
    // Asked whether the new ID renames the opened service, the user saves a copy.
    host.answers.push_back(MsgResult::No);
    host.save(QStringLiteral("000031"));
    EXPECT_TRUE(ReadServiceFile(host.serviceFile(QStringLiteral("000031"))).ok());
    EXPECT_EQ(treeChanges(before, host.around({QStringLiteral("Data/Linie/_000031._")})),
              QString());
}

TEST(HostileServiceEditor, AfterACutOrBrokenFileEveryCommandWorksOrShowsAnError) {
    HostileServices host;
    for (const HostileService& s : test::brokenServices()) {
        const QString title =
            ReadServiceBytes(reinterpret_cast<const uchar*>(s.bytes.constData()), s.bytes.size())
                .header.Title;
        if (title.isEmpty())
            continue;
        SCOPED_TRACE(s.fileName.toStdString());
        const auto before = host.around({QStringLiteral("Data/Linie")});
        host.errors.clear();
        host.messages.clear();
        ASSERT_TRUE(host.openService(title));
        EXPECT_EQ(host.errors.size() + host.messages.size(), 1u);
        // Cancel the open page, as a user does after the message.
        if (host.editor->CurrentPage() == 3)
            QTest::mouseClick(host.editor->cmdAbbr(), Qt::LeftButton);
        host.expectStateAgrees();

        // Every row: play, edit and keep, then save the service under a plain ID.
        for (int r = 1; r <= host.editor->lsvDienst()->Count(); ++r) {
            host.editor->lsvDienst()->ListItems(r)->SetSelected(true);
            press(host.editor, host.editor->cmdPlay());
            host.editor->lsvDienst()->ListItems(r)->SetSelected(true);
            press(host.editor, host.editor->cmdEdit());
            if (host.editor->CurrentPage() == 2)
                press(host.editor, host.editor->cmdSave());
        }
        // A new sentence is made and kept as before.
        press(host.editor, host.editor->cmdAdd());
        host.editor->lsvSource()->ListItems(1)->SetSelected(true);
        press(host.editor, host.editor->cmdHinzu());
        press(host.editor, host.editor->cmdSave());
        EXPECT_EQ(host.editor->CurrentPage(), 1);
        host.expectStateAgrees();
        host.save(QStringLiteral("000040"));
        EXPECT_EQ(host.editor->CurrentPage(), 1);
        const ServiceReadResult saved = ReadServiceFile(host.serviceFile(QStringLiteral("000040")));
        EXPECT_TRUE(saved.ok());
        EXPECT_EQ(saved.sentences.size(), host.editor->lsvDienst()->Count());
        EXPECT_EQ(treeChanges(before, host.around({QStringLiteral("Data/Linie")})), QString());
    }
}

TEST(HostileServiceEditor, ACutFileKeepsTheSentencesReadAndTheyPlayAndSave) {
    HostileServices host;
    ASSERT_TRUE(host.openService(QStringLiteral("Abgeschnitten")));
    ASSERT_EQ(host.errors.size(), 1);
    EXPECT_TRUE(host.errors[0].contains(QStringLiteral("'62'"))) << host.errors[0].toStdString();
    QTest::mouseClick(host.editor->cmdAbbr(), Qt::LeftButton);
    EXPECT_EQ(columnTexts(host.editor->lsvDienst()), (QStringList{"1111", "2222", "3333"}));
    EXPECT_EQ(host.editor->SatzCount(), 3);
    host.errors.clear();
    // The last sentence read: beyond the count the editor held before the open.
    host.editor->lsvDienst()->ListItems(3)->SetSelected(true);
    press(host.editor, host.editor->cmdPlay());
    EXPECT_EQ(host.errors, QStringList());
    EXPECT_TRUE(host.eventLines().contains(QStringLiteral("\tPLAY '0001' 'Achtung'")))
        << host.eventLines().join(u'\n').toStdString();
    host.save(QStringLiteral("000041"));
    const ServiceReadResult saved = ReadServiceFile(host.serviceFile(QStringLiteral("000041")));
    ASSERT_TRUE(saved.ok());
    ASSERT_EQ(saved.sentences.size(), 3);
    EXPECT_EQ(saved.sentences[2].Key, QStringLiteral("3333"));
}

TEST(HostileServiceEditor, ARowWhoseSentenceIsNotFoundIsTheSubscriptErrorForPlayEditAndSave) {
    HostileServices host;
    frmDienst* editor = host.editor;
    // Slots beyond the count, as a file that was cut used to leave them, and a row whose key
    // no slot within the count holds: the search ends without a match.
    editor->sentences.Saetze = {SatzRecord{}, SatzRecord{}, SatzRecord{}};
    editor->sentences.Saetze[2].Key = QStringLiteral("9999");
    editor->sentences.SatzCount = 0;
    ASSERT_EQ(editor->sentences.FindTargetByKey(QStringLiteral("9999")), -1);
    editor->lsvDienst()->AddItem(QStringLiteral("9999"));
    const auto before = host.around();

    const auto expectSubscriptError = [&](const char* what) {
        ASSERT_EQ(host.errors.size(), 1) << what;
        EXPECT_TRUE(host.errors[0].startsWith(QStringLiteral("Laufzeitfehler '9'")))
            << what << ": " << host.errors[0].toStdString();
        host.errors.clear();
    };
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdPlay());
    expectSubscriptError("play");
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdEdit());
    expectSubscriptError("edit");
    EXPECT_EQ(editor->CurrentPage(), 1);
    // The save refuses a service with a sentence it cannot find, before anything is written.
    host.messages.clear();
    host.save(QStringLiteral("000042"));
    EXPECT_TRUE(host.errors.isEmpty());
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(host.messages[0].text, host.language.GetLangString(LangText::ServiceWithoutSentence));
    EXPECT_FALSE(QFileInfo::exists(host.serviceFile(QStringLiteral("000042"))));
    // The refresh skips the row, as it skips any row whose key is not found.
    editor->RefreshList();
    EXPECT_EQ(host.errors, QStringList());
    EXPECT_EQ(treeChanges(before, host.around()), QString());
}

TEST(HostileServiceEditor, EntriesWhoseKeysNameNoAnnouncementShowTheSubscriptError) {
    HostileServices host;
    ASSERT_TRUE(host.openService(QStringLiteral("Fremde Schlüssel")));
    ASSERT_EQ(host.errors, QStringList());
    const auto before = host.around();
    for (int r = 1; r <= host.editor->lsvDienst()->Count(); ++r) {
        SCOPED_TRACE(r);
        host.errors.clear();
        host.editor->lsvDienst()->ListItems(r)->SetSelected(true);
        press(host.editor, host.editor->cmdPlay());
        ASSERT_EQ(host.errors.size(), 1);
        EXPECT_TRUE(host.errors[0].startsWith(QStringLiteral("Laufzeitfehler '9'")));
        host.errors.clear();
        host.editor->lsvDienst()->ListItems(r)->SetSelected(true);
        press(host.editor, host.editor->cmdEdit());
        ASSERT_EQ(host.errors.size(), 1);
        EXPECT_TRUE(host.errors[0].startsWith(QStringLiteral("Laufzeitfehler '9'")));
        if (host.editor->CurrentPage() == 2)
            press(host.editor, host.editor->cmdCancel());
        EXPECT_FALSE(host.editor->IsPlaying);
    }
    EXPECT_EQ(treeChanges(before, host.around()), QString());
}

TEST(HostileServiceEditor, OverAPackageWithKeysThatAreNoNumbersOnlyRealSoundsAreOffered) {
    DienstHost host(station());
    const QString hostile = host.root.file(QStringLiteral("Data/Feindlich"));
    test::writeHostilePackage(host.root.path(), hostile);
    host.root.write(QStringLiteral("Data/Feindlich/_30._"), test::serviceWithHostileEntries());
    host.open(NativePath(AppPath() + QStringLiteral("\\..\\Data\\\\Feindlich")));
    frmDienst* editor = host.openEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(columnTexts(editor->lsvSource()), (QStringList{"Gong", "Achtung", "Zehntausend"}));

    // A service whose entry names the announcement without a key plays it without a sound
    // and without touching a file; the log names what was asked for.
    const auto before = snapshotTree(host.root.path(), {QStringLiteral("bin")});
    editor->mnuOpen()->trigger();
    QListWidget* list = editor->lstOpen();
    const QList<QListWidgetItem*> found =
        list->findItems(QStringLiteral("Fremde Schlüssel"), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(found[0]).center());
    QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
    ASSERT_EQ(host.errors, QStringList());
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdPlay());
    EXPECT_EQ(host.errors, QStringList());
    EXPECT_TRUE(host.eventLines().contains(QStringLiteral("\tPLAY '' 'Ohne Schlüssel'")))
        << host.eventLines().join(u'\n').toStdString();
    EXPECT_EQ(treeChanges(before, snapshotTree(host.root.path(), {QStringLiteral("bin")})),
              QString());
}
