#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmsetting.h"
#include "package/clszeldb.h"
#include "support/editorfixture.h"
#include "util/conversions.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

// The editor after start-up with a package of two announcements loaded.
struct Editor : EditorFixture {
    Editor() {
        EXPECT_TRUE(main->FormLoad());
        folder = writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                              {{QStringLiteral("0000"), QStringLiteral("Gong"), 100},
                               {QStringLiteral("0001"), QStringLiteral("Gleis 1"), 100, 255}});
        open(folder);
    }
    QString folder;
};

// Answers the dialog of type T as soon as it runs modally; closes it afterwards if the answer
// left it open, so a failing test never hangs in the modal loop.
template <typename T> class ModalAnswer {
public:
    explicit ModalAnswer(std::function<void(T&)> answer) {
        QObject::connect(&timer_, &QTimer::timeout, [this, answer] {
            auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            timer_.stop();
            ++answered;
            answer(*dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
        timer_.start(10);
    }
    int answered = 0;

private:
    QTimer timer_;
};

QString setting(clsZELDB& store, const QString& key, const QString& item) {
    return CStr(store.GetSetting(key, item, QStringLiteral("<none>")));
}

} // namespace

TEST(MainWindowNewPackage, TheDialogCreatesThePackageAndOnlyThenTheListIsEmptied) {
    Editor editor;
    frmMain& main = *editor.main;
    ASSERT_EQ(main.lsvPack()->Count(), 2);
    ModalAnswer<frmNew> answer([&](frmNew& dialog) {
        // Until the new package is made, the open one stays as it is.
        EXPECT_TRUE(main.newPackageMode);
        EXPECT_EQ(main.lsvPack()->Count(), 2);
        EXPECT_TRUE(main.cmdAdd()->isEnabled());
        EXPECT_TRUE(editor.backend.emulator().isOpen(QStringLiteral("0001")));
        EXPECT_TRUE(dialog.txtDir()->isEnabled());
        EXPECT_EQ(dialog.txtTitel()->text(), QString());
        dialog.txtDir()->setText(QStringLiteral("Linie2"));
        dialog.txtTitel()->setText(QStringLiteral("Linie 2"));
        dialog.txtAutor()->setText(QStringLiteral("Autor"));
        dialog.txtComment()->setPlainText(QStringLiteral("Zweite Linie"));
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    });
    QTest::mouseClick(main.cmdNew(), Qt::LeftButton);

    EXPECT_EQ(answer.answered, 1);
    // A saved list is dropped without a question.
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_EQ(main.lsvPack()->Count(), 0);
    EXPECT_EQ(main.table.AnnouncementCount, 0);
    EXPECT_FALSE(editor.backend.emulator().isOpen(QStringLiteral("0001")));

    const QString created = editor.root.file(QStringLiteral("Data/Linie2"));
    EXPECT_EQ(QDir::cleanPath(main.PackageFolder), QDir::cleanPath(created));
    EXPECT_TRUE(main.PackageChosen);
    EXPECT_TRUE(main.cmdSave()->isEnabled());
    EXPECT_TRUE(main.cmdAdd()->isEnabled());
    EXPECT_TRUE(main.Panel(2)->isHidden());
    EXPECT_FALSE(main.Panel(3)->isHidden());
    EXPECT_EQ(main.Panel(1)->text(), editor.language.GetLangString(27));
    EXPECT_EQ(main.Panel(4)->text(), QStringLiteral("Linie 2"));
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(created + QStringLiteral("/Package.io")));
    EXPECT_EQ(setting(store, QStringLiteral("INFO"), QStringLiteral("Autor")),
              QStringLiteral("Autor"));
    EXPECT_EQ(tavik::test::readAll(created + QStringLiteral("/Package.txt")),
              QByteArray("Zweite Linie\r\n"));
    // The package it replaced is still there, untouched.
    EXPECT_TRUE(QFileInfo::exists(editor.folder + QStringLiteral("/Package.io")));
}

TEST(MainWindowNewPackage, CancelToTheQuestionKeepsTheListAndOpensNoDialog) {
    Editor editor;
    ReportList* list = editor.main->lsvPack();
    list->setCurrentItem(list->ListItems(2));
    list->ListItems(2)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton); // something unsaved
    editor.answers.push_back(MsgResult::Cancel);
    ModalAnswer<frmNew> answer([](frmNew&) {});
    editor.main->cmdNew()->click();
    QTest::qWait(30);
    EXPECT_EQ(answer.answered, 0);
    EXPECT_EQ(editor.main->lsvPack()->Count(), 2);
    EXPECT_EQ(editor.main->table.AnnouncementCount, 2);
    EXPECT_TRUE(editor.main->cmdAdd()->isEnabled());
}

