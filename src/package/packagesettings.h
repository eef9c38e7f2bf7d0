#pragma once

#include "package/clszeldb.h"
#include "package/packagefolder.h"

#include <QList>
#include <cstdint>

namespace tavik {

// The settings an announcement keeps under its key.
struct AnnouncementSettings {
    std::int32_t Color = 0;
    bool NameVisible = true;
    std::int32_t AutoPlace = -1;
};

// "INDEX"/"Count" as a 16-bit number; 0 when the package has no "INDEX".
std::int16_t ReadIndexCount(clsZELDB& store);

// The "INDEX" entry at `position` (from 1), split at "~". A missing entry or one without
// "~" raises runtime error 9.
IndexEntry ReadIndexEntry(clsZELDB& store, int position);

// The entries a package shows, in list order: positions 1 to Count, without those whose
// title is empty.
QList<IndexEntry> ReadShownEntries(clsZELDB& store);

// An announcement's settings, each read with its default text.
AnnouncementSettings ReadAnnouncementSettings(clsZELDB& store, const QString& key);
void WriteAnnouncementSettings(clsZELDB& store, const QString& key,
                               const AnnouncementSettings& settings);

} // namespace tavik
