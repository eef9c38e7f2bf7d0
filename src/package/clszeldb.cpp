#include "clszeldb.h"

#include "package/zeldbformat.h"
#include "util/conversions.h"
#include "util/fileops.h"
#include "util/wholeread.h"

#include <cstring>

namespace tavik {

namespace {

bool inUse(std::int16_t flag) {
    return flag != 0;
}

} // namespace

bool clsZELDB::OpenIOFile(const QString& path) {
    if (!FileExists(path)) {
        lastRead_ = {ZeldbReadReport::Status::Missing, QStringLiteral("missing or empty"), 0};
        return false;
    }
    // One consistent copy in memory: another program may rewrite the file while it is read.
    const WholeRead read = ReadWholeFile(path);
    if (read.status == WholeRead::Status::CannotOpen) {
        // Counted as missing, like every other file error before the first read.
        lastRead_ = {ZeldbReadReport::Status::Missing, QStringLiteral("cannot be read"), 0};
        return false;
    }
    if (read.status == WholeRead::Status::KeptChanging) {
        lastRead_ = {ZeldbReadReport::Status::Missing,
                     QStringLiteral("changed on every read; not read"), 0};
        return false;
    }
    return openBytes(reinterpret_cast<const uchar*>(read.bytes.constData()), read.bytes.size());
}

bool clsZELDB::openBytes(const uchar* data, qint64 size) {
    keys_.reset(1);
    HeaderText1.clear();
    HeaderText2.clear();
    HeaderText3.clear();
    KeyCountAtOpen = 0;

    ByteReader in(data, size);
    const QByteArray magic = in.bytes(zeldb::kMagicSize);
    if (magic != QByteArray(zeldb::kMagic)) {
        lastRead_ = {ZeldbReadReport::Status::WrongMagic,
                     QStringLiteral("not a package index file (no IOZELDBV10 at its start)"), 0};
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
        in.markBroken(QStringLiteral("negative key count %1").arg(n));
    } else {
        keys_.redimPreserve(n);
        for (int i = 0; i <= n && !in.broken(); ++i) {
            if (in.atEnd()) {
                // A store saved from scratch holds N records, not N + 1: the last slot
                // then stays free. Running out any earlier means the file was cut.
                if (i < n)
                    in.markTruncated();
                break;
            }
            zeldb::readKey(in, keys_.ref(i));
        }
    }

    if (in.broken())
        lastRead_ = {ZeldbReadReport::Status::Broken, in.problem(), in.pos()};
    else if (in.truncated())
        lastRead_ = {ZeldbReadReport::Status::Truncated,
                     QStringLiteral("truncated at byte %1").arg(in.pos()), in.pos()};
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
    return slot;
}

std::int16_t clsZELDB::FindFreeItemSlot(const QString& key) {
    const std::int16_t k = FindKey(key);
    if (k == -1)
        return -1;
    const ZeldbKey& record = keys_.get(k);
    for (std::int16_t i = 0; i < record.ItemCount; ++i) {
        if (!inUse(record.Items.get(i).InUse))
            return i;
    }
    return record.ItemCount;
}

std::int16_t clsZELDB::FindItem(const QString& key, const QString& item) {
    const std::int16_t k = FindKey(key);
    if (k == -1)
        return -1;
    const ZeldbKey& record = keys_.get(k);
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
    return slot;
}

std::int16_t clsZELDB::FindFreeKeySlot() {
    for (std::int16_t i = 0; i < header_.KeyCount; ++i) {
        if (!inUse(keys_.get(i).InUse))
            return i;
    }
    return header_.KeyCount;
}

std::int16_t clsZELDB::FindKey(const QString& key) {
    for (std::int16_t i = 0; i < header_.KeyCount; ++i) {
        const ZeldbKey& record = keys_.get(i);
        if (inUse(record.InUse) && record.Name == key)
            return i;
    }
    return -1;
}

bool clsZELDB::FileExists(const QString& path) {
    return FileCheck(path);
}

} // namespace tavik