TEST(MainWindowNewPackage, CancellingKeepsTheOpenPackageWithItsCommands) {
    Editor editor;
    ModalAnswer<frmNew> answer([](frmNew& dialog) { dialog.cmdCancel()->click(); });
    editor.main->cmdNew()->click();

    EXPECT_EQ(answer.answered, 1);
    frmMain& main = *editor.main;
    EXPECT_EQ(main.lsvPack()->Count(), 2);
    EXPECT_EQ(main.table.AnnouncementCount, 2);
    EXPECT_TRUE(main.cmdAdd()->isEnabled());
    EXPECT_TRUE(main.cmdPlay()->isEnabled());
    EXPECT_EQ(main.Panel(1)->text(), editor.language.GetLangString(27));
    EXPECT_EQ(QDir(editor.root.file(QStringLiteral("Data")))
                  .entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("Linie1")});
}

TEST(MainWindowPackageInfo, TheDataButtonOpensTheDialogForTheOpenPackage) {
    Editor editor;
    ModalAnswer<frmNew> answer([&](frmNew& dialog) {
        EXPECT_FALSE(editor.main->newPackageMode);
        EXPECT_FALSE(dialog.txtDir()->isEnabled());
        EXPECT_EQ(dialog.txtDir()->text(), QStringLiteral("Linie1"));
        EXPECT_EQ(dialog.txtTitel()->text(), QStringLiteral("Linie 1"));
        dialog.txtAutor()->setText(QStringLiteral("Neuer Autor"));
        dialog.cmdOK()->click();
    });
    QTest::mouseClick(editor.main->cmdEdit(), Qt::LeftButton);

    EXPECT_EQ(answer.answered, 1);
    EXPECT_TRUE(editor.messages.empty());
    EXPECT_EQ(editor.main->lsvPack()->Count(), 2);
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(editor.folder + QStringLiteral("/Package.io")));
    EXPECT_EQ(setting(store, QStringLiteral("INFO"), QStringLiteral("Autor")),
              QStringLiteral("Neuer Autor"));
    EXPECT_EQ(setting(store, QStringLiteral("INDEX"), QStringLiteral("2")),
              QStringLiteral("0001~Gleis 1"));
}

TEST(MainWindowProperties, DoubleClickingARowOpensItsPropertiesWithItsTitle) {
    Editor editor;
    editor.main->show();
    ReportList* list = editor.main->lsvPack();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(editor.main.get()));
    ModalAnswer<frmSetting> answer([&](frmSetting& dialog) {
        EXPECT_EQ(dialog.txtTitle()->text(), QStringLiteral("Gleis 1"));
        EXPECT_TRUE(dialog.optColor()[2]->isChecked());
        dialog.txtTitle()->setText(QStringLiteral("Gleis 2"));
        dialog.cmdOK()->click();
    });
    // On the row's key: the row is wider than the list shows.
    const QRect row = list->visualItemRect(list->ListItems(2));
    const QPoint at = list->viewport()->mapTo(editor.main.get(), row.topLeft() + QPoint(8, 4));
    QTest::mouseDClick(editor.main->windowHandle(), Qt::LeftButton, {}, at);

    EXPECT_EQ(answer.answered, 1);
    EXPECT_EQ(list->ListItems(2)->SubItems(1), QStringLiteral("Gleis 2"));
    EXPECT_EQ(editor.main->table.Announcements[1].Title, QStringLiteral("Gleis 2"));
}

TEST(MainWindowProperties, WithoutASelectedRowNothingOpens) {
    Editor editor;
    for (int i = 1; i <= editor.main->lsvPack()->Count(); ++i)
        editor.main->lsvPack()->ListItems(i)->SetSelected(false);
    ModalAnswer<frmSetting> answer([](frmSetting&) {});
    editor.main->lsvPack_DblClick();
    QTest::qWait(30);
    EXPECT_EQ(answer.answered, 0);
}

TEST(MainWindowProperties, ARowWithoutARecordShowsTheSubscriptErrorAndOpensNothing) {
    Editor editor;
    QStringList shown;
    auto* app = static_cast<TavikApplication*>(qApp);
    app->setErrorReporter([&](const QString& text) { shown << text; });
    ReportListItem* stray = editor.main->lsvPack()->AddItem(QStringLiteral("0999"));
    stray->SetSubItems(1, QStringLiteral("Fremd"));
    stray->SetSelected(true);
    ModalAnswer<frmSetting> answer([](frmSetting&) {});
    editor.main->lsvPack_DblClick();
    QTest::qWait(30);
    app->setErrorReporter({});
    EXPECT_EQ(answer.answered, 0);
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].contains(QStringLiteral("'9'")));
}
