// "tavik check" names every problem that makes the editor or the add-on trip over a package or
// hide part of it, each with its severity, file and place.
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/zeldbbytes.h"
#include "service/servicebytes.h"
#include "support/links.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"
#include "util/apppath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::Bytes;
using tavik::test::ServiceBytes;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

namespace {

// A package folder built item by item, with real sounds of a given length.
class ScratchPackage {
public:
    ScratchPackage() {
        qunsetenv("TAVIK_HOME");
        QDir().mkpath(folder());
        store.SaveSetting("INFO", "Name", Variant::fromString("Linie 7"));
        store.SaveSetting("INFO", "Autor", Variant::fromString("Verkehrsbetrieb"));
    }
    QString folder() const { return dir.file("pkg"); }
    QString file(const QString& name) const { return folder() + u'/' + name; }

    // Entries at positions 1, 2 ... and their Count.
    void entries(const QStringList& list) {
        for (qsizetype i = 0; i < list.size(); ++i)
            store.SaveSetting("INDEX", QString::number(i + 1), Variant::fromString(list[i]));
        store.SaveSetting("INDEX", "Count", Variant::fromLong(static_cast<qint32>(list.size())));
    }
    void sound(const QString& name, int ms) {
        ASSERT_TRUE(test::writeTone(file(name), ms * 8, 8000)) << name.toStdString();
    }
    void save() { store.SaveIOFile(file("Package.io")); }

    // Saves and checks; the findings as the JSON lists them.
    QJsonArray check(int expectedCode = 1) {
        save();
        const ToolRun r = tool({"check", folder(), "--json"});
        EXPECT_EQ(r.code, expectedCode) << r.out.toStdString() << r.err.toStdString();
        return r.json()["findings"].toArray();
    }

    TempDir dir;
    clsZELDB store;
};

// The findings of one kind.
QList<QJsonObject> ofKind(const QJsonArray& findings, const char* kind) {
    QList<QJsonObject> found;
    for (const QJsonValue& v : findings) {
        if (v["kind"].toString() == QLatin1String(kind))
            found << v.toObject();
    }
    return found;
}

// Exactly one finding of `kind`, with this severity, file, key and position.
void expectOne(const QJsonArray& findings, const char* kind, const char* severity,
               const QString& file, const QString& key = {}, int position = 0) {
    const QList<QJsonObject> found = ofKind(findings, kind);
    ASSERT_EQ(found.size(), 1) << kind << " in " << QJsonDocument(findings).toJson().toStdString();
    EXPECT_EQ(found[0]["severity"].toString(), QLatin1String(severity)) << kind;
    EXPECT_EQ(found[0]["file"].toString(), file) << kind;
    EXPECT_EQ(found[0]["key"].toString(), key) << kind;
    EXPECT_EQ(found[0]["position"].toInt(), position) << kind;
    EXPECT_FALSE(found[0]["message"].toString().isEmpty());
}

QString demoFolder() {
    qunsetenv("TAVIK_HOME");
    return DataFolder() + QStringLiteral("Beispielpaket");
}

} // namespace

TEST(ToolCheck, FindsNothingInTheDemoPackage) {
    const ToolRun r = tool({"check", demoFolder()});
    EXPECT_EQ(r.code, 0) << r.out.toStdString() << r.err.toStdString();
    EXPECT_EQ(r.out, QStringLiteral("no findings\n"));
    const ToolRun json = tool({"check", demoFolder(), "--json"});
    EXPECT_EQ(json.code, 0);
    EXPECT_TRUE(json.json()["readable"].toBool());
    EXPECT_TRUE(json.json()["findings"].toArray().isEmpty());
}

TEST(ToolCheck, FindsNothingInAWholeScratchPackage) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~Einfahrt"});
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 700);
    EXPECT_TRUE(p.check(0).isEmpty());
}

TEST(ToolCheck, PrintsOneLinePerFindingWithSeverityFileAndPlace) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001"});
    p.sound("0000.wav", 400);
    p.save();
    const ToolRun r = tool({"check", p.folder()});
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out.count(u'\n'), 1) << r.out.toStdString();
    EXPECT_TRUE(r.out.startsWith(QStringLiteral("error: Package.io: INDEX 2: ")))
        << r.out.toStdString();
}

