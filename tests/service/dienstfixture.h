#pragma once

#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "app/tavikapplication.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "audio/recordingbackend.h"
#include "log/eventlog.h"
#include "service/frmdienst.h"
#include "service/packagefixture.h"
#include "settings/language.h"
#include "util/apppath.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/tickcount.h"
#include "util/zelcmd.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace tavik::test {

// The program folder of the checkout, read before a test points TAVIK_HOME elsewhere.
inline QString checkoutProgramFolder() {
    qunsetenv("TAVIK_HOME");
    return AppPath();
}

// A main window with the package "Linie" of a scratch installation loaded, its sounds played
// through the emulator with every command recorded. Message boxes and runtime errors shown
// by the program are collected instead of shown.
struct DienstHost {
    QString checkout = checkoutProgramFolder();
    PackageFixture package;
    Language language;
    EmulatorBackend emulator;
    RecordingBackend recorder{emulator, [] { return qint64(GetTickCount()); }};
    std::unique_ptr<EventLog> eventLog;
    std::unique_ptr<modMCI> mci;
    std::unique_ptr<frmMain> main;
    QList<MessageRequest> messages;
    MsgResult answer = MsgResult::Yes;
    QStringList errors;

    explicit DienstHost(const std::vector<PackageFixture::Entry>& entries) : package(entries) {
        QDir(package.root.path()).mkpath(QStringLiteral("res/lang"));
        QFile::copy(checkout + QStringLiteral("/../res/lang/Deutsch.lng"),
                    package.root.file(QStringLiteral("res/lang/Deutsch.lng")));
        language.LanguageFile = package.root.file(QStringLiteral("res/lang/Deutsch.lng"));
        eventLog = std::make_unique<EventLog>(AppPath(), &language);
        mci = std::make_unique<modMCI>(recorder,
                                       [this](const QString& line) { eventLog->WriteLog(line); });
        SetMessageHandler([this](const MessageRequest& request) {
            messages.append(request);
            return answer;
        });
        app()->setErrorReporter([this](const QString& text) { errors << text; });
        main = std::make_unique<frmMain>(language, *mci, *eventLog);
        // As the open dialog leaves it: the data folder, then a doubled separator and the name.
        main->PackageFolder =
            NativePath(AppPath() + QStringLiteral("\\..\\Data\\") + QStringLiteral("\\Linie"));
        main->IndexFilePath = NativePath(main->PackageFolder + QStringLiteral("\\Package.io"));
        main->LoadPackage();
    }

    ~DienstHost() {
        main.reset();
        SetMessageHandler({});
        app()->setErrorReporter({});
    }

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
        return package.folder + QStringLiteral("/_") + id + QStringLiteral("._");
    }
};

// Clicks a button of the editor as the user sees it: after the timer has set which commands
// are enabled.
inline void press(frmDienst* editor, QAbstractButton* button) {
    editor->Timer1_Timer();
    button->click();
}

// The titles of a report list's rows, first to last, one column.
inline QStringList columnTexts(const ReportList* list, int column = 0) {
    QStringList texts;
    for (int r = 1; r <= list->Count(); ++r) {
        ReportListItem* row = list->ListItems(r);
        texts << (column == 0 ? row->Text() : row->SubItems(column));
    }
    return texts;
}

} // namespace tavik::test
