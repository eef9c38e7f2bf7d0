// The sentence page: the announcements of the package and the entries of one sentence.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "service/autoplace.h"
#include "service/serviceeditorrules.h"
#include "settings/language.h"
#include "util/inputbox.h"
#include "util/listrows.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QListWidget>

namespace tavik {

namespace {

constexpr int kSearchTitle = 58;
constexpr int kSearchPrompt = 59;

} // namespace

void frmDienst::cmdHinzu_Click() {
    addTargetRowFromSelectedSource();
}

void frmDienst::addTargetRowFromSelectedSource() {
    const ReportListItem* source = lsvSource_->SelectedItem();
    if (!source)
        return;
    const int a = source->Tag().toInt();
    if (a < 0 || a >= main_.table.Announcements.size())
        throw RuntimeError(rt::SubscriptOutOfRange);
    const AnnouncementRecord& record = main_.table.Announcements[a];
    ReportListItem* item = lsvTarget_->AddItem(QStringLiteral("0"));
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    item->SetTag(record.Key);
    item->SetSubItems(1, record.Title);
    item->SetSelected(true);
    lsvTarget_->setCurrentItem(item);
    lsvTarget_->scrollToItem(item);
    if (item->Index() > kTargetRowsBeforeScrolling)
        lsvTarget_->SetColumnWidth(2, kTargetTitleWidthScrolling);
}

void frmDienst::AutoPlace() {
    // Row i + 1 is taken for announcement i, as designed for packages without missing files.
    for (const int row : AutoPlaceRows(main_.table)) {
        lsvSource_->ListItems(row)->SetSelected(true);
        addTargetRowFromSelectedSource();
    }
}

void frmDienst::cmdEntf_Click() {
    if (const ReportListItem* row = lsvTarget_->SelectedItem())
        lsvTarget_->RemoveItem(row->Index());
}

void frmDienst::cmdAuf_Click() {
    MoveRowUp(lsvTarget_);
}

void frmDienst::cmdAb_Click() {
    MoveRowDown(lsvTarget_);
}

void frmDienst::cmdSearch_Click() {
    const Language& language = main_.language();
    const QString answer =
        InputBox(this, language.GetLangString(kSearchPrompt), language.GetLangString(kSearchTitle));
    if (answer.isEmpty())
        return;
    QStringList titles;
    for (int r = 1; r <= lsvSource_->Count(); ++r)
        titles.append(lsvSource_->ListItems(r)->Text());
    const int found = FindRowContaining(titles, answer);
    if (found < 0)
        return;
    ReportListItem* row = lsvSource_->ListItems(found + 1);
    lsvSource_->setFocus();
    row->SetSelected(true);
    lsvSource_->setCurrentItem(row);
    lsvSource_->scrollToItem(row);
}

void frmDienst::SaveIntoArray() {
    if (CurrentSatz < 0 || CurrentSatz >= Saetze().size())
        throw RuntimeError(rt::SubscriptOutOfRange);
    QList<TargetRow> rows;
    for (int r = 1; r <= lsvTarget_->Count(); ++r) {
        const ReportListItem* row = lsvTarget_->ListItems(r);
        rows.append({row->Text(), row->Tag()});
        requireAnnouncement(Saetze()[CurrentSatz], row->Tag());
    }
    tavik::SaveIntoArray(Saetze()[CurrentSatz], rows, main_.table);
}

void frmDienst::cmdSave_Click() {
    SaveIntoArray();
    ShowPage(1);
    RefreshList();
    zoom(picTab_[2], cmdAdd_);
    NewSatzPending = false;
    mnuSave_->setEnabled(true);
}

void frmDienst::cmdCancel_Click() {
    if (NewSatzPending) {
        lsvDienst_->RemoveItem(lsvDienst_->Count());
        NewSatzPending = false;
    }
    ShowPage(1);
    zoom(picTab_[2], cmdAdd_);
}

void frmDienst::cmdAbsp_Click() {
    SaveIntoArray();
    playSentence(Saetze()[CurrentSatz]);
}

} // namespace tavik
