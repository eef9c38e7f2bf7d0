#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "dialogs/announcementcolors.h"
#include "dialogs/browselists.h"
#include "dialogs/filebrowsing.h"
#include "dialogs/frmfile.h"
#include "dialogs/packagecommands.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/windowtexts.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "support/smallfilesystem.h"
#include "support/tempdir.h"
#include "util/conversions.h"
#include "util/tickcount.h"
#include "util/zelcmd.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>
#include <climits>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ErrorCatcher;
using tavik::test::TempDir;
using tavik::test::whenShown;
using tavik::test::writeTone;

namespace {

// An editor with a package open and a folder of sound files to import from.
struct ImportSetup {
    EditorFixture editor;
    TempDir sources;
    QString package;

    explicit ImportSetup(const std::vector<EditorFixture::Entry>& entries = {}) {
        EXPECT_TRUE(editor.main->FormLoad());
        package = editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"), entries);
        editor.open(package);
        editor.messages.clear();
    }

    QString sound(const QString& name, int ms = 100) const {
        const QString path = sources.file(name);
        EXPECT_TRUE(writeTone(path, ms * 8LL, 8000));
        return path;
    }

    clsZELDB indexOnDisk() const {
        clsZELDB store;
        EXPECT_TRUE(store.OpenIOFile(package + QStringLiteral("/Package.io")));
        return store;
    }
};

QStringList texts(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}

QString indexEntry(clsZELDB& store, int position) {
    return CStr(store.GetSetting(QStringLiteral("INDEX"), QString::number(position), QString()));
}

// Shows `folder` in the file list, as a user would browse to it.
void browseTo(frmFile& dialog, const QString& folder) {
    ASSERT_TRUE(dialog.Dir1()->SetPath(folder));
    ASSERT_EQ(dialog.File1()->Path(), QDir::toNativeSeparators(folder));
}

void selectFiles(frmFile& dialog, const QStringList& names) {
    for (const QString& name : names) {
        const QList<QListWidgetItem*> found = dialog.File1()->findItems(name, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << name.toStdString();
        found.front()->setSelected(true);
    }
}

void clickRow(QListWidget* list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QRect rect = list->visualItemRect(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, rect.center());
}

} // namespace

TEST(frmFileFormats, TheFormatListHasTheFixedEntriesThenEveryInstalledFormat) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    QStringList entries;
    for (int i = 0; i < dialog.cboFormat()->count(); ++i)
        entries << dialog.cboFormat()->itemText(i);
    EXPECT_EQ(entries, (QStringList{"Alle Dateien", "Alle Medientypen!", "*.wav", "*.mp3", "*.ogg",
                                    "*.flac"}));
    EXPECT_EQ(dialog.cboFormat()->currentIndex(), 1);
    EXPECT_EQ(dialog.File1()->Pattern(), QStringLiteral("*.wav;*.mp3;*.ogg;*.flac"));
}

TEST(frmFileFormats, WithoutInstalledFormatsAllMediaTypesIsAnEmptyPattern) {
    ImportSetup setup;
    setup.editor.root.write(QStringLiteral("bin/Formats.ini"), "[wav]\r\nFormat=waveaudio\r\n");
    setup.sound(QStringLiteral("a.wav"));
    frmFile dialog(*setup.editor.main);
    EXPECT_EQ(dialog.cboFormat()->count(), 2);
    browseTo(dialog, setup.sources.path());
    EXPECT_EQ(dialog.File1()->Pattern(), QString());
    EXPECT_EQ(dialog.File1()->count(), 0);
    dialog.cboFormat()->setCurrentIndex(0);
    EXPECT_EQ(texts(dialog.File1()), QStringList{"a.wav"});
}

