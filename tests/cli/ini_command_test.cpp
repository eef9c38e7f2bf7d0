#include "cli/tool.h"
#include "support/buildpaths.h"
#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::TempDir;

namespace {

struct IniRun {
    int code = 0;
    QString out;
    QString err;
};

IniRun ini(const QStringList& args) {
    IniRun r;
    QTextStream out(&r.out);
    QTextStream err(&r.err);
    r.code = cli::runTool(QStringList{"ini"} + args, out, err);
    out.flush();
    err.flush();
    return r;
}

} // namespace

TEST(ToolIni, PrintsTheValueOnOneLine) {
    TempDir dir;
    const QString file = dir.write("Tavik.ini", "[SOUND]\r\nUseFormat = \"1\" \r\n");
    const IniRun r = ini({file, "sound", "useformat"});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, QStringLiteral("1\n"));
    EXPECT_TRUE(r.err.isEmpty());
}

TEST(ToolIni, PrintsTheDefaultForAMissingKeyOrFile) {
    TempDir dir;
    const IniRun r = ini({dir.file("none.ini"), "SOUND", "UseFormat", "--default", "False"});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, QStringLiteral("False\n"));
    const IniRun empty = ini({dir.file("none.ini"), "SOUND", "UseFormat"});
    EXPECT_EQ(empty.code, 0);
    EXPECT_EQ(empty.out, QStringLiteral("\n"));
}

TEST(ToolIni, SetWritesTheKeyAndKeepsTheRestOfTheFile) {
    TempDir dir;
    const QString file = dir.write("Tavik.ini", "; mine\n[SOUND]\nUseFormat=0\n");
    const IniRun r = ini({file, "SOUND", "UseFormat", "--set", "1"});
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(readAll(file), QByteArray("; mine\n[SOUND]\nUseFormat=1\n"));
    const IniRun added = ini({file, "Settings", "Language", "--set", "x.lng"});
    EXPECT_EQ(added.code, 0);
    EXPECT_EQ(readAll(file),
              QByteArray("; mine\n[SOUND]\nUseFormat=1\n[Settings]\r\nLanguage=x.lng\r\n"));
}

TEST(ToolIni, SetIntoAMissingFolderFailsNamingTheFile) {
    TempDir dir;
    const QString file = dir.file("no/Tavik.ini");
    const IniRun r = ini({file, "SOUND", "UseFormat", "--set", "1"});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(r.err.count(u'\n'), 1);
    EXPECT_TRUE(r.err.contains(file));
    EXPECT_TRUE(r.err.contains(QStringLiteral("3")));
}

TEST(ToolIni, DeleteRemovesTheKeysLine) {
    TempDir dir;
    const QString file = dir.write("x.ini", "[INDEX]\r\n1=a\r\n2=b\r\n");
    const IniRun r = ini({file, "[INDEX]", "1", "--delete"});
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(readAll(file), QByteArray("[INDEX]\r\n2=b\r\n"));
}

TEST(ToolIni, FailedDeletePrintsTheReportedMessage) {
    TempDir dir;
    QDir(dir.path()).mkdir("folder.ini");
    const QString file = dir.file("folder.ini");
    const IniRun r = ini({file, "INDEX", "1", "--delete"});
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(r.err, QStringLiteral("tavik: ") + file + QStringLiteral(": Error code is :5\n"));
}

TEST(ToolIni, WrongArgumentsPrintTheUsage) {
    TempDir dir;
    const QString file = dir.file("x.ini");
    for (const QStringList& args : {QStringList{file, "S"}, QStringList{file, "S", "K", "extra"},
                                    QStringList{file, "S", "K", "--set"},
                                    QStringList{file, "S", "K", "--set", "1", "--delete"},
                                    QStringList{file, "S", "K", "--default", "d", "--set", "1"},
                                    QStringList{file, "S", "K", "--bogus"}}) {
        const IniRun r = ini(args);
        EXPECT_EQ(r.code, 2) << args.join(' ').toStdString();
        EXPECT_TRUE(r.err.startsWith(QStringLiteral("usage: tavik ini")));
    }
    EXPECT_FALSE(QFile::exists(file));
}

TEST(ToolIni, RunsAsAProgram) {
    TempDir dir;
    const QString file = dir.file("Tavik.ini");
    QProcess set;
    set.start(tavik::test::ToolPath(), {"ini", file, "SOUND", "UseFormat", "--set", "1"});
    ASSERT_TRUE(set.waitForFinished(30000));
    EXPECT_EQ(set.exitCode(), 0);
    EXPECT_EQ(readAll(file), QByteArray("[SOUND]\r\nUseFormat=1\r\n"));
    QProcess get;
    get.start(tavik::test::ToolPath(), {"ini", file, "SOUND", "UseFormat"});
    ASSERT_TRUE(get.waitForFinished(30000));
    EXPECT_EQ(get.exitCode(), 0);
    EXPECT_EQ(get.readAllStandardOutput(), QByteArray("1\n"));
}
