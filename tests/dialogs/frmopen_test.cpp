#include "app/frmmain.h"
#include "dialogs/frmopen.h"
#include "settings/windowtexts.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "support/namedpipe.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/filedialog.h"
#include "util/zelcmd.h"

#include <QDataStream>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ErrorCatcher;
using tavik::test::whenShown;

namespace {

// An editor started on a scratch installation, with nothing open yet.
struct OpenSetup {
    EditorFixture editor;

    OpenSetup() { EXPECT_TRUE(editor.main->FormLoad()); }

    // A package with author, comment and picture.
    QString package(const QString& folderName, const QString& name, const QString& author = {},
                    const QByteArray& comment = "Kommentar") {
        const QString folder =
            editor.writePackage(folderName, name, {{QStringLiteral("0000"), "Gong", 100}});
        clsZELDB store;
        store.OpenIOFile(folder + QStringLiteral("/Package.io"));
        store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Autor"),
                          Variant::fromString(author));
        store.SaveIOFile(folder + QStringLiteral("/Package.io"));
        editor.root.write(QStringLiteral("Data/") + folderName + QStringLiteral("/Package.txt"),
                          comment);
        return folder;
    }

    QString dataFile(const QString& name) const {
        return editor.root.file(QStringLiteral("Data/") + name);
    }
};

QStringList texts(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}

void clickRow(QListWidget* list, int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

// A bitmap header that claims a picture far too large to load.
QByteArray hugeBitmapHeader() {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("BM", 2);
    out << quint32(54 + 16) << quint32(0) << quint32(54);
    out << quint32(40) << qint32(60000) << qint32(60000) << quint16(1) << quint16(24) << quint32(0)
        << quint32(0) << qint32(2835) << qint32(2835) << quint32(0) << quint32(0);
    out.writeRawData("\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 16);
    return bytes;
}

} // namespace

TEST(frmOpenList, AnEmptyDataFolderGivesAnEmptyListAndNoWayToConfirm) {
    OpenSetup setup;
    frmOpen dialog(*setup.editor.main);
    EXPECT_EQ(dialog.lstFile()->count(), 0);
    EXPECT_EQ(dialog.packageCount(), 0);
    EXPECT_FALSE(dialog.cmdOK()->isEnabled());
    dialog.show();
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(setup.editor.main->PackageChosen);
}

TEST(frmOpenList, ListsTheNamedPackagesAndLeavesOutOneWithAnEmptyName) {
    OpenSetup setup;
    setup.package(QStringLiteral("Linie1"), QStringLiteral("Linie 1"));
    setup.package(QStringLiteral("Leer"), QString());
    setup.package(QStringLiteral("Linie2"), QStringLiteral("Linie 2"));
    QDir().mkpath(setup.dataFile(QStringLiteral("KeinPaket")));
    frmOpen dialog(*setup.editor.main);
    EXPECT_EQ(texts(dialog.lstFile()), (QStringList{"Linie 1", "Linie 2"}));
    EXPECT_EQ(dialog.packageCount(), 2);
    // Each folder is the data folder, a separator and the folder's name.
    EXPECT_EQ(dialog.dataFolder(), DataFolder());
    EXPECT_EQ(dialog.packageFolders(), (QStringList{DataFolder() + QDir::separator() + "Linie1",
                                                    DataFolder() + QDir::separator() + "Linie2"}));
    EXPECT_FALSE(dialog.cmdOK()->isEnabled());
}

TEST(frmOpenList, AZeroLengthFileInTheDataFolderIsDeletedWhenTheDialogOpens) {
    OpenSetup setup;
    setup.package(QStringLiteral("Linie1"), QStringLiteral("Linie 1"));
    setup.editor.root.write(QStringLiteral("Data/leer.txt"), "");
    setup.editor.root.write(QStringLiteral("Data/Linie1/leer.wav"), "");
    setup.editor.root.write(QStringLiteral("Data/liesmich.txt"), "Text");
    frmOpen dialog(*setup.editor.main);
    EXPECT_FALSE(QFile::exists(setup.dataFile(QStringLiteral("leer.txt"))));
    EXPECT_TRUE(QFile::exists(setup.dataFile(QStringLiteral("liesmich.txt"))));
    EXPECT_TRUE(QFile::exists(setup.dataFile(QStringLiteral("Linie1/leer.wav"))));
    EXPECT_EQ(texts(dialog.lstFile()), QStringList{"Linie 1"});
}

TEST(frmOpenHighlight, ClickingAPackageShowsAuthorCommentAndPictureAndEnablesOK) {
    OpenSetup setup;
    setup.package(QStringLiteral("A"), QStringLiteral("Erstes"), QStringLiteral("Anna"), "Eins");
    setup.package(QStringLiteral("B"), QStringLiteral("Zweites"), QStringLiteral("Bernd"),
                  "Zwei\r\nf\xfcr Gleis 2");
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(setup.dataFile(QStringLiteral("B/Package.img")), "PNG"));
    frmOpen dialog(*setup.editor.main);
    dialog.show();
    clickRow(dialog.lstFile(), 1);
    EXPECT_EQ(dialog.lblAutor()->text(), QStringLiteral("Bernd"));
    EXPECT_EQ(dialog.txtComment()->toPlainText(), QStringLiteral("Zwei\nfür Gleis 2"));
    EXPECT_EQ(dialog.imgTitle()->pixmap().size(), QSize(40, 30));
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());
    // A package without a picture clears the one shown before.
    clickRow(dialog.lstFile(), 0);
    EXPECT_EQ(dialog.lblAutor()->text(), QStringLiteral("Anna"));
    EXPECT_EQ(dialog.txtComment()->toPlainText(), QStringLiteral("Eins"));
    EXPECT_TRUE(dialog.imgTitle()->pixmap().isNull());
}

