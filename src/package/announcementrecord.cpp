#include "announcementrecord.h"

#include "util/runtimeerror.h"

namespace tavik {

std::int32_t FindAnnouncementByKey(const AnnouncementTable& table, const QString& key) {
    // The search runs one record past the count: into storage a larger earlier load left
    // behind, or past the table's end, which is the runtime's subscript error.
    for (qsizetype i = 0; i <= table.AnnouncementCount; ++i) {
        if (i >= table.Announcements.size())
            throw RuntimeError(rt::SubscriptOutOfRange);
        if (table.Announcements[i].Key == key)
            return static_cast<std::int32_t>(i);
    }
    return -1;
}

} // namespace tavik