TEST(frmFileFormats, ChoosingAFormatFiltersTheFileList) {
    ImportSetup setup;
    setup.sound(QStringLiteral("a.wav"));
    setup.sources.write(QStringLiteral("b.MP3"), "mp3");
    setup.sources.write(QStringLiteral("notes.txt"), "text");
    frmFile dialog(*setup.editor.main);
    browseTo(dialog, setup.sources.path());
    EXPECT_EQ(texts(dialog.File1()), (QStringList{"a.wav", "b.MP3"}));
    dialog.cboFormat()->setCurrentIndex(3);
    EXPECT_EQ(texts(dialog.File1()), QStringList{"b.MP3"});
    dialog.cboFormat()->setCurrentIndex(0);
    EXPECT_EQ(texts(dialog.File1()), (QStringList{"a.wav", "b.MP3", "notes.txt"}));
}

TEST(frmFileBrowse, OpeningAFolderInTheFolderListShowsItsFiles) {
    ImportSetup setup;
    QDir(setup.sources.path()).mkdir(QStringLiteral("Gleise"));
    writeTone(setup.sources.file(QStringLiteral("Gleise/gleis1.wav")), 800, 8000);
    frmFile dialog(*setup.editor.main);
    browseTo(dialog, setup.sources.path());
    const QList<QListWidgetItem*> sub =
        dialog.Dir1()->findItems(QStringLiteral("Gleise"), Qt::MatchEndsWith);
    ASSERT_EQ(sub.size(), 1);
    dialog.show();
    dialog.Dir1()->setCurrentItem(sub.front());
    QTest::keyClick(dialog.Dir1(), Qt::Key_Return);
    EXPECT_EQ(dialog.File1()->Path(), QDir::toNativeSeparators(setup.sources.file("Gleise")));
    EXPECT_EQ(texts(dialog.File1()), QStringList{"gleis1.wav"});
}

TEST(frmFileBrowse, ADriveThatCannotBeOpenedWarnsWithText17AndKeepsTheFolder) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    browseTo(dialog, setup.sources.path());
    dialog.Drive1()->addItem(setup.sources.file(QStringLiteral("no-such-drive")));
    dialog.Drive1()->setCurrentIndex(dialog.Drive1()->count() - 1);
    ASSERT_EQ(setup.editor.messages.size(), 1u);
    EXPECT_EQ(setup.editor.messages[0].text, setup.editor.language.GetLangString(17));
    EXPECT_EQ(setup.editor.messages[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(dialog.Dir1()->Path(), QDir::toNativeSeparators(setup.sources.path()));
}

TEST(frmFileBrowse, TheDriveListOffersTheRootAndTheDriveOfTheOpenFolder) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    ASSERT_GE(dialog.Drive1()->count(), 1);
#ifndef Q_OS_WIN
    EXPECT_EQ(dialog.Drive1()->itemText(0), QStringLiteral("/"));
#endif
    EXPECT_EQ(dialog.Drive1()->currentText(), DriveOf(dialog.Dir1()->Path()));
    // Choosing a drive opens the folder list there and the file list follows.
    setup.sound(QStringLiteral("a.wav"));
    dialog.Drive1()->addItem(setup.sources.path());
    dialog.Drive1()->setCurrentIndex(dialog.Drive1()->count() - 1);
    EXPECT_EQ(dialog.Dir1()->Path(), QDir::toNativeSeparators(setup.sources.path()));
    EXPECT_EQ(texts(dialog.File1()), QStringList{"a.wav"});
    EXPECT_TRUE(setup.editor.messages.empty());
}

TEST(frmFileBrowse, AVolumeMountedUnderALongPathKeepsTheDialogItsWidthAndShowsItsPathWhole) {
    ImportSetup setup;
    const int usual = frmFile(*setup.editor.main).sizeHint().width();
    TempDir deep;
    const QString point = deep.file(QStringLiteral("ein/sehr/tief/liegender/Ordner/mit/einem/"
                                                   "Laufwerk/das/hier/eingehaengt/wurde/Ansagen"));
    tavik::test::SmallFileSystem volume(point, 64 * 1024);
    if (!volume.mounted())
        GTEST_SKIP() << volume.whyNot().toStdString();
    frmFile dialog(*setup.editor.main);
    const int listed = dialog.Drive1()->findText(point);
    if (listed < 0)
        GTEST_SKIP() << "this system lists its drives, not the folders volumes are mounted on";
    EXPECT_LE(dialog.sizeHint().width(), usual);
    EXPECT_EQ(dialog.Drive1()->itemData(listed, Qt::ToolTipRole).toString(), point);
}

