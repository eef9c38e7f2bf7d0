#include "zeldbjson.h"

#include <QJsonArray>
#include <cmath>

namespace tavik {

namespace {

QJsonValue valueToJson(const Variant& v) {
    switch (v.type()) {
    case VarType::Empty:
        return QJsonValue::Null;
    case VarType::Integer:
        return v.int16Bits();
    case VarType::Long:
        return v.int32Bits();
    case VarType::Boolean:
        return v.int16Bits() != 0;
    case VarType::Double:
    case VarType::Date:
        return std::isfinite(v.doubleValue()) ? QJsonValue(v.doubleValue()) : QJsonValue::Null;
    case VarType::String:
        return v.stringValue();
    }
    return QJsonValue::Null;
}

// A flag other than -1 or 0 still reads as in use; its bits are kept so a write gives them back.
void addFlagBits(QJsonObject& record, const char* name, std::int16_t flag) {
    if (flag != -1 && flag != 0)
        record.insert(QLatin1String(name), flag);
}

// What a JSON number cannot carry exactly: the bits of doubles and dates (infinities and NaNs
// included), and a Boolean stored as something else than -1 or 0.
void addValueBits(QJsonObject& record, const Variant& v) {
    if (v.type() == VarType::Double || v.type() == VarType::Date)
        record.insert(QStringLiteral("bits"),
                      QStringLiteral("%1").arg(v.doubleBits(), 16, 16, QLatin1Char('0')));
    else if (v.type() == VarType::Boolean)
        addFlagBits(record, "bits", v.int16Bits());
}

QJsonValue itemsToJson(const ZeldbKey& key) {
    if (!key.Items.allocated())
        return QJsonValue::Null;
    QJsonArray items;
    for (qint64 i = 0; i < key.Items.storedCount(); ++i) {
        const ZeldbItem& item = key.Items.get(i);
        QJsonObject record{
            {"slot", i},
            {"in_use", item.InUse != 0},
            {"name", item.Name},
            {"reserved", item.Reserved},
            {"type", static_cast<int>(item.Value.type())},
            {"value", valueToJson(item.Value)},
        };
        addFlagBits(record, "in_use_bits", item.InUse);
        addValueBits(record, item.Value);
        items.append(record);
    }
    return items;
}

} // namespace

QJsonObject zeldbToJson(const clsZELDB& store) {
    const ZeldbHeader& h = store.header();
    const QByteArray reserved(reinterpret_cast<const char*>(h.Reserved.data()),
                              static_cast<qsizetype>(h.Reserved.size()));
    QJsonObject header{
        {"text1", store.HeaderText1},      {"text2", store.HeaderText2},
        {"text3", store.HeaderText3},      {"reserved", QString::fromLatin1(reserved.toHex())},
        {"reserved_text", h.ReservedText}, {"key_count", h.KeyCount},
    };
    QJsonArray keys;
    const SlotArray<ZeldbKey>& stored = store.keySlots();
    for (qint64 i = 0; i < stored.storedCount(); ++i) {
        const ZeldbKey& key = stored.get(i);
        QJsonObject record{
            {"slot", i},
            {"in_use", key.InUse != 0},
            {"name", key.Name},
            {"item_count", key.ItemCount},
            {"items", itemsToJson(key)},
        };
        addFlagBits(record, "in_use_bits", key.InUse);
        keys.append(record);
    }
    return QJsonObject{{"format", "package-index"}, {"header", header}, {"keys", keys}};
}

} // namespace tavik
