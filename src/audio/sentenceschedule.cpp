#include "sentenceschedule.h"

#include "audio/modmci.h"
#include "util/conversions.h"
#include "util/runtimeerror.h"

namespace tavik {

const AnnouncementRecord& EntryAnnouncement(const AnnouncementTable& table,
                                            const SatzRecord& sentence, int i) {
    if (i < 0 || i >= sentence.Targets.size())
        throw RuntimeError(rt::SubscriptOutOfRange);
    const std::int32_t index = FindAnnouncementByKey(table, sentence.Targets[i].AnnouncementKey);
    if (index < 0)
        throw RuntimeError(rt::SubscriptOutOfRange);
    return table.Announcements[index];
}

std::int32_t EntryWait(const SatzTarget& target, const AnnouncementRecord& record) {
    return addLong(target.TimeOffset, record.Length);
}

QList<ScheduledEntry> ScheduleSentence(const AnnouncementTable& table, const SatzRecord& sentence) {
    QList<ScheduledEntry> entries;
    qint64 at = 0;
    for (int i = 0; i <= sentence.LastTarget; ++i) {
        const AnnouncementRecord& record = EntryAnnouncement(table, sentence, i);
        ScheduledEntry entry;
        entry.key = record.Key;
        entry.path = record.Opened ? record.FilePath : QString();
        entry.startMs = at;
        entry.stopMs = at + TicksWaited(EntryWait(sentence.Targets[i], record));
        at = entry.stopMs;
        entries << entry;
    }
    return entries;
}

} // namespace tavik
