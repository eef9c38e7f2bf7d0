#include "cli/tool.h"
#include "package/clszeldb.h"
#include "package/zeldbbytes.h"
#include "support/buildpaths.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::Bytes;
using tavik::test::readAll;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

namespace {

QByteArray infoNameX() {
    return Bytes().magic().emptyHeader(1).key(-1, "INFO", 1, 1).stringItem(-1, "Name", "x");
}

int lineCount(const QString& text) {
    return static_cast<int>(text.count(u'\n'));
}

} // namespace

TEST(ToolDump, PrintsEveryKeySlotAndItemOfAFile) {
    TempDir dir;
    const QString path = dir.write("Package.io", Bytes().raw(infoNameX()).freeKey());
    const ToolRun r = tool({"dump", path});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_TRUE(r.err.isEmpty());
    const QJsonObject json = r.json();
    EXPECT_EQ(json["format"].toString(), QStringLiteral("package-index"));
    const QJsonObject header = json["header"].toObject();
    EXPECT_EQ(header["text1"].toString(), QString());
    EXPECT_EQ(header["reserved"].toString(), QStringLiteral("000000000000"));
    EXPECT_EQ(header["reserved_text"].toString(), QString());
    EXPECT_EQ(header["key_count"].toInt(), 1);
    const QJsonArray keys = json["keys"].toArray();
    ASSERT_EQ(keys.size(), 2);
    const QJsonObject info = keys[0].toObject();
    EXPECT_EQ(info["slot"].toInt(), 0);
    EXPECT_TRUE(info["in_use"].toBool());
    EXPECT_EQ(info["name"].toString(), QStringLiteral("INFO"));
    EXPECT_EQ(info["item_count"].toInt(), 1);
    const QJsonObject item = info["items"].toArray()[0].toObject();
    EXPECT_EQ(item["slot"].toInt(), 0);
    EXPECT_TRUE(item["in_use"].toBool());
    EXPECT_EQ(item["name"].toString(), QStringLiteral("Name"));
    EXPECT_EQ(item["reserved"].toInt(), 0);
    EXPECT_EQ(item["type"].toInt(), 8);
    EXPECT_EQ(item["value"].toString(), QStringLiteral("x"));
    const QJsonObject free = keys[1].toObject();
    EXPECT_FALSE(free["in_use"].toBool());
    EXPECT_TRUE(free["items"].isNull());
}

TEST(ToolDump, PrintsValuesAsNumbersBooleansAndNull) {
    TempDir dir;
    const QString path = dir.write("v.io", Bytes()
                                               .magic()
                                               .emptyHeader(1)
                                               .key(-1, "V", 4, 4)
                                               .i16(-1)
                                               .str("e")
                                               .i16(0)
                                               .i16(0)
                                               .i16(-1)
                                               .str("i")
                                               .i16(0)
                                               .i16(2)
                                               .i16(-5)
                                               .longItem("l", 100000)
                                               .i16(-1)
                                               .str("b")
                                               .i16(0)
                                               .i16(11)
                                               .i16(-1));
    const ToolRun r = tool({"dump", path});
    ASSERT_EQ(r.code, 0);
    const QJsonArray items = r.json()["keys"].toArray()[0].toObject()["items"].toArray();
    EXPECT_TRUE(items[0].toObject()["value"].isNull());
    EXPECT_EQ(items[1].toObject()["value"].toInt(), -5);
    EXPECT_EQ(items[2].toObject()["value"].toInt(), 100000);
    EXPECT_EQ(items[2].toObject()["type"].toInt(), 3);
    EXPECT_EQ(items[3].toObject()["value"].toBool(), true);
    // A fresh file holds N records: the slot the reader adds is not in the file.
    EXPECT_EQ(r.json()["keys"].toArray().size(), 1);
}

TEST(ToolDump, TakesAPackageFolderForItsIndexFile) {
    TempDir dir;
    dir.write("pkg/Package.io", infoNameX());
    const ToolRun r = tool({"dump", dir.file("pkg")});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.json()["keys"].toArray().size(), 1);
}

TEST(ToolDump, AMissingEmptyOrForeignFileExitsTwoWithOneLine) {
    TempDir dir;
    const QString garbage = dir.write("garbage.io", QByteArray("\x00\x01garbage bytes", 15));
    for (const QString& path : {dir.file("missing.io"), dir.write("empty.io", ""), garbage}) {
        const ToolRun r = tool({"dump", path});
        EXPECT_EQ(r.code, 2);
        EXPECT_TRUE(r.out.isEmpty());
        EXPECT_EQ(lineCount(r.err), 1) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(path)) << r.err.toStdString();
    }
}

TEST(ToolDump, ATruncatedFilePrintsWhatWasReadAndSaysItWasTruncated) {
    TempDir dir;
    const QByteArray full = Bytes()
                                .magic()
                                .emptyHeader(2)
                                .key(-1, "INFO", 2, 2)
                                .stringItem(-1, "Name", "Beispiel")
                                .stringItem(-1, "Autor", "Tavik");
    const QString path = dir.write("cut.io", full.left(full.size() - 3));
    const ToolRun r = tool({"dump", path});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(lineCount(r.err), 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("truncated"))) << r.err.toStdString();
    const QJsonArray items = r.json()["keys"].toArray()[0].toObject()["items"].toArray();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0].toObject()["value"].toString(), QStringLiteral("Beispiel"));
    EXPECT_EQ(items[1].toObject()["value"].toString(), QStringLiteral("Ta"));
}

