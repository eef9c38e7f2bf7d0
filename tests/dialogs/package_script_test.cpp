// A package made by "tavik new" and "tavik import" is the package the dialogs make: the same
// files with the same bytes.
#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "dialogs/frmnew.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "support/soundfixtures.h"
#include "support/toolrun.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::tool;
using tavik::test::ToolRun;
using tavik::test::whenShown;

namespace {

// Every file of a folder by name, with its bytes.
QMap<QString, QByteArray> filesOf(const QString& folder) {
    QMap<QString, QByteArray> files;
    for (const QString& name : QDir(folder).entryList(QDir::Files | QDir::Hidden))
        files.insert(name, test::readAll(folder + u'/' + name));
    return files;
}

} // namespace

TEST(ScriptedPackage, NewAndImportMakeTheFilesTheDialogsMake) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    frmMain& main = *editor.main;
    main.show();

    QDir().mkpath(editor.root.file("Quelle"));
    const QString gong = editor.root.file("Quelle/Gong.wav");
    const QString zug = editor.root.file("Quelle/Zug.nach.Berlin.wav");
    const QString gleis = editor.root.file("Quelle/Gleis 7.wav");
    ASSERT_TRUE(test::writeTone(gong, 1200 * 8, 8000));
    ASSERT_TRUE(test::writeTone(zug, 2000 * 8, 8000));
    ASSERT_TRUE(test::writeTone(gleis, 1500 * 8, 8000));
    const QString logo = editor.root.write("Quelle/logo.jpg", QByteArray(300, '\xd8'));
    const QString comment = QStringLiteral("Ansagen der Linie 7\nüber zwei Zeilen");

    // Through the windows: create, import two files, then one more.
    whenShown<frmNew>([&](frmNew& dialog) {
        dialog.txtDir()->setText("Linie7");
        dialog.txtTitel()->setText("Linie 7");
        dialog.txtAutor()->setText("Verkehrsbetrieb");
        dialog.txtComment()->setPlainText(comment);
        dialog.txtPic()->setText(logo);
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(main.cmdNew(), Qt::LeftButton);
    whenShown<frmFile>([&](frmFile& dialog) {
        dialog.AddFiles({gong, zug});
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(main.cmdAdd(), Qt::LeftButton);
    whenShown<frmFile>([&](frmFile& dialog) {
        dialog.AddFiles({gleis});
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(main.cmdAdd(), Qt::LeftButton);
    const QString windowsMade = editor.root.file("Data/Linie7");
    ASSERT_EQ(main.table.AnnouncementCount, 3);

    // By script, in a data folder of its own.
    const QString data = editor.root.file("Skript");
    QDir().mkpath(data);
    ToolRun r = tool({"new", data, "Linie7", "--title", "Linie 7", "--author", "Verkehrsbetrieb",
                      "--comment", comment, "--picture", logo});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    const QString scripted = data + "/Linie7";
    r = tool({"import", scripted, gong, zug});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, QStringLiteral("0000\tGong\n0001\tZug\n"));
    r = tool({"import", scripted, gleis});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();

    const QMap<QString, QByteArray> expected = filesOf(windowsMade);
    EXPECT_EQ(expected.keys(), (QStringList{"0000.wav", "0001.wav", "0002.wav", "Package.img",
                                            "Package.io", "Package.txt"}));
    EXPECT_EQ(filesOf(scripted), expected);

    // And the check finds nothing in either.
    for (const QString& folder : {scripted, windowsMade}) {
        const ToolRun check = tool({"check", folder});
        EXPECT_EQ(check.code, 0) << check.out.toStdString() << check.err.toStdString();
    }
}

TEST(ScriptedPackage, NewRefusesWhatTheDialogRefuses) {
    EditorFixture editor;
    const QString data = editor.root.file("Data");
    editor.writePackage("Linie7", "Linie 7", {{"0000", "Gong", 400}});
    const QByteArray before = test::readAll(data + "/Linie7/Package.io");
    const QStringList refused[] = {
        {"new", data, "Linie7", "--title", "T", "--author", "A"},     // a package is there
        {"new", data, "Neu", "--title", "T"},                         // no author
        {"new", data, "Neu", "--author", "A"},                        // no title
        {"new", data, "../Neu", "--title", "T", "--author", "A"},     // leaves the data folder
        {"new", data, "Neu", "--title", "T", "--author", "A", "--x"}, // unknown option
        // A data folder that is a file (a missing one is made).
        {"new", editor.root.write("keinOrdner", "x"), "Neu", "--title", "T", "--author", "A"},
    };
    for (const QStringList& args : refused) {
        const ToolRun r = tool(args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString();
        EXPECT_FALSE(r.err.isEmpty());
    }
    EXPECT_EQ(test::readAll(data + "/Linie7/Package.io"), before);
    EXPECT_FALSE(QFileInfo::exists(data + "/Neu"));
    EXPECT_FALSE(QFileInfo::exists(editor.root.file("Neu")));
}
