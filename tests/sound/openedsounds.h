#pragma once

#include "audio/modmci.h"
#include "package/announcementrecord.h"

#include <QString>

namespace tavik::test {

// Opens `path` under `key` on the device `type` and, when it opened, adds it to `table` as a
// package's load does: its length from the output. The MCI code (-1 when it opened).
inline int OpenIntoTable(modMCI& mci, AnnouncementTable& table, const QString& key,
                         const QString& path, const QString& type) {
    QString opened = path;
    const int code = mci.MciOpen(opened, key, type);
    if (code != -1)
        return code;
    AnnouncementRecord record;
    record.Key = key;
    record.Title = key;
    record.FilePath = path;
    record.Length = mci.MciGetLength(key);
    record.Opened = true;
    table.Announcements << record;
    table.AnnouncementCount = static_cast<std::int16_t>(table.Announcements.size());
    return code;
}

} // namespace tavik::test
