// The service editor's save on a failing disk and through a link: the service file on disk
// stays byte for byte, and nothing outside the package changes.
#include "service/dienstfixture.h"
#include "support/links.h"
#include "support/treesnapshot.h"
#include "support/writefault.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QUndoStack>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::DienstHost;
using tavik::test::press;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::TreeSnapshot;
using Entry = DienstHost::Entry;

namespace {

std::vector<Entry> station() {
    return {{"0000", "Gong", 60, 0, true, 1}, {"0001", "Achtung an Gleis 1", 60, 0, true, 2}};
}

void addSentence(frmDienst* editor) {
    press(editor, editor->cmdAdd());
    press(editor, editor->cmdSave());
}

void saveService(frmDienst* editor, const QString& id) {
    editor->mnuSave()->trigger();
    for (const auto& [box, text] :
         {std::pair{editor->txtTitle(), QStringLiteral("Linie 4")},
          std::pair{editor->txtAutor(), QStringLiteral("Tavik")}, std::pair{editor->txtID(), id}}) {
        box->selectAll();
        box->del();
        QTest::keyClicks(box, text);
    }
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
}

} // namespace

TEST(frmDienstWrites, AFailedSaveShowsTheErrorAndKeepsTheServiceFileWithItsTail) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    for (int i = 0; i < 3; ++i)
        addSentence(editor);
    saveService(editor, QStringLiteral("000000"));
    const QString file = host.serviceFile(QStringLiteral("000000"));
    const QByteArray saved = readAll(file);
    ASSERT_FALSE(saved.isEmpty());
    ASSERT_TRUE(host.errors.isEmpty()) << host.errors.join(u'\n').toStdString();

    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    press(editor, editor->cmdRem());
    for (const auto& [step, systemError, number] :
         {std::tuple{WriteStep::Write, ENOSPC, QStringLiteral("(61)")},
          std::tuple{WriteStep::Sync, EIO, QStringLiteral("(57)")},
          std::tuple{WriteStep::Commit, EACCES, QStringLiteral("(75)")}}) {
        host.messages.clear();
        ScopedWriteFault fault(step, systemError);
        saveService(editor, QStringLiteral("000000"));
        // A message names the file and the error; the service stays in the editor.
        ASSERT_EQ(host.messages.size(), 1u);
        EXPECT_TRUE(host.messages[0].text.contains(number)) << host.messages[0].text.toStdString();
        EXPECT_TRUE(host.messages[0].text.contains(QDir::toNativeSeparators(file)));
        EXPECT_EQ(editor->lsvDienst()->Count(), 2);
        EXPECT_FALSE(editor->undoStack()->isClean());
        EXPECT_EQ(readAll(file), saved);
        EXPECT_EQ(QDir(host.folder).entryList({QStringLiteral("_*")}, QDir::Files),
                  QStringList{"_000000._"});
    }
}

TEST(frmDienstWrites, ALinkedServiceFileIsRefusedWith75AndNothingOutsideChanges) {
    DienstHost host(station());
    const QString outside = host.root.write(QStringLiteral("outside/victim"), QByteArray(64, 'v'));
    TAVIK_LINK_OR_SKIP(outside, host.serviceFile(QStringLiteral("000000")));
    frmDienst* editor = host.openEditor();
    addSentence(editor);
    const TreeSnapshot before(host.root.path());
    host.messages.clear();
    saveService(editor, QStringLiteral("000000"));
    ASSERT_FALSE(host.messages.empty());
    EXPECT_TRUE(host.messages.back().text.contains(QStringLiteral("(75)")))
        << host.messages.back().text.toStdString();
    EXPECT_EQ(TreeSnapshot(host.root.path()).changesSince(before), QStringList());
}
