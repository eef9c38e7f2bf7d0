#pragma once

#include "package/announcementrecord.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesounds.h"

#include <QString>
#include <functional>

namespace tavik {

// What the caller shows while a package's sounds are loaded.
struct AnnouncementLoadHooks {
    // A shown entry without a sound file.
    std::function<void(const QString& key, const QString& title)> missingFile;
    // The first time in a load that an alias was already open.
    std::function<void()> aliasInUse;
    // A record filled from the store, before its sound is looked for.
    std::function<void(const AnnouncementRecord& record)> opening;
    // After each shown entry.
    std::function<void()> progress;
};

// Loads one shown "INDEX" entry into the record at `table.AnnouncementCount` and counts it:
// its settings read, its sound file `filePath` (found for its key, "" when none) opened under
// its key and measured. An alias still open is closed and opened again; `aliasWarningShown`
// tells whether that was already reported in this load.
void LoadAnnouncement(clsZELDB& store, const IndexEntry& entry, const QString& filePath,
                      PackageSounds& sounds, AnnouncementTable& table, bool& aliasWarningShown,
                      const AnnouncementLoadHooks& hooks = {});

// Fills `table` from the package the store holds, as the main window loads a package: one
// record per shown "INDEX" entry, in list order, its settings read, its sound found in
// `packageFolder`, opened under its key and measured. Records are written from index
// `table.AnnouncementCount` on. An entry without "~" raises the subscript error.
void LoadAnnouncementTable(clsZELDB& store, const QString& packageFolder, PackageSounds& sounds,
                           AnnouncementTable& table, const AnnouncementLoadHooks& hooks = {});

// Closes the sound opened under an announcement's key. A key that is not a number never had a
// sound opened, and as an alias it could be a device word ("all") that closes other sounds,
// so nothing is sent for it.
void CloseAnnouncementSound(PackageSounds& sounds, const QString& key);

// Closes the sound of every record in use and empties the table; its storage is kept.
void UnloadAnnouncementSounds(PackageSounds& sounds, AnnouncementTable& table);

} // namespace tavik
