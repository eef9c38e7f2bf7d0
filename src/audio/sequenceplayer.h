#pragma once

#include "audio/modmci.h"
#include "package/announcementrecord.h"
#include "service/satzrecord.h"

#include <cstdint>
#include <functional>

namespace tavik {

// Plays one announcement's sound; with `wait`, waits for its stored length while the user
// interface stays live and then stops it.
void PlayAnnouncement(modMCI& mci, const AnnouncementRecord& record, bool wait);

// Plays a sentence from start to end as the add-on plays it: each sound for its stored length
// plus its entry's time shift, the steps written to the event log. `busy` is -1 while it
// plays. An entry whose key has no record raises runtime error 9 and leaves `busy` set.
void PlayAnnouncementSequence(modMCI& mci, const AnnouncementTable& table,
                              const SatzRecord& sequence, std::int16_t& busy,
                              const std::function<void(const QString&)>& writeLog);

} // namespace tavik
