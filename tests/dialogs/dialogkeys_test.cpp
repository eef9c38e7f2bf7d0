// The package dialogs from the keyboard: the open dialog highlights the package a user most
// likely wants, Tab walks each dialog in the order of its layout, and browsing for sounds
// starts in the package's folder.
#include "app/frmmain.h"
#include "dialogs/browselists.h"
#include "dialogs/frmfile.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmopen.h"
#include "settings/lastpackage.h"
#include "support/editorfixture.h"
#include "util/zelcmd.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

struct DialogEditor : EditorFixture {
    DialogEditor() { EXPECT_TRUE(main->FormLoad()); }
    QString package(const QString& folderName, const QString& name) {
        return writePackage(folderName, name,
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 100}});
    }
    // A new start of the program on the same installation.
    void restart() {
        main.reset();
        main = std::make_unique<frmMain>(language, mci, log);
        main->ShowSplash = false;
        EXPECT_TRUE(main->FormLoad());
    }
};

QString highlighted(const frmOpen& dialog) {
    const QListWidgetItem* item = dialog.lstFile()->currentItem();
    return item && item->isSelected() ? item->text() : QString();
}

// The widgets Tab reaches from `first`, one press at a time, `count` in all.
QList<QWidget*> tabWalk(QWidget* window, QWidget* first, int count) {
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    first->setFocus();
    QList<QWidget*> walked{QApplication::focusWidget()};
    for (int i = 1; i < count; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        walked << QApplication::focusWidget();
    }
    return walked;
}

} // namespace

TEST(OpenDialogChoice, TheOpenPackageIsHighlightedAndEnterOpensIt) {
    DialogEditor editor;
    editor.package(QStringLiteral("a"), QStringLiteral("A"));
    const QString b = editor.package(QStringLiteral("b"), QStringLiteral("B"));
    editor.package(QStringLiteral("c"), QStringLiteral("C"));
    editor.open(b);
    frmOpen dialog(*editor.main);
    EXPECT_EQ(highlighted(dialog), QStringLiteral("B"));
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(QApplication::focusWidget(), dialog.lstFile());
    QTest::keyClick(dialog.lstFile(), Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(QDir(editor.main->PackageFolder).canonicalPath(), QDir(b).canonicalPath());
}

TEST(OpenDialogChoice, AfterARestartThePackageOpenedLastIsHighlighted) {
    DialogEditor editor;
    editor.package(QStringLiteral("a"), QStringLiteral("A"));
    editor.package(QStringLiteral("b"), QStringLiteral("B"));
    const QString c = editor.package(QStringLiteral("c"), QStringLiteral("C"));
    {
        frmOpen dialog(*editor.main);
        EXPECT_EQ(highlighted(dialog), QString()); // nothing opened yet
        EXPECT_FALSE(dialog.cmdOK()->isEnabled());
    }
    editor.open(c);
    editor.restart();
    EXPECT_TRUE(editor.main->PackageFolder.isEmpty());
    frmOpen dialog(*editor.main);
    EXPECT_EQ(highlighted(dialog), QStringLiteral("C"));
    EXPECT_TRUE(dialog.cmdOK()->isEnabled());
}

TEST(OpenDialogChoice, ALastPackageThatIsGoneHighlightsNothing) {
    DialogEditor editor;
    editor.package(QStringLiteral("a"), QStringLiteral("A"));
    WriteLastPackage(editor.root.file(QStringLiteral("Data/weg")));
    frmOpen dialog(*editor.main);
    EXPECT_EQ(highlighted(dialog), QString());
    EXPECT_FALSE(dialog.cmdOK()->isEnabled());
}

TEST(DialogTabOrder, TheOpenDialogGoesFromTheListToItsDescriptionAndTheButtonsLeftToRight) {
    DialogEditor editor;
    editor.open(editor.package(QStringLiteral("a"), QStringLiteral("A")));
    frmOpen dialog(*editor.main);
    const QList<QWidget*> expected{dialog.lstFile(), dialog.txtComment(), dialog.cmdSearch(),
                                   dialog.cmdOK(),   dialog.cmdCancel(),  dialog.lstFile()};
    EXPECT_EQ(tabWalk(&dialog, dialog.lstFile(), expected.size()), expected);
}

TEST(DialogTabOrder, ThePackageDialogGoesFromTopToBottomInBothModes) {
    DialogEditor editor;
    editor.open(editor.package(QStringLiteral("a"), QStringLiteral("A")));
    for (const bool newPackage : {true, false}) {
        editor.main->newPackageMode = newPackage;
        frmNew dialog(*editor.main);
        QList<QWidget*> expected{dialog.txtDir(),     dialog.txtTitel(), dialog.txtAutor(),
                                 dialog.txtComment(), dialog.txtPic(),   dialog.cmdPic(),
                                 dialog.cmdClear(),   dialog.cmdOK(),    dialog.cmdCancel()};
        if (!newPackage)
            expected.removeFirst(); // the folder name cannot change
        EXPECT_EQ(tabWalk(&dialog, expected.first(), expected.size()), expected) << newPackage;
    }
}

TEST(DialogTabOrder, TheImportDialogGoesThroughBrowsingThenTheImportListThenOk) {
    DialogEditor editor;
    editor.open(editor.package(QStringLiteral("a"), QStringLiteral("A")));
    frmFile dialog(*editor.main);
    const QList<QWidget*> expected{dialog.Drive1(),    dialog.Dir1(),       dialog.File1(),
                                   dialog.cboFormat(), dialog.cmdRefresh(), dialog.cmdAdd(),
                                   dialog.lstImport(), dialog.txtName(),    dialog.cmdDel(),
                                   dialog.cmdClear(),  dialog.cmdPlay(),    dialog.cmdColor(),
                                   dialog.cmdOK(),     dialog.cmdCancel()};
    EXPECT_EQ(tabWalk(&dialog, dialog.Drive1(), expected.size()), expected);
}

TEST(ImportDialogStart, BrowsingStartsInTheOpenPackagesFolderOnItsDrive) {
    DialogEditor editor;
    const QString folder = editor.package(QStringLiteral("a"), QStringLiteral("A"));
    editor.open(folder);
    frmFile dialog(*editor.main);
    EXPECT_EQ(QDir(dialog.Dir1()->Path()).canonicalPath(), QDir(folder).canonicalPath());
    EXPECT_EQ(QDir(dialog.File1()->Path()).canonicalPath(), QDir(folder).canonicalPath());
    EXPECT_TRUE(dialog.File1()->findItems(QStringLiteral("0000.wav"), Qt::MatchExactly).size() ==
                1);
    // Sound files only: the offered formats are the filter chosen at the start.
    EXPECT_EQ(dialog.cboFormat()->currentIndex(), 1);
}
