// Texts the package files cannot hold: the tool refuses them, naming the character and its
// place, unless asked to write them lossily.
#include "package/clszeldb.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"
#include "util/conversions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

namespace {

const QString kArrow = QStringLiteral("Probe → Süd");          // U+2192 at 7
const QString kPolish = QStringLiteral("Łukasz");              // U+0141 at 1
const QString kEmoji = QStringLiteral("Zug \U0001F686 fährt"); // U+1F686 at 5
const QString kCyrillic = QStringLiteral("Поезд");             // U+041F at 1 ...

QString newPackage(TempDir& dir) {
    QDir().mkpath(dir.file("Data"));
    const ToolRun r =
        tool({"new", dir.file("Data"), "Linie7", "--title", "Linie 7", "--author", "Betrieb"});
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    return dir.file("Data/Linie7");
}

QString setting(const QString& folder, const QString& key, const QString& item) {
    clsZELDB store;
    store.OpenIOFile(folder + "/Package.io");
    return CStr(store.GetSetting(key, item, "-"));
}

} // namespace

TEST(ToolUnheldText, NewRefusesEachFieldNamingTheCharacterAndItsPlace) {
    struct Case {
        const char* option;
        QString text;
        QString named;
    };
    const Case cases[] = {
        {"--title", kArrow,
         QStringLiteral("--title: code page 1252 cannot hold U+2192 \"→\" at "
                        "character 7")},
        {"--author", kPolish,
         QStringLiteral("--author: code page 1252 cannot hold U+0141 \"Ł\" "
                        "at character 1")},
        {"--comment", kEmoji,
         QStringLiteral("--comment: code page 1252 cannot hold U+1F686 "
                        "\"\U0001F686\" at character 5")},
        {"--title", kCyrillic, QStringLiteral("U+0434 \"д\" at character 5")},
    };
    for (const Case& c : cases) {
        TempDir dir;
        QDir().mkpath(dir.file("Data"));
        QStringList args{"new", dir.file("Data"), "Linie7", "--title", "T", "--author", "A"};
        const qsizetype at = args.indexOf(QString::fromLatin1(c.option));
        if (at > 0)
            args[at + 1] = c.text;
        else
            args << QString::fromLatin1(c.option) << c.text;
        const ToolRun r = tool(args);
        EXPECT_EQ(r.code, 2) << c.option;
        EXPECT_TRUE(r.err.contains(c.named)) << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(QStringLiteral("Linie7"))) << "names the package";
        EXPECT_FALSE(QFileInfo::exists(dir.file("Data/Linie7"))) << "nothing is made";
    }
}

TEST(ToolUnheldText, NewWritesQuestionMarksOnlyWhenAskedToBeLossy) {
    TempDir dir;
    QDir().mkpath(dir.file("Data"));
    const ToolRun r = tool({"new", dir.file("Data"), "Linie7", "--title", kArrow, "--author",
                            kPolish, "--comment", kCyrillic, "--lossy"});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    const QString folder = dir.file("Data/Linie7");
    EXPECT_EQ(setting(folder, "INFO", "Name"), QStringLiteral("Probe ? Süd"));
    EXPECT_EQ(setting(folder, "INFO", "Autor"), QStringLiteral("?ukasz"));
    EXPECT_EQ(readAll(folder + "/Package.txt"), QByteArray("?????\r\n"));
}

TEST(ToolUnheldText, ImportRefusesAGivenTitleAndOneFromTheFileNameBeforeCopying) {
    TempDir dir;
    const QString folder = newPackage(dir);
    const QByteArray index = readAll(folder + "/Package.io");
    const QString gong = dir.file("Gong.wav");
    const QString cyrillic = dir.file(kCyrillic + ".wav");
    ASSERT_TRUE(test::writeTone(gong, 800, 8000));
    ASSERT_TRUE(test::writeTone(cyrillic, 800, 8000));

    ToolRun r = tool({"import", folder, gong, "--title", kEmoji});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains(QStringLiteral("--title 1: code page 1252 cannot hold U+1F686")))
        << r.err.toStdString();
    r = tool({"import", folder, gong, cyrillic});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains(cyrillic)) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("title from the file name: code page 1252 cannot "
                                              "hold U+041F \"П\" at character 1")))
        << r.err.toStdString();
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{"Package.io"});
    EXPECT_EQ(readAll(folder + "/Package.io"), index);

    r = tool({"import", folder, gong, cyrillic, "--title", kPolish, "--lossy"});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(setting(folder, "INDEX", "1"), QStringLiteral("0000~?ukasz"));
    EXPECT_EQ(setting(folder, "INDEX", "2"), QStringLiteral("0001~?????"));
}

