#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "dialogs/frmnew.h"
#include "dialogs/newpackage.h"
#include "package/clszeldb.h"
#include "settings/langtexts.h"
#include "settings/windowtexts.h"
#include "support/editorfixture.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/filedialog.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::readAll;

namespace {

// The editor after start-up, so every text comes from its language file.
struct Editor : EditorFixture {
    explicit Editor(const QString& languageFile = QStringLiteral("Deutsch.lng"))
        : EditorFixture(languageFile) {
        EXPECT_TRUE(main->FormLoad());
        EXPECT_FALSE(language.GetLangString(21).isEmpty());
    }
};

// Picture files as a user might choose them: the dialog copies their bytes, whatever they are.
const QByteArray kJpeg("\xff\xd8\xff\xe0\x00\x10JFIF\x00\x01\x01\x00\x00\x01\x00\x01\x00\x00"
                       "\xff\xd9",
                       22);
const QByteArray kIcon("\x00\x00\x01\x00\x01\x00\x10\x10\x00\x00\x01\x00\x20\x00", 14);

// Answers the file dialog with one path and remembers what was asked.
class FileChooser {
public:
    explicit FileChooser(QString answer) : answer_(std::move(answer)) {
        previous_ = SetFileDialogHandler([this](const FileDialogRequest& request) {
            requests.push_back(request);
            return answer_;
        });
    }
    ~FileChooser() { SetFileDialogHandler(previous_); }
    std::vector<FileDialogRequest> requests;

private:
    QString answer_;
    FileDialogHandler previous_;
};

std::unique_ptr<frmNew> showNew(Editor& editor, bool newPackage) {
    editor.main->newPackageMode = newPackage;
    auto dialog = std::make_unique<frmNew>(*editor.main);
    dialog->show();
    return dialog;
}

void fill(frmNew& dialog, const QString& dir, const QString& title, const QString& author,
          const QString& comment = {}, const QString& picture = {}) {
    dialog.txtDir()->setText(dir);
    dialog.txtTitel()->setText(title);
    dialog.txtAutor()->setText(author);
    dialog.txtComment()->setPlainText(comment);
    dialog.txtPic()->setText(picture);
}

// Tries each folder name in turn: each is refused with text 21 and the dialog stays open.
void expectEachRefusedWithText21(Editor& editor, frmNew& dialog, const QStringList& names) {
    for (const QString& name : names) {
        editor.messages.clear();
        fill(dialog, name, QStringLiteral("T"), QStringLiteral("A"), QStringLiteral("Text"));
        dialog.cmdOK()->click();
        ASSERT_EQ(editor.messages.size(), 1u) << name.toStdString();
        EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(21));
        EXPECT_TRUE(dialog.isVisible());
    }
}

QString setting(clsZELDB& store, const QString& key, const QString& item) {
    return CStr(store.GetSetting(key, item, QStringLiteral("<none>")));
}

// Every file and folder below `root`, relative to it.
QStringList tree(const QString& root) {
    QStringList entries;
    QDir dir(root);
    const QFileInfoList infos =
        dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
    for (const QFileInfo& info : infos) {
        entries << info.fileName();
        if (info.isDir())
            for (const QString& inner : tree(info.filePath()))
                entries << info.fileName() + QStringLiteral("/") + inner;
    }
    return entries;
}

} // namespace