TEST(ToolCheck, AFolderWithoutAPackageCannotBeRead) {
    TempDir dir;
    QDir().mkpath(dir.file("leer"));
    for (const QString& folder : {dir.file("leer"), dir.file("fehlt")}) {
        const ToolRun r = tool({"check", folder});
        EXPECT_EQ(r.code, 2);
        EXPECT_EQ(r.err.count(u'\n'), 1);
    }
    dir.write("fremd/Package.io", "kein Index");
    const ToolRun r = tool({"check", dir.file("fremd"), "--json"});
    EXPECT_EQ(r.code, 2);
    EXPECT_FALSE(r.json()["readable"].toBool());
    expectOne(r.json()["findings"].toArray(), "index-unreadable", "error", "Package.io");
}

TEST(ToolCheck, NamesACutIndexFile) {
    ScratchPackage p;
    p.entries({"0000~Gong"});
    p.sound("0000.wav", 400);
    p.save();
    QFile file(p.file("Package.io"));
    ASSERT_TRUE(file.resize(file.size() - 3));
    const ToolRun r = tool({"check", p.folder(), "--json"});
    EXPECT_EQ(r.code, 1);
    expectOne(r.json()["findings"].toArray(), "index-unreadable", "error", "Package.io");
}

TEST(ToolCheck, AnIndexTheEditorRefusesToOpenIsNoPackage) {
    for (const int keyCount : {0, -1}) {
        TempDir dir;
        dir.write("pkg/Package.io", Bytes().magic().emptyHeader(keyCount));
        const ToolRun r = tool({"check", dir.file("pkg"), "--json"});
        EXPECT_EQ(r.code, 2) << keyCount;
        EXPECT_FALSE(r.json()["readable"].toBool()) << keyCount;
        const QJsonArray findings = r.json()["findings"].toArray();
        ASSERT_FALSE(findings.isEmpty());
        for (const QJsonValue& finding : findings)
            EXPECT_EQ(finding["kind"].toString(), QStringLiteral("index-unreadable"));
        const ToolRun text = tool({"check", dir.file("pkg")});
        EXPECT_EQ(text.code, 2) << keyCount;
        EXPECT_TRUE(text.err.contains(QStringLiteral("key count %1").arg(keyCount)))
            << text.err.toStdString();
    }
}

TEST(ToolCheck, NamesAnEntryWithoutTildeAndAMissingOne) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001", "0002~Zug"});
    p.store.SaveSetting("INDEX", "Count", Variant::fromLong(4));
    p.sound("0000.wav", 400);
    p.sound("0002.wav", 400);
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "entry-without-tilde");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0]["position"].toInt(), 2);
    EXPECT_EQ(found[1]["position"].toInt(), 4);
    EXPECT_EQ(found[0]["severity"].toString(), QStringLiteral("error"));
    expectOne(f, "count-mismatch", "error", "Package.io", "INDEX");
}

TEST(ToolCheck, NamesARunOfMissingPositionsOnce) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~Zug"});
    p.store.SaveSetting("INDEX", "Count", Variant::fromLong(32767));
    p.store.SaveSetting("INDEX", "5", Variant::fromString("0002~Gleis"));
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 400);
    p.sound("0002.wav", 400);
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "entry-without-tilde");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0]["position"].toInt(), 3);
    EXPECT_TRUE(found[0]["detail"].toString().contains(QStringLiteral("positions 3 to 4")));
    EXPECT_EQ(found[1]["position"].toInt(), 6);
    EXPECT_TRUE(found[1]["detail"].toString().contains(QStringLiteral("positions 6 to 32767")))
        << found[1]["detail"].toString().toStdString();
}

TEST(ToolCheck, NamesAnEmptyTitleAsHidden) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~"});
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 400);
    const QJsonArray f = p.check();
    expectOne(f, "empty-title", "warning", "Package.io", "0001", 2);
    EXPECT_EQ(f.size(), 1) << "its sound counts as named";
}

TEST(ToolCheck, NamesAKeyThatIsNoNumber) {
    ScratchPackage p;
    p.entries({"Package~Gong"});
    expectOne(p.check(), "key-not-number", "error", "Package.io", "Package", 1);
}

