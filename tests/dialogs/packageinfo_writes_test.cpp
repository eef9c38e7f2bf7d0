// The package information dialog (frmNew with newPackageMode clear) on the disk: a comment is
// only written back when it was edited, and no write goes through a link or half-way.
#include "app/frmmain.h"
#include "dialogs/frmnew.h"
#include "package/clszeldb.h"
#include "support/editorfixture.h"
#include "support/errorcatcher.h"
#include "support/links.h"
#include "support/treesnapshot.h"
#include "support/writefault.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <cerrno>
#include <gtest/gtest.h>
#include <memory>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ErrorCatcher;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::TreeSnapshot;

namespace {

struct InfoEditor : EditorFixture {
    InfoEditor() {
        EXPECT_TRUE(main->FormLoad());
        folder = writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                              {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
        // Title and author are there, so confirming as it stands is allowed.
        clsZELDB store;
        EXPECT_TRUE(store.OpenIOFile(file(QStringLiteral("Package.io"))));
        store.SaveSetting("INFO", "Autor", Variant::fromString("Tavik"));
        store.SaveIOFile(file(QStringLiteral("Package.io")));
    }
    std::unique_ptr<frmNew> showInfo() {
        open(folder);
        main->newPackageMode = false;
        auto dialog = std::make_unique<frmNew>(*main);
        dialog->show();
        return dialog;
    }
    QString file(const QString& name) const { return folder + QStringLiteral("/") + name; }
    QString folder;
};

void confirm(frmNew& dialog) {
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
}

} // namespace

TEST(PackageInformation, ConfirmingWithoutAnEditKeepsTheDescriptionByteForByte) {
    InfoEditor editor;
    const QByteArray comment("Zwei Zeilen\r\nohne Zeilenende am Schluss");
    editor.root.write(QStringLiteral("Data/Linie1/Package.txt"), comment);
    for (int round = 0; round < 3; ++round) {
        auto dialog = editor.showInfo();
        confirm(*dialog);
        EXPECT_FALSE(dialog->isVisible());
    }
    EXPECT_EQ(readAll(editor.file("Package.txt")), comment);
}

TEST(PackageInformation, ADescriptionLongerThanTheBoxOrWithANulIsNeverCut) {
    InfoEditor editor;
    QByteArray comment(200 * 1024, 'x');
    comment[70] = '\0';
    comment[100 * 1024] = '\n';
    editor.root.write(QStringLiteral("Data/Linie1/Package.txt"), comment);
    auto dialog = editor.showInfo();
    dialog->txtAutor()->setText(QStringLiteral("Neuer Autor"));
    confirm(*dialog);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(readAll(editor.file("Package.txt")), comment);
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(editor.file("Package.io")));
    EXPECT_EQ(store.GetSetting("INFO", "Autor", "").stringValue(), QStringLiteral("Neuer Autor"));
}

TEST(PackageInformation, AnEditedDescriptionIsWrittenWithItsLineBreak) {
    InfoEditor editor;
    editor.root.write(QStringLiteral("Data/Linie1/Package.txt"), "Alt");
    auto dialog = editor.showInfo();
    dialog->txtComment()->setFocus();
    QTest::keyClick(dialog->txtComment(), Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(dialog->txtComment(), QStringLiteral(" und neu"));
    confirm(*dialog);
    EXPECT_EQ(readAll(editor.file("Package.txt")), QByteArray("Alt und neu\r\n"));
}

TEST(PackageInformation, AFailedWriteOfTheDescriptionShowsError61AndKeepsTheFile) {
    InfoEditor editor;
    ErrorCatcher errors;
    editor.root.write(QStringLiteral("Data/Linie1/Package.txt"), "Alt\r\n");
    auto dialog = editor.showInfo();
    dialog->txtComment()->setPlainText(QStringLiteral("Neu"));
    // The index is the first write of the confirmation, the description the second.
    ScopedWriteFault fault(WriteStep::Write, ENOSPC, 2);
    confirm(*dialog);
    ASSERT_EQ(errors.shown.size(), 1);
    EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("61"))) << errors.shown[0].toStdString();
    EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("Datenträger voll")));
    EXPECT_EQ(readAll(editor.file("Package.txt")), QByteArray("Alt\r\n"));
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(QDir(editor.folder).entryList(QDir::Files).filter(QStringLiteral("Package.txt.")),
              QStringList());
}

TEST(PackageInformation, LinkedPackageFilesAreRefusedWith75AndNothingOutsideChanges) {
    for (const QString& name : {QStringLiteral("Package.io"), QStringLiteral("Package.txt"),
                                QStringLiteral("Package.img")}) {
        InfoEditor editor;
        ErrorCatcher errors;
        const QString outside = editor.root.write(QStringLiteral("outside/") + name, "victim");
        auto dialog = editor.showInfo();
        QFile::remove(editor.file(name));
        TAVIK_LINK_OR_SKIP(outside, editor.file(name));
        const QString picture = editor.root.write(QStringLiteral("bild.jpg"), "picture");
        dialog->txtComment()->setPlainText(QStringLiteral("Neu"));
        dialog->txtPic()->setText(picture);
        const TreeSnapshot before(editor.root.path(), {editor.folder});
        confirm(*dialog);
        ASSERT_EQ(errors.shown.size(), 1) << name.toStdString();
        EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("'75'")))
            << errors.shown[0].toStdString();
        EXPECT_EQ(TreeSnapshot(editor.root.path(), {editor.folder}).changesSince(before),
                  QStringList())
            << name.toStdString();
        EXPECT_TRUE(QFileInfo(editor.file(name)).isSymbolicLink());
    }
}
