// A whole course of work on a copy of the demo package: the main window loads it, the service
// editor opens from its service button, three sentences are made, reordered, saved, reopened
// and one is played. The service it makes is the demo service delivered with the package.
#include "app/frmstatus.h"
#include "app/tavikapplication.h"
#include "service/frmdienst.h"
#include "service/servicebytes.h"
#include "support/buildpaths.h"
#include "support/editorfixture.h"
#include "support/tempdir.h"
#include "util/apppath.h"
#include "util/cp1252.h"
#include "util/inputbox.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::readAll;
using tavik::test::ServiceBytes;

namespace {

const QString kDemo = tavik::test::CheckoutPath(QStringLiteral("/Data/Beispielpaket"));
const QString kDemoService = QStringLiteral("_000001._");

// Waits for the editor's own timer to enable `button`, then clicks it.
void clickWhenEnabled(QAbstractButton* button) {
    if (!QTest::qWaitFor([&] { return button->isEnabled(); }, 2000))
        ADD_FAILURE() << button->objectName().toStdString() << " stayed disabled";
    QTest::mouseClick(button, Qt::LeftButton);
}

void clickRow(QTreeWidget* list, int row) {
    QTreeWidgetItem* item = list->topLevelItem(row - 1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
}

// Finds an announcement with the search button and adds it with the add button.
void searchAndAdd(frmDienst* editor, const QString& text) {
    SetInputHandler([text](const InputRequest&) { return text; });
    QTest::mouseClick(editor->cmdSearch(), Qt::LeftButton);
    SetInputHandler({});
    QTest::mouseClick(editor->cmdHinzu(), Qt::LeftButton);
}

// Empties the entries automatic placement put into a new sentence.
void removeAllEntries(frmDienst* editor) {
    while (editor->lsvTarget()->Count() > 0) {
        clickRow(editor->lsvTarget(), 1);
        clickWhenEnabled(editor->cmdEntf());
    }
}

void typeTimeShift(frmDienst* editor, int row, const QString& text) {
    ReportList* list = editor->lsvTarget();
    clickRow(list, row);
    list->setCurrentItem(list->ListItems(row), 0);
    QTest::keyClick(list, Qt::Key_F2);
    auto* box = list->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(box, nullptr);
    box->selectAll();
    QTest::keyClicks(box, text);
    QTest::keyClick(box, Qt::Key_Return);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void typeInto(QLineEdit* box, const QString& text) {
    box->selectAll();
    box->del();
    QTest::keyClicks(box, text);
}

QStringList rowTexts(ReportList* list, int column) {
    QStringList texts;
    for (int r = 1; r <= list->Count(); ++r)
        texts << (column == 0 ? list->ListItems(r)->Text() : list->ListItems(r)->SubItems(column));
    return texts;
}

qint64 timeOf(const RecordingBackend& recorder, const QString& command) {
    for (const RecordingBackend::Entry& e : recorder.entries())
        if (e.command == command)
            return e.time;
    return -1;
}

} // namespace

TEST(ServiceEditorEndToEnd, MakesSavesReopensAndPlaysAServiceOfTheDemoPackage) {
    EditorFixture host;
    QStringList errors;
    auto* app = static_cast<TavikApplication*>(QCoreApplication::instance());
    app->setErrorReporter([&](const QString& text) { errors << text; });

    // The demo package without its service, and an event log written to file.
    const QString folder = host.root.file(QStringLiteral("Data/Beispielpaket"));
    QDir().mkpath(folder);
    for (const QString& name : QDir(kDemo).entryList(QDir::Files)) {
        if (!name.endsWith(QStringLiteral("._"))) {
            ASSERT_TRUE(QFile::copy(kDemo + u'/' + name, folder + u'/' + name));
        }
    }
    QFile ini(host.root.file(QStringLiteral("bin/Tavik.ini")));
    ASSERT_TRUE(ini.open(QIODevice::Append));
    ini.write("[Log]\r\nToFile=-1\r\n");
    ini.close();
    QDir().mkpath(host.root.file(QStringLiteral("bin/res/log")));

    frmMain& main = *host.main;
    ASSERT_TRUE(main.FormLoad());
    host.open(
        NativePath(AppPath() + QStringLiteral("\\..\\Data\\") + QStringLiteral("\\Beispielpaket")));
    ASSERT_EQ(main.table.AnnouncementCount, 9);
    main.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
    QTest::mouseClick(main.cmdExpand(), Qt::LeftButton);
    ASSERT_TRUE(main.cmdDienst()->isVisible());
    QTest::mouseClick(main.cmdDienst(), Qt::LeftButton);
    auto* editor = qobject_cast<frmDienst*>(main.serviceEditor());
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(editor));
    EXPECT_FALSE(main.isEnabled());
    EXPECT_EQ(editor->lsvSource()->Count(), 9);
    // Keys drawn from a known sequence, so the service comes out the same every time.
    editor->generator = RandomGenerator(1103, [] { return 36000.0; });

    editor->mnuNew()->trigger();
    // One sentence by automatic placement: places 1 to 5.
    clickWhenEnabled(editor->cmdAdd());
    EXPECT_EQ(rowTexts(editor->lsvTarget(), 1),
              (QStringList{"Gong", "Achtung an Gleis 1", "Zug nach Berlin Hauptbahnhof", "Einfahrt",
                           "Bitte Vorsicht bei der Einfahrt"}));
    clickWhenEnabled(editor->cmdSave());
    // One whose gong is cut 500 ms short.
    clickWhenEnabled(editor->cmdAdd());
    removeAllEntries(editor);
    searchAndAdd(editor, QStringLiteral("gong"));
    searchAndAdd(editor, QStringLiteral("ABFAHRT"));
    typeTimeShift(editor, 1, QStringLiteral("-500"));
    clickWhenEnabled(editor->cmdSave());
    // One with a pause after its first announcement.
    clickWhenEnabled(editor->cmdAdd());
    removeAllEntries(editor);
    searchAndAdd(editor, QStringLiteral("gleis 2"));
    searchAndAdd(editor, QStringLiteral("endet"));
    typeTimeShift(editor, 1, QStringLiteral("200"));
    EXPECT_EQ(rowTexts(editor->lsvTarget(), 0), (QStringList{"+200", "0"}));
    clickWhenEnabled(editor->cmdSave());

    ReportList* service = editor->lsvDienst();
    const QStringList made = rowTexts(service, 0);
    ASSERT_EQ(made.size(), 3);
    clickRow(service, 3);
    clickWhenEnabled(editor->cmdUp());
    const QStringList order{made[0], made[2], made[1]};
    EXPECT_EQ(rowTexts(service, 0), order);

    editor->mnuSave()->trigger();
    typeInto(editor->txtTitle(), QStringLiteral("Beispieldienst"));
    typeInto(editor->txtAutor(), QStringLiteral("Tavik Editor"));
    typeInto(editor->txtComment(), QStringLiteral("Einfahrt, Endstation und Abfahrt"));
    typeInto(editor->txtID(), QStringLiteral("000001"));
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);

