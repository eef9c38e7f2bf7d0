#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "app/loadinputguard.h"
#include "audio/mcipackagesounds.h"
#include "audio/modmci.h"
#include "log/eventlog.h"
#include "package/packagesettings.h"
#include "settings/followlanguage.h"
#include "settings/language.h"
#include "settings/lastpackage.h"
#include "util/conversions.h"
#include "util/msgbox.h"
#include "util/pacer.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QCoreApplication>
#include <QHash>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>
#include <algorithm>

// Loading the current package into the list and the table, closing its sounds, and writing
// the list back into the package index.

namespace tavik {

namespace {

constexpr double kTitleColumn = 5430.6143;
// From the eighteenth entry on, the list needs room for its vertical scroll bar.
constexpr double kTitleColumnWithScrollBar = 5190.2363;
constexpr int kEntriesWithoutScrollBar = 17;
constexpr quint32 kMissingColor = 0xFFFFFF;

// Seconds with two decimals in the user's number format: 1234 ms shows as "1,23" in German.
QString PlayTimeText(std::int32_t ms) {
    return CStr(Variant::fromDouble(roundHalfEven(ms / 10.0) / 100.0));
}

// The play time as measured, to the millisecond: the tool tip of the rounded one.
QString MeasuredLengthText(std::int32_t ms) {
    return QStringLiteral("%1 ms").arg(ms);
}

// The list is filled, emptied or written while events go through: the window takes no input
// but its close meanwhile (LoadInputGuard), and counts how deep such work runs.
class ListWork {
public:
    ListWork(int& depth, QWidget* window, QWidget* exitButton, QAction* quit)
        : depth_(depth), guard_(window, exitButton, quit) {
        ++depth_;
    }
    ~ListWork() { --depth_; }
    ListWork(const ListWork&) = delete;
    ListWork& operator=(const ListWork&) = delete;

private:
    int& depth_;
    LoadInputGuard guard_;
};

} // namespace

void frmMain::LoadPackage() {
    // A window closed while its list was emptied for this load stays empty.
    if (closedDuringListWork_)
        return;
    followPackage();
    if (!PackageIndex.OpenIOFile(IndexFilePath)) {
        MsgBox(this, language_.GetLangString(8), MsgButtons::OK, MsgIcon::Exclamation);
        return;
    }
    noteLoadedPackage();
    const ListWork work(listWork_, this, cmdExit_, mnuQuit_);
    lsvPack_->hide();
    // Opening a sound lets events through by itself, and so does each line the event log
    // gets (a sound that fails to open writes one); here that happens at the load's pace.
    const bool yieldOnOpen = mci_.YieldOnOpen;
    const bool yieldOnWrite = eventLog_.YieldOnWrite;
    mci_.YieldOnOpen = false;
    eventLog_.YieldOnWrite = false;
    // A load aborted by a runtime error still leaves a window the user can work with: the
    // list as far as it was filled, the ready panels, no status window.
    const auto restore = qScopeGuard([this, yieldOnOpen, yieldOnWrite] {
        mci_.YieldOnOpen = yieldOnOpen;
        eventLog_.YieldOnWrite = yieldOnWrite;
        // Rows are added at the end and placed by the sort column once all are filled, as if
        // each were placed when it was complete: what the list shows after a reload is the
        // saved order, sorted over whole rows.
        lsvPack_->PlaceAllSorted();
        showReadyState();
        closeStatusWindow();
        lsvPack_->show();
    });
    const std::int16_t count = CInt(PackageIndex.GetSetting(
        QStringLiteral("INDEX"), QStringLiteral("Count"), QStringLiteral("0")));
    if (count != 0) {
        if (!status_)
            status_ = new frmStatus(this);
        LocaliseWindow(status_, language_);
        status_->ShowStatus(language_.GetLangString(9));
        prgStatus_->setMaximum(count);
        prgStatus_->setValue(0);
        prgStatus_->show();
        Panel(2)->show();
        Panel(3)->hide();
        Panel(1)->setText(language_.GetLangString(26));
    }

    // The title in the status window, the progress bar and the events in between follow the
    // rows at most every 50 ms, and show the last row's state at the end.
    Pacer titlePace(kLoadPaceMs);
    Pacer eventPace(kLoadPaceMs);
    QString title;
    bool titleShown = true;
    bool aliasWarningShown = false;
    AnnouncementLoadHooks hooks;
    hooks.opening = [&](const AnnouncementRecord& record) {
        title = record.Title;
        titleShown = false;
        if (status_ && titlePace.due()) {
            status_->ShowSecondLine(title);
            titleShown = true;
        }
    };
    hooks.aliasInUse = [this] {
        MsgBox(this, language_.GetLangString(11), MsgButtons::OK, MsgIcon::Exclamation);
    };
    hooks.missingFile = [this](const QString& key, const QString& title) {
        MsgBox(this, language_.GetLangString(10, key, title), MsgButtons::OK, MsgIcon::Exclamation);
    };
    // Room for every record at once: grown one record at a time, the table was copied at each
    // doubling and left the old copies' space behind.
    if (count > 0)
        table.Announcements.reserve(table.AnnouncementCount + count);
    // The folder's names and the shared texts are let go before the list's fingerprint is
    // taken, which needs room of its own.
    {
        MciPackageSounds sounds(mci_);
        const PackageFileList files(PackageFolder);
        // The extension, the play time and its tool tip repeat from row to row: rows with the same
        // text share one copy of it instead of holding one each.
        QHash<QString, QString> texts;
        const auto shared = [&texts](const QString& text) -> QString {
            const auto found = texts.constFind(text);
            return found != texts.cend() ? *found : *texts.insert(text, text);
        };
        double titleColumn = -1;
        for (int i = 1; i <= count; ++i) {
            const IndexEntry entry = ReadIndexEntry(PackageIndex, i);
            const double width =
                i > kEntriesWithoutScrollBar ? kTitleColumnWithScrollBar : kTitleColumn;
            if (width != titleColumn) {
                lsvPack_->SetColumnWidth(2, width);
                fitLoudnessColumn();
                titleColumn = width;
            }
            if (!entry.Title.isEmpty()) {
                // The row joins the list once it is filled, so the list's views hear of it once
                // instead of once for every text; a sound whose load raises an error leaves its
                // row as far as it was filled.
                ReportListItem* row = lsvPack_->MakeItem(entry.Key);
                const auto addRow =
                    qScopeGuard([this, row] { lsvPack_->AddMadeItem(row, lsvPack_->Count() + 1); });
                const QString filePath = files.GetFileName(entry.Key);
                row->SetSubItems(1, entry.Title);
                row->SetTag(filePath);
                row->SetSubItems(2, shared(GetExtension(filePath)));
                LoadAnnouncement(PackageIndex, entry, filePath, sounds, table, aliasWarningShown,
                                 hooks);
                const AnnouncementRecord& record = table.Announcements[table.AnnouncementCount - 1];
                if (record.Opened) {
                    row->SetSubItems(3, shared(PlayTimeText(record.Length)));
                    row->SubItem(3).SetToolTipText(shared(MeasuredLengthText(record.Length)));
                }
                if (record.Missing) {
                    row->SetForeColor(kMissingColor);
                    row->SetSubItems(2, QStringLiteral("???"));
                }
                if (record.Color >= 1) {
                    row->SetForeColor(static_cast<quint32>(record.Color));
                    row->SetBold(true);
                } else {
                    row->SetBold(false);
                }
            }
            if (eventPace.due() || i == count) {
                if (status_ && !titleShown) {
                    status_->ShowSecondLine(title);
                    titleShown = true;
                }
                prgStatus_->setValue(i);
                QCoreApplication::processEvents();
                if (closedDuringListWork_)
                    break;
            }
        }
    }
    if (closedDuringListWork_)
        return;

    EnableServicButtons(true);
    cmdSave_->setEnabled(true);
    packageLoaded();
    WriteLastPackage(PackageFolder);
}

void frmMain::UnloadAudioFiles() {
    const ListWork work(listWork_, this, cmdExit_, mnuQuit_);
    if (!status_)
        status_ = new frmStatus(this);
    LocaliseWindow(status_, language_);
    status_->ShowStatus(language_.GetLangString(25));
    Pacer eventPace(kLoadPaceMs);
    const qsizetype records =
        std::min<qsizetype>(table.AnnouncementCount, table.Announcements.size());
    for (qsizetype i = 0; i < records; ++i) {
        CloseAnnouncementSound(mci_, table.Announcements[i].Key);
        if (eventPace.due() || i == records - 1)
            QCoreApplication::processEvents();
    }
    table.AnnouncementCount = 0;
    closeStatusWindow();
}

void frmMain::closeStatusWindow() {
    if (status_) {
        status_->close();
        delete status_;
    }
}

void frmMain::SavePackageList() {
    const ListWork work(listWork_, this, cmdExit_, mnuQuit_);
    const int rows = lsvPack_->Count();
    for (int i = 1; i <= rows; ++i) {
        ReportListItem* row = lsvPack_->ListItems(i);
        const QString key = row->Text();
        const std::int32_t index = FindAnnouncementByKey(table, key);
        // A row without a record: the runtime's subscript check, as for any bad index.
        if (index < 0 || index >= table.Announcements.size())
            throw RuntimeError(rt::SubscriptOutOfRange);
        const AnnouncementRecord& record = table.Announcements[index];
        PackageIndex.SaveSetting(QStringLiteral("INDEX"), QString::number(i),
                                 Variant::fromString(JoinIndexEntry(key, row->SubItems(1))));
        PackageIndex.SaveSetting(record.Key, QStringLiteral("Color"),
                                 Variant::fromLong(static_cast<std::int32_t>(row->ForeColor())));
        PackageIndex.SaveSetting(record.Key, QStringLiteral("NameVisible"),
                                 Variant::fromBoolean(record.NameVisible));
        PackageIndex.SaveSetting(record.Key, QStringLiteral("AutoPlace"),
                                 Variant::fromLong(record.AutoPlace));
        QCoreApplication::processEvents();
    }
    PackageIndex.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"),
                             Variant::fromLong(rows));
}

} // namespace tavik