TEST(frmFileAdd, AddsTheSelectedFilesAndNamesAnEmptyOneAndWhy) {
    ImportSetup setup;
    const QString a = setup.sound(QStringLiteral("Ansage.teil2.wav"));
    const QString b = setup.sound(QStringLiteral("Gong.wav"));
    const QString empty = setup.sources.write(QStringLiteral("leer.wav"), "");
    setup.sound(QStringLiteral("other.wav"));
    frmFile dialog(*setup.editor.main);
    browseTo(dialog, setup.sources.path());
    selectFiles(dialog, {"Ansage.teil2.wav", "Gong.wav", "leer.wav"});
    QTest::mouseClick(dialog.cmdAdd(), Qt::LeftButton);
    EXPECT_EQ(texts(dialog.lstImport()), (QStringList{"Ansage", "Gong"}));
    EXPECT_EQ(texts(dialog.lstHidden()),
              (QStringList{QDir::toNativeSeparators(a), QDir::toNativeSeparators(b)}));
    ASSERT_EQ(setup.editor.messages.size(), 1u);
    EXPECT_EQ(setup.editor.messages[0].text,
              setup.editor.language.GetLangString(LangText::ImportRefused) + "\n" +
                  setup.editor.language.GetLangString(LangText::ImportRefusedEmpty,
                                                      QDir::toNativeSeparators(empty)));
    // The file list keeps its selection; a second click adds the same files again.
    EXPECT_EQ(dialog.File1()->selectedItems().size(), 3);
    QTest::mouseClick(dialog.cmdAdd(), Qt::LeftButton);
    EXPECT_EQ(texts(dialog.lstImport()), (QStringList{"Ansage", "Gong", "Ansage", "Gong"}));
    EXPECT_EQ(dialog.lstHidden()->count(), 4);
}

TEST(frmFileAdd, RefusesAPictureATextAndACutSoundNamingEachAndWhyAndCopiesNothing) {
    ImportSetup setup;
    const QString good = setup.sound(QStringLiteral("Gong.wav"), 500);
    const QByteArray wave = tavik::test::readAll(good);
    const QString picture = setup.sources.write(
        QStringLiteral("Bild.wav"), QByteArray("\x89PNG\r\n\x1a\n", 8) + QByteArray(300, '\0'));
    const QString text = setup.sources.write(QStringLiteral("Text.mp3"),
                                             QByteArray("Zug faehrt ein\n").repeated(40));
    const QString cut = setup.sources.write(QStringLiteral("Halb.wav"), wave.left(wave.size() / 2));
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({picture, good, text, cut});
    EXPECT_EQ(texts(dialog.lstImport()), QStringList{"Gong"});
    ASSERT_EQ(setup.editor.messages.size(), 1u);
    const Language& language = setup.editor.language;
    EXPECT_EQ(setup.editor.messages[0].text,
              QStringList({language.GetLangString(LangText::ImportRefused),
                           language.GetLangString(LangText::ImportRefusedNotSound, picture),
                           language.GetLangString(LangText::ImportRefusedNotSound, text),
                           language.GetLangString(LangText::ImportRefusedCut, cut)})
                  .join(u'\n'));
    EXPECT_EQ(setup.editor.messages[0].icon, MsgIcon::Exclamation);
    const QStringList before = tavik::test::namesIn(setup.package);
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    QStringList added = tavik::test::namesIn(setup.package);
    for (const QString& name : before)
        added.removeOne(name);
    EXPECT_EQ(added, QStringList{"0000.wav"});
}