    const QString saved = folder + u'/' + kDemoService;
    const QByteArray bytes = readAll(saved);
    const QByteArray expected =
        ServiceBytes()
            .header("Beispieldienst", "Tavik Editor", "Einfahrt, Endstation und Abfahrt", "000001")
            .count(3)
            .sentence(order[0].toLatin1(),
                      "Achtung an Gleis 1 Zug nach Berlin Hauptbahnhof Einfahrt Bitte Vorsicht bei "
                      "der Einfahrt ",
                      {{"0000", 0}, {"0001", 0}, {"0003", 0}, {"0002", 0}, {"0004", 0}})
            .sentence(order[1].toLatin1(), "Gleis 2 Der Zug endet hier ",
                      {{"0005", 200}, {"0006", 0}})
            .sentence(order[2].toLatin1(), "Abfahrt ", {{"0000", -500}, {"0008", 0}});
    EXPECT_EQ(bytes, expected);
    if (qEnvironmentVariableIsSet("TAVIK_WRITE_DEMO_SERVICE")) {
        QFile::remove(kDemo + u'/' + kDemoService);
        ASSERT_TRUE(QFile::copy(saved, kDemo + u'/' + kDemoService));
    }
    // The demo package delivers exactly this service.
    EXPECT_EQ(readAll(kDemo + u'/' + kDemoService), bytes);

    // Reopen it from the list of services after starting a new one.
    editor->mnuNew()->trigger();
    EXPECT_EQ(service->Count(), 0);
    editor->mnuOpen()->trigger();
    QTest::keyClick(editor->lstOpen(), Qt::Key_T);
    const QList<QListWidgetItem*> found =
        editor->lstOpen()->findItems(QStringLiteral("Beispieldienst"), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    QTest::mouseClick(editor->lstOpen()->viewport(), Qt::LeftButton, {},
                      editor->lstOpen()->visualItemRect(found[0]).center());
    EXPECT_EQ(editor->txtInfo(1)->text(), QStringLiteral("Einfahrt, Endstation und Abfahrt"));
    QTest::mouseClick(editor->cmdOpen(), Qt::LeftButton);
    EXPECT_EQ(rowTexts(service, 0), order);
    EXPECT_EQ(rowTexts(service, 1).last(), QStringLiteral("Abfahrt "));
    EXPECT_EQ(editor->txtTitle()->text(), QStringLiteral("Beispieldienst"));

    // Play the last sentence: its gong is cut 500 ms before its end by the next announcement.
    clickRow(service, 3);
    host.recorder.clear();
    clickWhenEnabled(editor->cmdPlay());
    const qint64 gong = timeOf(host.recorder, QStringLiteral("play 0000"));
    const qint64 next = timeOf(host.recorder, QStringLiteral("play 0008"));
    const std::int32_t gongLength = main.table.Announcements[0].Length;
    ASSERT_GT(gongLength, 1000);
    EXPECT_GE(next - gong, gongLength - 500);
    EXPECT_LT(next - gong, gongLength - 500 + 200);
    EXPECT_LE(timeOf(host.recorder, QStringLiteral("stop 0000")), next);

    const QList<QByteArray> logLines =
        readAll(host.root.file(QStringLiteral("bin/res/log/Tavik.log"))).split('\n');
    ASSERT_GE(logLines.size(), 6);
    QStringList last;
    for (qsizetype i = logLines.size() - 6; i < logLines.size() - 1; ++i)
        last << fromCp1252(logLines[i]);
    EXPECT_EQ(last,
              (QStringList{"\"\"\r", "\"ANNOUNCE 'Abfahrt '\"\r", "\"\tPLAY '0000' 'Gong'\"\r",
                           "\"\tPLAY '0008' 'Abfahrt'\"\r", "\"READY\"\r"}));

    // Closing hands the main window back.
    QPointer<frmDienst> closing = editor;
    editor->mnuClose()->trigger();
    EXPECT_TRUE(main.isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([&] { return closing.isNull(); }, 2000));
    EXPECT_TRUE(errors.isEmpty()) << errors.join(u'\n').toStdString();
    app->setErrorReporter({});
}
