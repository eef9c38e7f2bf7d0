#pragma once

#include "package/announcementrecord.h"
#include "service/satzrecord.h"

#include <QList>

namespace tavik {

// When the sequence player starts and stops each entry of a sentence, in milliseconds from
// the first start: each entry waits its sound's stored length plus its time shift, and a wait
// that comes out negative ends at once.
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