TEST(ToolCheck, NamesAMissingEmptyUnreadableUnlistedAndSilentSound) {
    ScratchPackage p;
    p.entries({"0000~Fehlt", "0001~Leer", "0002~Kaputt", "0003~Fremd", "0004~Still"});
    QFile(p.file("0001.wav")).open(QIODevice::WriteOnly);
    p.dir.write("pkg/0002.wav", QByteArray(2000, 'x'));
    p.dir.write("pkg/0003.xyz", QByteArray(2000, 'x'));
    p.sound("0004.wav", 0);
    const QJsonArray f = p.check();
    expectOne(f, "sound-missing", "error", "Package.io", "0000", 1);
    expectOne(f, "sound-empty", "error", "0001.wav", "0001", 2);
    expectOne(f, "sound-unreadable", "error", "0002.wav", "0002", 3);
    expectOne(f, "sound-format-unlisted", "error", "0003.xyz", "0003", 4);
    expectOne(f, "sound-silent", "warning", "0004.wav", "0004", 5);
}

TEST(ToolCheck, NamesTheSecondPositionOfAKey) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~Zug", "0000~Gong wieder"});
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 400);
    expectOne(p.check(), "duplicate-key", "warning", "Package.io", "0000", 3);
}

TEST(ToolCheck, NamesEntriesAboveCountThatNeverLoad) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~Zug"});
    p.store.SaveSetting("INDEX", "Count", Variant::fromLong(1));
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 400);
    const QJsonArray f = p.check();
    expectOne(f, "count-mismatch", "note", "Package.io", "INDEX");
    expectOne(f, "unused-file", "warning", "0001.wav");
}

TEST(ToolCheck, NamesSoundFilesNoEntryNames) {
    ScratchPackage p;
    p.entries({"0000~Gong"});
    p.sound("0000.wav", 400);
    p.sound("0000.mp3", 400);
    p.dir.write("pkg/Notizen.doc", "x");
    p.dir.write("pkg/Package.txt", "Kommentar\r\n");
    const QJsonArray f = p.check();
    const QList<QJsonObject> unused = ofKind(f, "unused-file");
    ASSERT_EQ(unused.size(), 2);
    EXPECT_EQ(unused[0]["file"].toString(), QStringLiteral("0000.wav"));
    EXPECT_EQ(unused[1]["file"].toString(), QStringLiteral("Notizen.doc"));
}

TEST(ToolCheck, NamesSettingsOfTheWrongType) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~Zug"});
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 400);
    p.store.SaveSetting("0000", "Color", Variant::fromString("255"));
    p.store.SaveSetting("0001", "AutoPlace", Variant::fromString("zwei"));
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "setting-type");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0]["severity"].toString(), QStringLiteral("note")) << "it still converts";
    EXPECT_EQ(found[0]["key"].toString(), QStringLiteral("0000"));
    EXPECT_EQ(found[1]["severity"].toString(), QStringLiteral("error")) << "the load stops";
    EXPECT_EQ(found[1]["key"].toString(), QStringLiteral("0001"));
}

TEST(ToolCheck, NamesATildeInsideATitle) {
    ScratchPackage p;
    p.entries({"0000~Gong~lang"});
    p.sound("0000.wav", 400);
    expectOne(p.check(), "tilde-in-title", "warning", "Package.io", "0000", 1);
}

TEST(ToolCheck, NamesTextsThatAreNotCodePage1252) {
    ScratchPackage p;
    // "Zug fährt" saved by a tool that wrote UTF-8, and a byte the code page leaves undefined.
    p.entries({QString::fromLatin1("0000~Zug f\xc3\xa4hrt"),
               QString::fromLatin1("0001~A") + QChar(0x81)});
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 400);
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "not-code-page");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0]["key"].toString(), QStringLiteral("0000"));
    EXPECT_TRUE(found[0]["detail"].toString().contains(QStringLiteral("fährt")));
    EXPECT_EQ(found[1]["key"].toString(), QStringLiteral("0001"));
}

