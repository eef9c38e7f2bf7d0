// A sound imported under a key that a removed announcement had starts with the import's
// choices only: nothing the index still held for that key comes back.
#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "package/announcementrecord.h"
#include "package/clszeldb.h"
#include "package/keysettings.h"
#include "support/editorfixture.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/conversions.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QFileInfo>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::TempDir;
using tavik::test::writeTone;

TEST(NewKeyStartsClean, ClearingAKeyFreesEveryItemItHoldsAndNoOtherKeys) {
    clsZELDB store;
    store.SaveSetting("0000", "Color", Variant::fromLong(255));
    store.SaveSetting("0000", "AutoPlace", Variant::fromLong(2));
    store.SaveSetting("0000", "NameVisible", Variant::fromBoolean(false));
    store.SaveSetting("0000", "Title", Variant::fromString("Alt"));
    store.SaveSetting("0001", "Color", Variant::fromLong(33023));
    ClearKeySettings(store, "0000");
    for (const char* item : {"Color", "AutoPlace", "NameVisible", "Title"})
        EXPECT_FALSE(store.ItemExists("0000", item)) << item;
    EXPECT_EQ(CLng(store.GetSetting("0001", "Color", "0")), 33023);
    // The freed slots are taken again by the next items, as the store reuses them.
    store.SaveSetting("0000", "Color", Variant::fromLong(49152));
    EXPECT_EQ(store.keySlots().get(0).ItemCount, 4);
    ClearKeySettings(store, "fehlt");
    EXPECT_FALSE(store.KeyExists("fehlt"));
}

TEST(NewKeyStartsClean, AnImportUnderARemovedAnnouncementsKeyTakesOnlyTheImportsColour) {
    EditorFixture editor;
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0000"), QStringLiteral("Alt"), 100, 255, false, 2},
                             {QStringLiteral("0001"), QStringLiteral("Gong"), 100, 0, true, -1}});
    editor.open(folder);
    // The announcement 0000 goes, and the removal is saved: its settings stay in the index.
    editor.main->lsvPack()->ListItems(1)->SetSelected(true);
    editor.answers.push_back(MsgResult::Yes);
    QTest::mouseClick(editor.main->cmdRemove(), Qt::LeftButton);
    QTest::mouseClick(editor.main->cmdSave(), Qt::LeftButton);
    ASSERT_FALSE(QFileInfo::exists(folder + QStringLiteral("/0000.wav")));
    {
        clsZELDB stored;
        ASSERT_TRUE(stored.OpenIOFile(folder + QStringLiteral("/Package.io")));
        ASSERT_TRUE(stored.ItemExists("0000", "AutoPlace")) << "the index still holds them";
    }

    TempDir sources;
    const QString sound = sources.file(QStringLiteral("Neu.wav"));
    ASSERT_TRUE(writeTone(sound, 800, 8000));
    frmFile dialog(*editor.main);
    dialog.AddFiles({sound});
    dialog.show();
    QTest::mouseClick(dialog.cmdColor(), Qt::LeftButton);
    QTest::mouseClick(dialog.optColor()[5], Qt::LeftButton); // green
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);

    clsZELDB stored;
    ASSERT_TRUE(stored.OpenIOFile(folder + QStringLiteral("/Package.io")));
    EXPECT_EQ(CStr(stored.GetSetting("INDEX", "2", "")), QStringLiteral("0000~Neu"));
    EXPECT_EQ(CLng(stored.GetSetting("0000", "Color", "0")), 49152);
    EXPECT_FALSE(stored.ItemExists("0000", "AutoPlace"));
    EXPECT_FALSE(stored.ItemExists("0000", "NameVisible"));
    const std::int32_t index = FindAnnouncementByKey(editor.main->table, "0000");
    ASSERT_GE(index, 0);
    const AnnouncementRecord& record = editor.main->table.Announcements[index];
    EXPECT_EQ(record.AutoPlace, -1);
    EXPECT_TRUE(record.NameVisible);
    EXPECT_EQ(record.Color, 49152);
}
