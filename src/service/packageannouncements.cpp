#include "packageannouncements.h"

#include "audio/mcierrors.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "util/conversions.h"

#include <QFileInfo>

namespace tavik {

namespace {

// The alias of an earlier load is closed and opened once more; a device that keeps
// refusing must not hold the load forever.
constexpr int kOpenAttempts = 2;

} // namespace

void LoadAnnouncement(clsZELDB& store, const IndexEntry& entry, const PackageFileList& files,
                      modMCI& mci, AnnouncementTable& table, bool& aliasWarningShown,
                      const AnnouncementLoadHooks& hooks) {
    const AnnouncementSettings settings = ReadAnnouncementSettings(store, entry.Key);
    if (table.Announcements.size() <= table.AnnouncementCount)
        table.Announcements.resize(table.AnnouncementCount + 1);
    AnnouncementRecord& record = table.Announcements[table.AnnouncementCount];
    record = AnnouncementRecord{};
    record.Title = entry.Title;
    record.FilePath = files.GetFileName(entry.Key);
    record.Key = entry.Key;
    record.NameVisible = settings.NameVisible;
    record.AutoPlace = settings.AutoPlace;
    record.Color = settings.Color;
    if (hooks.opening)
        hooks.opening(record);
    if (!record.FilePath.isEmpty() && QFileInfo::exists(record.FilePath)) {
        const QString format = IndentifyFormat(GetExtension(record.FilePath));
        bool opened = false;
        for (int attempt = 0; !format.isEmpty() && attempt < kOpenAttempts; ++attempt) {
            QString path = record.FilePath;
            const std::int16_t result = mci.MciOpen(path, record.Key, format);
            if (result == -1) {
                opened = true;
                break;
            }
            if (result != mci::DuplicateAlias)
                break;
            if (!aliasWarningShown && hooks.aliasInUse)
                hooks.aliasInUse();
            aliasWarningShown = true;
            mci.MciClose(record.Key);
        }
        if (opened) {
            record.Length = mci.MciGetLength(record.Key);
            record.Opened = true;
        }
    } else {
        record.Missing = true;
        if (hooks.missingFile)
            hooks.missingFile(record.Key, record.Title);
    }
    table.AnnouncementCount = addInteger(table.AnnouncementCount, 1);
    if (hooks.progress)
        hooks.progress();
}

void LoadAnnouncementTable(clsZELDB& store, const QString& packageFolder, modMCI& mci,
                           AnnouncementTable& table, const AnnouncementLoadHooks& hooks) {
    bool aliasWarningShown = false;
    const PackageFileList files(packageFolder);
    for (const IndexEntry& entry : ReadShownEntries(store))
        LoadAnnouncement(store, entry, files, mci, table, aliasWarningShown, hooks);
}

void CloseAnnouncementSound(modMCI& mci, const QString& key) {
    if (IsAnnouncementKey(key))
        mci.MciClose(key);
}

void UnloadAnnouncementSounds(modMCI& mci, AnnouncementTable& table) {
    for (qsizetype i = 0; i < table.AnnouncementCount && i < table.Announcements.size(); ++i)
        CloseAnnouncementSound(mci, table.Announcements[i].Key);
    table.AnnouncementCount = 0;
}

} // namespace tavik
