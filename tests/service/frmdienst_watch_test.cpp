// The service editor and another program on the same service file: a clean service is read
// again when the file changes, unsaved work is never written over a change without a question,
// and a removed file is written again on the next save.
#include "package/packagefilewatch.h"
#include "service/dienstfixture.h"
#include "service/servicebytes.h"
#include "service/servicefile.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QStatusBar>
#include <QUndoStack>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::DienstHost;
using tavik::test::openServiceTitled;
using tavik::test::press;
using tavik::test::readAll;
using tavik::test::ServiceBytes;
using Entry = DienstHost::Entry;

namespace {

constexpr int kWaitMs = 10000;
const QString kId = QStringLiteral("000005");

std::vector<Entry> station() {
    return {{"0000", "Gong", 60, 0, true, 1},
            {"0001", "Achtung an Gleis 1", 60, 0, true, 2},
            {"0002", "Signal", 60, 0, false}};
}

QByteArray serviceTitled(const char* title) {
    return ServiceBytes()
        .header(title, "Tavik", "", "000005")
        .count(1)
        .sentence("4711", "Gong ", {{"0000", 0}})
        .data();
}

// Another program replaces the file, as editors and sync tools do: a new file renamed over it.
void replaceOutside(const QString& path, const QByteArray& bytes) {
    QFile file(path + QStringLiteral(".tmp"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    QFile::remove(path);
    ASSERT_TRUE(QFile::rename(path + QStringLiteral(".tmp"), path));
}

// Another program rewrites the file in place.
void rewriteInPlace(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

struct OpenService {
    DienstHost host{station()};
    frmDienst* editor = nullptr;
    QString file;

    OpenService() {
        host.root.write(QStringLiteral("Data/Linie/_000005._"), serviceTitled("Linie 5"));
        file = host.serviceFile(kId);
        editor = host.openEditor();
        openServiceTitled(editor, QStringLiteral("Linie 5"));
        host.messages.clear();
    }
    // An unsaved change: a second sentence.
    void addSentence() {
        press(editor, editor->cmdAdd());
        press(editor, editor->cmdSave());
    }
    void save() {
        editor->mnuSave()->trigger();
        QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    }
    QString status() const { return editor->statusBar()->currentMessage(); }
    bool asked() const {
        return !host.messages.empty() &&
               host.messages.back().buttons == MsgButtons::SaveDiscardCancel &&
               host.messages.back().text.contains(QStringLiteral("_000005._"));
    }
};

} // namespace

TEST(ServiceOutsideChanges, ACleanServiceIsReadAgainWhenAnotherProgramReplacesItsFile) {
    OpenService s;
    ASSERT_EQ(s.editor->txtTitle()->text(), QStringLiteral("Linie 5"));
    replaceOutside(s.file, serviceTitled("Linie 5 neu"));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return s.editor->txtTitle()->text() == QStringLiteral("Linie 5 neu"); }, kWaitMs));
    EXPECT_TRUE(s.status().contains(QStringLiteral("_000005._"))) << s.status().toStdString();
    EXPECT_TRUE(s.editor->undoStack()->isClean());
    EXPECT_TRUE(s.host.messages.empty());
}

TEST(ServiceOutsideChanges, ACleanServiceIsReadAgainWhenItsFileIsRewrittenInPlace) {
    OpenService s;
    rewriteInPlace(s.file, serviceTitled("Linie 5 anders"));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return s.editor->txtTitle()->text() == QStringLiteral("Linie 5 anders"); }, kWaitMs));
    EXPECT_TRUE(s.host.messages.empty());
}

TEST(ServiceOutsideChanges, UnsavedWorkAsksAtOnceAndCancelKeepsBothTheWorkAndTheirFile) {
    OpenService s;
    s.addSentence();
    ASSERT_FALSE(s.editor->undoStack()->isClean());
    const QByteArray theirs = serviceTitled("Von draussen");
    s.host.answers.push_back(MsgResult::Cancel);
    replaceOutside(s.file, theirs);
    ASSERT_TRUE(QTest::qWaitFor([&] { return s.asked(); }, kWaitMs));
    EXPECT_EQ(s.editor->lsvDienst()->Count(), 2);
    EXPECT_EQ(s.editor->txtTitle()->text(), QStringLiteral("Linie 5"));
    EXPECT_EQ(readAll(s.file), theirs);

    // The same change is not asked about again while the user works on.
    const std::size_t asked = s.host.messages.size();
    QTest::qWait(3 * PackageFileWatch::kSettleMs);
    EXPECT_EQ(s.host.messages.size(), asked);

    // Saving asks again; Cancel writes nothing.
    s.host.answers.push_back(MsgResult::Cancel);
    s.save();
    EXPECT_EQ(s.host.messages.size(), asked + 1);
    EXPECT_TRUE(s.asked());
    EXPECT_EQ(readAll(s.file), theirs);
    EXPECT_FALSE(s.editor->undoStack()->isClean());
}

