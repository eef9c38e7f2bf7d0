#include "hostile/hostilecorpus.h"
#include "package/clszeldb.h"
#include "package/jsontextwriter.h"
#include "package/packagefolder.h"
#include "package/zeldbbytes.h"
#include "package/zeldbjson.h"
#include "service/servicefile.h"
#include "service/servicejson.h"
#include "support/buildpaths.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QBuffer>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace tavik;
using tavik::test::Bytes;
using tavik::test::TempDir;

namespace {

// The dump as it was built before it was streamed: a QJsonObject printed by QJsonDocument.
// The streamed text must equal it byte for byte.

QJsonValue referenceValue(const Variant& v) {
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

void referenceFlagBits(QJsonObject& record, const char* name, std::int16_t flag) {
    if (flag != -1 && flag != 0)
        record.insert(QLatin1String(name), flag);
}

QJsonValue referenceItems(const ZeldbKey& key) {
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
            {"value", referenceValue(item.Value)},
        };
        referenceFlagBits(record, "in_use_bits", item.InUse);
        if (item.Value.type() == VarType::Double || item.Value.type() == VarType::Date)
            record.insert(
                QStringLiteral("bits"),
                QStringLiteral("%1").arg(item.Value.doubleBits(), 16, 16, QLatin1Char('0')));
        else if (item.Value.type() == VarType::Boolean)
            referenceFlagBits(record, "bits", item.Value.int16Bits());
        items.append(record);
    }
    return items;
}

QByteArray referenceIndexText(const clsZELDB& store, const QByteArray& tail) {
    const ZeldbHeader& h = store.header();
    const QByteArray reserved(reinterpret_cast<const char*>(h.Reserved.data()),
                              static_cast<qsizetype>(h.Reserved.size()));
    QJsonObject header{
        {"text1", store.HeaderText1},      {"text2", store.HeaderText2},
        {"text3", store.HeaderText3},      {"reserved", QString::fromLatin1(reserved.toHex())},
        {"reserved_text", h.ReservedText}, {"key_count", h.KeyCount},
    };
    QJsonArray keys;
    for (qint64 i = 0; i < store.keySlots().storedCount(); ++i) {
        const ZeldbKey& key = store.keySlots().get(i);
        QJsonObject record{{"slot", i},
                           {"in_use", key.InUse != 0},
                           {"name", key.Name},
                           {"item_count", key.ItemCount},
                           {"items", referenceItems(key)}};
        referenceFlagBits(record, "in_use_bits", key.InUse);
        keys.append(record);
    }
    QJsonObject json{{"format", "package-index"}, {"header", header}, {"keys", keys}};
    if (!tail.isEmpty())
        json.insert(QStringLiteral("tail"), QString::fromLatin1(tail.toHex()));
    return QJsonDocument(json).toJson(QJsonDocument::Indented);
}

QByteArray referenceServiceText(const ServiceHeader& header, const QList<SatzRecord>& sentences,
                                const QByteArray& tail) {
    QJsonArray list;
    for (const SatzRecord& satz : sentences) {
        QJsonValue targets = QJsonValue::Null;
        if (satz.TargetsDimensioned) {
            QJsonArray entries;
            for (const SatzTarget& target : satz.Targets)
                entries.append(QJsonObject{{"key", target.AnnouncementKey},
                                           {"offset", int(target.TimeOffset)}});
            targets = entries;
        }
        list.append(QJsonObject{{"key", satz.Key},
                                {"text", satz.Text},
                                {"targets", targets},
                                {"last_target", int(satz.LastTarget)}});
    }
    QJsonObject json{{"format", "service"},     {"title", header.Title},
                     {"author", header.Author}, {"description", header.Description},
                     {"id", header.Id},         {"sentences", list}};
    if (!tail.isEmpty())
        json.insert(QStringLiteral("tail"), QString::fromLatin1(tail.toHex()));
    return QJsonDocument(json).toJson(QJsonDocument::Indented);
}

QByteArray streamedIndexText(const clsZELDB& store, const QByteArray& tail = {}) {
    JsonTextWriter json;
    writeZeldbJson(json, store, tail);
    return json.text();
}

// Every byte of the index dump, for the store the bytes give.
void expectIndexDumpsAlike(const QByteArray& bytes, const QByteArray& tail = {}) {
    clsZELDB store;
    store.openBytes(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size());
    const QByteArray expected = referenceIndexText(store, tail);
    ASSERT_EQ(streamedIndexText(store, tail), expected);
}

void expectServiceDumpsAlike(const QByteArray& bytes, const QByteArray& tail = {}) {
    const ServiceReadResult read =
        ReadServiceBytes(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size());
    JsonTextWriter json;
    writeServiceJson(json, read.header, read.sentences, tail);
    ASSERT_EQ(json.text(), referenceServiceText(read.header, read.sentences, tail));
}

