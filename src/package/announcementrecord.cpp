#include "announcementrecord.h"

#include "util/runtimeerror.h"

#include <algorithm>

namespace tavik {

namespace {

// The search as it is defined: records 0 to the count, the first exact match.
std::int32_t scanForKey(const AnnouncementTable& table, const QString& key) {
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

const AnnouncementTable::KeyIndex& keyIndexOf(const AnnouncementTable& table) {
    AnnouncementTable::KeyIndex& index = table.keyIndex;
    if (index.records != table.Announcements.constData() ||
        index.size != table.Announcements.size() || index.count != table.AnnouncementCount) {
        index.records = table.Announcements.constData();
        index.size = table.Announcements.size();
        index.count = table.AnnouncementCount;
        index.first.clear();
        const qsizetype inUse = std::min<qsizetype>(table.AnnouncementCount, index.size);
        index.first.reserve(inUse);
        for (qsizetype i = 0; i < inUse; ++i) {
            const QString& key = table.Announcements[i].Key;
            if (!index.first.contains(key))
                index.first.insert(key, static_cast<std::int32_t>(i));
        }
    }
    return index;
}

} // namespace

std::int32_t FindAnnouncementByKey(const AnnouncementTable& table, const QString& key) {
    if (table.AnnouncementCount < 0)
        return -1;
    // A save looks up every row: a hash of the records in use answers what the search would,
    // so thousands of rows cost thousands of look-ups, not millions of comparisons.
    const AnnouncementTable::KeyIndex& index = keyIndexOf(table);
    const auto found = index.first.constFind(key);
    if (found != index.first.constEnd()) {
        if (table.Announcements[*found].Key == key)
            return *found;
        return scanForKey(table, key);
    }
    // No record in use has the key: the search goes on to the one past the count.
    const qsizetype past = table.AnnouncementCount;
    if (past >= table.Announcements.size())
        throw RuntimeError(rt::SubscriptOutOfRange);
    return table.Announcements[past].Key == key ? static_cast<std::int32_t>(past) : -1;
}

void ForgetKeyIndex(AnnouncementTable& table) {
    table.keyIndex = {};
}

} // namespace tavik