TEST(frmFileRemove, RemovingThreeNeighboursOnceLeavesTheSecondOfThem) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    QStringList files;
    for (const char* name : {"a.wav", "b.wav", "c.wav", "d.wav", "e.wav"})
        files << setup.sound(QString::fromLatin1(name));
    dialog.AddFiles(files);
    dialog.show();
    clickRow(dialog.lstImport(), 1);
    clickRow(dialog.lstImport(), 3, Qt::ShiftModifier);
    ASSERT_EQ(dialog.lstImport()->selectedItems().size(), 3);
    QTest::mouseClick(dialog.cmdDel(), Qt::LeftButton);
    EXPECT_EQ(texts(dialog.lstImport()), (QStringList{"a", "c", "e"}));
    EXPECT_EQ(texts(dialog.lstHidden()), (QStringList{files[0], files[2], files[4]}));
    // The one left behind stays selected and goes with the next click.
    EXPECT_TRUE(dialog.lstImport()->item(1)->isSelected());
    QTest::mouseClick(dialog.cmdDel(), Qt::LeftButton);
    EXPECT_EQ(texts(dialog.lstImport()), (QStringList{"a", "e"}));
    EXPECT_EQ(texts(dialog.lstHidden()), (QStringList{files[0], files[4]}));
}

TEST(frmFileRemove, ClearEmptiesBothLists) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({setup.sound(QStringLiteral("a.wav")), setup.sound(QStringLiteral("b.wav"))});
    QTest::mouseClick(dialog.cmdClear(), Qt::LeftButton);
    EXPECT_EQ(dialog.lstImport()->count(), 0);
    EXPECT_EQ(dialog.lstHidden()->count(), 0);
}

TEST(frmFileNaming, ClickingAnEntryShowsItsNameAndTypingRenamesIt) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({setup.sound(QStringLiteral("a.wav")), setup.sound(QStringLiteral("b.wav"))});
    dialog.show();
    clickRow(dialog.lstImport(), 1);
    EXPECT_EQ(dialog.txtName()->text(), QStringLiteral("b"));
    dialog.txtName()->selectAll();
    QTest::keyClicks(dialog.txtName(), QStringLiteral("Gleis 2"));
    EXPECT_EQ(texts(dialog.lstImport()), (QStringList{"a", "Gleis 2"}));
    EXPECT_TRUE(dialog.lstHidden()->item(1)->text().endsWith(QStringLiteral("b.wav")));
}

TEST(frmFileColour, TheButtonOpensThePanelAndReleasingOnAColourClosesIt) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.show();
    ASSERT_EQ(dialog.optColor().size(), 9);
    ASSERT_EQ(dialog.shpColor().size(), 9);
    EXPECT_FALSE(dialog.picColor()->isVisible());
    QTest::mouseClick(dialog.cmdColor(), Qt::LeftButton);
    EXPECT_TRUE(dialog.cmdColor()->isChecked());
    EXPECT_TRUE(dialog.picColor()->isVisible());
    QTest::mouseClick(dialog.optColor()[3], Qt::LeftButton);
    EXPECT_FALSE(dialog.cmdColor()->isChecked());
    EXPECT_FALSE(dialog.picColor()->isVisible());
    QTest::mouseClick(dialog.cmdColor(), Qt::LeftButton);
    EXPECT_TRUE(dialog.picColor()->isVisible());
    QTest::mouseClick(dialog.cmdColor(), Qt::LeftButton);
    EXPECT_FALSE(dialog.picColor()->isVisible());
}

TEST(frmFileColour, EachSwatchSitsBesideItsOwnOption) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.show();
    QTest::mouseClick(dialog.cmdColor(), Qt::LeftButton);
    ASSERT_TRUE(dialog.picColor()->isVisible());
    const auto rectIn = [&](QWidget* w) {
        return QRect(w->mapTo(dialog.picColor(), QPoint(0, 0)), w->size());
    };
    for (int i = 0; i < 9; ++i) {
        const QRect swatch = rectIn(dialog.shpColor()[i]);
        // The nearest option to the left of the swatch, on its row, is its own.
        int nearest = -1;
        int nearestGap = INT_MAX;
        for (int j = 0; j < 9; ++j) {
            const QRect option = rectIn(dialog.optColor()[j]);
            if (option.right() > swatch.left() || option.bottom() < swatch.top() ||
                option.top() > swatch.bottom())
                continue;
            const int gap = swatch.left() - option.right();
            if (gap < nearestGap) {
                nearestGap = gap;
                nearest = j;
            }
        }
        EXPECT_EQ(nearest, i) << "swatch " << i;
        EXPECT_LE(nearestGap, 8) << "swatch " << i;
        // The next option on the row is clearly farther than the own one.
        if (i % 3 != 2) {
            const QRect next = rectIn(dialog.optColor()[i + 1]);
            EXPECT_GE(next.left() - swatch.right(), 3 * nearestGap + 12) << "swatch " << i;
        }
    }
}

