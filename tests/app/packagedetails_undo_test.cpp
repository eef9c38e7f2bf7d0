// The package details ("Daten") as one step of the main window's undo history: undo and redo
// put the package files back byte for byte and the index in memory follows them.
#include "app/frmmain.h"
#include "dialogs/frmnew.h"
#include "package/clszeldb.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "support/tempdir.h"
#include "util/conversions.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QUndoStack>
#include <functional>
#include <gtest/gtest.h>
#include <optional>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::readAll;
using tavik::test::whenShown;

namespace {

// A package with an author, a comment and a picture, opened.
struct DetailsEditor : EditorFixture {
    QString folder;
    QString newPicture;
    DetailsEditor() {
        EXPECT_TRUE(main->FormLoad());
        folder = writePackage(QStringLiteral("p"), QStringLiteral("P"), {{"0000", "Gong", 100}});
        clsZELDB store;
        EXPECT_TRUE(store.OpenIOFile(file(QStringLiteral("Package.io"))));
        store.SaveSetting("INFO", "Autor", Variant::fromString("Alt"));
        store.SaveIOFile(file(QStringLiteral("Package.io")));
        root.write(QStringLiteral("Data/p/Package.txt"), QByteArray("Erste Zeile\r\nzweite"));
        root.write(QStringLiteral("Data/p/Package.img"), QByteArray("old picture bytes"));
        newPicture = root.write(QStringLiteral("new.img"), QByteArray("new picture"));
        open(folder);
        messages.clear();
        // Ctrl+Z and Ctrl+Y reach the window's shortcuts only while it is active.
        main->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*main));
    }
    QString file(const QString& name) const { return folder + QStringLiteral("/") + name; }
    // The three files the dialog may write; no value for a missing one.
    QList<std::optional<QByteArray>> files() const {
        QList<std::optional<QByteArray>> bytes;
        for (const char* name : {"Package.io", "Package.txt", "Package.img"}) {
            const QString path = file(QString::fromLatin1(name));
            bytes << (QFileInfo::exists(path) ? std::optional(readAll(path)) : std::nullopt);
        }
        return bytes;
    }
    QString authorOnDisk() const {
        clsZELDB store;
        EXPECT_TRUE(store.OpenIOFile(file(QStringLiteral("Package.io"))));
        return CStr(store.GetSetting("INFO", "Autor", QString()));
    }
    QString authorInMemory() const {
        return CStr(main->PackageIndex.GetSetting("INFO", "Autor", QString()));
    }
    // A key of the edit menu, to the window as the user presses it after the dialog closed.
    void press(Qt::Key key) {
        main->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*main));
        QTest::keyClick(&*main, key, Qt::ControlModifier);
    }
    // Opens "Daten" with the real button and lets `answer` fill and close the dialog.
    void details(std::function<void(frmNew&)> answer) {
        whenShown<frmNew>(std::move(answer));
        QTest::mouseClick(main->cmdEdit(), Qt::LeftButton);
    }
    void changeAuthorCommentAndPicture() {
        details([this](frmNew& dialog) {
            dialog.txtAutor()->setText(QStringLiteral("Neu"));
            dialog.txtComment()->setPlainText(QStringLiteral("Neuer Kommentar"));
            dialog.txtPic()->setText(newPicture);
            QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
        });
    }
};

} // namespace

TEST(PackageDetailsUndo, UndoPutsEveryFileBackByteForByteAndRedoTheNewBytes) {
    DetailsEditor editor;
    frmMain& main = *editor.main;
    const auto before = editor.files();
    editor.changeAuthorCommentAndPicture();
    const auto after = editor.files();
    ASSERT_EQ(editor.authorOnDisk(), QStringLiteral("Neu"));
    for (int i = 0; i < 3; ++i)
        EXPECT_NE(after[i], before[i]) << i;
    EXPECT_EQ(after[1], std::optional(QByteArray("Neuer Kommentar\r\n")));
    EXPECT_EQ(after[2], std::optional(QByteArray("new picture")));
    EXPECT_EQ(main.undoStack()->count(), 1);
    EXPECT_EQ(main.undoStack()->undoText(), QStringLiteral("Paketdaten"));

    editor.press(Qt::Key_Z);
    EXPECT_EQ(editor.files(), before);
    EXPECT_EQ(editor.authorInMemory(), QStringLiteral("Alt"));
    // The step is written as it moves: nothing is left unsaved.
    EXPECT_FALSE(main.isWindowModified());

    editor.press(Qt::Key_Y);
    EXPECT_EQ(editor.files(), after);
    EXPECT_EQ(editor.authorInMemory(), QStringLiteral("Neu"));
    EXPECT_FALSE(main.isWindowModified());
    EXPECT_TRUE(editor.messages.empty());
}

TEST(PackageDetailsUndo, UndoRemovesADescriptionThatWasNotThereBefore) {
    DetailsEditor editor;
    frmMain& main = *editor.main;
    ASSERT_TRUE(QFile::remove(editor.file(QStringLiteral("Package.txt"))));
    const auto before = editor.files();
    editor.changeAuthorCommentAndPicture();
    ASSERT_TRUE(QFileInfo::exists(editor.file(QStringLiteral("Package.txt"))));
    main.mnuUndo()->trigger();
    EXPECT_FALSE(QFileInfo::exists(editor.file(QStringLiteral("Package.txt"))));
    EXPECT_EQ(editor.files(), before);
}

TEST(PackageDetailsUndo, CancelOrOkWithoutAChangeAddsNoStep) {
    DetailsEditor editor;
    frmMain& main = *editor.main;
    const auto before = editor.files();
    editor.details([](frmNew& dialog) {
        dialog.txtAutor()->setText(QStringLiteral("Neu"));
        QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    });
    editor.details([](frmNew& dialog) { QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton); });
    EXPECT_EQ(editor.files(), before);
    EXPECT_EQ(main.undoStack()->count(), 0);
    EXPECT_FALSE(main.mnuUndo()->isEnabled());
    EXPECT_FALSE(main.isWindowModified());
}

TEST(PackageDetailsUndo, SaveAfterUndoKeepsTheOldAuthor) {
    DetailsEditor editor;
    frmMain& main = *editor.main;
    editor.changeAuthorCommentAndPicture();
    editor.press(Qt::Key_Z);
    QTest::mouseClick(main.cmdSave(), Qt::LeftButton);
    EXPECT_EQ(editor.authorOnDisk(), QStringLiteral("Alt"));
    EXPECT_EQ(editor.authorInMemory(), QStringLiteral("Alt"));
}

TEST(PackageDetailsUndo, UnsavedListChangesStayUnsavedAroundTheStep) {
    DetailsEditor editor;
    frmMain& main = *editor.main;
    main.mnuTitel()->trigger(); // a sort: unsaved
    ASSERT_TRUE(main.isWindowModified());
    editor.changeAuthorCommentAndPicture();
    EXPECT_TRUE(main.isWindowModified());
    editor.press(Qt::Key_Z);
    EXPECT_EQ(editor.authorOnDisk(), QStringLiteral("Alt"));
    EXPECT_TRUE(main.isWindowModified());
    editor.press(Qt::Key_Z);
    EXPECT_FALSE(main.isWindowModified());
}