TEST(ServiceOutsideChanges, SaveOverTheirChangeWritesTheUsersServiceOnlyWhenTheUserSaysSo) {
    OpenService s;
    s.addSentence();
    s.host.answers.push_back(MsgResult::Cancel);
    replaceOutside(s.file, serviceTitled("Von draussen"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return s.asked(); }, kWaitMs));

    s.host.answers.push_back(MsgResult::Save);
    s.save();
    const ServiceReadResult read = ReadServiceFile(s.file);
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.header.Title, QStringLiteral("Linie 5"));
    EXPECT_EQ(read.sentences.size(), 2);
    EXPECT_TRUE(s.editor->undoStack()->isClean());

    // Its own save is no outside change: no reload, no question.
    const std::size_t asked = s.host.messages.size();
    QTest::qWait(3 * PackageFileWatch::kSettleMs);
    EXPECT_EQ(s.host.messages.size(), asked);
    EXPECT_FALSE(s.editor->serviceWatch()->changed());
    EXPECT_TRUE(s.status().isEmpty()) << s.status().toStdString();
}

TEST(ServiceOutsideChanges, DiscardReadsTheirFileAndDropsTheUnsavedWork) {
    OpenService s;
    s.addSentence();
    s.host.answers.push_back(MsgResult::Discard);
    replaceOutside(s.file, serviceTitled("Von draussen"));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return s.editor->txtTitle()->text() == QStringLiteral("Von draussen"); }, kWaitMs));
    EXPECT_TRUE(s.asked());
    EXPECT_EQ(s.editor->lsvDienst()->Count(), 1);
    EXPECT_TRUE(s.editor->undoStack()->isClean());
    EXPECT_EQ(readAll(s.file), serviceTitled("Von draussen"));
}

TEST(ServiceOutsideChanges, AChangeMadeJustBeforeSaveIsAskedAboutBeforeTheWatchHasSpoken) {
    OpenService s;
    s.addSentence();
    const QByteArray theirs = serviceTitled("Von draussen");
    // Changed and saved within one turn of the event loop: the watch has not settled yet.
    rewriteInPlace(s.file, theirs);
    s.host.answers.push_back(MsgResult::Cancel);
    s.save();
    ASSERT_TRUE(s.asked());
    EXPECT_EQ(readAll(s.file), theirs);
}

TEST(ServiceOutsideChanges, AServiceWhoseFileWasRemovedStaysOpenIsUnsavedAndIsWrittenAgain) {
    OpenService s;
    ASSERT_TRUE(QFile::remove(s.file));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !s.status().isEmpty(); }, kWaitMs));
    EXPECT_TRUE(s.status().contains(QStringLiteral("_000005._"))) << s.status().toStdString();
    EXPECT_EQ(s.editor->txtTitle()->text(), QStringLiteral("Linie 5"));
    EXPECT_FALSE(s.editor->undoStack()->isClean());
    EXPECT_TRUE(s.host.messages.empty());

    s.save();
    EXPECT_TRUE(s.host.messages.empty());
    const ServiceReadResult read = ReadServiceFile(s.file);
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.header.Title, QStringLiteral("Linie 5"));
    EXPECT_TRUE(s.editor->undoStack()->isClean());
}

TEST(ServiceOutsideChanges, AFileWrittenAgainWithTheSameBytesIsNoChange) {
    OpenService s;
    s.addSentence();
    replaceOutside(s.file, readAll(s.file));
    QTest::qWait(3 * PackageFileWatch::kSettleMs);
    EXPECT_TRUE(s.host.messages.empty());
    EXPECT_FALSE(s.editor->serviceWatch()->changed());
    s.save();
    EXPECT_TRUE(s.host.messages.empty());
    EXPECT_EQ(ReadServiceFile(s.file).sentences.size(), 2);
}

TEST(ServiceOutsideChanges, DeletingTheOpenedServiceHereIsNoOutsideChangeAndLeavesItUnsaved) {
    OpenService s;
    s.editor->mnuOpen()->trigger();
    s.editor->cmdRefresh()->click();
    QListWidget* list = s.editor->lstOpen();
    const QList<QListWidgetItem*> found =
        list->findItems(QStringLiteral("Linie 5"), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    list->setCurrentItem(found[0]);
    s.host.answers.push_back(MsgResult::Yes);
    press(s.editor, s.editor->cmdKill());
    ASSERT_FALSE(QFile::exists(s.file));
    press(s.editor, s.editor->cmdAbbr());
    QTest::qWait(3 * PackageFileWatch::kSettleMs);
    EXPECT_TRUE(s.status().isEmpty()) << s.status().toStdString();
    EXPECT_FALSE(s.editor->undoStack()->isClean());
    EXPECT_EQ(s.editor->txtTitle()->text(), QStringLiteral("Linie 5"));
}
