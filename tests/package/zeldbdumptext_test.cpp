// A package dump as the tool writes it, turned into the index file in one pass: the same bytes
// as the reading of any document gives, and nothing for a text that reading has to judge.
#include "package/clszeldb.h"
#include "package/jsontextwriter.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "package/zeldbfromjson.h"
#include "package/zeldbjson.h"
#include "util/jsonfields.h"
#include "util/jsontree.h"
#include "util/runtimeerror.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>
#include <optional>

using namespace tavik;

namespace {

// The bytes the reading of any document gives for `text`, or nothing when it refuses it.
std::optional<QByteArray> fullReading(const QByteArray& text) {
    JsonTree tree;
    if (!JsonTree::read(text, tree)) {
        const QJsonDocument doc = QJsonDocument::fromJson(text);
        if (!doc.isObject())
            return std::nullopt;
        tree = JsonTree::fromQt(doc.object());
    }
    try {
        return zeldbBytesFromJson(tree.root());
    } catch (const JsonFieldError&) {
        return std::nullopt;
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

// A package of the kind the editor makes: titles with umlauts and the euro sign, colours,
// hidden names and places on a third of the announcements, a free slot between keys.
clsZELDB package(int entries) {
    clsZELDB store;
    store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Name"),
                      Variant::fromString(QStringLiteral("Gr\u00fc\u00dfe")));
    for (int i = 1; i <= entries; ++i) {
        const QString key = FormatKey(i);
        store.SaveSetting(QStringLiteral("INDEX"), QString::number(i),
                          Variant::fromString(JoinIndexEntry(
                              key, QStringLiteral("Zug nach M\u00fcnchen %1 \u20ac").arg(i))));
        if (i % 3 == 0)
            WriteAnnouncementSettings(store, key, {i % 2 ? 255 : 0, i % 2 == 0, -1});
    }
    store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"), Variant::fromLong(entries));
    store.SaveSetting(QStringLiteral("Werte"), QStringLiteral("Klein"),
                      Variant::fromInteger(-32768));
    store.SaveSetting(QStringLiteral("Werte"), QStringLiteral("Leer"), Variant());
    store.DeleteItem(QStringLiteral("Werte"), QStringLiteral("Klein"));
    return store;
}

QByteArray dumpOf(const clsZELDB& store) {
    JsonTextWriter json;
    writeZeldbJson(json, store);
    return json.text();
}

} // namespace

TEST(IndexDumpText, APackagesDumpBecomesItsFileInOnePass) {
    const clsZELDB store = package(40);
    const QByteArray text = dumpOf(store);
    const std::optional<QByteArray> plain = zeldbBytesFromDumpText(text);
    ASSERT_TRUE(plain.has_value());
    EXPECT_EQ(*plain, store.toBytes());
    EXPECT_EQ(*plain, fullReading(text));
}

TEST(IndexDumpText, FieldsInAnyOrderAndAnyBlanksReadAsTheFullReadingReadsThem) {
    QByteArray text = dumpOf(package(5));
    // The last fields of each item first, on one line with the others.
    text.replace("\"in_use\": true,\n", "\"in_use\"\t:true ,");
    text.replace("\"slot\": ", "\"slot\":");
    const std::optional<QByteArray> plain = zeldbBytesFromDumpText(text);
    ASSERT_TRUE(plain.has_value());
    EXPECT_EQ(*plain, fullReading(text));
    const QByteArray reordered =
        QByteArray("{\"keys\":[],\"format\":\"package-index\",\"header\":{\"text3\":\"\",") +
        "\"text2\":\"b\",\"text1\":\"a\",\"reserved_text\":\"\",\"reserved\":\"000102030405\"," +
        "\"key_count\":0}}";
    // The keys before the header are left to the full reading, which reads them all the same.
    EXPECT_FALSE(zeldbBytesFromDumpText(reordered).has_value());
    EXPECT_TRUE(fullReading(reordered).has_value());
}

TEST(IndexDumpText, WhatItIsNotSureOfIsLeftToTheFullReading) {
    const QByteArray text = dumpOf(package(3));
    ASSERT_TRUE(zeldbBytesFromDumpText(text).has_value());
    const auto changed = [&](const QByteArray& from, const QByteArray& to) {
        QByteArray t = text;
        EXPECT_TRUE(t.contains(from)) << from.toStdString();
        t.replace(t.indexOf(from), from.size(), to);
        return t;
    };
    const QByteArray left[] = {
        // Escapes, a text the code page cannot hold, one too long for the file.
        changed("Zug nach", "Zug \\\"nach\\\""),
        changed("Zug nach", "Zug \\u00fc"),
        changed("Zug nach", "Zug \xe2\x86\x92"),
        changed("Zug nach", QByteArray(70000, 'x')),
        // Bad UTF-8: a lone continuation byte, an overlong form, a surrogate.
        changed("Zug nach", "Zug \x80"),
        changed("Zug nach", "Zug \xc0\xaf"),
        changed("Zug nach", "Zug \xed\xa0\x80"),
        // Numbers other than plain whole ones.
        changed("\"reserved\": 0", "\"reserved\": 0.0"),
        changed("\"reserved\": 0", "\"reserved\": -0"),
        changed("\"reserved\": 0", "\"reserved\": 1e0"),
        changed("\"reserved\": 0", "\"reserved\": 07"),
        changed("\"reserved\": 0", "\"reserved\": 40000"),
        // Fields: the bits of a flag, an unknown, a duplicate, a missing, a slot out of place.
        changed("\"in_use\": true", "\"in_use\": true, \"in_use_bits\": 5"),
        changed("\"in_use\": true", "\"in_use\": true, \"note\": 1"),
        changed("\"in_use\": true", "\"in_use\": true, \"in_use\": true"),
        changed("\"in_use\": true,", ""),
        changed("\"slot\": 1", "\"slot\": 2"),
        // A value type the package's settings do not use, a type its value does not match.
        changed("\"type\": 8", "\"type\": 5"),
        changed("\"type\": 8", "\"type\": 3"),
        // The document itself: another format, a tail, a byte order mark, text behind it.
        changed("package-index", "service"),
        changed("\"keys\"", "\"tail\": \"00\", \"keys\""),
        "\xef\xbb\xbf" + text,
        text + "x",
        text.left(text.size() - 3),
    };
    for (const QByteArray& t : left)
        EXPECT_FALSE(zeldbBytesFromDumpText(t).has_value()) << t.left(400).toStdString();
    // Some of them are files all the same, which the full reading writes.
    EXPECT_TRUE(fullReading(left[0]).has_value());
    EXPECT_TRUE(fullReading(left[7]).has_value());
    EXPECT_FALSE(fullReading(left[2]).has_value());
}