TEST(frmNew, CreatesThePackageFolderWithItsIndexDescriptionAndPicture) {
    Editor editor;
    const QString picture = editor.root.write(QStringLiteral("logo.jpg"), kJpeg);
    auto dialog = showNew(editor, true);
    EXPECT_TRUE(dialog->txtDir()->isEnabled());
    fill(*dialog, QStringLiteral("Linie1"), QStringLiteral("Linie 1"), QStringLiteral("Zéphyr"),
         QStringLiteral("Erste Zeile\nZweite Zeile"), picture);
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);

    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_TRUE(editor.messages.empty());
    const QString folder = editor.root.file(QStringLiteral("Data/Linie1"));
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(folder + QStringLiteral("/Package.io")));
    EXPECT_EQ(setting(store, QStringLiteral("INFO"), QStringLiteral("Name")),
              QStringLiteral("Linie 1"));
    EXPECT_EQ(setting(store, QStringLiteral("INFO"), QStringLiteral("Autor")),
              QStringLiteral("Zéphyr"));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.txt")),
              QByteArray("Erste Zeile\r\nZweite Zeile\r\n"));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.img")), kJpeg);

    frmMain& main = *editor.main;
    EXPECT_EQ(QDir::cleanPath(main.PackageFolder), QDir::cleanPath(folder));
    EXPECT_EQ(QDir::cleanPath(main.IndexFilePath),
              QDir::cleanPath(folder + QStringLiteral("/Package.io")));
    EXPECT_TRUE(main.PackageChosen);
    EXPECT_TRUE(main.cmdSave()->isEnabled());
    EXPECT_TRUE(main.cmdAdd()->isEnabled());
    EXPECT_TRUE(main.cmdEdit()->isEnabled());
    EXPECT_EQ(main.lsvPack()->Count(), 0);
}

TEST(frmNew, TheNewIndexHoldsOnlyThePackageInformationAfterAnotherPackageWasOpen) {
    Editor editor;
    editor.open(editor.writePackage(QStringLiteral("Alt"), QStringLiteral("Altes Paket"),
                                    {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}}));
    auto dialog = showNew(editor, true);
    fill(*dialog, QStringLiteral("Neu"), QStringLiteral("N"), QStringLiteral("A"));
    dialog->cmdOK()->click();

    clsZELDB written;
    const QString index = editor.root.file(QStringLiteral("Data/Neu/Package.io"));
    ASSERT_TRUE(written.OpenIOFile(index));
    EXPECT_FALSE(written.KeyExists(QStringLiteral("INDEX")));
    EXPECT_FALSE(written.KeyExists(QStringLiteral("0000")));
    // Exactly what a store made from scratch with the two items writes.
    clsZELDB expected;
    expected.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Name"),
                         Variant::fromString(QStringLiteral("N")));
    expected.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Autor"),
                         Variant::fromString(QStringLiteral("A")));
    EXPECT_EQ(readAll(index), expected.toBytes());
    EXPECT_EQ(editor.main->table.AnnouncementCount, 0);
    EXPECT_FALSE(editor.backend.emulator().isOpen(QStringLiteral("0000")));
}

TEST(frmNew, AFolderThatHoldsAPackageIsRefusedWithText20AndNothingIsWritten) {
    Editor editor;
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    const QByteArray before = readAll(folder + QStringLiteral("/Package.io"));
    const QString picture = editor.root.write(QStringLiteral("logo.jpg"), kJpeg);
    auto dialog = showNew(editor, true);
    fill(*dialog, QStringLiteral("Linie1"), QStringLiteral("Anders"), QStringLiteral("Jemand"),
         QStringLiteral("Text"), picture);
    dialog->cmdOK()->click();

    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(20));
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Exclamation);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.io")), before);
    EXPECT_FALSE(QFileInfo::exists(folder + QStringLiteral("/Package.txt")));
    EXPECT_FALSE(QFileInfo::exists(folder + QStringLiteral("/Package.img")));
    EXPECT_TRUE(editor.main->PackageFolder.isEmpty());
    EXPECT_FALSE(editor.main->PackageChosen);
    EXPECT_FALSE(editor.main->cmdSave()->isEnabled());
}

TEST(frmNew, AZeroLengthIndexIsDeletedAndTheExistingFolderThenRefusedWithText21) {
    Editor editor;
    const QString index = editor.root.write(QStringLiteral("Data/Leer/Package.io"), {});
    auto dialog = showNew(editor, true);
    fill(*dialog, QStringLiteral("Leer"), QStringLiteral("T"), QStringLiteral("A"));
    dialog->cmdOK()->click();

    EXPECT_FALSE(QFileInfo::exists(index));
    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(21));
    EXPECT_TRUE(dialog->isVisible());
}