TEST(frmOpenHighlight, APackageWithoutACommentFileIsListedShowsNoDescriptionAndOpens) {
    OpenSetup setup;
    setup.package(QStringLiteral("A"), QStringLiteral("Erstes"), QStringLiteral("Anna"), "Eins");
    setup.package(QStringLiteral("B"), QStringLiteral("Ohne Text"), QStringLiteral("Bernd"));
    QFile::remove(setup.dataFile(QStringLiteral("B/Package.txt")));
    frmOpen dialog(*setup.editor.main);
    dialog.show();
    EXPECT_EQ(texts(dialog.lstFile()), (QStringList{"Erstes", "Ohne Text"}));
    ErrorCatcher errors;
    clickRow(dialog.lstFile(), 0);
    EXPECT_EQ(dialog.txtComment()->toPlainText(), QStringLiteral("Eins"));
    // The description shown before does not stay.
    clickRow(dialog.lstFile(), 1);
    EXPECT_TRUE(errors.shown.isEmpty()) << errors.shown.join(u'|').toStdString();
    EXPECT_EQ(dialog.lblAutor()->text(), QStringLiteral("Bernd"));
    EXPECT_EQ(dialog.txtComment()->toPlainText(), QString());
    ASSERT_TRUE(dialog.cmdOK()->isEnabled());
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(setup.editor.main->PackageChosen);
    EXPECT_EQ(setup.editor.main->PackageFolder, dialog.packageFolders()[1]);
    EXPECT_EQ(setup.editor.main->IndexFilePath,
              dialog.packageFolders()[1] + QDir::separator() + QStringLiteral("Package.io"));
    EXPECT_FALSE(QFile::exists(setup.dataFile(QStringLiteral("B/Package.txt"))));
}

