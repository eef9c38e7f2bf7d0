#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
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