QByteArray fileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A store with one item of every value type, odd flags and odd Booleans included.
QByteArray everyKindOfItem() {
    return Bytes()
        .magic()
        .emptyHeader(3)
        .key(-1, "INFO", 3, 3)
        .stringItem(-1, "Name", "Beispiel \"mit\" \\ und \t\x01\x1f")
        .stringItem(5, "Autor", "\xe4\xf6\xfc\x80\x9f")
        .longItem("Count", -2147483647 - 1)
        .key(7, "Werte", 8, 8)
        .i16(-1)
        .str("Leer")
        .i16(0)
        .i16(0)
        .i16(-1)
        .str("Int")
        .i16(3)
        .i16(2)
        .i16(-32768)
        .i16(-1)
        .str("Wahr")
        .i16(0)
        .i16(11)
        .i16(-1)
        .i16(-1)
        .str("Komisch")
        .i16(0)
        .i16(11)
        .i16(42)
        .i16(-1)
        .str("Zehntel")
        .i16(0)
        .i16(5)
        .u64(0x3fb999999999999aULL)
        .i16(-1)
        .str("NaN")
        .i16(0)
        .i16(5)
        .u64(0x7ff8000000000001ULL)
        .i16(-1)
        .str("Minus0")
        .i16(0)
        .i16(5)
        .u64(0x8000000000000000ULL)
        .i16(-1)
        .str("Datum")
        .i16(0)
        .i16(7)
        .u64(0x40e5f3c000000000ULL)
        .key(0, "", 0, 0)
        .freeKey();
}

} // namespace

TEST(JsonTextWriter, WritesTheLayoutOfAnIndentedJsonDocument) {
    QJsonObject inner{{"a", QJsonArray()}, {"b", QJsonObject()}, {"c", QJsonArray{1, true}}};
    const QJsonObject outer{
        {"empty", QJsonObject()}, {"inner", inner}, {"list", QJsonArray{inner}}};
    JsonTextWriter json;
    json.beginObject();
    json.name(QLatin1StringView("empty")).beginObject();
    json.endObject();
    json.name(QLatin1StringView("inner"));
    const auto writeInner = [&json] {
        json.beginObject();
        json.name(QLatin1StringView("a")).beginArray();
        json.endArray();
        json.name(QLatin1StringView("b")).beginObject();
        json.endObject();
        json.name(QLatin1StringView("c")).beginArray();
        json.integer(1);
        json.boolean(true);
        json.endArray();
        json.endObject();
    };
    writeInner();
    json.name(QLatin1StringView("list")).beginArray();
    writeInner();
    json.endArray();
    json.endObject();
    EXPECT_EQ(json.text(), QJsonDocument(outer).toJson(QJsonDocument::Indented));
}

TEST(JsonTextWriter, EscapesStringsAndPrintsNumbersAsAJsonDocumentDoes) {
    QString controls;
    for (char16_t c = 0; c < 0x20; ++c)
        controls.append(QChar(c));
    const QList<QString> texts{
        QString(),
        controls,
        QStringLiteral("\"quoted\" back\\slash / \x7f"),
        QStringLiteral("äöü €‚ƒ„ \u00a0 \u07ff \u0800 \uffff \ufffe"),
        QString::fromUtf16(u"emoji \U0001F600 end"),
        QString::fromUtf16(u"lone high \xd800"),
        QString::fromUtf16(u"\xd800x high then text"),
        QString::fromUtf16(u"\xdc00 lone low"),
        QString::fromUtf16(u"\xd800\xd800\xdc00 two highs then a low"),
    };
    const QList<double> numbers{0.0,
                                -0.0,
                                0.1,
                                1.0 / 3.0,
                                1e300,
                                -1e-300,
                                5e-324,
                                123456789012345678.0,
                                1e21,
                                std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()};
    const QList<qint64> integers{0,
                                 -1,
                                 32767,
                                 -32768,
                                 2147483647,
                                 -2147483648LL,
                                 std::numeric_limits<qint64>::max(),
                                 std::numeric_limits<qint64>::min()};
    QJsonArray expected;
    JsonTextWriter json;
    json.beginArray();
    for (const QString& text : texts) {
        expected.append(text);
        json.string(text);
    }
    for (double number : numbers) {
        expected.append(number);
        json.number(number);
    }
    for (qint64 integer : integers) {
        expected.append(integer);
        json.integer(integer);
    }
    expected.append(QJsonValue::Null);
    json.null();
    json.endArray();
    EXPECT_EQ(json.text() + '\n', QJsonDocument(expected).toJson(QJsonDocument::Indented));
}

