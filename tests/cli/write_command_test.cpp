// "tavik write" is the inverse of "tavik dump": every file comes back byte for byte, and a
// JSON that describes no file is refused with one line naming the field.
#include "package/packagefolder.h"
#include "package/zeldbbytes.h"
#include "service/servicebytes.h"
#include "support/tempdir.h"
#include "support/toolrun.h"
#include "util/apppath.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <functional>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::Bytes;
using tavik::test::readAll;
using tavik::test::ServiceBytes;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

namespace {

// Dumps `bytes` stored under `name`, writes the dump to a new file and returns its bytes.
QByteArray roundTrip(const QByteArray& bytes, const QString& name) {
    TempDir dir;
    QDir().mkpath(dir.file("in"));
    QDir().mkpath(dir.file("out"));
    const QString in = dir.write("in/" + name, bytes);
    const ToolRun dump = tool({"dump", in});
    EXPECT_EQ(dump.code, 0) << name.toStdString() << ": " << dump.err.toStdString();
    const QString json = dir.write("dump.json", dump.out.toUtf8());
    const QString out = dir.file("out/" + name);
    const ToolRun write = tool({"write", json, out});
    EXPECT_EQ(write.code, 0) << name.toStdString() << ": " << write.err.toStdString();
    EXPECT_TRUE(write.err.isEmpty());
    return readAll(out);
}

QString checkoutRoot() {
    qunsetenv("TAVIK_HOME");
    return QFileInfo(DataFolder() + QStringLiteral("..")).canonicalFilePath();
}

// The package index files and service files the checkout delivers: the demo package and the
// fuzzing corpus.
QStringList deliveredFiles() {
    const QString root = checkoutRoot();
    QStringList files;
    for (const char* folder : {"Data", "fuzz/corpus"}) {
        QDirIterator it(root + u'/' + QLatin1String(folder), QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            const QString name = QFileInfo(path).fileName();
            if (name.endsWith(QStringLiteral(".io")) || name.endsWith(QStringLiteral("._")))
                files << path;
        }
    }
    return files;
}

// The shapes the tests build: fresh and reopened stores, free slots, every type code, flags
// and Booleans of other values, a key without items, reserved header bytes, a tail.
QList<std::pair<QString, QByteArray>> builtFiles() {
    QList<std::pair<QString, QByteArray>> files;
    files.append(
        {"Package.io",
         Bytes().magic().emptyHeader(1).key(-1, "INFO", 1, 1).stringItem(-1, "Name", "x")});
    files.append({"Package.io", Bytes()
                                    .magic()
                                    .emptyHeader(1)
                                    .key(-1, "INFO", 1, 1)
                                    .stringItem(-1, "Name", "x")
                                    .freeKey()});
    files.append({"Package.io", Bytes()
                                    .magic()
                                    .str("eins")
                                    .str("zwei")
                                    .str("drei \xe4\x80")
                                    .raw(QByteArray("\x01\x02\x03\xff\xfe\x00", 6))
                                    .str("reserviert")
                                    .i16(3)
                                    .key(-1, "INDEX", 4, 5)
                                    .stringItem(-1, "1", "0000~Gong")
                                    .stringItem(0, "", "")
                                    .longItem("Count", 1)
                                    .i16(-1)
                                    .str("I")
                                    .i16(7)
                                    .i16(2)
                                    .i16(-5)
                                    .i16(1)
                                    .str("B")
                                    .i16(0)
                                    .i16(11)
                                    .i16(1)
                                    .key(0, "", 0, 0)
                                    .key(-1, "0000", 5, 5)
                                    .longItem("Color", 255)
                                    .i16(-1)
                                    .str("NameVisible")
                                    .i16(0)
                                    .i16(11)
                                    .i16(-1)
                                    .i16(-1)
                                    .str("D")
                                    .i16(0)
                                    .i16(5)
                                    .u64(0x7ff8000000000001ULL)
                                    .i16(-1)
                                    .str("T")
                                    .i16(0)
                                    .i16(7)
                                    .u64(0x40e5000000000000ULL)
                                    .i16(-1)
                                    .str("E")
                                    .i16(0)
                                    .i16(0)
                                    .freeKey()
                                    .raw("tail of an older file")});
    files.append({"_000000._", ServiceBytes()
                                   .header("Linie 7", "Autor", "Beschreibung \xe4\x81", "000000")
                                   .count(3)
                                   .sentence("0472", "Gong Zug ", {{"0000", 0}, {"0003", -500}})
                                   .unsetSentence("1234")
                                   .unsetSentence("9999", 5)});
    files.append({"_000001._", ServiceBytes()
                                   .header("", "", "", "000001")
                                   .count(1)
                                   .sentence("0001", "", {})
                                   .raw("the tail of a longer service")});
    return files;
}

QJsonObject dumpOf(const QByteArray& bytes, const QString& name) {
    TempDir dir;
    const ToolRun r = tool({"dump", dir.write(name, bytes)});
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    return r.json();
}

// Writes `json` and returns what the tool said.
ToolRun writeJson(const QJsonObject& json, TempDir& dir, const QString& name) {
    const QString path =
        dir.write("edited.json", QJsonDocument(json).toJson(QJsonDocument::Compact));
    return tool({"write", path, dir.file(name)});
}

} // namespace

