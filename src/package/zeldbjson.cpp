#include "zeldbjson.h"

namespace tavik {

namespace {

// Names are written in sorted order: the order a JSON object of these fields prints in.

void writeValue(JsonTextWriter& json, const Variant& v) {
    switch (v.type()) {
    case VarType::Empty:
        json.null();
        return;
    case VarType::Integer:
        json.integer(v.int16Bits());
        return;
    case VarType::Long:
        json.integer(v.int32Bits());
        return;
    case VarType::Boolean:
        json.boolean(v.int16Bits() != 0);
        return;
    case VarType::Double:
    case VarType::Date:
        json.number(v.doubleValue());
        return;
    case VarType::String:
        json.string(v.stringValue());
        return;
    }
    json.null();
}

// A flag other than -1 or 0 still reads as in use; its bits are kept so a write gives them back.
void writeFlagBits(JsonTextWriter& json, QLatin1StringView name, std::int16_t flag) {
    if (flag != -1 && flag != 0)
        json.name(name).integer(flag);
}

// What a JSON number cannot carry exactly: the bits of doubles and dates (infinities and NaNs
// included), and a Boolean stored as something else than -1 or 0.
void writeValueBits(JsonTextWriter& json, const Variant& v) {
    if (v.type() == VarType::Double || v.type() == VarType::Date)
        json.name(QLatin1StringView("bits"))
            .string(QStringLiteral("%1").arg(v.doubleBits(), 16, 16, QLatin1Char('0')));
    else if (v.type() == VarType::Boolean)
        writeFlagBits(json, QLatin1StringView("bits"), v.int16Bits());
}

void writeItems(JsonTextWriter& json, const ZeldbKey& key) {
    if (!key.Items.allocated()) {
        json.null();
        return;
    }
    json.beginArray();
    for (qint64 i = 0; i < key.Items.storedCount(); ++i) {
        const ZeldbItem& item = key.Items.get(i);
        json.beginObject();
        writeValueBits(json, item.Value);
        json.name(QLatin1StringView("in_use")).boolean(item.InUse != 0);
        writeFlagBits(json, QLatin1StringView("in_use_bits"), item.InUse);
        json.name(QLatin1StringView("name")).string(item.Name);
        json.name(QLatin1StringView("reserved")).integer(item.Reserved);
        json.name(QLatin1StringView("slot")).integer(i);
        json.name(QLatin1StringView("type")).integer(static_cast<int>(item.Value.type()));
        json.name(QLatin1StringView("value"));
        writeValue(json, item.Value);
        json.endObject();
    }
    json.endArray();
}

} // namespace

void writeZeldbJson(JsonTextWriter& json, const clsZELDB& store, const QByteArray& tail) {
    const ZeldbHeader& h = store.header();
    const QByteArray reserved(reinterpret_cast<const char*>(h.Reserved.data()),
                              static_cast<qsizetype>(h.Reserved.size()));
    json.beginObject();
    json.name(QLatin1StringView("format")).string(u"package-index");
    json.name(QLatin1StringView("header")).beginObject();
    json.name(QLatin1StringView("key_count")).integer(h.KeyCount);
    json.name(QLatin1StringView("reserved")).string(QString::fromLatin1(reserved.toHex()));
    json.name(QLatin1StringView("reserved_text")).string(h.ReservedText);
    json.name(QLatin1StringView("text1")).string(store.HeaderText1);
    json.name(QLatin1StringView("text2")).string(store.HeaderText2);
    json.name(QLatin1StringView("text3")).string(store.HeaderText3);
    json.endObject();
    json.name(QLatin1StringView("keys")).beginArray();
    const SlotArray<ZeldbKey>& stored = store.keySlots();
    for (qint64 i = 0; i < stored.storedCount(); ++i) {
        const ZeldbKey& key = stored.get(i);
        json.beginObject();
        json.name(QLatin1StringView("in_use")).boolean(key.InUse != 0);
        writeFlagBits(json, QLatin1StringView("in_use_bits"), key.InUse);
        json.name(QLatin1StringView("item_count")).integer(key.ItemCount);
        json.name(QLatin1StringView("items"));
        writeItems(json, key);
        json.name(QLatin1StringView("name")).string(key.Name);
        json.name(QLatin1StringView("slot")).integer(i);
        json.endObject();
    }
    json.endArray();
    if (!tail.isEmpty())
        json.name(QLatin1StringView("tail")).string(QString::fromLatin1(tail.toHex()));
    json.endObject();
}

} // namespace tavik
