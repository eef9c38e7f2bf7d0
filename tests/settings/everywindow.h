#pragma once

#include "app/frmcheck.h"
#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "dialogs/frmfile.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmopen.h"
#include "dialogs/frmsetting.h"
#include "log/frmdebug.h"
#include "service/frmdienst.h"
#include "settings/followlanguage.h"
#include "settings/frmlanguage.h"
#include "settings/frmoptions.h"
#include "shell/frmabout.h"
#include "shell/frmsplash.h"
#include "support/editorfixture.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QListWidget>
#include <QTest>
#include <memory>
#include <vector>

namespace tavik::test {

// Every window of the editor at once, on an installation in `languageFile`, with a small
// package open in the main window and its extended panel out. The texts the package brings
// (its name and titles) are data, not words of the editor.
class EveryWindow {
public:
    explicit EveryWindow(const QString& languageFile) : editor(languageFile) {
        const QString folder =
            editor.writePackage(QStringLiteral("walk"), QStringLiteral("Walk package"),
                                {{QStringLiteral("0000"), QStringLiteral("First title"), 200},
                                 {QStringLiteral("0001"), QStringLiteral("Second title"), 300}});
        dataTexts = {QStringLiteral("Walk package"), QStringLiteral("First title"),
                     QStringLiteral("Second title")};
        if (!editor.main->FormLoad())
            return;
        started = true;
        editor.open(folder);
        frmMain& main = *editor.main;
        main.show();
        QTest::mouseClick(main.cmdExpand(), Qt::LeftButton);
        main.lsvPack()->setCurrentItem(main.lsvPack()->ListItems(1));

        // Dialogs that the editor shows modally are shown here without a modal loop, so that
        // all of them are open together.
        const Language& language = editor.language;
        dienst = new frmDienst(main);
        file = std::make_unique<frmFile>(main);
        open = std::make_unique<frmOpen>(main);
        newPackage = std::make_unique<frmNew>(main);
        setting = std::make_unique<frmSetting>(main);
        options = std::make_unique<frmOptions>(
            editor.language, [](bool) {}, &main);
        chooser = std::make_unique<frmLanguage>(editor.language, &main);
        // As the language button opens it; it takes its texts from the file chosen in its list.
        chooser->KeepOpen = true;
        chooser->FormLoad();
        selectLanguageFile(*chooser, languageFile);
        about = std::make_unique<frmAbout>(language, &main);
        splash = std::make_unique<frmSplash>(language, &main);
        status = new frmStatus(&main);
        LocaliseWindow(status, language);
        status->ShowStatus(language.GetLangString(9));
        debug = editor.log.viewer();
        QTest::mouseClick(main.cmdCheck(), Qt::LeftButton);
        check = main.checkWindow();
        for (QWidget* w : std::initializer_list<QWidget*>{
                 dienst, file.get(), open.get(), newPackage.get(), setting.get(), options.get(),
                 chooser.get(), about.get(), splash.get(), debug})
            w->show();
        QCoreApplication::processEvents();
    }

    ~EveryWindow() { delete status; }

    static void selectLanguageFile(frmLanguage& dialog, const QString& languageFile) {
        if (QListWidgetItem* item = dialog.itemOfFile(languageFile))
            dialog.File1()->setCurrentItem(item);
    }

    std::vector<QWidget*> windows() const {
        return {editor.main.get(), dienst.data(), file.get(),    open.get(),  newPackage.get(),
                setting.get(),     options.get(), chooser.get(), about.get(), splash.get(),
                status.data(),     debug,         check};
    }

    EditorFixture editor;
    bool started = false;
    QStringList dataTexts;
    QPointer<frmDienst> dienst;
    std::unique_ptr<frmFile> file;
    std::unique_ptr<frmOpen> open;
    std::unique_ptr<frmNew> newPackage;
    std::unique_ptr<frmSetting> setting;
    std::unique_ptr<frmOptions> options;
    std::unique_ptr<frmLanguage> chooser;
    std::unique_ptr<frmAbout> about;
    std::unique_ptr<frmSplash> splash;
    QPointer<frmStatus> status;
    frmDebug* debug = nullptr;
    QWidget* check = nullptr;
};

} // namespace tavik::test