TEST(ToolDump, ABrokenFileSaysWhatIsBroken) {
    TempDir dir;
    const QString path = dir.write(
        "bad.io",
        Bytes().magic().emptyHeader(1).key(-1, "K", 1, 1).i16(-1).str("a").i16(0).i16(99));
    const ToolRun r = tool({"dump", path});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains(QStringLiteral("unknown value type 99"))) << r.err.toStdString();
    EXPECT_EQ(r.json()["keys"].toArray()[0].toObject()["name"].toString(), QStringLiteral("K"));
}

TEST(ToolSet, WritesAValueAsTheEditorDoes) {
    TempDir dir;
    const QString path = dir.file("Package.io");
    EXPECT_EQ(tool({"set", path, "INFO", "Name", "x"}).code, 0);
    EXPECT_EQ(readAll(path), infoNameX());
    // The next change goes through an open, so the file gains the trailing free slot.
    EXPECT_EQ(tool({"set", path, "0000", "Color", "255", "--type", "long"}).code, 0);
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(path));
    EXPECT_EQ(store.GetSetting("0000", "Color", "0"), Variant::fromLong(255));
    EXPECT_EQ(store.keySlots().storedCount(), 2);
}

TEST(ToolSet, StoresEachTypeWithItsOwnCode) {
    TempDir dir;
    const QString path = dir.file("p.io");
    EXPECT_EQ(tool({"set", path, "K", "i", "-7", "--type", "integer"}).code, 0);
    EXPECT_EQ(tool({"set", path, "K", "b", "false", "--type", "boolean"}).code, 0);
    EXPECT_EQ(tool({"set", path, "K", "t", "true", "--type=boolean"}).code, 0);
    clsZELDB store;
    store.OpenIOFile(path);
    EXPECT_EQ(store.GetSetting("K", "i", ""), Variant::fromInteger(-7));
    EXPECT_EQ(store.GetSetting("K", "b", ""), Variant::fromBoolean(false));
    EXPECT_EQ(store.GetSetting("K", "t", ""), Variant::fromBoolean(true));
}

TEST(ToolSet, RefusesValuesThatDoNotFitTheirType) {
    TempDir dir;
    const QString path = dir.file("p.io");
    for (const QStringList& args :
         {QStringList{"set", path, "K", "i", "40000", "--type", "integer"},
          QStringList{"set", path, "K", "i", "zwölf", "--type", "long"},
          QStringList{"set", path, "K", "b", "yes", "--type", "boolean"},
          QStringList{"set", path, "K", "b", "1", "--type", "float"}}) {
        const ToolRun r = tool(args);
        EXPECT_EQ(r.code, 2);
        EXPECT_EQ(lineCount(r.err), 1) << r.err.toStdString();
    }
    EXPECT_FALSE(QFile::exists(path));
}

TEST(ToolSet, LeavesABrokenFileAlone) {
    TempDir dir;
    const QByteArray garbage("not a package index at all");
    const QString path = dir.write("p.io", garbage);
    const ToolRun r = tool({"set", path, "INFO", "Name", "x"});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(lineCount(r.err), 1);
    EXPECT_EQ(readAll(path), garbage);
}

TEST(ToolSet, AnUnwritableFolderExitsTwoWithTheRuntimeError) {
    TempDir dir;
    const ToolRun r = tool({"set", dir.file("no/such/Package.io"), "INFO", "Name", "x"});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains(QStringLiteral("76"))) << r.err.toStdString();
}

TEST(ToolDelete, FreesTheItemSlot) {
    TempDir dir;
    const QString path = dir.write("p.io", infoNameX());
    EXPECT_EQ(tool({"delete", path, "INFO", "Name"}).code, 0);
    const QByteArray expected =
        Bytes().magic().emptyHeader(1).key(-1, "INFO", 1, 1).stringItem(0, "", "").freeKey();
    EXPECT_EQ(readAll(path), expected);
}

TEST(ToolDelete, AMissingFileStartsAnEmptyStore) {
    TempDir dir;
    const QString path = dir.file("p.io");
    EXPECT_EQ(tool({"delete", path, "INFO", "Name"}).code, 0);
    EXPECT_EQ(readAll(path), Bytes().magic().emptyHeader(0).data());
}

TEST(Tool, WrongArgumentsPrintTheUsage) {
    EXPECT_EQ(tool({}).code, 2);
    EXPECT_EQ(tool({"frobnicate"}).code, 2);
    EXPECT_EQ(tool({"dump"}).code, 2);
    EXPECT_EQ(tool({"set", "a", "b"}).code, 2);
    EXPECT_EQ(tool({"--help"}).code, 0);
}

TEST(Tool, TheProgramRunsAsACommand) {
    TempDir dir;
    const QString path = dir.file("Package.io");
    QProcess set;
    set.start(tavik::test::ToolPath(), {"set", path, "INFO", "Name", "Beispiel"});
    ASSERT_TRUE(set.waitForFinished(30000));
    EXPECT_EQ(set.exitCode(), 0);
    QProcess dump;
    dump.start(tavik::test::ToolPath(), {"dump", path});
    ASSERT_TRUE(dump.waitForFinished(30000));
    EXPECT_EQ(dump.exitCode(), 0);
    const QJsonObject json = QJsonDocument::fromJson(dump.readAllStandardOutput()).object();
    EXPECT_EQ(json["keys"].toArray()[0].toObject()["items"].toArray()[0].toObject()["value"],
              QStringLiteral("Beispiel"));
    QProcess missing;
    missing.start(tavik::test::ToolPath(), {"dump", dir.file("none.io")});
    ASSERT_TRUE(missing.waitForFinished(30000));
    EXPECT_EQ(missing.exitCode(), 2);
    EXPECT_EQ(missing.readAllStandardError().count('\n'), 1);
}
