// "tavik new" and "tavik import": the new-package and import dialogs' OK, by script.
#include "package/clszeldb.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"
#include "util/conversions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

namespace {

QString entry(const QString& folder, int position) {
    clsZELDB store;
    store.OpenIOFile(folder + "/Package.io");
    return CStr(store.GetSetting("INDEX", QString::number(position), "-"));
}

QString newPackage(TempDir& dir) {
    QDir().mkpath(dir.file("Data"));
    const ToolRun r =
        tool({"new", dir.file("Data"), "Linie7", "--title", "Linie 7", "--author", "Betrieb"});
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    return dir.file("Data/Linie7");
}

} // namespace

TEST(ToolNew, WritesNameAuthorAndOnlyTheFilesItIsGiven) {
    TempDir dir;
    const QString folder = newPackage(dir);
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(folder + "/Package.io"));
    EXPECT_EQ(CStr(store.GetSetting("INFO", "Name", "")), QStringLiteral("Linie 7"));
    EXPECT_EQ(CStr(store.GetSetting("INFO", "Autor", "")), QStringLiteral("Betrieb"));
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{"Package.io"});
    // Without "INDEX" the package loads as an empty list: nothing to report.
    const ToolRun check = tool({"check", folder});
    EXPECT_EQ(check.code, 0) << check.out.toStdString();
}

TEST(ToolNew, RefusesAnExistingFolderAfterDeletingItsEmptyIndexFile) {
    TempDir dir;
    dir.write("Data/Linie7/Package.io", {});
    const ToolRun r = tool({"new", dir.file("Data"), "Linie7", "--title", "T", "--author", "A",
                            "--comment", "eins\nzwei", "--picture", dir.file("fehlt.jpg")});
    // The folder is there already, so it cannot be made: the dialog's text 21.
    EXPECT_EQ(r.code, 2);
    EXPECT_FALSE(QFileInfo::exists(dir.file("Data/Linie7/Package.io"))) << "the empty one went";
}

TEST(ToolNew, WritesTheCommentWithWindowsLineBreaksAndCopiesThePicture) {
    TempDir dir;
    QDir().mkpath(dir.file("Data"));
    const QString logo = dir.write("logo.ico", QByteArray(50, '\1'));
    const ToolRun r = tool({"new", dir.file("Data"), "Linie7", "--title", "T", "--author", "A",
                            "--comment", QStringLiteral("eins\nzwei – drei"), "--picture", logo});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(readAll(dir.file("Data/Linie7/Package.txt")),
              QByteArray("eins\r\nzwei \x96 drei\r\n"));
    EXPECT_EQ(readAll(dir.file("Data/Linie7/Package.img")), QByteArray(50, '\1'));
}

TEST(ToolImport, TakesTheNextFreeKeysAndTheGivenTitles) {
    TempDir dir;
    const QString folder = newPackage(dir);
    ASSERT_TRUE(test::writeTone(folder + "/0000.wav", 800, 8000));
    dir.write("Data/Linie7/0002.mp3", QByteArray(64, 'm'));
    const QString a = dir.file("Ansage.teil2.wav");
    const QString b = dir.file("Gong.wav");
    ASSERT_TRUE(test::writeTone(a, 800, 8000));
    ASSERT_TRUE(test::writeTone(b, 1600, 8000));
    const ToolRun r = tool({"import", folder, a, b, "--title", "Erste Ansage"});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, QStringLiteral("0001\tErste Ansage\n0003\tGong\n"));
    EXPECT_EQ(readAll(folder + "/0001.wav"), readAll(a));
    EXPECT_EQ(readAll(folder + "/0003.wav"), readAll(b));
    EXPECT_EQ(entry(folder, 1), QStringLiteral("0001~Erste Ansage"));
    EXPECT_EQ(entry(folder, 2), QStringLiteral("0003~Gong"));
}

TEST(ToolImport, RefusesBeforeCopyingAnything) {
    TempDir dir;
    const QString folder = newPackage(dir);
    const QByteArray index = readAll(folder + "/Package.io");
    const QString good = dir.file("Gong.wav");
    ASSERT_TRUE(test::writeTone(good, 800, 8000));
    QFile(dir.file("leer.wav")).open(QIODevice::WriteOnly);
    const QStringList refused[] = {
        {"import", folder, good, dir.file("leer.wav")},
        {"import", folder, good, dir.file("fehlt.wav")},
        {"import", folder, good, "--title", "a", "--title", "b"},
        {"import", dir.file("Data"), good},
        {"import", folder},
    };
    for (const QStringList& args : refused) {
        const ToolRun r = tool(args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString();
        EXPECT_FALSE(r.err.isEmpty());
    }
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{"Package.io"});
    EXPECT_EQ(readAll(folder + "/Package.io"), index);
}