TEST(JsonTextWriter, ADeviceGetsTheSameTextInChunks) {
    TempDir dir;
    QStringList entries;
    for (int i = 0; i < 3000; ++i)
        entries << QStringLiteral("%1~Ansage %2").arg(i, 4, 10, QLatin1Char('0')).arg(i);
    const QString path = dir.file("Package.io");
    tavik::test::writeIndex(path, entries);
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(path));
    QBuffer device;
    ASSERT_TRUE(device.open(QIODevice::WriteOnly));
    {
        JsonTextWriter json(&device);
        writeZeldbJson(json, store);
        EXPECT_TRUE(json.flush());
        EXPECT_LT(json.text().size(), 1 << 16); // never more than a chunk held
    }
    EXPECT_GT(device.data().size(), 1 << 17);
    EXPECT_EQ(device.data(), referenceIndexText(store, {}));
}

TEST(IndexDump, TheDemoPackageStreamsAsItsJsonDocument) {
    qunsetenv("TAVIK_HOME");
    const QByteArray bytes = fileBytes(DataFolder() + QStringLiteral("Beispielpaket/Package.io"));
    ASSERT_FALSE(bytes.isEmpty());
    expectIndexDumpsAlike(bytes);
}

TEST(IndexDump, EveryKindOfItemAndOddFlagStreamAsTheirJsonDocument) {
    expectIndexDumpsAlike(everyKindOfItem());
    expectIndexDumpsAlike(everyKindOfItem(), QByteArray("\x00\xff tail", 7));
}

TEST(IndexDump, HostileAndDamagedIndexesStreamAsTheirJsonDocument) {
    TempDir dir;
    const QString folder = dir.file("Data/Feindlich");
    tavik::test::writeHostilePackage(dir.path(), folder);
    expectIndexDumpsAlike(fileBytes(folder + QStringLiteral("/Package.io")));
    expectIndexDumpsAlike(
        fileBytes(tavik::test::CheckoutPath(QStringLiteral("fuzz/corpus/package_index/new.io"))));
    // Cut at every length and with bytes changed at random: whatever was read is printed alike.
    const QByteArray whole = everyKindOfItem();
    for (qsizetype cut = 0; cut < whole.size(); ++cut)
        expectIndexDumpsAlike(whole.left(cut));
    std::mt19937 random(26);
    for (int round = 0; round < 400; ++round) {
        QByteArray changed = whole;
        for (int n = 0; n < 3; ++n)
            changed[static_cast<qsizetype>(random() % changed.size())] =
                static_cast<char>(random());
        expectIndexDumpsAlike(changed);
    }
}

TEST(IndexDump, ABigIndexStreamsAsItsJsonDocument) {
    clsZELDB store;
    for (int i = 0; i < 10000; ++i) {
        const QString key = QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0'));
        store.SaveSetting(QStringLiteral("INDEX"), QString::number(i + 1),
                          Variant::fromString(key + QStringLiteral("~Ansage Nummer ") + key));
        if (i % 3 == 0)
            store.SaveSetting(key, QStringLiteral("Color"), Variant::fromLong(i));
    }
    store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"), Variant::fromLong(10000));
    EXPECT_EQ(streamedIndexText(store), referenceIndexText(store, {}));
}

TEST(ServiceDump, TheHostileServicesStreamAsTheirJsonDocument) {
    std::vector<tavik::test::HostileService> services = tavik::test::escapingServices();
    for (tavik::test::HostileService& broken : tavik::test::brokenServices())
        services.push_back(std::move(broken));
    services.push_back({QStringLiteral("_9._"), tavik::test::serviceWithHostileEntries()});
    services.push_back(
        {QStringLiteral("_000000._"),
         fileBytes(tavik::test::CheckoutPath(QStringLiteral("fuzz/corpus/service/_000000._")))});
    for (const tavik::test::HostileService& service : services) {
        SCOPED_TRACE(service.fileName.toStdString());
        expectServiceDumpsAlike(service.bytes);
        expectServiceDumpsAlike(service.bytes, QByteArray("ab\x01", 3));
        for (qsizetype cut = 0; cut < service.bytes.size(); ++cut)
            expectServiceDumpsAlike(service.bytes.left(cut));
    }
}

TEST(IndexDump, TheToolPrintsTheStreamedTextToItsOutput) {
    qunsetenv("TAVIK_HOME");
    const QString path = DataFolder() + QStringLiteral("Beispielpaket/Package.io");
    clsZELDB store;
    store.OpenIOFile(path);
    const QByteArray expected = referenceIndexText(store, {});
    EXPECT_EQ(tavik::test::tool({"dump", path}).out.toUtf8(), expected);
    QProcess process;
    process.start(tavik::test::ToolPath(), {QStringLiteral("dump"), path});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardOutput(), expected);
}
