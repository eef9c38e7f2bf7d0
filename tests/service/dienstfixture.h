#pragma once

#include "app/frmstatus.h"
#include "app/tavikapplication.h"
#include "log/frmdebug.h"
#include "log/richtextbox.h"
#include "service/frmdienst.h"
#include "support/editorfixture.h"
#include "util/apppath.h"
#include "util/zelcmd.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace tavik::test {

// The main window started on a scratch installation with the package "Linie" loaded, as the
// open dialog hands it over, and the service editor opened from it. Runtime errors the
// program shows are collected.
struct DienstHost : EditorFixture {
    QString folder;
    QStringList errors;

    explicit DienstHost(const std::vector<Entry>& entries,
                        const QString& languageFile = QStringLiteral("Deutsch.lng"))
        : EditorFixture(languageFile) {
        app()->setErrorReporter([this](const QString& text) { errors << text; });
        folder = writePackage(QStringLiteral("Linie"), QStringLiteral("Linie"), entries);
        if (!main->FormLoad())
            ADD_FAILURE() << "the main window did not start";
        // The data folder, then a doubled separator and the folder name.
        open(NativePath(AppPath() + QStringLiteral("\\..\\Data\\") + QStringLiteral("\\Linie")));
    }

    ~DienstHost() { app()->setErrorReporter({}); }

    static TavikApplication* app() {
        return static_cast<TavikApplication*>(QApplication::instance());
    }

    // Opens the editor as the user does: the main window's service button.
    frmDienst* openEditor() {
        main->show();
        main->cmdDienst()->click();
        auto* editor = qobject_cast<frmDienst*>(main->serviceEditor());
        if (editor && !QTest::qWaitForWindowExposed(editor))
            ADD_FAILURE() << "the service editor did not show";
        return editor;
    }

    QString serviceFile(const QString& id) const {
        return root.file(QStringLiteral("Data/Linie/_") + id + QStringLiteral("._"));
    }

    // The lines of the event log so far.
    QStringList eventLines() {
        QString text = log.viewer()->txtDebug()->text();
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        if (text.endsWith(u'\n'))
            text.chop(1);
        return text.split(u'\n');
    }
};

// Clicks a button of the editor as the user finds it: after the timer has set which commands
// are enabled.
inline void press(frmDienst* editor, QAbstractButton* button) {
    editor->Timer1_Timer();
    button->click();
}

// Opens the service listed under `title` as the user does: the open page, a click on its row,
// "Öffnen". False (and a test failure) when no single row has that title.
inline bool openServiceTitled(frmDienst* editor, const QString& title) {
    editor->mnuOpen()->trigger();
    editor->cmdRefresh()->click();
    QListWidget* list = editor->lstOpen();
    const QList<QListWidgetItem*> found = list->findItems(title, Qt::MatchExactly);
    if (found.size() != 1) {
        ADD_FAILURE() << "no single service titled " << title.toStdString();
        return false;
    }
    list->setCurrentItem(found[0]);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(found[0]).center());
    press(editor, editor->cmdOpen());
    return true;
}

// A double click as the system delivers it: the first click, then the double click.
inline void doubleClick(QTreeWidget* list, QTreeWidgetItem* item) {
    const QPoint at = list->visualItemRect(item).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
}

// The texts of a report list's rows in one column (0 the item text).
inline QStringList columnTexts(const ReportList* list, int column = 0) {
    QStringList texts;
    for (int r = 1; r <= list->Count(); ++r) {
        ReportListItem* row = list->ListItems(r);
        texts << (column == 0 ? row->Text() : row->SubItems(column));
    }
    return texts;
}

} // namespace tavik::test