TEST(ToolCheck, NamesEmptyCutAndBrokenServiceFiles) {
    ScratchPackage p;
    p.entries({"0000~Gong"});
    p.sound("0000.wav", 400);
    QFile(p.file("_000001._")).open(QIODevice::WriteOnly);
    const QByteArray whole = ServiceBytes()
                                 .header("Dienst", "", "", "000002")
                                 .count(1)
                                 .sentence("0472", "", {{"0000", 0}});
    p.dir.write("pkg/_000002._", whole.left(whole.size() - 3));
    p.dir.write("pkg/_000003._", ServiceBytes().header("Dienst", "", "", "000003").count(0));
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "service-unreadable");
    ASSERT_EQ(found.size(), 3);
    EXPECT_EQ(found[0]["file"].toString(), QStringLiteral("_000001._"));
    EXPECT_EQ(found[0]["severity"].toString(), QStringLiteral("warning"));
    EXPECT_TRUE(QFileInfo::exists(p.file("_000001._"))) << "a check only looks";
    EXPECT_EQ(found[1]["file"].toString(), QStringLiteral("_000002._"));
    EXPECT_EQ(found[1]["severity"].toString(), QStringLiteral("error"));
    EXPECT_EQ(found[2]["file"].toString(), QStringLiteral("_000003._"));
}

TEST(ToolCheck, NamesAServiceWithoutTitle) {
    ScratchPackage p;
    p.entries({"0000~Gong"});
    p.sound("0000.wav", 400);
    p.dir.write(
        "pkg/_000001._",
        ServiceBytes().header("", "", "", "000001").count(1).sentence("0472", "", {{"0000", 0}}));
    expectOne(p.check(), "service-without-title", "warning", "_000001._");
}

TEST(ToolCheck, NamesSentenceEntriesWhoseAnnouncementLeftThePackage) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~"});
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 400);
    p.dir.write("pkg/_000001._",
                ServiceBytes()
                    .header("Dienst", "", "", "000001")
                    .count(1)
                    .sentence("0472", "", {{"0000", 0}, {"0007", 0}, {"0001", 0}}));
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "sentence-unknown-key");
    ASSERT_EQ(found.size(), 2) << "a hidden entry gets no record either";
    EXPECT_EQ(found[0]["severity"].toString(), QStringLiteral("error"));
    EXPECT_EQ(found[0]["file"].toString(), QStringLiteral("_000001._"));
    EXPECT_EQ(found[0]["sentence"].toString(), QStringLiteral("0472"));
    EXPECT_EQ(found[0]["entry"].toInt(), 2);
    EXPECT_EQ(found[0]["key"].toString(), QStringLiteral("0007"));
    EXPECT_EQ(found[1]["entry"].toInt(), 3);
}

TEST(ToolCheck, NamesSentencesWithoutEntries) {
    ScratchPackage p;
    p.entries({"0000~Gong"});
    p.sound("0000.wav", 400);
    p.dir.write("pkg/_000001._", ServiceBytes()
                                     .header("Dienst", "", "", "000001")
                                     .count(2)
                                     .unsetSentence("1111")
                                     .sentence("2222", "", {}));
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "sentence-without-entry");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0]["sentence"].toString(), QStringLiteral("1111"));
    EXPECT_EQ(found[0]["severity"].toString(), QStringLiteral("error")) << "plays entry 0";
    EXPECT_EQ(found[1]["sentence"].toString(), QStringLiteral("2222"));
    EXPECT_EQ(found[1]["severity"].toString(), QStringLiteral("warning"));
}

TEST(ToolCheck, NamesALastEntryPastTheEntriesAndOneShortOfThem) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~Zug"});
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 1000);
    p.dir.write("pkg/_000001._", ServiceBytes()
                                     .header("Dienst", "", "", "000001")
                                     .count(3)
                                     .sentence("1111", "", {{"0000", 0}, {"0001", 0}}, 32767)
                                     .sentence("2222", "", {{"0000", 0}, {"0001", 0}}, 0)
                                     .sentence("3333", "", {{"0000", 0}, {"0001", 0}}));
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "sentence-bound");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0]["sentence"].toString(), QStringLiteral("1111"));
    EXPECT_EQ(found[0]["severity"].toString(), QStringLiteral("error"));
    EXPECT_TRUE(found[0]["detail"].toString().contains(QStringLiteral("32768 of 2")))
        << found[0]["detail"].toString().toStdString();
    EXPECT_EQ(found[1]["sentence"].toString(), QStringLiteral("2222"));
    EXPECT_EQ(found[1]["severity"].toString(), QStringLiteral("warning"));
    EXPECT_TRUE(found[1]["detail"].toString().contains(QStringLiteral("never played")));
}

