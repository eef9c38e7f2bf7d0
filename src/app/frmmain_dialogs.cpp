#include "app/fadeineffect.h"
#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "app/listcommands.h"
#include "app/tavikapplication.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmopen.h"
#include "dialogs/frmsetting.h"
#include "dialogs/packagecommands.h"
#include "service/frmdienst.h"
#include "settings/followlanguage.h"
#include "settings/frmlanguage.h"
#include "settings/frmoptions.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/modini.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/fileops.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QUndoStack>

// The main window's commands that open another window.

namespace tavik {

bool frmMain::chooseLanguage() {
    frmLanguage dialog(language_, this);
    dialog.ShowModal();
    return !dialog.EndProgram();
}

void frmMain::cmdNew_Click() {
    if (!MaySaveOrDiscard())
        return;
    // The open package stays as it is until the dialog has made the new one: a cancelled
    // dialog changes nothing, unsaved changes included.
    newPackageMode = true;
    PackageChosen = false;
    {
        frmNew dialog(*this);
        dialog.exec();
    }
    if (!PackageChosen)
        return;
    closeEditedPackage();
    listIndexPath_ = IndexFilePath;
    table.Announcements = {AnnouncementRecord{}};
    table.AnnouncementCount = 0;
    showReadyState();
}

void frmMain::cmdOpen_Click() {
    if (!MaySaveOrDiscard())
        return;
    PackageChosen = false;
    {
        frmOpen dialog(*this);
        FadeInEffect(cmdOpen_, &dialog, 20);
        dialog.exec();
    }
    if (!PackageChosen)
        return;
    // Also when the same package is opened again: the list then shows the file afresh.
    closeEditedPackage();
    listIndexPath_.clear();
    lsvPack_->ClearItems();
    UnloadAudioFiles();
    LoadPackage();
}

void frmMain::cmdEdit_Click() {
    newPackageMode = false;
    // The dialog writes the package files itself on OK; their bytes around it make the step.
    const QString indexFile = IndexFilePath;
    const QString folder = PackageFolder;
    const auto before = ReadPackageDetailFiles(indexFile, folder);
    int result = QDialog::Rejected;
    {
        frmNew dialog(*this);
        result = dialog.exec();
    }
    if (result != QDialog::Accepted || !before)
        return;
    const auto after = ReadPackageDetailFiles(indexFile, folder);
    if (!after || *after == *before)
        return;
    undoStack_->push(new PackageDetailsCommand(
        *this, indexFile, folder, *before, *after,
        LangTextOr(language_, LangText::UndoPackageDetails, QStringLiteral("Paketdaten"))));
}

void frmMain::cmdDienst_Click() {
    // A window of its own that this one owns: it stays above this one and goes with it.
    auto* editor = new frmDienst(*this);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    serviceEditor_ = editor;
    connect(editor, &frmDienst::Unloaded, this, &frmMain::onServiceEditorClosed);
    FadeInEffect(cmdDienst_, editor, 20);
    editor->show();
    setEnabled(false);
    // Disabling this window disabled the windows it owns too; a window, unlike a control, can
    // be enabled again under a disabled owner, so the editor alone takes input.
    editor->setEnabled(true);
}

void frmMain::onServiceEditorClosed() {
    setEnabled(true);
    FadeInEffect(serviceEditor_, cmdDienst_, 20);
}

void frmMain::cmdDelete_Click() {
    frmOptions options(
        language_, [this](bool useFormat) { SetUseFormat(useFormat); }, this);
    FadeInEffect(cmdDelete_, &options, 20);
    options.exec();
}

void frmMain::cmdLanguage_Click() {
    frmLanguage dialog(language_, this);
    dialog.KeepOpen = true;
    dialog.ShowModal();
    // Only possible when no language was ever stored and the language folder has emptied.
    if (dialog.EndProgram()) {
        close();
        return;
    }
    // The dialog has changed the language file: every open window follows it now.
    SwitchLanguage(language_);
}

} // namespace tavik
