// Closing the editor while an announcement or a sentence plays ends the play at once: the
// window goes, the sound stops and nothing after it is played.
#include "audio/sequenceplayer.h"
#include "support/editorfixture.h"
#include "util/zelcmd.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <iostream>
#include <vector>

using namespace tavik;
using namespace tavik::test;

namespace {

// The issue asks for under 0.2 s; the test allows a loaded machine far more, still well
// short of the sounds' own lengths.
constexpr qint64 kCloseLimitMs = 1000;

struct LongPackage {
    EditorFixture editor;
    explicit LongPackage(const std::vector<EditorFixture::Entry>& entries) {
        const QString folder =
            editor.writePackage(QStringLiteral("lang"), QStringLiteral("Lang"), entries);
        started = editor.main->FormLoad();
        if (!started)
            return;
        editor.open(folder);
        editor.main->show();
    }
    bool started = false;
};

} // namespace

TEST(CloseDuringPlay, ClosingTheMainWindowWhileAnAnnouncementPlaysStopsItAtOnce) {
    LongPackage package({{QStringLiteral("0000"), QStringLiteral("Lang"), 8000}});
    ASSERT_TRUE(package.started);
    EditorFixture& editor = package.editor;
    frmMain& main = *editor.main;
    main.lsvPack()->ListItems(1)->SetSelected(true);
    QElapsedTimer clock;
    bool playedWhenClosed = false;
    QTimer::singleShot(300, &main, [&] {
        playedWhenClosed = editor.backend.emulator().isPlaying(QStringLiteral("0000"));
        clock.start();
        main.close();
    });
    QTest::mouseClick(main.cmdPlay(), Qt::LeftButton);
    const qint64 afterClose = clock.elapsed();
    EXPECT_TRUE(playedWhenClosed);
    EXPECT_FALSE(main.isVisible());
    EXPECT_LT(afterClose, kCloseLimitMs);
    EXPECT_FALSE(editor.backend.emulator().isPlaying(QStringLiteral("0000")));
    std::cout << "close to end of play: " << afterClose << " ms\n";
}

TEST(CloseDuringPlay, ClosingTheMainWindowWhileASentencePlaysPlaysNothingAfter) {
    LongPackage package({{QStringLiteral("0000"), QStringLiteral("Gong"), 3000},
                         {QStringLiteral("0001"), QStringLiteral("Zug"), 3000},
                         {QStringLiteral("0002"), QStringLiteral("Gleis"), 3000}});
    ASSERT_TRUE(package.started);
    EditorFixture& editor = package.editor;
    frmMain& main = *editor.main;
    SatzRecord sentence;
    sentence.Key = QStringLiteral("1111");
    sentence.Text = QStringLiteral("Gong Zug Gleis");
    for (const char* key : {"0000", "0001", "0002"})
        sentence.Targets.append({QString::fromLatin1(key), 0});
    sentence.LastTarget = 2;
    editor.recorder.clear();
    QElapsedTimer clock;
    QTimer::singleShot(300, &main, [&] {
        clock.start();
        main.close();
    });
    std::int16_t busy = 0;
    QStringList log;
    PlayAnnouncementSequence(main.mci(), main.table, sentence, busy,
                             [&log](const QString& line) { log << line; });
    const qint64 afterClose = clock.elapsed();
    EXPECT_FALSE(main.isVisible());
    EXPECT_LT(afterClose, kCloseLimitMs);
    EXPECT_EQ(busy, 0);
    const QStringList commands = editor.recorder.commands();
    EXPECT_TRUE(commands.contains(QStringLiteral("play 0000")));
    EXPECT_FALSE(commands.contains(QStringLiteral("play 0001")));
    EXPECT_FALSE(commands.contains(QStringLiteral("play 0002")));
    for (const char* key : {"0000", "0001", "0002"})
        EXPECT_FALSE(editor.backend.emulator().isPlaying(QString::fromLatin1(key)));
    std::cout << "close to end of sentence: " << afterClose << " ms\n";
}

TEST(CloseDuringPlay, AWaitAfterTheCloseRunsItsWholeTime) {
    QElapsedTimer clock;
    QTimer::singleShot(50, [] { EndRunningWaits(); });
    clock.start();
    EXPECT_FALSE(WaitMilliseconds(5000));
    EXPECT_LT(clock.elapsed(), kCloseLimitMs);
    clock.restart();
    EXPECT_TRUE(WaitMilliseconds(200));
    EXPECT_GE(clock.elapsed(), 200);
}
