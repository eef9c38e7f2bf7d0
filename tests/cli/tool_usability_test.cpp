#include "support/buildpaths.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;
using tavik::test::writeTone;

TEST(ToolNew, MakesAMissingDataFolder) {
    TempDir dir;
    const QString data = dir.file("frisch/Data");
    const ToolRun r = tool({"new", data, "Linie7", "--title", "Linie 7", "--author", "VB"});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_TRUE(QFileInfo::exists(data + "/Linie7/Package.io"));
}

TEST(ToolNew, TakesAwayTheDataFolderItMadeWhenThePackageIsRefused) {
    TempDir dir;
    const QString data = dir.file("Data");
    const ToolRun r = tool({"new", data, "a/b", "--title", "T", "--author", "A"});
    EXPECT_EQ(r.code, 2);
    EXPECT_FALSE(QFileInfo::exists(data));
    // Refused before anything is made: no title.
    EXPECT_EQ(tool({"new", data, "Linie7", "--author", "A"}).code, 2);
    EXPECT_FALSE(QFileInfo::exists(data));
}

TEST(ToolMeasure, AnMciErrorNamesTheCommandTheFileAndItsMeaning) {
    TempDir dir;
    const QString sound = dir.file("ansage.xyz");
    // A WAVE sound under an extension no device is known for.
    ASSERT_TRUE(writeTone(dir.file("ansage.wav"), 22050));
    ASSERT_TRUE(QFile::rename(dir.file("ansage.wav"), sound));
    const ToolRun r = tool({"measure", sound});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(r.out, "error 281\t" + sound + "\n");
    EXPECT_TRUE(r.err.contains(QStringLiteral("open of ") + sound)) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(QStringLiteral("MCI error 281: the file's extension names no "
                                              "sound device")))
        << r.err.toStdString();
}

TEST(ToolImport, RefusesAFileThatIsNoWholeSoundNamingItAndWhyAndCopiesNothing) {
    TempDir dir;
    ASSERT_EQ(tool({"new", dir.path(), "P", "--title", "T", "--author", "A"}).code, 0);
    const QString package = dir.file("P");
    const QStringList before = tavik::test::namesIn(package);
    const QString good = dir.file("gut.wav");
    ASSERT_TRUE(writeTone(good, 22050));
    const QByteArray wave = tavik::test::readAll(good);
    const QByteArray mp3 =
        tavik::test::readAll(tavik::test::CheckoutPath("/Data/Beispielpaket/0002.mp3"));
    ASSERT_GT(mp3.size(), 2000);
    const struct {
        QString file;
        QString why;
    } cases[] = {
        {dir.write("bild.wav", QByteArray("\x89PNG\r\n\x1a\n", 8) + QByteArray(200, '\0')),
         "not a sound file"},
        {dir.write("text.mp3", QByteArray("Zug fährt ein\n").repeated(40)), "not a sound file"},
        {dir.write("leer.wav", QByteArray()), "the file is empty"},
        {dir.write("kopf.wav", wave.left(30)), "not a sound file"},
        {dir.write("halb.wav", wave.left(wave.size() / 2)), "cut short"},
        {dir.write("halb.mp3", mp3.left(mp3.size() / 2)), "cut short"},
        {dir.file("fehlt.wav"), "does not exist"},
    };
    for (const auto& c : cases) {
        const ToolRun r = tool({"import", package, good, c.file});
        EXPECT_EQ(r.code, 2) << c.file.toStdString();
        EXPECT_TRUE(r.err.startsWith(QStringLiteral("tavik: ") + c.file + ": "))
            << r.err.toStdString();
        EXPECT_TRUE(r.err.contains(c.why)) << r.err.toStdString();
        EXPECT_EQ(tavik::test::namesIn(package), before) << c.file.toStdString();
    }
    const ToolRun whole = tool({"import", package, good});
    EXPECT_EQ(whole.code, 0) << whole.err.toStdString();
}