// A pipe never ends and has no writer: reading it as the description would hang the dialog.
TEST(frmOpenHighlight, ACommentFileThatIsAPipeIsTheAccessErrorAndTheDialogStaysUsable) {
    OpenSetup setup;
    setup.package(QStringLiteral("A"), QStringLiteral("Erstes"), QStringLiteral("Anna"), "Eins");
    setup.package(QStringLiteral("B"), QStringLiteral("Rohr"), QStringLiteral("Bernd"));
    const tavik::test::NamedPipe pipe(setup.dataFile(QStringLiteral("B/Package.txt")));
    ASSERT_TRUE(pipe.made());
    frmOpen dialog(*setup.editor.main);
    dialog.show();
    ASSERT_EQ(texts(dialog.lstFile()), (QStringList{"Erstes", "Rohr"}));
    ErrorCatcher errors;
    clickRow(dialog.lstFile(), 1);
    // Where the system shows nothing by that name (Wine, for the host's pipes) the package has
    // no comment; elsewhere the pipe is there and refused.
    const bool seen = QFileInfo::exists(setup.dataFile(QStringLiteral("B/Package.txt")));
    ASSERT_EQ(errors.shown.size(), seen ? 1 : 0);
    if (seen) {
        EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("'75'")))
            << errors.shown[0].toStdString();
    } else {
        EXPECT_EQ(dialog.txtComment()->toPlainText(), QString());
    }
    EXPECT_FALSE(pipe.hadToFreeAReader());
    clickRow(dialog.lstFile(), 0);
    EXPECT_EQ(dialog.txtComment()->toPlainText(), QStringLiteral("Eins"));
    EXPECT_EQ(errors.shown.size(), seen ? 1 : 0);
}

TEST(frmOpenHighlight, LoadPicIgnoresAMissingOrUnreadablePicture) {
    OpenSetup setup;
    frmOpen dialog(*setup.editor.main);
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    const QString good = setup.dataFile(QStringLiteral("bild.png"));
    ASSERT_TRUE(picture.save(good, "PNG"));
    dialog.LoadPic(good);
    EXPECT_EQ(dialog.imgTitle()->pixmap().size(), QSize(20, 10));
    dialog.LoadPic(setup.dataFile(QStringLiteral("fehlt.png")));
    dialog.LoadPic(setup.editor.root.write(QStringLiteral("Data/kaputt.img"), "no picture"));
    EXPECT_EQ(dialog.imgTitle()->pixmap().size(), QSize(20, 10));
}

TEST(frmOpenChoice, OKHandsTheFolderAndItsIndexToTheMainWindow) {
    OpenSetup setup;
    setup.package(QStringLiteral("Linie1"), QStringLiteral("Linie 1"));
    frmOpen dialog(*setup.editor.main);
    dialog.show();
    clickRow(dialog.lstFile(), 0);
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(setup.editor.main->PackageChosen);
    const QString folder = DataFolder() + QDir::separator() + QStringLiteral("Linie1");
    EXPECT_EQ(setup.editor.main->PackageFolder, folder);
    EXPECT_EQ(setup.editor.main->IndexFilePath,
              folder + QDir::separator() + QStringLiteral("Package.io"));
}

TEST(frmOpenChoice, TheSearchHandsOverTheChosenFolderWithItsTrailingSeparator) {
    OpenSetup setup;
    const QString elsewhere = setup.editor.root.file(QStringLiteral("Pakete/Linie1"));
    QDir().mkpath(elsewhere);
    FileDialogRequest asked;
    const QString chosen = elsewhere + QStringLiteral("/Package.io");
    const FileDialogHandler previous = SetFileDialogHandler([&](const FileDialogRequest& r) {
        asked = r;
        return chosen;
    });
    frmOpen dialog(*setup.editor.main);
    dialog.show();
    QTest::mouseClick(dialog.cmdSearch(), Qt::LeftButton);
    SetFileDialogHandler(previous);
    EXPECT_EQ(asked.owner, &dialog);
    // A dialog about packages starts where the packages are.
    EXPECT_EQ(QDir(asked.startFolder).canonicalPath(),
              QDir(setup.editor.root.file(QStringLiteral("Data"))).canonicalPath());
    EXPECT_EQ(asked.title, QStringLiteral("Indexdatei suchen"));
    EXPECT_EQ(asked.filter, QStringLiteral("Tavik Indexdatei [*.io]|*.io"));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(setup.editor.main->PackageChosen);
    EXPECT_EQ(setup.editor.main->PackageFolder,
              QDir::toNativeSeparators(elsewhere) + QDir::separator());
    EXPECT_EQ(setup.editor.main->IndexFilePath, QDir::toNativeSeparators(chosen));
}

