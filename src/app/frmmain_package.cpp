#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "audio/modmci.h"
#include "package/packagesettings.h"
#include "service/packageannouncements.h"
#include "settings/followlanguage.h"
#include "settings/language.h"
#include "util/conversions.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>

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

} // namespace

void frmMain::LoadPackage() {
    if (!PackageIndex.OpenIOFile(IndexFilePath)) {
        MsgBox(this, language_.GetLangString(8), MsgButtons::OK, MsgIcon::Exclamation);
        return;
    }
    noteLoadedPackage();
    lsvPack_->hide();
    // A load aborted by a runtime error still leaves a window the user can work with: the
    // list as far as it was filled, the ready panels, no status window.
    const auto restore = qScopeGuard([this] {
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

    bool aliasWarningShown = false;
    AnnouncementLoadHooks hooks;
    hooks.opening = [this](const AnnouncementRecord& record) {
        if (status_)
            status_->ShowSecondLine(record.Title);
    };
    hooks.aliasInUse = [this] {
        MsgBox(this, language_.GetLangString(11), MsgButtons::OK, MsgIcon::Exclamation);
    };
    hooks.missingFile = [this](const QString& key, const QString& title) {
        MsgBox(this, language_.GetLangString(10, key, title), MsgButtons::OK, MsgIcon::Exclamation);
    };
    const PackageFileList files(PackageFolder);
    for (int i = 1; i <= count; ++i) {
        const IndexEntry entry = ReadIndexEntry(PackageIndex, i);
        lsvPack_->SetColumnWidth(2, i > kEntriesWithoutScrollBar ? kTitleColumnWithScrollBar
                                                                 : kTitleColumn);
        if (!entry.Title.isEmpty()) {
            // Added at the end and placed by the sort column once it is filled: what the list
            // shows after a reload is then the saved order, sorted over whole rows.
            ReportListItem* row = lsvPack_->AddItem(entry.Key, {}, lsvPack_->Count() + 1);
            // Also when the load is aborted half-way through the row.
            const auto place = qScopeGuard([this, row] { lsvPack_->PlaceSorted(row); });
            row->SetSubItems(1, entry.Title);
            row->SetTag(files.GetFileName(entry.Key));
            row->SetSubItems(2, GetExtension(row->Tag()));
            LoadAnnouncement(PackageIndex, entry, files, mci_, table, aliasWarningShown, hooks);
            const AnnouncementRecord& record = table.Announcements[table.AnnouncementCount - 1];
            if (record.Opened)
                row->SetSubItems(3, PlayTimeText(record.Length));
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
        prgStatus_->setValue(i);
        QCoreApplication::processEvents();
    }

    EnableServicButtons(true);
    cmdSave_->setEnabled(true);
}

void frmMain::UnloadAudioFiles() {
    if (!status_)
        status_ = new frmStatus(this);
    LocaliseWindow(status_, language_);
    status_->ShowStatus(language_.GetLangString(25));
    for (qsizetype i = 0; i < table.AnnouncementCount && i < table.Announcements.size(); ++i) {
        CloseAnnouncementSound(mci_, table.Announcements[i].Key);
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
