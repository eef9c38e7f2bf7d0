#include "service/autoplace.h"

namespace tavik {

QList<int> AutoPlaceRows(const AnnouncementTable& table) {
    QList<int> rows;
    const int count = std::min<int>(table.AnnouncementCount, table.Announcements.size());
    for (int place = kFirstAutoPlace; place <= kLastAutoPlace; ++place) {
        for (int i = 0; i < count; ++i) {
            const std::int32_t autoPlace = table.Announcements[i].AutoPlace;
            if (autoPlace != -1 && autoPlace == place)
                rows.append(i + 1);
        }
    }
    return rows;
}

} // namespace tavik