TEST(frmNew, AMissingTitleOrAuthorIsRefusedWithText18) {
    Editor editor;
    auto dialog = showNew(editor, true);
    fill(*dialog, QStringLiteral("Linie1"), QString(), QStringLiteral("A"));
    dialog->cmdOK()->click();
    fill(*dialog, QStringLiteral("Linie1"), QStringLiteral("T"), QString());
    dialog->cmdOK()->click();

    ASSERT_EQ(editor.messages.size(), 2u);
    for (const MessageRequest& message : editor.messages) {
        EXPECT_EQ(message.text, editor.language.GetLangString(18));
        EXPECT_EQ(message.icon, MsgIcon::Exclamation);
    }
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(QFileInfo::exists(editor.root.file(QStringLiteral("Data/Linie1"))));
}

TEST(frmNew, AFolderThatCannotBeMadeIsRefusedWithText21) {
    Editor editor;
    QDir(editor.root.path()).mkpath(QStringLiteral("Data/Linie1"));
    auto dialog = showNew(editor, true);
    fill(*dialog, QStringLiteral("Linie1"), QStringLiteral("T"), QStringLiteral("A"),
         QStringLiteral("Text"));
    dialog->cmdOK()->click();

    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(21));
    EXPECT_EQ(editor.messages[0].icon, MsgIcon::Exclamation);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(tree(editor.root.file(QStringLiteral("Data/Linie1"))).isEmpty());
}

TEST(frmNew, AnEmptyFolderNameNamesTheDataFolderItselfAndIsRefusedWithText21NotText19) {
    Editor editor;
    auto dialog = showNew(editor, true);
    fill(*dialog, QString(), QStringLiteral("T"), QStringLiteral("A"), QStringLiteral("Text"));
    dialog->cmdOK()->click();

    ASSERT_EQ(editor.messages.size(), 1u);
    EXPECT_EQ(editor.messages[0].text, editor.language.GetLangString(21));
    EXPECT_TRUE(tree(editor.root.file(QStringLiteral("Data"))).isEmpty());
}

TEST(frmNew, FolderNamesWithSeparatorsOrDotDotAreRefusedWithText21AndTouchNothing) {
    Editor editor;
    // A zero-length index beside the data folder would be deleted by the check for a package
    // there, if the check ever looked outside.
    const QString bait = editor.root.write(QStringLiteral("Package.io"), {});
    const QStringList before = tree(editor.root.path());
    const QStringList names = {QStringLiteral(".."),       QStringLiteral("../Evil"),
                               QStringLiteral("..\\Evil"), QStringLiteral("a/b"),
                               QStringLiteral("a\\b"),     QStringLiteral("/tmp/tavik-evil"),
                               QStringLiteral("../bin")};
    auto dialog = showNew(editor, true);
    expectEachRefusedWithText21(editor, *dialog, names);
    EXPECT_TRUE(QFileInfo::exists(bait));
    EXPECT_EQ(tree(editor.root.path()), before);
    EXPECT_FALSE(QFileInfo::exists(QStringLiteral("/tmp/tavik-evil")));
    EXPECT_TRUE(editor.main->PackageFolder.isEmpty());
}

TEST(frmNew, FolderNamesWindowsTakesForDevicesOrTrimsAreRefusedWithText21AndTouchNothing) {
    Editor editor;
    // "Linie1." would be the folder "Linie1" on Windows, and its package would be written there.
    const QString existing =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    const QStringList before = tree(editor.root.path());
    auto dialog = showNew(editor, true);
    expectEachRefusedWithText21(editor, *dialog,
                                {QStringLiteral("CON"), QStringLiteral("aux.wav"),
                                 QStringLiteral("Com1"), QStringLiteral("Linie1."),
                                 QStringLiteral("Linie1 ")});
    EXPECT_EQ(tree(editor.root.path()), before);
    EXPECT_TRUE(QFileInfo::exists(existing + QStringLiteral("/Package.io")));
}