TEST(ToolWrite, GivesBackEveryDeliveredFileByteForByte) {
    const QStringList files = deliveredFiles();
    ASSERT_GE(files.size(), 4);
    for (const QString& path : files) {
        SCOPED_TRACE(path.toStdString());
        const QByteArray bytes = readAll(path);
        ASSERT_FALSE(bytes.isEmpty());
        EXPECT_EQ(roundTrip(bytes, QFileInfo(path).fileName()), bytes);
    }
}

TEST(ToolWrite, GivesBackEveryShapeOfFileByteForByte) {
    for (const auto& [name, bytes] : builtFiles()) {
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ(roundTrip(bytes, name), bytes);
    }
}

TEST(ToolWrite, AFolderStandsForItsIndexFile) {
    TempDir dir;
    const QByteArray bytes = builtFiles().front().second;
    const QJsonObject json = dumpOf(bytes, "Package.io");
    QDir().mkpath(dir.file("pkg"));
    const ToolRun r = writeJson(json, dir, "pkg");
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(readAll(dir.file("pkg/Package.io")), bytes);
}

TEST(ToolWrite, WritesAnEditedDumpAsTheStoreReadsIt) {
    TempDir dir;
    QJsonObject json = dumpOf(builtFiles().front().second, "Package.io");
    QJsonArray keys = json["keys"].toArray();
    QJsonObject info = keys[0].toObject();
    QJsonArray items = info["items"].toArray();
    QJsonObject name = items[0].toObject();
    name["value"] = QStringLiteral("Linie 7 – Süd");
    items[0] = name;
    info["items"] = items;
    keys[0] = info;
    json["keys"] = keys;
    const ToolRun r = writeJson(json, dir, "Package.io");
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(readAll(dir.file("Package.io")), QByteArray(Bytes()
                                                              .magic()
                                                              .emptyHeader(1)
                                                              .key(-1, "INFO", 1, 1)
                                                              .stringItem(-1, "Name",
                                                                          "Linie 7 \x96 S\xfc"
                                                                          "d")));
}

