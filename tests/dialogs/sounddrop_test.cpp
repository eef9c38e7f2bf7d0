#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "dialogs/sounddrop.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QListWidget>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::TempDir;
using tavik::test::whenShown;
using tavik::test::writeTone;

namespace {

QMimeData* filesData(const QStringList& paths) {
    auto* data = new QMimeData;
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls << QUrl::fromLocalFile(path);
    data->setUrls(urls);
    return data;
}

// Drags `paths` onto `surface` and drops them there, as a file manager does. True when the
// surface accepted the drag.
bool dragAndDrop(QWidget* surface, const QStringList& paths) {
    std::unique_ptr<QMimeData> data(filesData(paths));
    const QPointF at(surface->width() / 2.0, surface->height() / 2.0);
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(surface, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent drop(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(surface, &drop);
    return drop.isAccepted();
}

QStringList texts(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}

struct DropSetup {
    EditorFixture editor;
    TempDir sources;

    DropSetup() { EXPECT_TRUE(editor.main->FormLoad()); }

    QString sound(const QString& name) const {
        const QString path = sources.file(name);
        EXPECT_TRUE(writeTone(path, 800, 8000));
        return path;
    }
};

} // namespace

TEST(SoundDrop, TakesOnlyLocalFilesOfTheInstalledFormats) {
    DropSetup setup;
    QWidget target;
    SoundDrop drop(&target, {QStringLiteral("wav"), QStringLiteral("mp3")});
    const QString wav = setup.sound(QStringLiteral("a.WAV"));
    const QString text = setup.sources.write(QStringLiteral("b.txt"), "x");
    QDir(setup.sources.path()).mkdir(QStringLiteral("ordner.wav"));
    std::unique_ptr<QMimeData> data(filesData({wav, text, setup.sources.file("ordner.wav")}));
    data->setUrls(data->urls() << QUrl(QStringLiteral("https://example.org/c.wav")));
    EXPECT_EQ(drop.SoundFiles(data.get()), QStringList{QDir::toNativeSeparators(wav)});
    EXPECT_TRUE(target.acceptDrops());
}

TEST(SoundDropOnPackageList, DroppedSoundsOpenTheImportDialogWithThem) {
    DropSetup setup;
    const QString package = setup.editor.writePackage(
        QStringLiteral("Linie1"), QStringLiteral("Linie 1"), {{"0000", "Gong", 100}});
    setup.editor.open(package);
    const QString a = setup.sound(QStringLiteral("Gleis 1.wav"));
    const QString b = setup.sound(QStringLiteral("Gleis 2.wav"));
    const QString notes = setup.sources.write(QStringLiteral("notes.txt"), "x");
    QStringList listed;
    whenShown<frmFile>([&](frmFile& dialog) {
        listed = texts(dialog.lstImport());
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    ASSERT_TRUE(dragAndDrop(setup.editor.main->lsvPack()->viewport(), {a, notes, b}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !listed.isEmpty(); }, 5000));
    QTest::qWait(0);
    EXPECT_EQ(listed, (QStringList{"Gleis 1", "Gleis 2"}));
    EXPECT_EQ(setup.editor.column(1), (QStringList{"Gong", "Gleis 1", "Gleis 2"}));
    EXPECT_TRUE(QFile::exists(package + QStringLiteral("/0002.wav")));
}

TEST(SoundDropOnPackageList, NothingIsTakenWhileNoPackageIsOpen) {
    DropSetup setup;
    const QString a = setup.sound(QStringLiteral("a.wav"));
    EXPECT_FALSE(dragAndDrop(setup.editor.main->lsvPack()->viewport(), {a}));
    QTest::qWait(20);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(SoundDropOnPackageList, ADragWithoutSoundFilesIsRefused) {
    DropSetup setup;
    setup.editor.open(setup.editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {}));
    EXPECT_FALSE(dragAndDrop(setup.editor.main->lsvPack()->viewport(),
                             {setup.sources.write(QStringLiteral("notes.txt"), "x")}));
    QTest::qWait(20);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(SoundDropOnImportList, DroppedSoundsJoinTheImportList) {
    DropSetup setup;
    setup.editor.open(setup.editor.writePackage(QStringLiteral("p"), QStringLiteral("P"), {}));
    frmFile dialog(*setup.editor.main);
    const QString a = setup.sound(QStringLiteral("Ansage.teil2.wav"));
    const QString empty = setup.sources.write(QStringLiteral("leer.wav"), "");
    dialog.AddFiles({setup.sound(QStringLiteral("erste.wav"))});
    ASSERT_TRUE(dragAndDrop(dialog.lstImport()->viewport(), {a, empty}));
    EXPECT_EQ(texts(dialog.lstImport()), (QStringList{"erste", "Ansage"}));
    EXPECT_EQ(dialog.lstHidden()->item(1)->text(), QDir::toNativeSeparators(a));
    EXPECT_EQ(dialog.lstHidden()->count(), 2);
}
