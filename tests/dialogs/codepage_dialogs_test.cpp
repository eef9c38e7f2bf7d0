// The package dialogs' boxes whose texts go into the index or Package.txt (code page 1252):
// what the code page cannot hold shows while typing and keeps OK refused until it is replaced.
#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmsetting.h"
#include "package/announcementrecord.h"
#include "package/clszeldb.h"
#include "support/editorfixture.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/typetext.h"
#include "util/conversions.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::readAll;
using tavik::test::TempDir;
using tavik::test::typeText;
using tavik::test::writeTone;

namespace {

const QString kArrow = QStringLiteral("Probe → Süd");
const QString kPolish = QStringLiteral("Łukasz");
const QString kEmoji = QStringLiteral("Zug \U0001F686 fährt");
const QString kCyrillic = QStringLiteral("Поезд");

QLabel* note(QWidget* dialog) {
    return dialog->findChild<QLabel*>(QStringLiteral("lblCodePage"));
}

QPushButton* closest(QWidget* dialog) {
    return dialog->findChild<QPushButton*>(QStringLiteral("cmdClosest"));
}

template <typename Box> void retype(Box* box, const QString& text) {
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    typeText(box, text);
}

QString setting(const QString& folder, const QString& key, const QString& item) {
    clsZELDB store;
    store.OpenIOFile(folder + QStringLiteral("/Package.io"));
    return CStr(store.GetSetting(key, item, QStringLiteral("-")));
}

} // namespace

TEST(CodePageDialogs, TheNewPackageBoxesShowEachCharacterAndOkWaits) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    editor.main->newPackageMode = true;
    frmNew dialog(*editor.main);
    dialog.show();
    ASSERT_NE(note(&dialog), nullptr);
    EXPECT_FALSE(note(&dialog)->isVisible());
    dialog.txtDir()->setText(QStringLiteral("Linie7"));
    retype(dialog.txtTitel(), kArrow);
    EXPECT_TRUE(note(&dialog)->isVisible()) << "shown at once, while typing";
    EXPECT_FALSE(dialog.cmdOK()->isEnabled());
    retype(dialog.txtAutor(), kPolish);
    retype(dialog.txtComment(), kEmoji + QStringLiteral("\n") + kCyrillic);
    const QString shown = note(&dialog)->text();
    for (const QString& part : {QStringLiteral("Titel: \"→\" (U+2192, Stelle 7)"),
                                QStringLiteral("Autor: \"Ł\" (U+0141, Stelle 1)"),
                                QStringLiteral("Beschreibung: \"\U0001F686\" (U+1F686, Stelle 5)"),
                                QStringLiteral("\"П\" (U+041F, Stelle 13)")})
        EXPECT_TRUE(shown.contains(part)) << shown.toStdString();

    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    const QString folder = editor.root.file(QStringLiteral("Data/Linie7"));
    EXPECT_FALSE(QFileInfo::exists(folder)) << "nothing is made while a text cannot be held";

    ASSERT_TRUE(closest(&dialog)->isVisible());
    QTest::mouseClick(closest(&dialog), Qt::LeftButton);
    EXPECT_EQ(dialog.txtTitel()->text(), QStringLiteral("Probe -> Süd"));
    EXPECT_EQ(dialog.txtAutor()->text(), QStringLiteral("Lukasz"));
    EXPECT_EQ(dialog.txtComment()->toPlainText(), QStringLiteral("Zug ? fährt\n?????"));
    EXPECT_FALSE(note(&dialog)->isVisible());
    ASSERT_TRUE(dialog.cmdOK()->isEnabled());
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(setting(folder, QStringLiteral("INFO"), QStringLiteral("Name")),
              QStringLiteral("Probe -> Süd"));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.txt")),
              QByteArray("Zug ? f\xe4hrt\r\n?????\r\n"));
}

