#include "zeldbfromjson.h"

#include "package/zeldbformat.h"
#include "util/jsonfields.h"

#include <algorithm>
#include <limits>

namespace tavik {

namespace {

constexpr qint64 kMaxCounted = 65535;
constexpr qint64 kInt16Min = std::numeric_limits<std::int16_t>::min();
constexpr qint64 kInt16Max = std::numeric_limits<std::int16_t>::max();
constexpr qint64 kInt32Min = std::numeric_limits<std::int32_t>::min();
constexpr qint64 kInt32Max = std::numeric_limits<std::int32_t>::max();

// The fields of every key and item, prepared once for their look-ups.
const JsonName kBits(QStringLiteral("bits"));
const JsonName kInUse(QStringLiteral("in_use"));
const JsonName kInUseBits(QStringLiteral("in_use_bits"));
const JsonName kItemCount(QStringLiteral("item_count"));
const JsonName kItems(QStringLiteral("items"));
const JsonName kName(QStringLiteral("name"));
const JsonName kReserved(QStringLiteral("reserved"));
const JsonName kSlot(QStringLiteral("slot"));
const JsonName kType(QStringLiteral("type"));
const JsonName kValue(QStringLiteral("value"));

// A flag as a Boolean, or its own bits where the dump gave them.
std::int16_t readFlag(const JsonFields& f) {
    if (f.has(kInUseBits))
        return static_cast<std::int16_t>(f.integer(kInUseBits, kInt16Min, kInt16Max));
    return f.boolean(kInUse) ? -1 : 0;
}

std::uint64_t readDoubleBits(const JsonFields& f) {
    if (f.has(kBits)) {
        const QByteArray bytes = f.hex(kBits);
        if (bytes.size() != 8)
            throw JsonFieldError(f.fieldPath(kBits.text()),
                                 QStringLiteral("not 16 hexadecimal digits"));
        return bytes.toHex().toULongLong(nullptr, 16);
    }
    const JsonValue v = f.value(kValue);
    if (!v.isDouble())
        throw JsonFieldError(f.fieldPath(kValue.text()), QStringLiteral("not a number"));
    return Variant::fromDouble(v.toDouble()).doubleBits();
}

Variant readValue(const JsonFields& f) {
    const qint64 type = f.integer(kType, 0, 65535);
    const JsonName& value = kValue;
    switch (static_cast<VarType>(type)) {
    case VarType::Empty:
        if (!f.value(value).isNull())
            throw JsonFieldError(f.fieldPath(value.text()), QStringLiteral("not null for type 0"));
        return {};
    case VarType::Integer:
        return Variant::fromInteger(
            static_cast<std::int16_t>(f.integer(value, kInt16Min, kInt16Max)));
    case VarType::Long:
        return Variant::fromLong(static_cast<std::int32_t>(f.integer(value, kInt32Min, kInt32Max)));
    case VarType::Double:
        return Variant::fromDoubleBits(readDoubleBits(f));
    case VarType::Date:
        return Variant::fromDateBits(readDoubleBits(f));
    case VarType::String:
        return Variant::fromString(f.text(value, kMaxCounted));
    case VarType::Boolean:
        if (f.has(kBits))
            return Variant::fromBooleanBits(
                static_cast<std::int16_t>(f.integer(kBits, kInt16Min, kInt16Max)));
        return Variant::fromBoolean(f.boolean(value));
    }
    throw JsonFieldError(f.fieldPath(kType.text()),
                         QStringLiteral("not a value type (0, 2, 3, 5, 7, 8 or 11)"));
}

void checkSlot(const JsonFields& f, qsizetype index) {
    if (f.has(kSlot) && f.integer(kSlot, 0, kInt32Max) != index)
        throw JsonFieldError(f.fieldPath(kSlot.text()),
                             QStringLiteral("not %1, its place in the list").arg(index));
}

ZeldbKey readKey(const JsonFields& f) {
    ZeldbKey key;
    key.InUse = readFlag(f);
    key.Name = f.text(kName, kMaxCounted);
    key.ItemCount = static_cast<std::int16_t>(f.integer(kItemCount, kInt16Min, kInt16Max));
    const JsonValue items = f.value(kItems);
    if (items.isNull())
        return key;
    if (!items.isArray())
        throw JsonFieldError(f.fieldPath(kItems.text()), QStringLiteral("not an array or null"));
    const JsonValue& list = items;
    if (list.size() > kInt32Max)
        throw JsonFieldError(f.fieldPath(kItems.text()), QStringLiteral("too many items"));
    key.Items.reset(list.size());
    key.Items.reserveStored(list.size());
    for (qsizetype i = 0; i < list.size(); ++i) {
        const JsonFields item = jsonElement(list, f, kItems.text(), i);
        checkSlot(item, i);
        ZeldbItem& record = key.Items.ref(i);
        record.InUse = readFlag(item);
        record.Name = item.text(kName, kMaxCounted);
        record.Reserved = static_cast<std::int16_t>(item.integer(kReserved, kInt16Min, kInt16Max));
        record.Value = readValue(item);
    }
    return key;
}

} // namespace

QByteArray zeldbBytesFromJson(const JsonValue& json) {
    const JsonFields top(json, QString());
    const JsonValue format = top.value(QStringLiteral("format"));
    if (!format.isString() || format.toString() != u"package-index")
        throw JsonFieldError(QStringLiteral("format"), QStringLiteral("not \"package-index\""));
    const JsonFields h(top.object(QStringLiteral("header")), QStringLiteral("header"));
    ZeldbHeader header;
    header.Text1 = h.text(QStringLiteral("text1"), kMaxCounted);
    header.Text2 = h.text(QStringLiteral("text2"), kMaxCounted);
    header.Text3 = h.text(QStringLiteral("text3"), kMaxCounted);
    const QByteArray reserved = h.hex(kReserved);
    if (reserved.size() != static_cast<qsizetype>(header.Reserved.size()))
        throw JsonFieldError(h.fieldPath(kReserved.text()),
                             QStringLiteral("not 6 bytes (12 hexadecimal digits)"));
    std::copy(reserved.begin(), reserved.end(), header.Reserved.begin());
    header.ReservedText = h.text(QStringLiteral("reserved_text"), kMaxCounted);
    header.KeyCount =
        static_cast<std::int16_t>(h.integer(QStringLiteral("key_count"), kInt16Min, kInt16Max));

    ByteWriter out;
    out.raw(QByteArray(zeldb::kMagic, zeldb::kMagicSize));
    zeldb::writeHeader(out, header);
    const JsonValue keys = top.array(QStringLiteral("keys"));
    const QString keysPath = QStringLiteral("keys");
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const JsonFields key = jsonElement(keys, keysPath, i);
        checkSlot(key, i);
        zeldb::writeKey(out, readKey(key));
    }
    if (top.has(QStringLiteral("tail")))
        out.raw(top.hex(QStringLiteral("tail")));
    return out.data();
}

} // namespace tavik
