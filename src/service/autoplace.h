#pragma once

#include "package/announcementrecord.h"

#include <QList>

namespace tavik {

// The places a new sentence is filled with, first to last.
inline constexpr int kFirstAutoPlace = 1;
inline constexpr int kLastAutoPlace = 5;

// The source rows (counted from 1) a new sentence is filled from, in the order they are added:
// places 1 to 5 in place order, announcements of one place in table order. Announcement i
// stands for row i + 1, which holds only while no announcement before it lacks its sound
// file; the rule is kept as it is, the editor does not correct for missing files.
QList<int> AutoPlaceRows(const AnnouncementTable& table);

} // namespace tavik
