#pragma once

#include "audio/modmci.h"
#include "package/announcementrecord.h"
#include "service/satzrecord.h"

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

// A sentence of `targets` under key 0001, as a service holds it.
inline SatzRecord sentence(const QList<SatzTarget>& targets) {
    SatzRecord s;
    s.Key = QStringLiteral("0001");
    s.Text = QStringLiteral("Test");
    s.Targets = targets;
    s.LastTarget = static_cast<std::int16_t>(targets.size() - 1);
    return s;
}

} // namespace tavik::test