TEST(frmNew, TheInformationModeDisablesTheFolderBoxAndShowsOnlyTheLastPart) {
    Editor editor;
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    clsZELDB store;
    store.OpenIOFile(folder + QStringLiteral("/Package.io"));
    store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Autor"),
                      Variant::fromString(QStringLiteral("Müller")));
    store.SaveIOFile(folder + QStringLiteral("/Package.io"));
    editor.root.write(QStringLiteral("Data/Linie1/Package.txt"), "Zeile 1\r\nZeile 2\r\n");
    editor.open(folder);

    auto dialog = showNew(editor, false);
    EXPECT_FALSE(dialog->txtDir()->isEnabled());
    EXPECT_EQ(dialog->txtDir()->text(), QStringLiteral("Linie1"));
    EXPECT_EQ(dialog->GetFolderName(), QStringLiteral("Linie1"));
    EXPECT_EQ(dialog->txtDir()->palette().color(QPalette::Base),
              dialog->palette().color(QPalette::Window));
    EXPECT_EQ(dialog->txtTitel()->text(), QStringLiteral("Linie 1"));
    EXPECT_EQ(dialog->txtAutor()->text(), QStringLiteral("Müller"));
    EXPECT_EQ(dialog->txtComment()->toPlainText(), QStringLiteral("Zeile 1\nZeile 2\n"));
}

TEST(frmNew, TheInformationModeWritesIntoTheOpenPackageAndKeepsItsList) {
    Editor editor;
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    editor.open(folder);
    const QString picture = editor.root.write(QStringLiteral("bild.ico"), kIcon);
    auto dialog = showNew(editor, false);
    dialog->txtTitel()->setText(QStringLiteral("Linie 1 neu"));
    dialog->txtAutor()->setText(QStringLiteral("B"));
    dialog->txtComment()->setPlainText(QStringLiteral("Neu"));
    dialog->txtPic()->setText(picture);
    dialog->cmdOK()->click();

    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(editor.messages.empty());
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(folder + QStringLiteral("/Package.io")));
    EXPECT_EQ(setting(store, QStringLiteral("INFO"), QStringLiteral("Name")),
              QStringLiteral("Linie 1 neu"));
    EXPECT_EQ(setting(store, QStringLiteral("INFO"), QStringLiteral("Autor")), QStringLiteral("B"));
    EXPECT_EQ(setting(store, QStringLiteral("INDEX"), QStringLiteral("1")),
              QStringLiteral("0000~Gong"));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.txt")), QByteArray("Neu\r\n"));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.img")), kIcon);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 1);
    EXPECT_EQ(QDir(editor.root.file(QStringLiteral("Data")))
                  .entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("Linie1")});
}

TEST(frmNew, ThePictureIsStoredAsPackageImgWhetherItIsAJpegOrAnIcon) {
    Editor editor;
    const QString jpeg = editor.root.write(QStringLiteral("Logo.JPG"), kJpeg);
    const QString icon = editor.root.write(QStringLiteral("logo.ico"), kIcon);
    auto dialog = showNew(editor, true);
    fill(*dialog, QStringLiteral("Linie1"), QStringLiteral("T"), QStringLiteral("A"), {}, jpeg);
    dialog->cmdOK()->click();
    const QString folder = editor.root.file(QStringLiteral("Data/Linie1"));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.img")), kJpeg);

    auto info = showNew(editor, false);
    info->txtPic()->setText(icon);
    info->cmdOK()->click();
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.img")), kIcon);
    EXPECT_EQ(tree(folder),
              (QStringList{QStringLiteral("Package.img"), QStringLiteral("Package.io")}));
}

