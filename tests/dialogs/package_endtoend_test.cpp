#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmopen.h"
#include "dialogs/frmsetting.h"
#include "package/clszeldb.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "support/soundfixtures.h"
#include "util/conversions.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::whenShown;

namespace {

struct Item {
    const char* key;
    const char* item;
    VarType type;
    QString value;
};

} // namespace

// A package made from nothing through the dialogs a user clicks through: created, filled by an
// import into a folder that already holds sound files, given properties, saved and opened
// again from the package list.
TEST(PackageEndToEnd, CreateImportSetPropertiesSaveAndReopen) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    frmMain& main = *editor.main;
    editor.main->show();

    // Create the package.
    whenShown<frmNew>([](frmNew& dialog) {
        dialog.txtDir()->setText(QStringLiteral("Linie7"));
        dialog.txtTitel()->setText(QStringLiteral("Linie 7"));
        dialog.txtAutor()->setText(QStringLiteral("Verkehrsbetrieb"));
        dialog.txtComment()->setPlainText(QStringLiteral("Ansagen der Linie 7"));
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(main.cmdNew(), Qt::LeftButton);
    const QString folder = editor.root.file(QStringLiteral("Data/Linie7"));
    ASSERT_TRUE(QFileInfo::exists(folder + QStringLiteral("/Package.io")));
    EXPECT_TRUE(editor.messages.empty());

    // Sound files already in the folder keep their keys.
    ASSERT_TRUE(test::writeTone(folder + QStringLiteral("/0000.wav"), 800 * 8, 8000));
    editor.root.write(QStringLiteral("Data/Linie7/0002.mp3"), QByteArray(64, 'm'));
    const QByteArray existingWav = test::readAll(folder + QStringLiteral("/0000.wav"));

    // Import three sounds, one with two dots in its name.
    QDir().mkpath(editor.root.file(QStringLiteral("Quelle")));
    const QString gong = editor.root.file(QStringLiteral("Quelle/Gong.wav"));
    const QString zug = editor.root.file(QStringLiteral("Quelle/Zug.nach.Berlin.wav"));
    const QString gleis = editor.root.file(QStringLiteral("Quelle/Gleis 7.wav"));
    ASSERT_TRUE(test::writeTone(gong, 1200 * 8, 8000));
    ASSERT_TRUE(test::writeTone(zug, 2000 * 8, 8000));
    ASSERT_TRUE(test::writeTone(gleis, 1500 * 8, 8000));
    whenShown<frmFile>([&](frmFile& dialog) {
        dialog.AddFiles({gong, zug, gleis});
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(main.cmdAdd(), Qt::LeftButton);
    EXPECT_EQ(editor.column(0), (QStringList{"0001", "0003", "0004"}));
    EXPECT_EQ(editor.column(1), (QStringList{"Gong", "Zug", "Gleis 7"}));
    EXPECT_EQ(test::readAll(folder + QStringLiteral("/0001.wav")), test::readAll(gong));
    EXPECT_EQ(test::readAll(folder + QStringLiteral("/0003.wav")), test::readAll(zug));
    EXPECT_EQ(test::readAll(folder + QStringLiteral("/0004.wav")), test::readAll(gleis));

    // Properties of "Zug": another title, no name in sentences, place 2, red.
    ReportList* list = main.lsvPack();
    list->ListItems(2)->SetSelected(true);
    whenShown<frmSetting>([](frmSetting& dialog) {
        dialog.txtTitle()->setText(QStringLiteral("Zug nach Berlin"));
        dialog.chkVisible()->setChecked(false);
        dialog.chkPlace()->setChecked(true);
        dialog.txtPlace()->setText(QStringLiteral("2"));
        dialog.optColor()[2]->setChecked(true);
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    main.lsvPack_DblClick();
    EXPECT_EQ(list->ListItems(2)->SubItems(1), QStringLiteral("Zug nach Berlin"));

    // Move "Gleis 7" to the top and save.
    list->ListItems(3)->SetSelected(true);
    QTest::mouseClick(main.cmdFUp(), Qt::LeftButton);
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);

    // Open it again through the package list.
    whenShown<frmOpen>([](frmOpen& dialog) {
        const QList<QListWidgetItem*> found =
            dialog.lstFile()->findItems(QStringLiteral("Linie 7"), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1);
        const QRect rect = dialog.lstFile()->visualItemRect(found.front());
        QTest::mouseClick(dialog.lstFile()->viewport(), Qt::LeftButton, {}, rect.center());
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    main.lsvPack()->ClearItems(); // an empty list: opening asks nothing
    QTest::mouseClick(main.cmdOpen(), Qt::LeftButton);

    EXPECT_EQ(editor.column(0), (QStringList{"0004", "0001", "0003"}));
    EXPECT_EQ(editor.column(1), (QStringList{"Gleis 7", "Gong", "Zug nach Berlin"}));
    EXPECT_EQ(editor.column(2), (QStringList{"wav", "wav", "wav"}));
    EXPECT_EQ(list->ListItems(3)->ForeColor(), 255u);
    EXPECT_TRUE(list->ListItems(3)->Bold());
    ASSERT_EQ(main.table.AnnouncementCount, 3);
    EXPECT_EQ(main.table.Announcements[2].Length, 2000);
    EXPECT_FALSE(main.table.Announcements[2].NameVisible);
    EXPECT_EQ(main.table.Announcements[2].AutoPlace, 2);
    EXPECT_EQ(main.Panel(4)->text(), QStringLiteral("Linie 7"));

    // The files on disk.
    QStringList files = QDir(folder).entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(files, (QStringList{"0000.wav", "0001.wav", "0002.mp3", "0003.wav", "0004.wav",
                                  "Package.io", "Package.txt"}));
    EXPECT_EQ(test::readAll(folder + QStringLiteral("/0000.wav")), existingWav);
    EXPECT_EQ(test::readAll(folder + QStringLiteral("/0002.mp3")), QByteArray(64, 'm'));
    EXPECT_EQ(test::readAll(folder + QStringLiteral("/Package.txt")),
              QByteArray("Ansagen der Linie 7\r\n"));

    // The index file: its header, and every item with its type and value.
    const QByteArray bytes = test::readAll(folder + QStringLiteral("/Package.io"));
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(folder + QStringLiteral("/Package.io")));
    EXPECT_EQ(store.toBytes().left(32), bytes.left(32));
    const qint32 plain = static_cast<qint32>(WindowTextColor);
    const Item expected[] = {
        {"INFO", "Name", VarType::String, "Linie 7"},
        {"INFO", "Autor", VarType::String, "Verkehrsbetrieb"},
        {"INDEX", "1", VarType::String, "0004~Gleis 7"},
        {"INDEX", "2", VarType::String, "0001~Gong"},
        {"INDEX", "3", VarType::String, "0003~Zug nach Berlin"},
        {"INDEX", "Count", VarType::Long, "3"},
        {"0001", "Color", VarType::Long, QString::number(plain)},
        {"0001", "NameVisible", VarType::Boolean, "Wahr"},
        {"0001", "AutoPlace", VarType::Long, "-1"},
        {"0003", "Color", VarType::Long, "255"},
        {"0003", "NameVisible", VarType::Boolean, "Falsch"},
        {"0003", "AutoPlace", VarType::Long, "2"},
        {"0004", "Color", VarType::Long, QString::number(plain)},
        {"0004", "AutoPlace", VarType::Long, "-1"},
    };
    for (const Item& e : expected) {
        const Variant value = store.GetSetting(QString::fromLatin1(e.key),
                                               QString::fromLatin1(e.item), QStringLiteral("?"));
        EXPECT_EQ(value.type(), e.type) << e.key << "/" << e.item;
        if (e.type == VarType::Boolean)
            EXPECT_EQ(CBool(value), e.value == QStringLiteral("Wahr")) << e.key << "/" << e.item;
        else
            EXPECT_EQ(CStr(value), e.value) << e.key << "/" << e.item;
    }
    EXPECT_FALSE(store.KeyExists(QStringLiteral("0000")));
    EXPECT_FALSE(store.KeyExists(QStringLiteral("0002")));
}
