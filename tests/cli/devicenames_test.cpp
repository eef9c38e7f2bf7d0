// Names Windows takes for devices ("CON", "aux.wav") or stores under another name ("Paket."):
// neither reaches a device or another file, on Windows or anywhere a package is made.
#include "package/clszeldb.h"
#include "support/devicenames.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

TEST(ToolDeviceNames, NewRefusesAFolderNamedLikeADeviceOrEndingInADotOrBlank) {
    TempDir dir;
    QDir().mkpath(dir.file("Data"));
    for (const char* name : {"CON", "nul", "COM1", "aux.wav", "Lpt9.txt", "Linie7.", "Linie7 "}) {
        const ToolRun r = tool(
            {"new", dir.file("Data"), QString::fromUtf8(name), "--title", "T", "--author", "A"});
        EXPECT_EQ(r.code, 2) << name;
        EXPECT_TRUE(r.err.contains(QStringLiteral("not a plain folder name"))) << name;
    }
    EXPECT_TRUE(
        QDir(dir.file("Data")).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System));
    // The same name without the trailing dot is an ordinary package.
    EXPECT_EQ(tool({"new", dir.file("Data"), "Linie7", "--title", "T", "--author", "A"}).code, 0);
}

TEST(ToolDeviceNames, ReadingADeviceNameIsRefusedWithoutWaitingOnTheDevice) {
    TempDir dir;
    QDir().mkpath(dir.file("Paket"));
    QElapsedTimer t;
    t.start();
    // CON would wait for a console's input, AUX and COM1 for a line that never speaks.
    for (const char* name : {"CON", "AUX", "COM1", "nul.io", "con._"}) {
        const ToolRun r = tool({"dump", dir.file(QStringLiteral("Paket/") + name)});
        EXPECT_EQ(r.code, 2) << name;
        EXPECT_FALSE(r.err.isEmpty()) << name;
    }
    EXPECT_LT(t.elapsed(), 10000);
}

TEST(ToolDeviceNames, ASoundNamedLikeADeviceIsImportedAsTheFileItIsOrRefusedNeverReadAsADevice) {
    TempDir dir;
    QDir().mkpath(dir.file("Data"));
    ASSERT_EQ(tool({"new", dir.file("Data"), "Linie7", "--title", "T", "--author", "A"}).code, 0);
    const QString folder = dir.file("Data/Linie7");
    const QString tone = dir.file("tone.wav");
    ASSERT_TRUE(test::writeTone(tone, 800, 8000));
    const QByteArray bytes = readAll(tone);
    QDir().mkpath(dir.file("sounds"));
    ASSERT_TRUE(
        test::PutFileNamedLikeADevice(dir.file("sounds"), QStringLiteral("aux.wav"), bytes));
    const QByteArray index = readAll(folder + "/Package.io");

    const ToolRun r = tool({"import", folder, dir.file("sounds/aux.wav")});
    if (test::SystemHasDeviceNames()) {
        // The name is the device here: it is refused, naming it, and nothing is copied.
        EXPECT_EQ(r.code, 2);
        EXPECT_TRUE(r.err.contains(QStringLiteral("aux.wav"))) << r.err.toStdString();
        EXPECT_EQ(readAll(folder + "/Package.io"), index);
        EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{"Package.io"});
    } else {
        EXPECT_EQ(r.code, 0) << r.err.toStdString();
        EXPECT_EQ(readAll(folder + "/0000.wav"), bytes);
    }
    test::RemoveFileNamedLikeADevice(dir.file("sounds"), QStringLiteral("aux.wav"));
}