TEST(frmNew, AnEmptiedDescriptionAndPictureLeaveTheOlderFilesAsTheyWere) {
    Editor editor;
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"), {});
    editor.root.write(QStringLiteral("Data/Linie1/Package.txt"), "Alt\r\n");
    editor.root.write(QStringLiteral("Data/Linie1/Package.img"), kJpeg);
    editor.open(folder);
    auto dialog = showNew(editor, false);
    dialog->txtAutor()->setText(QStringLiteral("A"));
    dialog->txtComment()->clear();
    dialog->cmdClear()->click();
    dialog->cmdOK()->click();

    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.txt")), QByteArray("Alt\r\n"));
    EXPECT_EQ(readAll(folder + QStringLiteral("/Package.img")), kJpeg);
}

TEST(frmNew, APictureThatIsMissingOrEmptyIsNotCopied) {
    Editor editor;
    const QString empty = editor.root.write(QStringLiteral("leer.jpg"), {});
    auto dialog = showNew(editor, true);
    fill(*dialog, QStringLiteral("A"), QStringLiteral("T"), QStringLiteral("A"), {}, empty);
    dialog->cmdOK()->click();
    EXPECT_FALSE(QFileInfo::exists(editor.root.file(QStringLiteral("Data/A/Package.img"))));
    EXPECT_TRUE(QFileInfo::exists(empty));

    auto second = showNew(editor, true);
    fill(*second, QStringLiteral("B"), QStringLiteral("T"), QStringLiteral("A"), {},
         editor.root.file(QStringLiteral("gibtsnicht.jpg")));
    second->cmdOK()->click();
    EXPECT_FALSE(second->isVisible());
    EXPECT_FALSE(QFileInfo::exists(editor.root.file(QStringLiteral("Data/B/Package.img"))));
}

TEST(frmNew, ThePictureButtonOfANewPackageStartsInTheDataFolderWithEveryPictureFormat) {
    Editor editor;
    auto dialog = showNew(editor, true);
    {
        FileChooser chooser(QStringLiteral("/bilder/logo.bmp"));
        dialog->cmdPic()->click();
        ASSERT_EQ(chooser.requests.size(), 1u);
        EXPECT_EQ(chooser.requests[0].owner, dialog.get());
        EXPECT_EQ(QDir(chooser.requests[0].startFolder).canonicalPath(),
                  QDir(editor.root.file(QStringLiteral("Data"))).canonicalPath());
        EXPECT_EQ(chooser.requests[0].title, QStringLiteral("Bild laden"));
        const QString filter = chooser.requests[0].filter;
        // Every picture the preview can show first, then the designed entries.
        EXPECT_TRUE(filter.startsWith(QStringLiteral("Alle Bilder|"))) << filter.toStdString();
        const QStringList firstPatterns = filter.section(u'|', 1, 1).split(u';');
        for (const char* pattern : {"*.png", "*.jpg", "*.jpeg", "*.bmp", "*.gif", "*.ico"})
            EXPECT_TRUE(firstPatterns.contains(QLatin1String(pattern))) << pattern;
        EXPECT_TRUE(filter.endsWith(
            QStringLiteral("|JPEG Bild [*.jpg]|*.jpg|Bitmap Bild [*.bmp]|*.bmp|Icon "
                           "[*.ico]|*.ico|Alle Dateien [*.*]|*.*")));
        EXPECT_TRUE(QtFilterFromWindows(filter).startsWith(QStringLiteral("Alle Bilder (*.")));
    }
    EXPECT_EQ(dialog->txtPic()->text(), QStringLiteral("/bilder/logo.bmp"));
    {
        FileChooser cancel{QString()};
        dialog->cmdPic()->click();
    }
    EXPECT_EQ(dialog->txtPic()->text(), QStringLiteral("/bilder/logo.bmp"));
    dialog->cmdClear()->click();
    EXPECT_EQ(dialog->txtPic()->text(), QString());
}

