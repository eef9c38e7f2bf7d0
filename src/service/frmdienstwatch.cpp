// What other programs do to the service file the editor has open: it is followed on disk, a
// clean service is read again when it changes, and nothing is written over a change the user
// has not seen.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "package/packagefilewatch.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/msgbox.h"
#include "util/runtimeerror.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStatusBar>
#include <QTimer>
#include <QUndoStack>

namespace tavik {

namespace {

// A change met while the user is in the middle of something is looked at again after this.
constexpr int kRetryMs = 500;

QString shownName(const QString& path) {
    return QDir::toNativeSeparators(QDir::cleanPath(path));
}

} // namespace

void frmDienst::setOpenedPath(const QString& path) {
    openedPath_ = path;
    if (!serviceWatch_) {
        serviceWatch_ = new PackageFileWatch(this);
        // A failed reload is shown like any runtime error of a handler.
        connect(serviceWatch_, &PackageFileWatch::changedOnDisk, this,
                [this] { RunHandler([this] { onServiceChangedOnDisk(); }); });
    }
    serviceWatch_->follow(path);
}

bool frmDienst::mayWriteOver(const QString& path) {
    // Only the opened file is ours to compare; another file under the chosen ID was asked
    // about already. A file another program removed loses nothing when written again.
    if (overwriteConfirmed_ || !serviceWatch_ || openedPath_.isEmpty() ||
        QFileInfo(path).absoluteFilePath() != QFileInfo(openedPath_).absoluteFilePath())
        return true;
    const PackageFileWatch::Look state = serviceWatch_->look();
    if (!state.changed || !state.exists)
        return true;
    switch (askAboutServiceChange()) {
    case MsgResult::Save:
        return true;
    case MsgResult::Discard:
        reloadService();
        return false;
    default:
        serviceWatch_->markShown();
        return false;
    }
}

MsgResult frmDienst::askAboutServiceChange() {
    askingAboutChange_ = true;
    const MsgResult choice = MsgBox(
        this,
        main_.language().GetLangString(LangText::ServiceChangedOnDisk, shownName(openedPath_)),
        MsgButtons::SaveDiscardCancel, MsgIcon::Exclamation, {}, MsgResult::Cancel);
    askingAboutChange_ = false;
    return choice;
}

void frmDienst::reloadService() {
    const QString path = openedPath_;
    const ServiceEditState before = CaptureState();
    try {
        OpenServiceFile(path);
    } catch (...) {
        // A file that cannot be read now leaves the service as it was shown.
        RestoreState(before);
        serviceWatch_->markShown();
        throw;
    }
    RefreshList();
    setServiceColumnWidth();
    setOpenedPath(path);
    startHistory();
    statusBar()->showMessage(
        main_.language().GetLangString(LangText::ServiceReloaded, shownName(path)));
}

void frmDienst::onServiceChangedOnDisk() {
    if (askingAboutChange_ || !serviceWatch_ || openedPath_.isEmpty())
        return;
    const PackageFileWatch::Look state = serviceWatch_->look();
    if (!state.changed || state.alreadyShown)
        return;
    // Not while a dialog is open, a sentence plays or is being edited, or a save or open page
    // is shown: the change is looked at once the user is back at the service.
    if (QApplication::activeModalWidget() || IsPlaying || CurrentPage() != 1) {
        QTimer::singleShot(kRetryMs, this,
                           [this] { RunHandler([this] { onServiceChangedOnDisk(); }); });
        return;
    }
    if (!state.exists) {
        // Nothing to read again: the service lives on in the window only, so closing asks.
        serviceWatch_->markShown();
        undoStack_->resetClean();
        statusBar()->showMessage(
            main_.language().GetLangString(LangText::ServiceRemovedOnDisk, shownName(openedPath_)));
        return;
    }
    if (undoStack_->isClean()) {
        reloadService();
        return;
    }
    switch (askAboutServiceChange()) {
    case MsgResult::Discard:
        reloadService();
        break;
    case MsgResult::Save:
        overwriteConfirmed_ = true;
        try {
            SaveService();
        } catch (...) {
            overwriteConfirmed_ = false;
            throw;
        }
        overwriteConfirmed_ = false;
        break;
    default:
        serviceWatch_->markShown();
        break;
    }
}

} // namespace tavik
