#include "clszeldb.h"

#include "package/findingdetail.h"
#include "package/zeldbformat.h"
#include "util/conversions.h"
#include "util/fileops.h"
#include "util/wholeread.h"

#include <algorithm>
#include <cstring>

namespace tavik {

namespace {

bool inUse(std::int16_t flag) {
    return flag != 0;
}

// How many slots of an array a scan up to `count` can read before the subscript error.
template <typename T> qint64 readableSlots(const SlotArray<T>& slots, qint64 count) {
    return std::min(count, slots.allocated() ? slots.size() : qint64{0});
}

// A scan that ends without a match has read every slot up to `count`: past the array's end
// that is the runtime's subscript error.
template <typename T> void scanToEnd(const SlotArray<T>& slots, qint64 count) {
    if (readableSlots(slots, count) < count)
        throw RuntimeError(rt::SubscriptOutOfRange);
}

} // namespace

bool clsZELDB::OpenIOFile(const QString& path) {
    return openFile(path, nullptr);
}

bool clsZELDB::OpenIOFileForKey(const QString& path, const QString& key) {
    return openFile(path, &key);
}

bool clsZELDB::openFile(const QString& path, const QString* onlyKey) {
    if (!FileExists(path)) {
        lastRead_ = {ZeldbReadReport::Status::Missing, detailText(DetailText::MissingOrEmpty), 0};
        return false;
    }
    // One consistent copy in memory: another program may rewrite the file while it is read.
    const WholeRead read = ReadWholeFile(path);
    if (read.status == WholeRead::Status::CannotOpen) {
        // Counted as missing, like every other file error before the first read.
        lastRead_ = {ZeldbReadReport::Status::Missing, detailText(DetailText::CannotBeRead), 0};
        return false;
    }
    if (read.status == WholeRead::Status::KeptChanging) {
        lastRead_ = {ZeldbReadReport::Status::Missing, detailText(DetailText::ChangedOnEveryRead),
                     0};
        return false;
    }
    return openBytes(reinterpret_cast<const uchar*>(read.bytes.constData()), read.bytes.size(),
                     onlyKey);
}

bool clsZELDB::openBytes(const uchar* data, qint64 size) {
    return openBytes(data, size, nullptr);
}

bool clsZELDB::openBytes(const uchar* data, qint64 size, const QString* onlyKey) {
    keys_.reset(1);
    dropLookups();
    HeaderText1.clear();
    HeaderText2.clear();
    HeaderText3.clear();
    KeyCountAtOpen = 0;

    ByteReader in(data, size);
    const QByteArray magic = in.bytes(zeldb::kMagicSize);
    if (magic != QByteArray(zeldb::kMagic)) {
        lastRead_ = {ZeldbReadReport::Status::WrongMagic, detailText(DetailText::NotAnIndexFile),
                     0};
        return false;
    }

    zeldb::readHeader(in, header_);
    HeaderText1 = header_.Text1;
    HeaderText2 = header_.Text2;
    HeaderText3 = header_.Text3;
    KeyCountAtOpen = header_.KeyCount;

    const std::int16_t n = header_.KeyCount;
    if (n < 0) {
        // The runtime cannot size an array to a negative bound; the open ignores that error.
        in.markBroken(detailText(DetailText::NegativeKeyCount, {QString::number(n)}));
    } else {
        keys_.redimPreserve(n);
        // Records of at least eight bytes each (flag, name length, item count, dimensions).
        if (!onlyKey)
            keys_.reserveStored(std::min<qint64>(qint64(n) + 1, in.remaining() / 8));
        bool kept = false;
        for (int i = 0; i <= n && !in.broken(); ++i) {
            if (in.atEnd()) {
                // A store saved from scratch holds N records, not N + 1: the last slot
                // then stays free. Running out any earlier means the file was cut.
                if (i < n)
                    in.markTruncated();
                break;
            }
            if (!onlyKey) {
                ZeldbKey& key = keys_.ref(i);
                zeldb::readKey(in, key, i > 0 ? &keys_.get(i - 1) : nullptr);
                continue;
            }
            // Every record is read, so the open ends exactly where a whole one would; only
            // the first one in use of that name is kept, as the first one is found.
            ZeldbKey record;
            zeldb::readKey(in, record);
            if (!kept && inUse(record.InUse) && record.Name == *onlyKey) {
                keys_.ref(i) = std::move(record);
                kept = true;
            }
        }
    }

    if (in.broken())
        lastRead_ = {ZeldbReadReport::Status::Broken, in.problem(), in.pos()};
    else if (in.truncated())
        lastRead_ = {ZeldbReadReport::Status::Truncated,
                     detailText(DetailText::TruncatedAt, {QString::number(in.pos())}), in.pos()};
    else
        lastRead_ = {ZeldbReadReport::Status::Complete, {}, in.pos()};
    return n > 0;
}

QByteArray clsZELDB::toBytes() const {
    ByteWriter out;
    out.raw(QByteArray(zeldb::kMagic, zeldb::kMagicSize));
    ZeldbHeader header = header_;
    header.Text1 = HeaderText1;
    header.Text2 = HeaderText2;
    header.Text3 = HeaderText3;
    zeldb::writeHeader(out, header);
    if (keys_.allocated()) {
        for (qint64 i = 0; i < keys_.size(); ++i)
            zeldb::writeKey(out, keys_.get(i));
    }
    return out.data();
}

bool clsZELDB::SaveIOFile(const QString& path) {
    header_.Text1 = HeaderText1;
    header_.Text2 = HeaderText2;
    header_.Text3 = HeaderText3;
    // The new file replaces the old one whole, so it never keeps a longer old tail.
    WriteFileAtomically(path, toBytes());
    return true;
}

bool clsZELDB::DeleteItem(const QString& key, const QString& item) {
    const std::int16_t k = FindKey(key);
    if (k != -1) {
        const std::int16_t i = FindItem(key, item);
        if (i != -1) {
            ZeldbItem& slot = keys_.ref(k).Items.ref(i);
            slot.InUse = 0;
            slot.Name.clear();
            slot.Value = Variant::fromString(QString());
            if (ItemLookup* lookup = itemLookup(k)) {
                // A later slot of the same name, if any, is now the first.
                lookup->first.remove(item);
                const ZeldbKey& record = keys_.get(k);
                const qint64 slots = readableSlots(record.Items, record.ItemCount);
                for (qint64 j = i + 1; j < slots; ++j) {
                    const ZeldbItem& later = record.Items.get(j);
                    if (inUse(later.InUse) && later.Name == item) {
                        lookup->first.insert(item, static_cast<std::int16_t>(j));
                        break;
                    }
                }
                lookup->noFreeBelow = std::min(lookup->noFreeBelow, i);
            }
        }
    }
    return false;
}

Variant clsZELDB::GetSetting(const QString& key, const QString& item, const QString& defaultText) {
    Variant result = Variant::fromString(defaultText);
    const std::int16_t k = FindKey(key);
    if (k != -1) {
        const std::int16_t i = FindItem(key, item);
        if (i != -1)
            result = keys_.get(k).Items.get(i).Value;
    }
    return result;
}

bool clsZELDB::SaveSetting(const QString& key, const QString& item, const Variant& value) {
    std::int16_t k = FindKey(key);
    if (k == -1)
        k = AddKey(key);
    std::int16_t i = FindItem(key, item);
    if (i == -1)
        i = AddItem(k, item);
    keys_.ref(k).Items.ref(i).Value = value;
    return true;
}

bool clsZELDB::ItemExists(const QString& key, const QString& item) {
    return FindItem(key, item) != -1;
}

bool clsZELDB::KeyExists(const QString& key) {
    return FindKey(key) != -1;
}

std::int16_t clsZELDB::AddItem(std::int16_t keyIndex, const QString& item) {
    const std::int16_t slot = FindFreeItemSlot(keys_.get(keyIndex).Name);
    const std::int16_t count = keys_.get(keyIndex).ItemCount;
    ZeldbKey& key = keys_.ref(keyIndex);
    if (slot == count)
        key.Items.redimPreserve(slot);
    ZeldbItem& record = key.Items.ref(slot);
    record.InUse = VbTrue;
    record.Name = item;
    if (slot == count)
        key.ItemCount = addInteger(count, 1);
    // Added only where no slot of that name is in use, so this slot is now the first one.
    if (ItemLookup* lookup = itemLookup(keyIndex)) {
        lookup->first.insert(item, slot);
        if (lookup->noFreeBelow == slot)
            ++lookup->noFreeBelow;
    }
    return slot;
}

std::int16_t clsZELDB::FindFreeItemSlot(const QString& key) {
    const std::int16_t k = FindKey(key);
    if (k == -1)
        return -1;
    const ZeldbKey& record = keys_.get(k);
    ItemLookup* lookup = itemLookup(k);
    for (std::int16_t i = lookup ? lookup->noFreeBelow : 0; i < record.ItemCount; ++i) {
        if (!inUse(record.Items.get(i).InUse)) {
            if (lookup)
                lookup->noFreeBelow = i;
            return i;
        }
    }
    if (lookup)
        lookup->noFreeBelow = std::max<std::int16_t>(record.ItemCount, 0);
    return record.ItemCount;
}

std::int16_t clsZELDB::FindItem(const QString& key, const QString& item) {
    const std::int16_t k = FindKey(key);
    if (k == -1)
        return -1;
    const ZeldbKey& record = keys_.get(k);
    if (ItemLookup* lookup = itemLookup(k)) {
        const auto it = lookup->first.constFind(item);
        if (it != lookup->first.constEnd())
            return *it;
        scanToEnd(record.Items, record.ItemCount);
        return -1;
    }
    for (std::int16_t i = 0; i < record.ItemCount; ++i) {
        const ZeldbItem& slot = record.Items.get(i);
        if (inUse(slot.InUse) && slot.Name == item)
            return i;
    }
    return -1;
}

std::int16_t clsZELDB::AddKey(const QString& key) {
    const std::int16_t slot = FindFreeKeySlot();
    const std::int16_t count = header_.KeyCount;
    if (slot == count)
        keys_.redimPreserve(slot);
    ZeldbKey& record = keys_.ref(slot);
    record.InUse = VbTrue;
    record.Name = key;
    if (slot == count)
        header_.KeyCount = addInteger(count, 1);
    // Added only where no slot of that name is in use; a key slot never becomes free again.
    if (keyLookupBuilt_)
        keyLookup_.insert(key, slot);
    noFreeKeyBelow_ = static_cast<std::int16_t>(slot + 1);
    return slot;
}

std::int16_t clsZELDB::FindFreeKeySlot() {
    // Key slots are never freed, so none below the last one found can be free.
    for (std::int16_t i = noFreeKeyBelow_; i < header_.KeyCount; ++i) {
        if (!inUse(keys_.get(i).InUse)) {
            noFreeKeyBelow_ = i;
            return i;
        }
    }
    noFreeKeyBelow_ = std::max<std::int16_t>(header_.KeyCount, 0);
    return header_.KeyCount;
}

std::int16_t clsZELDB::FindKey(const QString& key) {
    const QHash<QString, std::int16_t>& lookup = keyLookup();
    const auto it = lookup.constFind(key);
    if (it != lookup.constEnd())
        return *it;
    scanToEnd(keys_, header_.KeyCount);
    return -1;
}

void clsZELDB::dropLookups() {
    keyLookup_.clear();
    keyLookupBuilt_ = false;
    noFreeKeyBelow_ = 0;
    itemLookups_.clear();
}

const QHash<QString, std::int16_t>& clsZELDB::keyLookup() {
    if (!keyLookupBuilt_) {
        const qint64 slots = readableSlots(keys_, header_.KeyCount);
        keyLookup_.reserve(slots);
        for (qint64 i = 0; i < slots; ++i) {
            const ZeldbKey& record = keys_.get(i);
            if (inUse(record.InUse) && !keyLookup_.contains(record.Name))
                keyLookup_.insert(record.Name, static_cast<std::int16_t>(i));
        }
        keyLookupBuilt_ = true;
    }
    return keyLookup_;
}

clsZELDB::ItemLookup* clsZELDB::itemLookup(std::int16_t keyIndex) {
    const auto found = itemLookups_.find(keyIndex);
    if (found != itemLookups_.end())
        return &found.value();
    const ZeldbKey& record = keys_.get(keyIndex);
    if (record.ItemCount < kHashedItems)
        return nullptr;
    ItemLookup& lookup = itemLookups_[keyIndex];
    const qint64 slots = readableSlots(record.Items, record.ItemCount);
    lookup.first.reserve(slots);
    for (qint64 i = 0; i < slots; ++i) {
        const ZeldbItem& slot = record.Items.get(i);
        if (inUse(slot.InUse) && !lookup.first.contains(slot.Name))
            lookup.first.insert(slot.Name, static_cast<std::int16_t>(i));
    }
    return &lookup;
}

bool clsZELDB::FileExists(const QString& path) {
    return FileCheck(path);
}

} // namespace tavik
