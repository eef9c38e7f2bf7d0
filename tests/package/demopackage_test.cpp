#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "support/toolrun.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/fileops.h"

#include <QImage>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

QString demoFolder() {
    qunsetenv("TAVIK_HOME");
    return DataFolder() + QStringLiteral("Beispielpaket");
}

} // namespace

TEST(DemoPackage, IsAWholePackageWithNameAuthorCommentAndPicture) {
    const QString folder = demoFolder();
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(folder + QStringLiteral("/Package.io")));
    EXPECT_EQ(store.lastRead().status, ZeldbReadReport::Status::Complete);
    EXPECT_EQ(CStr(store.GetSetting("INFO", "Name", "")), QStringLiteral("Beispielpaket"));
    EXPECT_FALSE(CStr(store.GetSetting("INFO", "Autor", "")).isEmpty());
    EXPECT_TRUE(FileCheck(folder + QStringLiteral("/Package.txt")));
    EXPECT_FALSE(QImage(folder + QStringLiteral("/Package.img")).isNull());
}

TEST(DemoPackage, EveryAnnouncementHasASoundThatOpensAndHasALength) {
    const QString folder = demoFolder();
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(folder + QStringLiteral("/Package.io")));
    const QList<IndexEntry> entries = ReadShownEntries(store);
    ASSERT_GE(entries.size(), 8);
    QStringList titles;
    EmulatorBackend backend;
    QStringList errors;
    modMCI mci(backend, [&](const QString& line) { errors << line; });
    for (const IndexEntry& entry : entries) {
        titles << entry.Title;
        QString path = GetFileName(folder, entry.Key);
        ASSERT_FALSE(path.isEmpty()) << entry.Key.toStdString();
        const QString format = IndentifyFormat(GetExtension(path));
        EXPECT_FALSE(format.isEmpty()) << path.toStdString();
        EXPECT_EQ(mci.MciOpen(path, entry.Key, format), -1) << path.toStdString();
        EXPECT_GT(mci.MciGetLength(entry.Key), 500) << path.toStdString();
    }
    EXPECT_TRUE(errors.isEmpty());
    for (const char* title : {"Gong", "Achtung an Gleis 1", "Einfahrt",
                              "Zug nach Berlin Hauptbahnhof", "Bitte Vorsicht bei der Einfahrt"})
        EXPECT_TRUE(titles.contains(QString::fromUtf8(title))) << title;
}

TEST(DemoPackage, SetsColoursSentenceFlagsAndPlacesOneToFive) {
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(demoFolder() + QStringLiteral("/Package.io")));
    QList<std::int32_t> places;
    int coloured = 0;
    int hiddenNames = 0;
    for (const IndexEntry& entry : ReadShownEntries(store)) {
        const AnnouncementSettings s = ReadAnnouncementSettings(store, entry.Key);
        places << s.AutoPlace;
        coloured += s.Color != 0 ? 1 : 0;
        hiddenNames += s.NameVisible ? 0 : 1;
    }
    for (int place = 1; place <= 5; ++place)
        EXPECT_TRUE(places.contains(place)) << place;
    EXPECT_GE(coloured, 5);
    EXPECT_GE(hiddenNames, 1);
}

TEST(DemoPackage, DeliversAServiceOfThreeSentencesOverItsOwnAnnouncements) {
    const QString folder = demoFolder();
    QStringList titles, paths;
    // The package path as the main window holds it, with the doubled separator.
    FindFiles(DataFolder() + QStringLiteral("/Beispielpaket"), titles, paths);
    ASSERT_EQ(titles, QStringList{QStringLiteral("Beispieldienst")});
    const ServiceReadResult service = ReadServiceFile(paths[0], false);
    ASSERT_TRUE(service.ok()) << service.problem.toStdString();
    EXPECT_EQ(service.header.Id, QStringLiteral("000001"));
    ASSERT_EQ(service.sentences.size(), 3);

    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(folder + QStringLiteral("/Package.io")));
    QStringList keys;
    for (const IndexEntry& entry : ReadShownEntries(store))
        keys << entry.Key;
    for (const SatzRecord& satz : service.sentences) {
        EXPECT_EQ(satz.LastTarget, satz.Targets.size() - 1);
        EXPECT_FALSE(satz.Text.isEmpty());
        for (const SatzTarget& target : satz.Targets)
            EXPECT_TRUE(keys.contains(target.AnnouncementKey))
                << target.AnnouncementKey.toStdString();
    }
}

TEST(DemoPackage, ItsServicePlaysWithTheTool) {
    const QString folder = demoFolder();
    const QString service = folder + QStringLiteral("/_000001._");
    // The shortest sentence: the gong, cut 500 ms short, and the departure.
    const test::ToolRun r = test::tool({"play", folder, service, "3289"});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(r.out,
              "\nANNOUNCE 'Abfahrt '\n\tPLAY '0000' 'Gong'\n\tPLAY '0008' 'Abfahrt'\nREADY\n");
    EXPECT_TRUE(r.err.isEmpty()) << r.err.toStdString();
}