TEST(frmOpenChoice, ACancelledSearchKeepsTheDialogOpen) {
    OpenSetup setup;
    const FileDialogHandler previous =
        SetFileDialogHandler([](const FileDialogRequest&) { return QString(); });
    frmOpen dialog(*setup.editor.main);
    dialog.show();
    QTest::mouseClick(dialog.cmdSearch(), Qt::LeftButton);
    SetFileDialogHandler(previous);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(setup.editor.main->PackageChosen);
    EXPECT_TRUE(setup.editor.main->PackageFolder.isEmpty());
}

TEST(frmOpenChoice, CancelTellsTheMainWindowNothingAndKeepsItsIndex) {
    OpenSetup setup;
    const QString open = setup.package(QStringLiteral("Offen"), QStringLiteral("Offenes Paket"));
    setup.package(QStringLiteral("Anderes"), QStringLiteral("Anderes Paket"));
    setup.editor.open(open);
    setup.editor.main->PackageChosen = false;
    frmOpen dialog(*setup.editor.main);
    dialog.show();
    clickRow(dialog.lstFile(), 0);
    ASSERT_EQ(dialog.lstFile()->item(0)->text(), QStringLiteral("Anderes Paket"));
    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(setup.editor.main->PackageChosen);
    EXPECT_EQ(setup.editor.main->PackageFolder, open);
    EXPECT_EQ(CStr(setup.editor.main->PackageIndex.GetSetting("INFO", "Name", "")),
              QStringLiteral("Offenes Paket"));
}

