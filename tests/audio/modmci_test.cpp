#include "audio/emulatorbackend.h"
#include "audio/mcierrors.h"
#include "audio/modmci.h"
#include "audio/recordingbackend.h"
#include "support/errorof.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/tickcount.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>
#include <limits>
#include <thread>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::TempDir;
using tavik::test::writeTone;

namespace {

// Answers every command with a fixed reply.
class ScriptedBackend : public MciBackend {
public:
    Result reply;
    QStringList sent;
    Result sendString(const QString& command, int replyLength, qintptr) override {
        sent << command;
        return {reply.code, reply.text.left(replyLength > 0 ? replyLength - 1 : 0)};
    }
    QString errorString(int) override { return {}; }
};

struct Fixture {
    EmulatorBackend emulator;
    RecordingBackend recorder{emulator, [] { return qint64(GetTickCount()); }};
    QStringList log;
    modMCI mci{recorder, [this](const QString& line) { log << line; }, [] { return qintptr(42); }};
};

} // namespace

TEST(ModMci, WithoutUseFormatTheOpenCommandNamesNoDeviceType) {
    TempDir dir;
    QString path = dir.file("0000.wav");
    ASSERT_TRUE(writeTone(path, 2205));
    Fixture f;
    f.mci.UseFormat = false;
    EXPECT_EQ(f.mci.MciOpen(path, "0000", "waveaudio"), -1);
    EXPECT_EQ(f.recorder.commands(),
              (QStringList{"open " + ShortPath(dir.file("0000.wav")) + " alias 0000",
                           "set 0000 time format milliseconds"}));
    EXPECT_TRUE(f.log.isEmpty());
}

TEST(ModMci, WithUseFormatTheOpenCommandNamesTheDeviceType) {
    TempDir dir;
    QString path = dir.file("0000.wav");
    ASSERT_TRUE(writeTone(path, 2205));
    Fixture f;
    f.mci.UseFormat = true;
    EXPECT_EQ(f.mci.MciOpen(path, "0000", "waveaudio"), -1);
    EXPECT_EQ(f.recorder.commands().first(),
              "open " + ShortPath(dir.file("0000.wav")) + " type waveaudio alias 0000");
}

TEST(ModMci, OpeningAnAliasTwiceReturns289AndLogsOneErrorLine) {
    TempDir dir;
    const QString file = dir.file("0001.wav");
    ASSERT_TRUE(writeTone(file, 2205));
    Fixture f;
    QString path = file;
    EXPECT_EQ(f.mci.MciOpen(path, "0001", "waveaudio"), -1);
    path = file;
    EXPECT_EQ(f.mci.MciOpen(path, "0001", "waveaudio"), mci::DuplicateAlias);
    EXPECT_EQ(f.log, QStringList{"!MCI ERROR '289' 'Unable to load file!'"});
}

TEST(ModMci, APathWithBlanksOpens) {
    TempDir dir;
    QString path = dir.file("mit Leerzeichen/Gleis 1.wav");
    dir.write("mit Leerzeichen/.keep", "x");
    ASSERT_TRUE(writeTone(path, 22050));
    Fixture f;
    EXPECT_EQ(f.mci.MciOpen(path, "0002", "waveaudio"), -1);
    EXPECT_EQ(f.mci.MciGetLength("0002"), 1000);
}

TEST(ModMci, AFileWithoutShortFormFailsToOpenAndTheCallersPathIsReplaced) {
    TempDir dir;
    Fixture f;
    QString path = dir.file("missing.wav");
    const std::int16_t code = f.mci.MciOpen(path, "0003", "waveaudio");
    EXPECT_EQ(code, mci::MissingDeviceName);
    EXPECT_EQ(path, QString());
    EXPECT_EQ(f.recorder.commands().first(), QStringLiteral("open  alias 0003"));
    EXPECT_EQ(f.log, QStringList{"!MCI ERROR '292' 'Unable to load file!'"});
}

TEST(ModMci, CommandsAreSentToTheCharacterWithTheActiveWindow) {
    Fixture f;
    f.mci.MciPlay("0007");
    f.mci.MciStop("0007");
    f.mci.MciSeekToStart("0007");
    f.mci.MciClose("0007");
    EXPECT_EQ(f.recorder.commands(),
              (QStringList{"play 0007", "stop 0007", "seek 0007 to start", "close 0007"}));
    EXPECT_EQ(f.mci.mciCallbackWindow, 42);
    for (const auto& e : f.recorder.entries())
        EXPECT_EQ(e.callbackWindow, 42);
    // An alias that is not open answers with an error, and nobody hears of it.
    EXPECT_EQ(f.recorder.entries()[0].code, mci::InvalidDeviceName);
    EXPECT_TRUE(f.log.isEmpty());
}

