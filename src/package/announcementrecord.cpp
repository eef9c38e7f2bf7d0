#include "announcementrecord.h"

#include "util/runtimeerror.h"

namespace tavik {

std::int32_t FindAnnouncementByKey(const AnnouncementTable& table, const QString& key) {
    const qsizetype inUse =
        std::min<qsizetype>(table.AnnouncementCount, table.Announcements.size());
    for (qsizetype i = 0; i < inUse; ++i) {
        if (table.Announcements[i].Key == key)
            return static_cast<std::int32_t>(i);
    }
    return -1;
}

} // namespace tavik
