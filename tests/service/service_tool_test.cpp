#include "cli/tool.h"
#include "service/packagefixture.h"
#include "service/servicebytes.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::PackageFixture;
using tavik::test::ServiceBytes;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

namespace {

QByteArray sample() {
    return ServiceBytes()
        .header("Linie 4", "Tavik", "Werktags", "000000")
        .count(2)
        .sentence("0472", "Gong Achtung ", {{"0000", 0}, {"0001", -50}})
        .unsetSentence("9031");
}

} // namespace

TEST(ToolDumpService, PrintsTheHeaderAndEverySentenceAsJson) {
    TempDir dir;
    const ToolRun r = tool({"dump", dir.write("_000000._", sample())});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    const QJsonObject o = r.json();
    EXPECT_EQ(o["format"].toString(), "service");
    EXPECT_EQ(o["title"].toString(), "Linie 4");
    EXPECT_EQ(o["author"].toString(), "Tavik");
    EXPECT_EQ(o["description"].toString(), "Werktags");
    EXPECT_EQ(o["id"].toString(), "000000");
    const QJsonArray sentences = o["sentences"].toArray();
    ASSERT_EQ(sentences.size(), 2);
    const QJsonObject first = sentences[0].toObject();
    EXPECT_EQ(first["key"].toString(), "0472");
    EXPECT_EQ(first["text"].toString(), "Gong Achtung ");
    EXPECT_EQ(first["last_target"].toInt(), 1);
    const QJsonArray targets = first["targets"].toArray();
    ASSERT_EQ(targets.size(), 2);
    EXPECT_EQ(targets[1].toObject()["key"].toString(), "0001");
    EXPECT_EQ(targets[1].toObject()["offset"].toInt(), -50);
    EXPECT_TRUE(sentences[1].toObject()["targets"].isNull());
    EXPECT_EQ(sentences[1].toObject()["last_target"].toInt(), 0);
}

TEST(ToolDumpService, AServiceUnderAnotherNameIsKnownByItsContent) {
    TempDir dir;
    const ToolRun r = tool({"dump", dir.write("dienst.bin", sample())});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(r.json()["format"].toString(), "service");
}

TEST(ToolDumpService, ATruncatedFilePrintsWhatWasReadAndExitsTwo) {
    TempDir dir;
    const QString path = dir.write("_1._", sample().left(sample().size() - 3));
    const ToolRun r = tool({"dump", path});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(r.json()["sentences"].toArray().size(), 1);
    EXPECT_EQ(r.err.count('\n'), 1);
    EXPECT_TRUE(r.err.contains(path));
    EXPECT_TRUE(r.err.contains("62"));
}

TEST(ToolDumpService, AMissingOrEmptyFileExitsTwoWithOneLineAndIsNotDeleted) {
    TempDir dir;
    const QString empty = dir.write("_0._", {});
    const ToolRun r = tool({"dump", empty});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err.count('\n'), 1);
    EXPECT_TRUE(r.err.contains(empty));
    EXPECT_TRUE(QFile::exists(empty));
    const ToolRun missing = tool({"dump", dir.file("_none._")});
    EXPECT_EQ(missing.code, 2);
    EXPECT_EQ(missing.err.count('\n'), 1);
}

TEST(ToolDumpService, ABrokenFileExitsTwoWithOneLineAndNoOutput) {
    TempDir dir;
    const QString path = dir.write("_1._", ServiceBytes().header("T", "", "", "1").count(0));
    const ToolRun r = tool({"dump", path});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_TRUE(r.err.contains("runtime error 9"));
}

TEST(ToolPlay, PlaysEverySentenceInServiceOrderPrintingTheEventLog) {
    PackageFixture package({{"0000", "Gong", 60}, {"0001", "Achtung", 40}});
    const QString service = package.folder + "/_1._";
    QFile file(service);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(ServiceBytes()
                   .header("Linie", "", "", "1")
                   .count(2)
                   .sentence("0002", "zwei ", {{"0001", 0}})
                   .sentence("0001", "eins ", {{"0000", 0}, {"0001", -20}}));
    file.close();
    const ToolRun r = tool({"play", package.folder, service});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(r.out.split('\n'),
              QStringList({"", "ANNOUNCE 'zwei '", "\tPLAY '0001' 'Achtung'", "READY", "",
                           "ANNOUNCE 'eins '", "\tPLAY '0000' 'Gong'", "\tPLAY '0001' 'Achtung'",
                           "READY", ""}));
}

TEST(ToolPlay, PlaysOnlyTheSentenceWhoseKeyIsGiven) {
    PackageFixture package({{"0000", "Gong", 30}});
    const QString service = package.folder + "/_1._";
    QFile file(service);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(ServiceBytes()
                   .header("Linie", "", "", "1")
                   .count(2)
                   .sentence("0002", "zwei ", {{"0000", 0}})
                   .sentence("0001", "eins ", {{"0000", 0}}));
    file.close();
    const ToolRun r = tool({"play", package.index, service, "0001"});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, "\nANNOUNCE 'eins '\n\tPLAY '0000' 'Gong'\nREADY\n");
    EXPECT_EQ(tool({"play", package.index, service, "7777"}).code, 2);
}

TEST(ToolPlay, AnEntryWhoseAnnouncementIsGoneStopsWithTheSubscriptError) {
    PackageFixture package({{"0000", "Gong", 30}});
    const QString service = package.folder + "/_1._";
    QFile file(service);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(ServiceBytes()
                   .header("Linie", "", "", "1")
                   .count(1)
                   .sentence("0001", "x ", {{"0000", 0}, {"0009", 0}}));
    file.close();
    const ToolRun r = tool({"play", package.folder, service});
    EXPECT_EQ(r.code, 2);
    EXPECT_FALSE(r.out.contains("READY"));
    EXPECT_TRUE(r.err.contains("runtime error 9"));
}
