// The service page: the sentences of the service in their order.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "audio/sequenceplayer.h"
#include "log/eventlog.h"
#include "service/serviceeditorrules.h"
#include "util/conversions.h"
#include "util/listrows.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>

namespace tavik {

void frmDienst::setServiceColumnWidth() {
    lsvDienst_->SetColumnWidth(2, ServiceTextColumnWidth(lsvDienst_->Count()));
}

void frmDienst::cmdAdd_Click() {
    const std::int16_t i = sentences.CreateItem(generator);
    CurrentSatz = i;
    lsvDienst_->AddItem(Saetze()[i].Key);
    lsvTarget_->ClearItems();
    zoom(cmdAdd_, picTab_[2]);
    ShowPage(2);
    NewSatzPending = true;
    setServiceColumnWidth();
    AutoPlace();
}

void frmDienst::cmdEdit_Click() {
    if (IsPlaying)
        return;
    lsvTarget_->ClearItems();
    if (list1_->count() > 0)
        list1_->setCurrentRow(0);
    LoadItemToList();
}

void frmDienst::LoadItemToList() {
    const ReportListItem* row = lsvDienst_->SelectedItem();
    if (!row)
        return;
    // A row whose sentence is not held cannot be edited: the subscript error, as for a key
    // the search runs past.
    const std::int32_t k = sentences.SentenceIndex(row->Text());
    CurrentSatz = static_cast<std::int16_t>(k);
    const SatzRecord& satz = Saetze()[k];
    for (std::int32_t j = 0; j <= satz.LastTarget; ++j) {
        if (j >= satz.Targets.size())
            throw RuntimeError(rt::SubscriptOutOfRange);
        const SatzTarget& target = satz.Targets[j];
        ReportListItem* item = lsvTarget_->AddItem(QString::number(target.TimeOffset));
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        item->SetTag(target.AnnouncementKey);
        // An announcement deleted from the package since the sentence was saved has no title.
        requireAnnouncement(satz, target.AnnouncementKey);
        const std::int32_t a = FindAnnouncementByKey(main_.table, target.AnnouncementKey);
        item->SetSubItems(1, main_.table.Announcements[a].Title);
    }
    ShowPage(2);
    zoom(cmdAdd_, picTab_[2]);
}

void frmDienst::RefreshList() {
    for (int r = 1; r <= lsvDienst_->Count(); ++r) {
        ReportListItem* row = lsvDienst_->ListItems(r);
        // A row whose key is not found is skipped, whether the search ran past the last
        // slot or ended without a match.
        std::int32_t i = -1;
        try {
            i = sentences.SentenceIndex(row->Text());
        } catch (const RuntimeError&) {
            continue;
        }
        // A text already shown stays, even when the sentence was saved again since.
        if (row->SubItems(1).isEmpty())
            row->SetSubItems(1, Saetze()[i].Text);
    }
}

void frmDienst::cmdRem_Click() {
    if (const ReportListItem* row = lsvDienst_->SelectedItem())
        lsvDienst_->RemoveItem(row->Index());
    mnuSave_->setEnabled(true);
    try {
        setServiceColumnWidth();
    } catch (const RuntimeError&) {
    }
}

void frmDienst::cmdUp_Click() {
    MoveRowUp(lsvDienst_);
    mnuSave_->setEnabled(true);
}

void frmDienst::cmdDown_Click() {
    MoveRowDown(lsvDienst_);
    mnuSave_->setEnabled(true);
}

void frmDienst::cmdTausch_Click() {
    // Reverses by moving the first row down past all that are not yet reversed, n times.
    const int n = lsvDienst_->Count();
    for (int i = 1; i <= n + 1; ++i) {
        lsvDienst_->ListItems(1)->SetSelected(true);
        for (int m = 0; m < n - i; ++m)
            MoveRowDown(lsvDienst_);
    }
}

void frmDienst::lsvDienst_ItemClick() {
    if (ReportListItem* row = lsvDienst_->SelectedItem())
        txtText_->setText(row->SubItems(1));
}

void frmDienst::txtText_Change() {
    // Only the list shows the typed name; the sentence keeps the text of its last save.
    try {
        if (ReportListItem* row = lsvDienst_->SelectedItem())
            row->SetSubItems(1, txtText_->text());
    } catch (const RuntimeError&) {
    }
}

void frmDienst::lsvDienst_ColumnClick(int column) {
    // A measuring aid kept on purpose: the header's width in twips goes to the clipboard.
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(CStr(Variant::fromDouble(lsvDienst_->ColumnWidth(column))));
}

void frmDienst::cmdPlay_Click() {
    const ReportListItem* row = lsvDienst_->SelectedItem();
    if (!row)
        return;
    playSentence(Saetze()[sentences.SentenceIndex(row->Text())]);
}

void frmDienst::playSentence(const SatzRecord& satz) {
    // A copy: opening another service while this one plays replaces the records.
    const SatzRecord playing = satz;
    // The window can be closed, and deleted, while the sentence plays; the main window, its
    // sounds and its log outlive it.
    const QPointer<frmDienst> self(this);
    frmMain& main = main_;
    std::int16_t busy = 0;
    for (std::int32_t j = 0; j <= playing.LastTarget && j < playing.Targets.size(); ++j)
        requireAnnouncement(playing, playing.Targets[j].AnnouncementKey);
    IsPlaying = true;
    followPlay(playing);
    try {
        PlayAnnouncementSequence(main.mci(), main.table, playing, busy,
                                 [&main, self](const QString& line) {
                                     main.eventLog().WriteLog(line);
                                     if (self)
                                         self->notePlayStep(line);
                                 });
    } catch (const RuntimeError&) {
        // The editor stays usable after a sentence it cannot play.
        if (self) {
            IsPlaying = false;
            endPlayCursor();
        }
        throw;
    }
    if (self) {
        IsPlaying = false;
        endPlayCursor();
    }
}

} // namespace tavik