TEST(CodePageDialogs, ThePackageDetailsRefuseOkUntilTheTitleIsReplacedByHand) {
    EditorFixture editor(QStringLiteral("English.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 100, 0, true, -1}});
    editor.open(folder);
    const QByteArray index = readAll(folder + QStringLiteral("/Package.io"));
    editor.main->newPackageMode = false;
    frmNew dialog(*editor.main);
    dialog.show();
    retype(dialog.txtAutor(), kCyrillic);
    EXPECT_TRUE(note(&dialog)->text().contains(QStringLiteral("\"П\" (U+041F, position 1)")))
        << note(&dialog)->text().toStdString();
    EXPECT_EQ(closest(&dialog)->text(), QStringLiteral("Replace with closest letters"));
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.io")), index);
    retype(dialog.txtAutor(), QStringLiteral("Betrieb"));
    EXPECT_FALSE(note(&dialog)->isVisible());
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());
}

TEST(CodePageDialogs, ThePropertiesTitleRefusesOkAndTheClosestLettersAreTakenOnRequest) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 100, 0, true, 3}});
    editor.open(folder);
    ReportListItem* row = editor.main->lsvPack()->ListItems(1);
    row->SetSelected(true);
    frmSetting dialog(*editor.main);
    dialog.txtTitle()->setText(row->SubItems(1));
    dialog.show();
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());
    for (const QString& typed : {kArrow, kPolish, kEmoji, kCyrillic}) {
        retype(dialog.txtTitle(), typed);
        EXPECT_TRUE(note(&dialog)->isVisible()) << typed.toStdString();
        EXPECT_FALSE(dialog.cmdOK()->isEnabled()) << typed.toStdString();
    }
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(editor.main->table.Announcements[0].Title, QStringLiteral("Gong"));
    EXPECT_EQ(row->SubItems(1), QStringLiteral("Gong"));

    retype(dialog.txtTitle(), kArrow);
    QTest::mouseClick(closest(&dialog), Qt::LeftButton);
    EXPECT_EQ(dialog.txtTitle()->text(), QStringLiteral("Probe -> Süd"));
    ASSERT_TRUE(dialog.cmdOK()->isEnabled()) << "the place still holds a number";
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(editor.main->table.Announcements[0].Title, QStringLiteral("Probe -> Süd"));
}

TEST(CodePageDialogs, TheImportListShowsTitlesFromFileNamesAndTypedOnes) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"), {});
    editor.open(folder);
    TempDir sources;
    const QString polish = sources.file(kPolish + QStringLiteral(".wav"));
    const QString gong = sources.file(QStringLiteral("Gong.wav"));
    ASSERT_TRUE(writeTone(polish, 800, 8000));
    ASSERT_TRUE(writeTone(gong, 800, 8000));
    frmFile dialog(*editor.main);
    dialog.AddFiles({polish, gong});
    dialog.show();
    EXPECT_TRUE(note(&dialog)->isVisible()) << "a title taken from a file name counts too";
    EXPECT_TRUE(note(&dialog)->text().contains(QStringLiteral("1: \"Ł\" (U+0141, Stelle 1)")))
        << note(&dialog)->text().toStdString();
    EXPECT_FALSE(dialog.cmdOK()->isEnabled());

    dialog.lstImport()->setCurrentRow(1);
    retype(dialog.txtName(), kEmoji);
    EXPECT_TRUE(
        note(&dialog)->text().contains(QStringLiteral("2: \"\U0001F686\" (U+1F686, Stelle 5)")))
        << note(&dialog)->text().toStdString();
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_FALSE(QFileInfo::exists(folder + QStringLiteral("/0000.wav")));

    QTest::mouseClick(closest(&dialog), Qt::LeftButton);
    EXPECT_EQ(dialog.lstImport()->item(0)->text(), QStringLiteral("Lukasz"));
    EXPECT_EQ(dialog.lstImport()->item(1)->text(), QStringLiteral("Zug ? fährt"));
    EXPECT_EQ(dialog.txtName()->text(), QStringLiteral("Zug ? fährt"));
    ASSERT_TRUE(dialog.cmdOK()->isEnabled());
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(setting(folder, QStringLiteral("INDEX"), QStringLiteral("1")),
              QStringLiteral("0000~Lukasz"));
    EXPECT_EQ(setting(folder, QStringLiteral("INDEX"), QStringLiteral("2")),
              QStringLiteral("0001~Zug ? fährt"));
}