TEST(frmOpenChoice, TheOpenButtonOfTheMainWindowLoadsTheChosenPackage) {
    OpenSetup setup;
    setup.package(QStringLiteral("Linie1"), QStringLiteral("Linie 1"));
    bool modal = false;
    whenShown<frmOpen>([&](frmOpen& dialog) {
        modal = dialog.isModal();
        clickRow(dialog.lstFile(), 0);
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(setup.editor.main->cmdOpen(), Qt::LeftButton);
    EXPECT_TRUE(modal);
    EXPECT_EQ(setup.editor.column(1), QStringList{"Gong"});
    EXPECT_TRUE(setup.editor.main->cmdSave()->isEnabled());
    EXPECT_TRUE(setup.editor.backend.emulator().isOpen(QStringLiteral("0000")));
}

TEST(frmOpenChoice, APackageWithoutACommentFileOpensFromTheMainWindow) {
    OpenSetup setup;
    setup.package(QStringLiteral("Linie1"), QStringLiteral("Linie 1"));
    QFile::remove(setup.dataFile(QStringLiteral("Linie1/Package.txt")));
    ErrorCatcher errors;
    whenShown<frmOpen>([&](frmOpen& dialog) {
        clickRow(dialog.lstFile(), 0);
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(setup.editor.main->cmdOpen(), Qt::LeftButton);
    EXPECT_TRUE(errors.shown.isEmpty()) << errors.shown.join(u'|').toStdString();
    EXPECT_EQ(setup.editor.column(1), QStringList{"Gong"});
    EXPECT_TRUE(setup.editor.main->cmdSave()->isEnabled());
    EXPECT_TRUE(setup.editor.backend.emulator().isOpen(QStringLiteral("0000")));
}

TEST(frmOpenChoice, ClosingTheDialogFromTheMainWindowKeepsTheOpenPackage) {
    OpenSetup setup;
    const QString open = setup.package(QStringLiteral("Offen"), QStringLiteral("Offenes Paket"));
    setup.package(QStringLiteral("Anderes"), QStringLiteral("Anderes Paket"));
    setup.editor.open(open);
    setup.editor.messages.clear();
    whenShown<frmOpen>([&](frmOpen& dialog) {
        clickRow(dialog.lstFile(), 0);
        QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    });
    QTest::mouseClick(setup.editor.main->cmdOpen(), Qt::LeftButton);
    // Nothing is unsaved, so nothing is asked before the dialog.
    EXPECT_TRUE(setup.editor.messages.empty());
    EXPECT_EQ(setup.editor.column(1), QStringList{"Gong"});
    EXPECT_EQ(setup.editor.main->PackageFolder, open);
    setup.editor.main->tmrName_Timer();
    EXPECT_EQ(setup.editor.main->Panel(4)->text(), QStringLiteral("Offenes Paket"));
}

TEST(frmOpenHostile, BrokenAndHugePictureAndCommentFilesOpenQuickly) {
    OpenSetup setup;
    setup.package(QStringLiteral("A"), QStringLiteral("Müll"), QStringLiteral("X"));
    setup.package(QStringLiteral("B"), QStringLiteral("Riesig"), QStringLiteral("Y"));
    setup.package(QStringLiteral("C"), QStringLiteral("Maßlos"), QStringLiteral("Z"));
    QByteArray garbage(256 * 1024, '\0');
    for (int i = 0; i < garbage.size(); ++i)
        garbage[i] = char((i * 7919) ^ (i >> 3));
    setup.editor.root.write(QStringLiteral("Data/A/Package.img"), garbage);
    // Huge files cost nothing to make: they are sparse.
    for (const char* name : {"Data/B/Package.img", "Data/B/Package.txt"}) {
        QFile file(setup.editor.root.file(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.resize(qint64(512) * 1024 * 1024));
    }
    setup.editor.root.write(QStringLiteral("Data/C/Package.img"), hugeBitmapHeader());
    setup.editor.root.write(QStringLiteral("Data/C/Package.txt"),
                            QByteArray("Vorne") + '\0' + QByteArray(100000, 'x'));

    QElapsedTimer clock;
    clock.start();
    frmOpen dialog(*setup.editor.main);
    dialog.show();
    ASSERT_EQ(dialog.lstFile()->count(), 3);
    for (int row = 0; row < 3; ++row) {
        clickRow(dialog.lstFile(), row);
        EXPECT_TRUE(dialog.imgTitle()->pixmap().isNull()) << row;
        EXPECT_TRUE(dialog.cmdOK()->isEnabled());
        EXPECT_LE(dialog.txtComment()->toPlainText().size(), 64 * 1024);
    }
    // The box ends the text where a NUL character stands.
    EXPECT_EQ(dialog.txtComment()->toPlainText(), QStringLiteral("Vorne"));
    EXPECT_LT(clock.elapsed(), 3000);
}

TEST(frmOpenWindow, LabelsItselfFromTheLanguageFile) {
    EditorFixture editor(QStringLiteral("English.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    frmOpen dialog(*editor.main);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Open announcement package"));
    EXPECT_EQ(dialog.cmdSearch()->text(), QStringLiteral("&Find..."));
    EXPECT_EQ(dialog.cmdOK()->toolTip(), QStringLiteral("Open the selected package"));
}

TEST(frmOpenWindow, EveryControlTheLanguageFilesNameIsOneOfItsControls) {
    OpenSetup setup;
    frmOpen dialog(*setup.editor.main);
    bool listed = false;
    for (const WindowTexts& window : LocalisedWindows()) {
        if (QLatin1StringView(window.window) != QLatin1StringView("frmOpen"))
            continue;
        listed = true;
        for (const char* name : window.controls)
            EXPECT_NE(dialog.findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_TRUE(listed);
    EXPECT_EQ(dialog.objectName(), QStringLiteral("frmOpen"));
}
