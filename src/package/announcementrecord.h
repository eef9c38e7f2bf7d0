#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <cstdint>

namespace tavik {

// One announcement of the loaded package, as the main window keeps it.
struct AnnouncementRecord {
    QString Title;
    QString FilePath;        // "" when no sound file was found
    QString Key;             // also the alias its sound is open under
    std::int32_t Length = 0; // milliseconds; 0 when the sound could not be opened
    bool NameVisible = true;
    std::int32_t AutoPlace = -1;
    std::int32_t Color = 0;
    bool Missing = false;
    bool Opened = false; // the sound is open under Key; the list shows a length only then
};

// The table of the loaded package: records 0 to AnnouncementCount - 1 are in use; the storage
// beyond is kept and overwritten by the next load.
struct AnnouncementTable {
    QList<AnnouncementRecord> Announcements;
    std::int16_t AnnouncementCount = 0;

    // Where FindAnnouncementByKey finds each key of the records in use, made at its first
    // search after the records changed in number or place. Code that writes a record's key
    // (a load, an undone removal) calls ForgetKeyIndex, since count, size and place can come
    // back to what they were with other keys in the slots.
    struct KeyIndex {
        const AnnouncementRecord* records = nullptr;
        qsizetype size = -1;
        std::int16_t count = -1;
        QHash<QString, std::int32_t> first;
    };
    mutable KeyIndex keyIndex;
};

// The index of the first record whose key equals `key` exactly, searching records 0 to
// AnnouncementCount inclusive; -1 when none matches. Raises runtime error 9 when the search
// reaches past the table's storage.
std::int32_t FindAnnouncementByKey(const AnnouncementTable& table, const QString& key);

// Records were written in place: the next search makes its index afresh.
void ForgetKeyIndex(AnnouncementTable& table);

} // namespace tavik
