// A package whose folder name goes beyond the ANSI code page ("C:\Users\Zoë\Ansagen" and more):
// the editor and the tool open, measure, play and save it like any other.
#include "app/frmmain.h"
#include "support/editorfixture.h"
#include "support/toolrun.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QFileInfo>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

// Latin letters the code page holds, and Cyrillic and Greek ones it does not.
const QString kFolder = QStringLiteral("Zoë Ansagen/Straße é Пакет λ");

} // namespace

TEST(UnicodePaths, APackageInAFolderBeyondTheCodePageLoadsPlaysAndSaves) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(kFolder, QStringLiteral("Linie 7"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 300},
                             {QStringLiteral("0001"), QStringLiteral("Zug fährt ein"), 500}});
    editor.open(folder);
    ASSERT_EQ(editor.main->lsvPack()->Count(), 2);
    // Both sounds were found and measured through their folder's name.
    EXPECT_EQ(editor.column(2), (QStringList{QStringLiteral("wav"), QStringLiteral("wav")}));
    EXPECT_TRUE(editor.logLines.filter(QStringLiteral("MCI ERROR")).isEmpty())
        << editor.logLines.join(u'\n').toStdString();

    editor.recorder.clear();
    editor.main->lsvPack()->ListItems(2)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdPlay(), Qt::LeftButton);
    EXPECT_TRUE(editor.recorder.commands().contains(QStringLiteral("play 0001")));

    editor.main->lsvPack()->ListItems(2)->SetSelected(true);
    QTest::mouseClick(editor.main->cmdUp(), Qt::LeftButton);
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    EXPECT_EQ(EditorFixture::savedKeys(folder), (QStringList{"0001", "0000"}));
    EXPECT_TRUE(editor.messages.empty());
}

TEST(UnicodePaths, TheToolDumpsChecksAndSetsAPackageInSuchAFolder) {
    EditorFixture editor;
    const QString folder =
        editor.writePackage(kFolder, QStringLiteral("Linie 7"),
                            {{QStringLiteral("0000"), QStringLiteral("Gong"), 300}});
    const test::ToolRun set = test::tool({"set", folder, "0000", "Color", "255", "--type", "long"});
    EXPECT_EQ(set.code, 0) << set.err.toStdString();
    const test::ToolRun dump = test::tool({"dump", folder});
    EXPECT_EQ(dump.code, 0) << dump.err.toStdString();
    EXPECT_TRUE(dump.out.contains(QStringLiteral("Gong")));
    const test::ToolRun check = test::tool({"check", folder, "--no-loudness"});
    EXPECT_EQ(check.code, 0) << check.out.toStdString() << check.err.toStdString();
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("/Package.io")));
}