TEST(frmFileColour, TheChosenColourIsStoredForEveryImportedSound) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({setup.sound(QStringLiteral("a.wav")), setup.sound(QStringLiteral("b.wav"))});
    dialog.show();
    QTest::mouseClick(dialog.cmdColor(), Qt::LeftButton);
    QTest::mouseClick(dialog.optColor()[2], Qt::LeftButton);
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    clsZELDB store = setup.indexOnDisk();
    for (const char* key : {"0000", "0001"})
        EXPECT_EQ(CLng(store.GetSetting(key, QStringLiteral("Color"), QString())),
                  kAnnouncementColors[2])
            << key;
    // The reloaded list shows them in that colour.
    EXPECT_EQ(setup.editor.main->lsvPack()->ListItems(1)->ForeColor(),
              static_cast<quint32>(kAnnouncementColors[2]));
}

TEST(frmFileColour, WithoutAChosenColourNoneIsStored) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({setup.sound(QStringLiteral("a.wav"))});
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    clsZELDB store = setup.indexOnDisk();
    EXPECT_EQ(CStr(store.GetSetting(QStringLiteral("0000"), QStringLiteral("Color"),
                                    QStringLiteral("-"))),
              QStringLiteral("-"));
}

TEST(frmFilePreview, NothingIsPlayedBeforeAListHadTheFocus) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({setup.sound(QStringLiteral("a.wav"))});
    EXPECT_EQ(dialog.previewSource(), frmFile::NoPreview);
    QTest::mouseClick(dialog.cmdPlay(), Qt::LeftButton);
    EXPECT_TRUE(setup.editor.messages.empty());
    EXPECT_FALSE(setup.editor.backend.emulator().isOpen(QStringLiteral("tavik_preview")));
}

TEST(frmFilePreview, PlaysTheSelectedImportEntryUnderThePreviewAlias) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    const QString b = setup.sound(QStringLiteral("b.wav"), 2000);
    dialog.AddFiles({setup.sound(QStringLiteral("a.wav"), 2000), b});
    dialog.show();
    clickRow(dialog.lstImport(), 1);
    dialog.lstImport()->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.previewSource() == frmFile::ImportList; }));
    setup.editor.recorder.clear();
    QTest::mouseClick(dialog.cmdPlay(), Qt::LeftButton);
    // Listening just plays: no box with the file's paths comes first.
    EXPECT_TRUE(setup.editor.messages.empty());
    EXPECT_TRUE(setup.editor.backend.emulator().isPlaying(QStringLiteral("tavik_preview")));
    EXPECT_TRUE(setup.editor.recorder.commands()
                    .filter(QStringLiteral("open "))
                    .join("")
                    .contains(ShortPath(b)))
        << setup.editor.recorder.commands().join(u'\n').toStdString();
    // A second preview stops and closes the first before it opens again.
    QTest::mouseClick(dialog.cmdPlay(), Qt::LeftButton);
    EXPECT_TRUE(setup.editor.backend.emulator().isPlaying(QStringLiteral("tavik_preview")));
    EXPECT_TRUE(setup.editor.logLines.isEmpty());
    setup.editor.mci.MciClose(QStringLiteral("tavik_preview"));
}

