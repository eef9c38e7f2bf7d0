#include "sentenceschedule.h"

#include "util/conversions.h"
#include "util/runtimeerror.h"

#include <algorithm>

namespace tavik {

QList<ScheduledEntry> ScheduleSentence(const AnnouncementTable& table, const SatzRecord& sentence) {
    QList<ScheduledEntry> entries;
    qint64 at = 0;
    for (int i = 0; i <= sentence.LastTarget; ++i) {
        if (i >= sentence.Targets.size())
            throw RuntimeError(rt::SubscriptOutOfRange);
        const SatzTarget& target = sentence.Targets[i];
        const std::int32_t index = FindAnnouncementByKey(table, target.AnnouncementKey);
        if (index < 0)
            throw RuntimeError(rt::SubscriptOutOfRange);
        const AnnouncementRecord& record = table.Announcements[index];
        const std::int32_t wait = addLong(target.TimeOffset, record.Length);
        ScheduledEntry entry;
        entry.key = record.Key;
        entry.path = record.Opened ? record.FilePath : QString();
        entry.startMs = at;
        entry.stopMs = at + std::max<std::int32_t>(wait, 0);
        at = entry.stopMs;
        entries << entry;
    }
    return entries;
}

} // namespace tavik