TEST(ToolWrite, RefusesAJsonThatDescribesNoFileNamingTheField) {
    const QJsonObject index = dumpOf(builtFiles().front().second, "Package.io");
    const QJsonObject service = dumpOf(builtFiles()[3].second, "_000000._");
    struct Case {
        QJsonObject json;
        const char* field;
    };
    auto edit = [](QJsonObject json, const QString& path, const QJsonValue& value) {
        // path: "keys/0/items/0/value" style, objects and arrays alike.
        std::function<QJsonValue(QJsonValue, QStringList)> set = [&](QJsonValue at,
                                                                     QStringList parts) {
            if (parts.isEmpty())
                return value;
            const QString head = parts.takeFirst();
            if (at.isArray()) {
                QJsonArray a = at.toArray();
                a[head.toInt()] = set(a[head.toInt()], parts);
                return QJsonValue(a);
            }
            QJsonObject o = at.toObject();
            if (parts.isEmpty() && value.isUndefined())
                o.remove(head);
            else
                o[head] = set(o[head], parts);
            return QJsonValue(o);
        };
        return set(json, path.split(u'/')).toObject();
    };
    const Case cases[] = {
        {edit(index, "format", "table"), "format"},
        {edit(index, "header/reserved", "0000"), "header.reserved"},
        {edit(index, "header/key_count", 40000), "header.key_count"},
        {edit(index, "keys/0/items/0/type", 9), "keys[0].items[0].type"},
        {edit(index, "keys/0/items/0/value", 7), "keys[0].items[0].value"},
        {edit(index, "keys/0/items/0/value", QStringLiteral("Ω")), "keys[0].items[0].value"},
        {edit(index, "keys/0/items/0/value", QString(70000, u'x')), "keys[0].items[0].value"},
        {edit(index, "keys/0/name", QJsonValue::Undefined), "keys[0].name"},
        {edit(index, "keys/0/slot", 3), "keys[0].slot"},
        {edit(index, "keys/0/items", 5), "keys[0].items"},
        {edit(service, "sentences", QJsonArray()), "sentences"},
        {edit(service, "sentences/0/targets/1/offset", 40000), "sentences[0].targets[1].offset"},
        {edit(service, "sentences/0/last_target", 1.5), "sentences[0].last_target"},
        {edit(service, "title", QJsonValue::Undefined), "title"},
        {edit(service, "tail", "abc"), "tail"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.field);
        TempDir dir;
        const ToolRun r = writeJson(c.json, dir, "_000000._");
        EXPECT_EQ(r.code, 2);
        EXPECT_EQ(r.err.count(u'\n'), 1);
        EXPECT_TRUE(r.err.contains(QLatin1String(c.field) + QStringLiteral(": ")))
            << r.err.toStdString();
        EXPECT_FALSE(QFileInfo::exists(dir.file("_000000._")));
    }
}

TEST(ToolWrite, RefusesWhatIsNoJsonObject) {
    TempDir dir;
    for (const QByteArray& text : {QByteArray("{\"format\": "), QByteArray("[1, 2]")}) {
        const ToolRun r = tool({"write", dir.write("bad.json", text), dir.file("Package.io")});
        EXPECT_EQ(r.code, 2);
        EXPECT_EQ(r.err.count(u'\n'), 1);
    }
    EXPECT_EQ(tool({"write", dir.file("none.json"), dir.file("Package.io")}).code, 2);
    EXPECT_EQ(tool({"write"}).code, 2);
    EXPECT_FALSE(QFileInfo::exists(dir.file("Package.io")));
}

TEST(ToolWrite, ADumpTheQuickReaderLeavesToQtIsWrittenTheSame) {
    const QByteArray bytes = builtFiles().front().second;
    TempDir dir;
    const ToolRun dump = tool({"dump", dir.write("Package.io", bytes)});
    ASSERT_EQ(dump.code, 0);
    const QByteArray json = dump.out.toUtf8();
    // A byte order mark, a name given twice (the last wins), an escaped name.
    const QByteArray twice = QByteArray(json).replace("\"format\"", "\"format\": 1, \"format\"");
    const QByteArray escaped = QByteArray(json).replace("\"format\"", "\"\\u0066ormat\"");
    for (const QByteArray& text : {"\xEF\xBB\xBF" + json, twice, escaped}) {
        SCOPED_TRACE(text.left(60).toStdString());
        const QString out = dir.file("out.io");
        QFile::remove(out);
        const ToolRun r = tool({"write", dir.write("in.json", text), out});
        EXPECT_EQ(r.code, 0) << r.err.toStdString();
        EXPECT_EQ(readAll(out), bytes);
    }
}

TEST(ToolWrite, ATextThatIsNoJsonIsRefusedWithQtsWords) {
    TempDir dir;
    const QByteArray texts[] = {"{\"format\": ", "{\"a\": \"\xC0\x80\"}", "{\"a\": 1.2.3}",
                                "{" + QByteArray(5000, '[') + QByteArray(5000, ']') + "}",
                                "{\"a\": 1} x"};
    for (const QByteArray& text : texts) {
        QJsonParseError error;
        QJsonDocument::fromJson(text, &error);
        const QString path = dir.write("bad.json", text);
        const ToolRun r = tool({"write", path, dir.file("Package.io")});
        EXPECT_EQ(r.code, 2);
        EXPECT_EQ(r.err, QStringLiteral("tavik: %1: not JSON: %2 at byte %3\n")
                             .arg(path, error.errorString())
                             .arg(error.offset));
    }
    EXPECT_FALSE(QFileInfo::exists(dir.file("Package.io")));
}