TEST(frmNew, ThePictureButtonOfTheOpenPackageStartsInItsFolderInEnglishToo) {
    Editor editor(QStringLiteral("English.lng"));
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    editor.open(folder);
    auto dialog = showNew(editor, false);
    FileChooser chooser{QString()};
    dialog->cmdPic()->click();
    ASSERT_EQ(chooser.requests.size(), 1u);
    EXPECT_EQ(QDir(chooser.requests[0].startFolder).canonicalPath(), QDir(folder).canonicalPath());
    EXPECT_TRUE(chooser.requests[0].filter.startsWith(QStringLiteral("All pictures|*.")));
    EXPECT_TRUE(chooser.requests[0].filter.endsWith(QStringLiteral("All files [*.*]|*.*")));
}

TEST(frmNew, CancelWritesNothing) {
    Editor editor;
    auto dialog = showNew(editor, true);
    fill(*dialog, QStringLiteral("Linie1"), QStringLiteral("T"), QStringLiteral("A"),
         QStringLiteral("Text"));
    dialog->cmdCancel()->click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_TRUE(tree(editor.root.file(QStringLiteral("Data"))).isEmpty());
    EXPECT_FALSE(editor.main->PackageChosen);
}

TEST(frmNew, AHugeOrBrokenDescriptionOpensTheInformationModeAtOnce) {
    Editor editor;
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"), {});
    QByteArray huge(16 * 1024 * 1024, 'x');
    huge[10] = '\xff';
    huge[100] = '\n';
    editor.root.write(QStringLiteral("Data/Linie1/Package.txt"), huge);
    editor.open(folder);

    QElapsedTimer clock;
    clock.start();
    auto dialog = showNew(editor, false);
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_LE(dialog->txtComment()->toPlainText().size(), kMaxDescriptionBytes);
    EXPECT_TRUE(dialog->txtComment()->toPlainText().startsWith(QStringLiteral("xxxxxxxxxxÿ")));
}

TEST(frmNew, IsLabelledFromTheLanguageFile) {
    Editor editor(QStringLiteral("English.lng"));
    auto dialog = showNew(editor, true);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("New announcement package"));
    EXPECT_EQ(dialog->lblTitel()->text(), QStringLiteral("&Title:"));
    EXPECT_EQ(dialog->cmdPic()->toolTip(), QStringLiteral("Choose a picture"));
    EXPECT_EQ(dialog->cmdCancel()->text(), QStringLiteral("&Cancel"));
}

TEST(frmNew, EveryControlTheLanguageFilesNameIsOneOfItsControls) {
    Editor editor;
    auto dialog = showNew(editor, true);
    for (const WindowTexts& window : LocalisedWindows()) {
        if (QLatin1StringView(window.window) != QLatin1StringView("frmNew"))
            continue;
        for (const char* name : window.controls)
            EXPECT_NE(dialog->findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_EQ(dialog->objectName(), QStringLiteral("frmNew"));
}

TEST(frmNew, EditingTheOpenPackagesDetailsIsTitledSoInEitherLanguage) {
    for (const char* file : {"English.lng", "Deutsch.lng"}) {
        Editor editor{QString::fromLatin1(file)};
        const QString folder =
            editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("L"),
                                {{QStringLiteral("0000"), QStringLiteral("G"), 100}});
        editor.open(folder);
        const auto details = showNew(editor, false);
        EXPECT_EQ(details->windowTitle(),
                  editor.language.GetLangString(LangText::PackageDetailsTitle))
            << file;
        details->reject();
        const auto fresh = showNew(editor, true);
        EXPECT_NE(fresh->windowTitle(), details->windowTitle()) << file;
        EXPECT_FALSE(fresh->windowTitle().isEmpty());
    }
    EXPECT_EQ(
        Editor(QStringLiteral("English.lng")).language.GetLangString(LangText::PackageDetailsTitle),
        QStringLiteral("Package details"));
}
