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
