#pragma once

#include "package/announcementrecord.h"
#include "service/satzrecord.h"

#include <QList>
#include <cstdint>

namespace tavik {

// The announcement entry `i` of a sentence plays: the first whose key equals the entry's.
// Raises runtime error 9 when the entry or its announcement does not exist.
const AnnouncementRecord& EntryAnnouncement(const AnnouncementTable& table,
                                            const SatzRecord& sentence, int i);

// How long the player waits on an entry before it stops it: the sound's stored length plus
// the entry's shift. Raises runtime error 6 when the sum does not fit 32 bits.
std::int32_t EntryWait(const SatzTarget& target, const AnnouncementRecord& record);

// When the sequence player starts and stops each entry of a sentence, in milliseconds from
// the first start. Each entry is stopped, and the next one started, when its wait has run by
// the tick count: a wait of 0 or more lasts one tick longer than its count, a negative one
// ends at once (TicksWaited).
struct ScheduledEntry {
    QString key;
    QString path; // "" when the announcement has no playable sound
    qint64 startMs = 0;
    qint64 stopMs = 0;
};

// Raises runtime error 9 for an entry whose key has no announcement, and 6 when a wait does
// not fit 32 bits, as the player does.
QList<ScheduledEntry> ScheduleSentence(const AnnouncementTable& table, const SatzRecord& sentence);

} // namespace tavik
