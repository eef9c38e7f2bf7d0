#pragma once

#include "package/zeldbrecords.h"

#include <QHash>
#include <QString>
#include <cstdint>

namespace tavik {

// The package index store: a two-level key/item store kept whole in one binary file.
// A key is a named group, an item a named value inside a key; names compare exactly.
// Slots are never compacted and counts only grow, so files stay compatible with every
// program that reads them.
class clsZELDB {
public:
    QString HeaderText1;
    QString HeaderText2;
    QString HeaderText3;
    // The header's key count as the last OpenIOFile found it; not maintained afterwards.
    std::int16_t KeyCountAtOpen = 0;

    bool OpenIOFile(const QString& path);
    // Opens as OpenIOFile does, but keeps only the first key in use named `key`: every other
    // key's slot stays blank. Look-ups in that key answer as after a whole open, while a big
    // index costs the memory of one key (a listing that wants a package's name).
    bool OpenIOFileForKey(const QString& path, const QString& key);
    // Raises the runtime's file error when the file cannot be written; the old file then
    // stays as it was.
    bool SaveIOFile(const QString& path);
    // Always false: callers must not rely on the result.
    bool DeleteItem(const QString& key, const QString& item);
    Variant GetSetting(const QString& key, const QString& item, const QString& defaultText);
    bool SaveSetting(const QString& key, const QString& item, const Variant& value);
    bool ItemExists(const QString& key, const QString& item);
    bool KeyExists(const QString& key);

    // Views for tools and tests.
    const ZeldbHeader& header() const { return header_; }
    const SlotArray<ZeldbKey>& keySlots() const { return keys_; }
    const ZeldbReadReport& lastRead() const { return lastRead_; }
    // The bytes SaveIOFile writes.
    QByteArray toBytes() const;
    // Loads from bytes already in memory, as OpenIOFile loads a file that exists.
    bool openBytes(const uchar* data, qint64 size);

private:
    bool openFile(const QString& path, const QString* onlyKey);
    bool openBytes(const uchar* data, qint64 size, const QString* onlyKey);
    std::int16_t AddItem(std::int16_t keyIndex, const QString& item);
    std::int16_t FindFreeItemSlot(const QString& key);
    std::int16_t FindItem(const QString& key, const QString& item);
    std::int16_t AddKey(const QString& key);
    std::int16_t FindFreeKeySlot();
    std::int16_t FindKey(const QString& key);
    bool FileExists(const QString& path);

    // Names are found through hashes instead of scans, with the scans' answers: the first slot
    // in use of that name, and the subscript error where a scan would run past its array.
    // Built on first use after a load and kept up to date by every change; they never touch
    // the slots, so every byte of the file stays as it was.
    struct ItemLookup {
        QHash<QString, std::int16_t> first;
        std::int16_t noFreeBelow = 0;
    };
    // Keys with fewer items are scanned: their hash would cost more than it saves.
    static constexpr std::int16_t kHashedItems = 16;
    void dropLookups();
    const QHash<QString, std::int16_t>& keyLookup();
    ItemLookup* itemLookup(std::int16_t keyIndex);

    ZeldbHeader header_;
    SlotArray<ZeldbKey> keys_;
    ZeldbReadReport lastRead_;
    QHash<QString, std::int16_t> keyLookup_;
    bool keyLookupBuilt_ = false;
    std::int16_t noFreeKeyBelow_ = 0;
    QHash<std::int16_t, ItemLookup> itemLookups_;
};

} // namespace tavik
