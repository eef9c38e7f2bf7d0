#include "app/frmmain.h"
#include "app/setasidefiles.h"
#include "app/tavikapplication.h"
#include "package/packagewatch.h"
#include "settings/language.h"
#include "util/msgbox.h"
#include "util/packagelock.h"
#include "util/reportlist.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QFileInfo>
#include <QHash>
#include <QLabel>
#include <QTimer>

// What other programs do to the open package: the watch on its files, the question before the
// editor writes over their changes, and the lock every write of the editor holds.

namespace tavik {

namespace {

constexpr std::int32_t kChangedOnDiskQuestion = 230;
constexpr std::int32_t kReloadedStatus = 231;
constexpr std::int32_t kOpenElsewhere = 232;
// A change met while a dialog or a load is busy is looked at again after this long.
constexpr int kRetryMs = 500;

} // namespace

QSet<QString> frmMain::HeldKeys() const {
    QSet<QString> keys;
    for (int i = 1; i <= lsvPack_->Count(); ++i)
        keys.insert(lsvPack_->ListItems(i)->Text());
    for (qsizetype i = 0; i < table.AnnouncementCount && i < table.Announcements.size(); ++i)
        keys.insert(table.Announcements[i].Key);
    return keys;
}

bool frmMain::WriteGuarded(const std::function<QStringList()>& write, bool askFirst) {
    const PackageWriteLock lock(PackageFolder);
    // A package folder that is gone has nothing to write over: the write itself fails and
    // says so, and the list keeps its changes for another try.
    if (askFirst && watch_ && !overwriteConfirmed_ && QFileInfo(PackageFolder).isDir()) {
        const QStringList changed = watch_->listChanges();
        if (!changed.isEmpty()) {
            switch (askAboutOutsideChange(changed)) {
            case MsgResult::Discard:
                reloadFromDisk(changed);
                return false;
            case MsgResult::Save:
                break;
            default:
                return false;
            }
        }
    }
    const QStringList written = write();
    if (watch_)
        watch_->noteOwnWrite(written);
    return true;
}

void frmMain::followPackage() {
    if (!watch_) {
        watch_ = new PackageWatch(this);
        // A failed reload is shown like any runtime error of a handler.
        connect(watch_, &PackageWatch::changedOnDisk, this,
                [this](const QStringList& names) { RunHandler([&] { onChangedOnDisk(names); }); });
    }
    const QString elsewhere = watch_->follow(PackageFolder);
    if (!elsewhere.isEmpty())
        MsgBox(this, language_.GetLangString(kOpenElsewhere, elsewhere), MsgButtons::OK,
               MsgIcon::Information);
}

void frmMain::packageLoaded() {
    loadedList_ = listFingerprint();
}

QByteArray frmMain::listFingerprint() const {
    // Everything a save writes: the order, the titles, the colours and each record's flags.
    // Each row's record is the first one of its key, found through a hash: a scan per row
    // made this quadratic, and it runs after every load. Only a digest of the rows is kept: a
    // copy of every row's texts would hold megabytes for a big package.
    QHash<QString, qsizetype> firstRecord;
    firstRecord.reserve(table.AnnouncementCount);
    for (qsizetype r = 0; r < table.AnnouncementCount && r < table.Announcements.size(); ++r)
        if (!firstRecord.contains(table.Announcements[r].Key))
            firstRecord.insert(table.Announcements[r].Key, r);
    // The rows go to the digest in chunks: two small additions per row cost more than the
    // hashing itself.
    constexpr qsizetype kChunk = 32 * 1024;
    // BLAKE2b: as safe a digest as SHA-256 and five times as fast in Qt's own code.
    QCryptographicHash digest(QCryptographicHash::Blake2b_256);
    QByteArray chunk;
    chunk.reserve(kChunk + 256);
    const char16_t separator = u'\x1f';
    auto addText = [&chunk](QStringView text) {
        chunk.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    };
    for (int i = 1; i <= lsvPack_->Count(); ++i) {
        ReportListItem* row = lsvPack_->ListItems(i);
        const QString key = row->Text();
        const QString title = row->SubItems(1);
        const QString color = QString::number(row->ForeColor());
        QString flags;
        const auto found = firstRecord.constFind(key);
        if (found != firstRecord.cend()) {
            const AnnouncementRecord& record = table.Announcements[*found];
            flags =
                QString::number(record.NameVisible) + separator + QString::number(record.AutoPlace);
        }
        // Each row goes in after its length, so no two lists of rows give the same bytes: the
        // line is key, title and colour, and the record's flags when it has one, each after a
        // separator.
        const qint64 length = key.size() + 1 + title.size() + 1 + color.size() +
                              (found != firstRecord.cend() ? 1 + flags.size() : 0);
        chunk.append(reinterpret_cast<const char*>(&length), sizeof length);
        addText(key);
        addText(QStringView(&separator, 1));
        addText(title);
        addText(QStringView(&separator, 1));
        addText(color);
        if (found != firstRecord.cend()) {
            addText(QStringView(&separator, 1));
            addText(flags);
        }
        if (chunk.size() >= kChunk) {
            digest.addData(chunk);
            chunk.resize(0);
        }
    }
    digest.addData(chunk);
    return digest.result();
}

bool frmMain::HasUnsavedChanges() const {
    return isWindowModified() || listFingerprint() != loadedList_;
}

MsgResult frmMain::askAboutOutsideChange(const QStringList& names) {
    return MsgBox(this, language_.GetLangString(kChangedOnDiskQuestion, names.join(u", ")),
                  MsgButtons::SaveDiscardCancel, MsgIcon::Exclamation, {}, MsgResult::Cancel);
}

void frmMain::reloadFromDisk(const QStringList& names) {
    // What the user gives up goes with the reload: files of unsaved removals return to the
    // package and the undo history, which described the old list, ends.
    WriteGuarded(
        [this] {
            QStringList returned;
            for (const QString& path : setAsideFiles().paths())
                returned << QFileInfo(path).fileName();
            closeEditedPackage();
            return returned;
        },
        false);
    UnloadAudioFiles();
    lsvPack_->ClearItems();
    LoadPackage();
    Panel(1)->setText(language_.GetLangString(kReloadedStatus, names.join(u", ")));
}

void frmMain::onChangedOnDisk(const QStringList& names) {
    if (askingAboutChange_)
        return;
    // Not while the user works in a dialog, the service editor is open or a load, an unload or
    // a save goes through the list.
    if (!isEnabled() || QApplication::activeModalWidget() || listWork_ > 0) {
        QTimer::singleShot(kRetryMs, this, [this] {
            if (!watch_)
                return;
            const QStringList now = watch_->changes();
            if (!now.isEmpty())
                RunHandler([&] { onChangedOnDisk(now); });
        });
        return;
    }
    // Service files are the service editor's (this program's or another's): the list neither
    // shows nor writes them, so their changes are taken as they are.
    QStringList listNames = names;
    listNames.removeIf([](const QString& name) { return IsServiceFileName(name); });
    if (listNames.isEmpty()) {
        watch_->noteOwnWrite(names);
        return;
    }
    if (watch_->alreadyShown())
        return;
    if (!HasUnsavedChanges()) {
        reloadFromDisk(names);
        return;
    }
    askingAboutChange_ = true;
    const MsgResult choice = askAboutOutsideChange(names);
    askingAboutChange_ = false;
    if (choice == MsgResult::Discard) {
        reloadFromDisk(names);
    } else if (choice == MsgResult::Save) {
        overwriteConfirmed_ = true;
        try {
            cmdSave_Click();
        } catch (...) {
            overwriteConfirmed_ = false;
            throw;
        }
        overwriteConfirmed_ = false;
    } else {
        watch_->markShown();
    }
}

} // namespace tavik
