#include "cli/commandhelp.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

namespace {

const QStringList kCommands = {"dump",  "set",   "delete", "ini",    "measure", "play",
                               "check", "write", "new",    "import", "render"};

} // namespace

TEST(ToolHelp, VersionPrintsTheProgramsVersion) {
    const ToolRun r = tool({"--version"});
    EXPECT_EQ(r.code, 0);
    EXPECT_TRUE(r.out.startsWith(QStringLiteral("tavik ")));
    EXPECT_TRUE(r.out.contains(QRegularExpression(QStringLiteral("^tavik \\d+\\.\\d+\\.\\d+\\n$"))))
        << r.out.toStdString();
}

TEST(ToolHelp, EveryCommandHasUsageDescriptionAndExampleBothWays) {
    for (const QString& command : kCommands) {
        const ToolRun byHelp = tool({"help", command});
        ASSERT_EQ(byHelp.code, 0) << command.toStdString();
        EXPECT_TRUE(byHelp.out.startsWith(QStringLiteral("usage: tavik ") + command + u' '))
            << byHelp.out.toStdString();
        EXPECT_TRUE(byHelp.out.contains(QStringLiteral("\nexample"))) << command.toStdString();
        const QString example = byHelp.out.section(QStringLiteral("\nexample"), 1);
        EXPECT_TRUE(example.contains(QStringLiteral("tavik ") + command + u' '))
            << byHelp.out.toStdString();
        // The description sits between the usage and the example.
        const QStringList paragraphs = byHelp.out.split(QStringLiteral("\n\n"));
        ASSERT_EQ(paragraphs.size(), 3) << byHelp.out.toStdString();
        EXPECT_GT(paragraphs[1].size(), 30) << command.toStdString();

        const ToolRun byOption = tool({command, "--help"});
        EXPECT_EQ(byOption.code, 0);
        EXPECT_EQ(byOption.out, byHelp.out);
    }
}

TEST(ToolHelp, HelpAfterOtherArgumentsRunsNothing) {
    TempDir dir;
    const ToolRun r = tool({"new", dir.path(), "Linie7", "--title", "T", "--help"});
    EXPECT_EQ(r.code, 0);
    EXPECT_TRUE(r.out.startsWith(QStringLiteral("usage: tavik new ")));
    EXPECT_FALSE(QFileInfo::exists(dir.file("Linie7")));
}

TEST(ToolHelp, OverviewListsEveryCommandAndAnUnknownOneIsRefused) {
    const ToolRun overview = tool({"--help"});
    EXPECT_EQ(overview.code, 0);
    for (const QString& command : kCommands)
        EXPECT_TRUE(overview.out.contains(QStringLiteral("tavik ") + command + u' '))
            << command.toStdString();
    EXPECT_EQ(tool({"help"}).out, overview.out);
    const ToolRun unknown = tool({"help", "frobnicate"});
    EXPECT_EQ(unknown.code, 2);
    EXPECT_TRUE(unknown.out.isEmpty());
    EXPECT_FALSE(unknown.err.isEmpty());
    const ToolRun noVerb = tool({"frobnicate"});
    EXPECT_EQ(noVerb.code, 2);
    EXPECT_TRUE(noVerb.err.startsWith(QStringLiteral("usage: tavik dump")));
}