TEST(ToolUnheldText, SetRefusesAKeyItemOrTextValueAndLeavesTheIndexAsItWas) {
    TempDir dir;
    const QString folder = newPackage(dir);
    const QByteArray index = readAll(folder + "/Package.io");
    const QStringList refused[] = {
        {"set", folder, "INFO", "Name", kArrow},
        {"set", folder, kCyrillic, "Name", "x"},
        {"set", folder, "INFO", kEmoji, "x"},
    };
    const char* fields[] = {"VALUE: ", "KEY: ", "ITEM: "};
    for (int i = 0; i < 3; ++i) {
        const ToolRun r = tool(refused[i]);
        EXPECT_EQ(r.code, 2);
        EXPECT_TRUE(r.err.contains(QString::fromLatin1(fields[i]) +
                                   QStringLiteral("code page 1252 cannot hold")))
            << r.err.toStdString();
    }
    EXPECT_EQ(readAll(folder + "/Package.io"), index);
    // A number is no text: its digits always hold.
    EXPECT_EQ(tool({"set", folder, "0000", "Color", "255", "--type", "long"}).code, 0);
    const ToolRun lossy = tool({"set", folder, "INFO", "Name", kArrow, "--lossy"});
    ASSERT_EQ(lossy.code, 0) << lossy.err.toStdString();
    EXPECT_EQ(setting(folder, "INFO", "Name"), QStringLiteral("Probe ? Süd"));
}

TEST(ToolUnheldText, WriteRefusesADumpTextNamingTheFieldTheCharacterAndItsPlace) {
    TempDir dir;
    const QString folder = newPackage(dir);
    const ToolRun dump = tool({"dump", folder});
    ASSERT_EQ(dump.code, 0);
    QJsonObject json = dump.json();
    QJsonArray keys = json["keys"].toArray();
    QJsonObject info = keys[0].toObject();
    QJsonArray items = info["items"].toArray();
    QJsonObject name = items[0].toObject();
    name["value"] = kEmoji;
    items[0] = name;
    info["items"] = items;
    keys[0] = info;
    json["keys"] = keys;
    const QString jsonPath = dir.write("index.json", QJsonDocument(json).toJson());
    const QByteArray index = readAll(folder + "/Package.io");

    ToolRun r = tool({"write", jsonPath, folder});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains(QStringLiteral("keys[0].items[0].value: code page 1252 cannot "
                                              "hold U+1F686 \"\U0001F686\" at character 5")))
        << r.err.toStdString();
    EXPECT_EQ(readAll(folder + "/Package.io"), index);

    r = tool({"write", jsonPath, folder, "--lossy"});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(setting(folder, "INFO", "Name"), QStringLiteral("Zug ? fährt"));
}

TEST(ToolImportNewKey, StartsWithoutTheSettingsARemovedAnnouncementLeftUnderItsKey) {
    TempDir dir;
    const QString folder = newPackage(dir);
    // Settings of an announcement whose entry and sound are gone.
    for (const QStringList& set :
         {QStringList{"set", folder, "0000", "Color", "255", "--type", "long"},
          QStringList{"set", folder, "0000", "AutoPlace", "2", "--type", "long"},
          QStringList{"set", folder, "0000", "NameVisible", "false", "--type", "boolean"}})
        ASSERT_EQ(tool(set).code, 0);
    const QString gong = dir.file("Gong.wav");
    ASSERT_TRUE(test::writeTone(gong, 800, 8000));
    const ToolRun r = tool({"import", folder, gong});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, QStringLiteral("0000\tGong\n"));
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(folder + "/Package.io"));
    for (const char* item : {"Color", "AutoPlace", "NameVisible"})
        EXPECT_FALSE(store.ItemExists("0000", item)) << item;
}
