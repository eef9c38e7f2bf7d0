#include "packageannouncements.h"

#include "package/packagesettings.h"
#include "util/conversions.h"

#include <QFileInfo>

namespace tavik {

namespace {

// The alias of an earlier load is closed and opened once more; a device that keeps
// refusing must not hold the load forever.
constexpr int kOpenAttempts = 2;

} // namespace

void LoadAnnouncement(clsZELDB& store, const IndexEntry& entry, const QString& filePath,
                      PackageSounds& sounds, AnnouncementTable& table, bool& aliasWarningShown,
                      const AnnouncementLoadHooks& hooks) {
    const AnnouncementSettings settings = ReadAnnouncementSettings(store, entry.Key);
    if (table.Announcements.size() <= table.AnnouncementCount)
        table.Announcements.resize(table.AnnouncementCount + 1);
    AnnouncementRecord& record = table.Announcements[table.AnnouncementCount];
    record = AnnouncementRecord{};
    record.Title = entry.Title;
    record.FilePath = filePath;
    record.Key = entry.Key;
    // A reload can end with the count and storage it had, in another order.
    ForgetKeyIndex(table);
    record.NameVisible = settings.NameVisible;
    record.AutoPlace = settings.AutoPlace;
    record.Color = settings.Color;
    if (hooks.opening)
        hooks.opening(record);
    if (!record.FilePath.isEmpty() && QFileInfo::exists(record.FilePath)) {
        const QString format = sounds.DeviceType(GetExtension(record.FilePath));
        bool opened = false;
        for (int attempt = 0; !format.isEmpty() && attempt < kOpenAttempts; ++attempt) {
            const std::int16_t result = sounds.Open(record.FilePath, record.Key, format);
            if (result == -1) {
                opened = true;
                break;
            }
            if (result != kAliasAlreadyOpen)
                break;
            if (!aliasWarningShown && hooks.aliasInUse)
                hooks.aliasInUse();
            aliasWarningShown = true;
            sounds.Close(record.Key);
        }
        if (opened) {
            record.Length = sounds.Length(record.Key);
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

void LoadAnnouncementTable(clsZELDB& store, const QString& packageFolder, PackageSounds& sounds,
                           AnnouncementTable& table, const AnnouncementLoadHooks& hooks) {
    bool aliasWarningShown = false;
    const PackageFileList files(packageFolder);
    for (const IndexEntry& entry : ReadShownEntries(store))
        LoadAnnouncement(store, entry, files.GetFileName(entry.Key), sounds, table,
                         aliasWarningShown, hooks);
}

void CloseAnnouncementSound(PackageSounds& sounds, const QString& key) {
    if (IsAnnouncementKey(key))
        sounds.Close(key);
}

void UnloadAnnouncementSounds(PackageSounds& sounds, AnnouncementTable& table) {
    for (qsizetype i = 0; i < table.AnnouncementCount && i < table.Announcements.size(); ++i)
        CloseAnnouncementSound(sounds, table.Announcements[i].Key);
    table.AnnouncementCount = 0;
}

} // namespace tavik
