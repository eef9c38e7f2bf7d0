#include "zeldbformat.h"

#include "package/findingdetail.h"

#include <algorithm>

namespace tavik::zeldb {

namespace {

// An item on disk: its flag, its name's length, its reserved field and its value's type.
constexpr qint64 kMinItemBytes = 8;

Variant readValue(ByteReader& in) {
    const std::uint16_t type = in.u16();
    switch (static_cast<VarType>(type)) {
    case VarType::Empty:
        return {};
    case VarType::Integer:
        return Variant::fromInteger(in.i16());
    case VarType::Long:
        return Variant::fromLong(in.i32());
    case VarType::Double:
        return Variant::fromDoubleBits(in.u64());
    case VarType::Date:
        return Variant::fromDateBits(in.u64());
    case VarType::String:
        return Variant::fromString(in.countedString());
    case VarType::Boolean:
        return Variant::fromBooleanBits(in.i16());
    }
    in.markBroken(detailText(DetailText::UnknownValueType,
                             {QString::number(type), QString::number(in.pos() - 2)}));
    return {};
}

void readItem(ByteReader& in, ZeldbItem& item) {
    item.InUse = in.i16();
    item.Name = in.countedString();
    item.Reserved = in.i16();
    item.Value = readValue(in);
}

void writeValue(ByteWriter& out, const Variant& value) {
    out.u16(static_cast<std::uint16_t>(value.type()));
    switch (value.type()) {
    case VarType::Empty:
        break;
    case VarType::Integer:
    case VarType::Boolean:
        out.i16(value.int16Bits());
        break;
    case VarType::Long:
        out.i32(value.int32Bits());
        break;
    case VarType::Double:
    case VarType::Date:
        out.u64(value.doubleBits());
        break;
    case VarType::String:
        out.countedString(value.stringValue());
        break;
    }
}

} // namespace

void readHeader(ByteReader& in, ZeldbHeader& header) {
    header.Text1 = in.countedString();
    header.Text2 = in.countedString();
    header.Text3 = in.countedString();
    const QByteArray reserved = in.bytes(6);
    header.Reserved.fill(0);
    // Element by element under a fixed bound: GCC for MinGW cannot see that `bytes` gives at
    // most six and warns about a copy.
    for (std::size_t i = 0; i < header.Reserved.size() && qsizetype(i) < reserved.size(); ++i)
        header.Reserved[i] = static_cast<unsigned char>(reserved[qsizetype(i)]);
    header.ReservedText = in.countedString();
    header.KeyCount = in.i16();
}

void readKey(ByteReader& in, ZeldbKey& key, const ZeldbKey* like) {
    key.InUse = in.i16();
    key.Name = in.countedString();
    key.ItemCount = in.i16();
    const qint64 descriptorAt = in.pos();
    const std::uint16_t dimensions = in.u16();
    if (dimensions == 0)
        return;
    if (dimensions != 1) {
        in.markBroken(detailText(DetailText::ItemArrayDimensions,
                                 {QString::number(dimensions), QString::number(descriptorAt)}));
        return;
    }
    const std::int32_t count = in.i32();
    const std::int32_t lowerBound = in.i32();
    if (count < 0 || count > kMaxItemSlots || lowerBound != 0) {
        in.markBroken(detailText(
            DetailText::ItemArraySlots,
            {QString::number(count), QString::number(lowerBound), QString::number(descriptorAt)}));
        return;
    }
    key.Items.reset(count);
    // As many records as the rest of the file can hold, each at least eight bytes long: a
    // count read from a file reserves no more than its bytes allow.
    key.Items.reserveStored(std::min<qint64>(count, in.remaining() / kMinItemBytes));
    for (qint64 i = 0; i < count; ++i) {
        if (in.atEnd()) {
            // The slots the file no longer holds stay blank.
            if (!in.broken())
                in.markTruncated();
            return;
        }
        ZeldbItem& item = key.Items.ref(i);
        readItem(in, item);
        if (like && i < like->Items.storedCount()) {
            const QString& name = like->Items.get(i).Name;
            if (item.Name == name)
                item.Name = name;
        }
    }
}

void writeHeader(ByteWriter& out, const ZeldbHeader& header) {
    out.countedString(header.Text1);
    out.countedString(header.Text2);
    out.countedString(header.Text3);
    out.raw(QByteArray(reinterpret_cast<const char*>(header.Reserved.data()),
                       static_cast<qsizetype>(header.Reserved.size())));
    out.countedString(header.ReservedText);
    out.i16(header.KeyCount);
}

void writeKey(ByteWriter& out, const ZeldbKey& key) {
    out.i16(key.InUse);
    out.countedString(key.Name);
    out.i16(key.ItemCount);
    if (!key.Items.allocated()) {
        out.u16(0);
        return;
    }
    out.u16(1);
    out.i32(static_cast<std::int32_t>(key.Items.size()));
    out.i32(0);
    for (qint64 i = 0; i < key.Items.size(); ++i) {
        const ZeldbItem& item = key.Items.get(i);
        out.i16(item.InUse);
        out.countedString(item.Name);
        out.i16(item.Reserved);
        writeValue(out, item.Value);
    }
}

} // namespace tavik::zeldb