TEST(ToolCheck, NamesAServiceIdThatLeadsOutOfThePackageOrNamesAnotherFile) {
    ScratchPackage p;
    p.entries({"0000~Gong"});
    p.sound("0000.wav", 400);
    p.dir.write("pkg/_000001._", ServiceBytes()
                                     .header("Raus", "", "", "/../../../evil")
                                     .count(1)
                                     .sentence("1111", "", {{"0000", 0}}));
    p.dir.write("pkg/_000002._", ServiceBytes()
                                     .header("Anders", "", "", "000007")
                                     .count(1)
                                     .sentence("2222", "", {{"0000", 0}}));
    p.dir.write("pkg/_000003._", ServiceBytes()
                                     .header("Passt", "", "", "000003")
                                     .count(1)
                                     .sentence("3333", "", {{"0000", 0}}));
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "service-id");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0]["file"].toString(), QStringLiteral("_000001._"));
    EXPECT_EQ(found[0]["severity"].toString(), QStringLiteral("error"));
    EXPECT_TRUE(found[0]["detail"].toString().contains(QStringLiteral("saving is refused")));
    EXPECT_EQ(found[1]["file"].toString(), QStringLiteral("_000002._"));
    EXPECT_EQ(found[1]["severity"].toString(), QStringLiteral("note"));
    EXPECT_TRUE(found[1]["detail"].toString().contains(QStringLiteral("_000007._")));
    EXPECT_EQ(f.size(), 2);
}

TEST(ToolCheck, NamesATimeShiftLongerThanItsAnnouncement) {
    ScratchPackage p;
    p.entries({"0000~Gong", "0001~Zug"});
    p.sound("0000.wav", 400);
    p.sound("0001.wav", 1000);
    p.dir.write("pkg/_000001._", ServiceBytes()
                                     .header("Dienst", "", "", "000001")
                                     .count(1)
                                     .sentence("0472", "", {{"0000", -500}, {"0001", -500}}));
    const QJsonArray f = p.check();
    const QList<QJsonObject> found = ofKind(f, "negative-wait");
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0]["severity"].toString(), QStringLiteral("warning"));
    EXPECT_EQ(found[0]["entry"].toInt(), 1);
    EXPECT_EQ(found[0]["key"].toString(), QStringLiteral("0000"));
}

TEST(ToolCheck, NamesLinksInsideThePackage) {
    ScratchPackage p;
    p.entries({"0000~Gong"});
    p.sound("0000.wav", 400);
    const QString outside = p.dir.write("fremd.wav", QByteArray(100, 'x'));
    TAVIK_LINK_OR_SKIP(outside, p.file("0001.wav"));
    const QJsonArray f = p.check();
    expectOne(f, "link-in-package", "warning", "0001.wav");
    EXPECT_TRUE(ofKind(f, "unused-file").isEmpty()) << "a link is reported once";
}

TEST(ToolCheck, NamesAnItemCountThatRunsPastItsItemsAsTheLoadMeetsIt) {
    TempDir dir;
    // "INDEX" claims five item slots but holds one: finding "Count" reads past them (error 9).
    dir.write("pkg/Package.io", Bytes()
                                    .magic()
                                    .emptyHeader(2)
                                    .key(-1, "INFO", 1, 1)
                                    .stringItem(-1, "Name", "x")
                                    .key(-1, "INDEX", 5, 1)
                                    .stringItem(-1, "1", "0000~Gong"));
    const ToolRun r = tool({"check", dir.file("pkg"), "--json"});
    EXPECT_EQ(r.code, 1) << r.err.toStdString();
    const QJsonArray f = r.json()["findings"].toArray();
    expectOne(f, "setting-type", "error", "Package.io", "INDEX");
    EXPECT_TRUE(ofKind(f, "setting-type")[0]["detail"].toString().contains("runtime error 9"));
}
