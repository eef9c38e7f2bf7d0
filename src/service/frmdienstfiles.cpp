// The properties page, the open page and the menus: the service as a file.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/fileops.h"
#include "util/msgbox.h"
#include "util/packagelock.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QUndoStack>

namespace tavik {

namespace {

constexpr int kDeleteQuestion = 12;

} // namespace

QString frmDienst::ServicePath() const {
    return ServiceFilePath(main_.PackageFolder, txtID_->text());
}

void frmDienst::SaveToFile(const QString& path) {
    const ServiceHeader header{txtTitle_->text(), txtAutor_->text(), txtComment_->text(),
                               txtID_->text()};
    QStringList rowKeys;
    for (int r = 1; r <= lsvDienst_->Count(); ++r)
        rowKeys.append(lsvDienst_->ListItems(r)->Text());
    tavik::SaveToFile(path, header, sentences, rowKeys);
}

void frmDienst::FindFiles() {
    QStringList titles;
    tavik::FindFiles(main_.PackageFolder, titles, File1);
    lstOpen_->clear();
    lstOpen_->addItems(titles);
}

void frmDienst::OpenServiceFile(const QString& path) {
    const ServiceReadResult read = ReadServiceFile(path);
    if (read.status == ServiceReadResult::Status::Missing) {
        MsgBox(this, main_.language().GetLangString(kServiceMissingMessage), MsgButtons::OK,
               MsgIcon::Exclamation);
        return;
    }
    Saetze() = {SatzRecord{}};
    lsvDienst_->ClearItems();
    // Only what the file holds is kept: a count it cannot back costs nothing.
    if (!read.sentences.isEmpty())
        Saetze() = read.sentences;
    // The window may close while events are processed between the rows.
    const QPointer<frmDienst> self(this);
    for (const SatzRecord& satz : std::as_const(read.sentences)) {
        lsvDienst_->AddItem(satz.Key);
        QCoreApplication::processEvents();
        if (!self)
            return;
    }
    if (!read.ok()) {
        // The count follows the records kept, so every row's key is found and no later
        // command meets a slot the file never filled.
        sentences.SatzCount = static_cast<std::int16_t>(read.sentences.size());
        throw RuntimeError(read.runtimeError);
    }
    sentences.SatzCount = read.declaredCount;
    // Two sentences of one key would share the first one's entries on the next save: each
    // later one gets a key of its own, and the user hears of it once.
    const QStringList duplicated = sentences.RekeyDuplicates(generator);
    for (int r = 1; r <= lsvDienst_->Count() && r <= Saetze().size(); ++r)
        lsvDienst_->ListItems(r)->SetText(Saetze()[r - 1].Key);
    if (!duplicated.isEmpty())
        MsgBox(this,
               main_.language().GetLangString(LangText::DuplicateSentenceKeys,
                                              QDir::toNativeSeparators(QDir::cleanPath(path)),
                                              duplicated.join(QStringLiteral(", "))),
               MsgButtons::OK, MsgIcon::Exclamation);
    txtTitle_->setText(read.header.Title);
    txtAutor_->setText(read.header.Author);
    txtComment_->setText(read.header.Description);
    txtID_->setText(read.header.Id);
    RefreshList();
}

void frmDienst::mnuSave_Click() {
    setMenusEnabled(false);
    ShowPage(0);
}

void frmDienst::cmdSv_Click() {
    // A save refused or failed keeps the page open for another ID or another try.
    if (SaveService())
        cmdEsc_Click();
}

void frmDienst::cmdEsc_Click() {
    setMenusEnabled(true);
    ShowPage(1);
}

void frmDienst::mnuOpen_Click() {
    ShowPage(3);
    setMenusEnabled(false);
}

void frmDienst::lstOpen_Click() {
    QString title, author, description;
    GetFileInfo(File1.value(lstOpen_->currentRow()), title, author, description);
    txtInfo_[0]->setText(author);
    txtInfo_[1]->setText(description);
    cmdOpen_->setEnabled(true);
}

void frmDienst::cmdRefresh_Click() {
    lstOpen_->clear();
    FindFiles();
}

void frmDienst::cmdOpen_Click() {
    if (!MaySaveOrDiscard())
        return;
    // The path at the chosen index of every listing so far: after files came or went it may
    // belong to another service than the title shown.
    const QString path = File1.value(lstOpen_->currentRow());
    const ServiceEditState before = CaptureState();
    try {
        OpenServiceFile(path);
    } catch (...) {
        // What a broken file left on screen is no work of the user's; saving it asks before it
        // replaces any file.
        setOpenedPath({});
        startHistory();
        throw;
    }
    RefreshList();
    if (!(CaptureState() == before)) {
        setOpenedPath(path);
        startHistory();
    }
    ShowPage(1);
    cmdEsc_Click();
    mnuSave_->setEnabled(true);
    setServiceColumnWidth();
}

void frmDienst::cmdAbbr_Click() {
    cmdEsc_Click();
}

void frmDienst::cmdKill_Click() {
    if (MsgBox(this, main_.language().GetLangString(kDeleteQuestion), MsgButtons::YesNo,
               MsgIcon::Question) == MsgResult::No)
        return;
    const QString path = File1.value(lstOpen_->currentRow());
    {
        const PackageWriteLock lock(main_.PackageFolder);
        Kill(path);
    }
    // The service shown may be the one deleted: it stays in the window, now saved nowhere.
    if (!openedPath_.isEmpty() &&
        QFileInfo(path).absoluteFilePath() == QFileInfo(openedPath_).absoluteFilePath()) {
        setOpenedPath({});
        undoStack_->resetClean();
    }
    FindFiles();
    txtInfo_[0]->clear();
    txtInfo_[1]->clear();
}

void frmDienst::mnuNew_Click() {
    if (!MaySaveOrDiscard())
        return;
    lsvTarget_->ClearItems();
    lsvDienst_->ClearItems();
    if (list1_->count() > 0)
        list1_->setCurrentRow(0);
    txtText_->clear();
    ShowPage(1);
    txtTitle_->clear();
    txtAutor_->clear();
    txtComment_->clear();
    // The lowest free ID: the new service never takes an existing one's file.
    txtID_->setText(LowestFreeServiceId(main_.PackageFolder));
    setOpenedPath({});
    startHistory();
}

} // namespace tavik