TEST(frmFilePreview, PlaysTheCurrentFileOfTheFileList) {
    ImportSetup setup;
    const QString a = setup.sound(QStringLiteral("a.wav"), 2000);
    frmFile dialog(*setup.editor.main);
    browseTo(dialog, setup.sources.path());
    dialog.show();
    clickRow(dialog.File1(), 0);
    dialog.File1()->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.previewSource() == frmFile::BrowseList; }));
    QTest::mouseClick(dialog.cmdPlay(), Qt::LeftButton);
    EXPECT_TRUE(setup.editor.messages.empty());
    EXPECT_TRUE(setup.editor.backend.emulator().isPlaying(QStringLiteral("tavik_preview")));
    setup.editor.mci.MciClose(QStringLiteral("tavik_preview"));
}

TEST(frmFileImport, TwoFilesBesideExisting0000And0002Become0001And0003) {
    ImportSetup setup({{QStringLiteral("0000"), QStringLiteral("Gong"), 100},
                       {QStringLiteral("0002"), QStringLiteral("Pfiff"), 100}});
    QFile::rename(setup.package + QStringLiteral("/0002.wav"),
                  setup.package + QStringLiteral("/0002.mp3"));
    setup.editor.main->lsvPack()->ClearItems();
    setup.editor.open(setup.package);
    setup.editor.messages.clear();
    frmFile dialog(*setup.editor.main);
    const QString first = setup.sound(QStringLiteral("Ansage.teil2.wav"), 300);
    const QString second = setup.sound(QStringLiteral("Gleis.wav"), 400);
    dialog.AddFiles({first, second});
    dialog.show();
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);

    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(test::readAll(setup.package + QStringLiteral("/0001.wav")), test::readAll(first));
    EXPECT_EQ(test::readAll(setup.package + QStringLiteral("/0003.wav")), test::readAll(second));
    clsZELDB store = setup.indexOnDisk();
    EXPECT_EQ(indexEntry(store, 3), QStringLiteral("0001~Ansage"));
    EXPECT_EQ(indexEntry(store, 4), QStringLiteral("0003~Gleis"));
    EXPECT_EQ(CInt(store.GetSetting(QStringLiteral("INDEX"), QStringLiteral("Count"), "0")), 4);
    // The package was loaded again and the new sounds are open and measured.
    EXPECT_EQ(setup.editor.column(0), (QStringList{"0000", "0002", "0001", "0003"}));
    EXPECT_EQ(setup.editor.column(1), (QStringList{"Gong", "Pfiff", "Ansage", "Gleis"}));
    EXPECT_EQ(setup.editor.column(2), (QStringList{"wav", "mp3", "wav", "wav"}));
    ASSERT_EQ(setup.editor.main->table.AnnouncementCount, 4);
    EXPECT_EQ(setup.editor.main->table.Announcements[3].Length, 400);
    EXPECT_TRUE(setup.editor.backend.emulator().isOpen(QStringLiteral("0003")));
    EXPECT_EQ(setup.editor.main->statusWindow(), nullptr);
    EXPECT_TRUE(setup.editor.main->findChildren<frmStatus*>().isEmpty());
}

TEST(frmFileImport, AnEntryRenamedToNothingIsCopiedAndCountedButNotShown) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({setup.sound(QStringLiteral("a.wav")), setup.sound(QStringLiteral("b.wav"))});
    dialog.show();
    clickRow(dialog.lstImport(), 0);
    dialog.txtName()->clear();
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_TRUE(QFile::exists(setup.package + QStringLiteral("/0000.wav")));
    clsZELDB store = setup.indexOnDisk();
    EXPECT_EQ(indexEntry(store, 1), QStringLiteral("0000~"));
    EXPECT_EQ(indexEntry(store, 2), QStringLiteral("0001~b"));
    EXPECT_EQ(setup.editor.column(0), QStringList{"0001"});
}

TEST(frmFileImport, TheStatusWindowNamesEachFileWhileItIsCopied) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({setup.sound(QStringLiteral("Gong.wav"))});
    dialog.show();
    QStringList seen;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        for (frmStatus* status : setup.editor.main->findChildren<frmStatus*>())
            if (status->isVisible())
                seen << status->lblStatus()->text() + QStringLiteral("|") +
                            status->lblFile()->text();
    });
    poll.start(0);
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    poll.stop();
    EXPECT_TRUE(
        seen.contains(setup.editor.language.GetLangString(28) + QStringLiteral("|Gong.wav")))
        << seen.join(u'\n').toStdString();
}