TEST(ModMci, TextsOutsideTheCodePageReachMciAsQuestionMarks) {
    Fixture f;
    f.mci.MciPlay(QStringLiteral("Ān"));
    EXPECT_EQ(f.recorder.commands().first(), QStringLiteral("play ?n"));
}

TEST(ModMci, GetLengthOfAnAliasThatIsNotOpenIsZero) {
    Fixture f;
    EXPECT_EQ(f.mci.MciGetLength("nothing"), 0);
    EXPECT_EQ(f.recorder.commands(),
              (QStringList{"set nothing time format milliseconds", "status nothing length"}));
}

TEST(ModMci, GetLengthReadsTheReplyAsANumberRoundedHalfToEven) {
    ScriptedBackend backend;
    modMCI mci(backend, {});
    backend.reply = {0, "1234.5"};
    EXPECT_EQ(mci.MciGetLength("a"), 1234);
    backend.reply = {0, "1235.5"};
    EXPECT_EQ(mci.MciGetLength("a"), 1236);
    backend.reply = {0, "  99 ms"};
    EXPECT_EQ(mci.MciGetLength("a"), 99);
    backend.reply = {0, "abc"};
    EXPECT_EQ(mci.MciGetLength("a"), 0);
    backend.reply = {0, "99999999999999"}; // cut by the 15-character buffer, then too large
    EXPECT_EQ(mci.MciGetLength("a"), 0);
}

TEST(WaitMilliseconds, ZeroPassesOverPendingEventsOnce) {
    bool ran = false;
    QTimer::singleShot(0, [&] { ran = true; });
    QElapsedTimer t;
    t.start();
    WaitMilliseconds(0);
    EXPECT_TRUE(ran);
    EXPECT_LT(t.elapsed(), 50);
}

TEST(WaitMilliseconds, EndsAfterTheTickPassesTheEnd) {
    const std::int32_t start = GetTickCount();
    WaitMilliseconds(30);
    EXPECT_GT(GetTickCount(), start + 30);
}

TEST(WaitMilliseconds, ANegativeCountEndsAfterOnePassOverPendingEvents) {
    bool ran = false;
    QTimer::singleShot(0, [&] { ran = true; });
    QElapsedTimer t;
    t.start();
    WaitMilliseconds(-500);
    EXPECT_TRUE(ran);
    EXPECT_LT(t.elapsed(), 50);
}

TEST(WaitMilliseconds, WindowMessagesRunWhileItWaits) {
    int turns = 0;
    QTimer timer;
    timer.setInterval(5);
    QObject::connect(&timer, &QTimer::timeout, [&] { ++turns; });
    timer.start();
    WaitMilliseconds(200);
    // A timer of 5 ms fires many times in 200 ms; only a wait that holds the events back
    // lets it fire less than twice.
    EXPECT_GE(turns, 2);
}

TEST(TickCount, OnceTheClockReachesATicksStartTheTickCountHasTurned) {
    const std::int32_t now = GetTickCount();
    const auto next = static_cast<std::int32_t>(static_cast<std::uint32_t>(now) + 2u);
    EXPECT_EQ(TickStarts(next) - TickStarts(now), std::chrono::milliseconds(2));
    // Watched on the clock itself: a system's sleep may end a little early (Windows rounds to
    // its timer), which the waits allow for by looking at the tick count again.
    while (TickClock::now() < TickStarts(next)) {
    }
    const std::int32_t after = GetTickCount();
    EXPECT_GE(static_cast<std::int32_t>(static_cast<std::uint32_t>(after) -
                                        static_cast<std::uint32_t>(next)),
              0);
}

TEST(WaitMilliseconds, ACountThatOverflowsTheTickSumRaisesOverflow) {
    const std::int32_t tick = GetTickCount();
    const std::int32_t ms = tick >= 0 ? std::numeric_limits<std::int32_t>::max()
                                      : std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(errorOf([&] { WaitMilliseconds(ms); }), rt::Overflow);
}

TEST(IndentifyFormat, ReadsTheDeviceTypeOfAFormatFromFormatsIni) {
    TempDir dir;
    dir.write("bin/Formats.ini", "[Installed]\r\n1=wav\r\n[wav]\r\nFormat=waveaudio\r\n"
                                 "[MP3]\r\nFormat = mpegvideo \r\n");
    qputenv("TAVIK_HOME", dir.path().toLocal8Bit());
    EXPECT_EQ(IndentifyFormat("wav"), QStringLiteral("waveaudio"));
    EXPECT_EQ(IndentifyFormat("mp3"), QStringLiteral("mpegvideo"));
    EXPECT_EQ(IndentifyFormat("ogg"), QString());
    EXPECT_EQ(IndentifyFormat("???"), QString());
    qunsetenv("TAVIK_HOME");
}