TEST(frmFileImport, AFailedCopyLeavesThePackageAsItWas) {
    ImportSetup setup({{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    const QByteArray indexBefore = test::readAll(setup.package + QStringLiteral("/Package.io"));
    frmFile dialog(*setup.editor.main);
    const QString vanishing = setup.sound(QStringLiteral("b.wav"));
    dialog.AddFiles(
        {setup.sound(QStringLiteral("a.wav")), vanishing, setup.sound(QStringLiteral("c.wav"))});
    QFile::remove(vanishing);
    dialog.show();
    ErrorCatcher errors;
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    ASSERT_EQ(errors.shown.size(), 1);
    EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("'53'")));
    // The dialog stays with its list; all or nothing, so the first file's copy went again.
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(dialog.isEnabled());
    EXPECT_EQ(dialog.lstImport()->count(), 3);
    EXPECT_EQ(test::namesIn(setup.package), (QStringList{"0000.wav", "Package.io"}));
    EXPECT_EQ(test::readAll(setup.package + QStringLiteral("/Package.io")), indexBefore);
    EXPECT_EQ(setup.editor.column(0), QStringList{"0000"});
    EXPECT_TRUE(setup.editor.main->findChildren<frmStatus*>().isEmpty());
    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
}

TEST(frmFileImport, CancelLeavesThePackageUntouched) {
    ImportSetup setup({{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    const QByteArray indexBefore = test::readAll(setup.package + QStringLiteral("/Package.io"));
    frmFile dialog(*setup.editor.main);
    dialog.AddFiles({setup.sound(QStringLiteral("a.wav"))});
    dialog.show();
    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(QDir(setup.package).entryList(QDir::Files), (QStringList{"0000.wav", "Package.io"}));
    EXPECT_EQ(test::readAll(setup.package + QStringLiteral("/Package.io")), indexBefore);
}

TEST(frmFileWindow, LabelsItselfFromTheLanguageFile) {
    EditorFixture editor(QStringLiteral("English.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    frmFile dialog(*editor.main);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Import file(s)"));
    EXPECT_EQ(dialog.cmdAdd()->text(), QStringLiteral("Add file(s)"));
    EXPECT_EQ(dialog.cmdPlay()->text(), QString());
    EXPECT_EQ(dialog.cmdPlay()->toolTip(), QStringLiteral("Listen to the file"));
    EXPECT_EQ(frmFile::GetFileName(QStringLiteral("/x/Ansage.teil2.wav"), true),
              QStringLiteral("Ansage"));
    EXPECT_EQ(frmFile::GetFileName(QStringLiteral("/x/Ansage.teil2.wav"), false),
              QStringLiteral("Ansage.teil2.wav"));
}

TEST(frmFileWindow, TheAddButtonOfTheMainWindowOpensTheDialogModally) {
    ImportSetup setup({{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    const QString a = setup.sound(QStringLiteral("Durchsage.wav"), 250);
    bool modal = false;
    whenShown<frmFile>([&](frmFile& dialog) {
        modal = dialog.isModal();
        dialog.AddFiles({a});
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(setup.editor.main->cmdAdd(), Qt::LeftButton);
    EXPECT_TRUE(modal);
    EXPECT_EQ(setup.editor.column(1), (QStringList{"Gong", "Durchsage"}));
    EXPECT_TRUE(QFile::exists(setup.package + QStringLiteral("/0001.wav")));
}

TEST(frmFileWindow, EveryControlTheLanguageFilesNameIsOneOfItsControls) {
    ImportSetup setup;
    frmFile dialog(*setup.editor.main);
    bool listed = false;
    for (const WindowTexts& window : LocalisedWindows()) {
        if (QLatin1StringView(window.window) != QLatin1StringView("frmFile"))
            continue;
        listed = true;
        for (const char* name : window.controls)
            EXPECT_NE(dialog.findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_TRUE(listed);
    EXPECT_EQ(dialog.objectName(), QStringLiteral("frmFile"));
}
