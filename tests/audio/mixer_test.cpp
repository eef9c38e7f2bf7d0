#include "audio/mciemulator.h"
#include "audio/mixer.h"
#include "audio/soundreader.h"
#include "audio/streamdecoder.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::writeLevels;
using tavik::test::writeSine;
using tavik::test::writeTone;

namespace {

constexpr OutputFormat kMono1k{1000, 1};

// A sound of constant level at 1,000 Hz, wholly converted up front.
std::shared_ptr<const PreparedSound> level(TempDir& dir, const char* name, float value,
                                           qint64 frames) {
    const QString path = dir.file(name);
    EXPECT_TRUE(writeLevels(path, frames, 1000, {value}));
    auto sound = std::make_shared<PreparedSound>(path, *probeSound(path), kMono1k, frames + 1);
    sound->makeReady();
    return sound;
}

// Renders `frames` frames in buffers of `block`, the first frame heard at 0 s.
std::vector<float> renderFrom(Mixer& mixer, qint64 frames, qint64 block = 64,
                              qint64 firstFrame = 0) {
    std::vector<float> out(static_cast<std::size_t>(frames));
    for (qint64 at = 0; at < frames; at += block) {
        const qint64 n = std::min(block, frames - at);
        mixer.render(out.data() + at, n, static_cast<double>(firstFrame + at) / 1000.0);
    }
    return out;
}

qint64 firstNonZero(const std::vector<float>& v, qint64 from = 0) {
    for (auto i = static_cast<std::size_t>(from); i < v.size(); ++i)
        if (v[i] != 0.0f)
            return static_cast<qint64>(i);
    return -1;
}

qint64 firstZero(const std::vector<float>& v, qint64 from) {
    for (auto i = static_cast<std::size_t>(from); i < v.size(); ++i)
        if (v[i] == 0.0f)
            return static_cast<qint64>(i);
    return -1;
}

// Keeps what the emulator asks of its output.
class RecordingOutput : public SoundOutput {
public:
    QStringList calls;
    std::shared_ptr<const PreparedSound> prepare(const QString& path,
                                                 const SoundInfo& info) override {
        calls << QStringLiteral("prepare %1").arg(info.frames);
        return std::make_shared<PreparedSound>(path, info, kMono1k, 0);
    }
    void start(int voice, std::shared_ptr<const PreparedSound> sound, qint64 fromMs) override {
        calls << QStringLiteral("start %1 %2 %3").arg(voice).arg(sound->info().frames).arg(fromMs);
    }
    void stop(int voice) override { calls << QStringLiteral("stop %1").arg(voice); }
};

} // namespace

TEST(Mixer, StartsAndStopsOnTheFrameHeardOneLatencyAfterTheirCommand) {
    TempDir dir;
    Mixer mixer(kMono1k, 0.100);
    mixer.start(1, level(dir, "a.wav", 0.5f, 1000), 0, 0.0123);
    mixer.stop(1, 0.3456);
    const std::vector<float> out = renderFrom(mixer, 600);
    EXPECT_EQ(firstNonZero(out), 112);   // 0.1123 s
    EXPECT_EQ(firstZero(out, 112), 446); // 0.4456 s: the stop cuts the sound
    EXPECT_FLOAT_EQ(out[300], 0.5f);
    EXPECT_EQ(mixer.activeVoices(), 0);
}

TEST(Mixer, TheIntervalBetweenTwoCommandsIsKeptToTheFrame) {
    TempDir dir;
    const auto a = level(dir, "a.wav", 0.25f, 50);
    const auto b = level(dir, "b.wav", 0.5f, 50);
    Mixer mixer(kMono1k, 0.030);
    mixer.start(1, a, 0, 0.0004);
    mixer.start(2, b, 0, 0.0731); // 72.7 ms later, across buffer boundaries
    const std::vector<float> out = renderFrom(mixer, 200, 17);
    EXPECT_EQ(firstNonZero(out), 30);
    EXPECT_FLOAT_EQ(out[102], 0.0f);
    EXPECT_FLOAT_EQ(out[103], 0.5f);
}

TEST(Mixer, ACommandTooLateForItsFrameTakesEffectAtTheNextBuffer) {
    TempDir dir;
    Mixer mixer(kMono1k, 0.010);
    std::vector<float> out(64);
    mixer.render(out.data(), 64, 0.0);
    mixer.start(1, level(dir, "a.wav", 0.5f, 100), 0, 0.0); // due at frame 10, already made
    mixer.render(out.data(), 64, 0.064);
    EXPECT_FLOAT_EQ(out[0], 0.5f);
}

TEST(Mixer, OverlappingVoicesSoundTogether) {
    TempDir dir;
    Mixer mixer({1000, 2}, 0.0);
    auto quiet =
        std::make_shared<PreparedSound>(dir.file("q.wav"), SoundInfo{}, OutputFormat{1000, 2}, 100);
    ASSERT_TRUE(writeLevels(dir.file("q.wav"), 100, 1000, {0.25f}));
    ASSERT_TRUE(writeLevels(dir.file("l.wav"), 50, 1000, {0.5f}));
    auto loud =
        std::make_shared<PreparedSound>(dir.file("l.wav"), SoundInfo{}, OutputFormat{1000, 2}, 100);
    mixer.start(1, quiet, 0, 0.0);
    mixer.start(2, loud, 0, 0.0);
    std::vector<float> out(2 * 80);
    mixer.render(out.data(), 80, 0.0);
    EXPECT_FLOAT_EQ(out[0], 0.75f); // both channels: the mono sounds are copied to each
    EXPECT_FLOAT_EQ(out[1], 0.75f);
    EXPECT_FLOAT_EQ(out[2 * 60], 0.25f); // the shorter voice has ended
    EXPECT_EQ(mixer.activeVoices(), 1);
}

TEST(Mixer, ASoundLongerThanItsFirstPartIsStreamedWithoutASeam) {
    TempDir dir;
    const QString path = dir.file("long.wav");
    ASSERT_TRUE(writeSine(path, 24000, 8000, 440.0));
    const OutputFormat format{8000, 1};
    StreamDecoder decoder;
    auto sound = std::make_shared<PreparedSound>(path, *probeSound(path), format, 400);
    decoder.prepare(sound);
    Mixer mixer(format, 0.0, [&](std::shared_ptr<StreamFeed> feed) { decoder.feed(feed); });
    mixer.start(1, sound, 0, 0.0);
    std::vector<float> heard(24000 + 512);
    for (qint64 at = 0; at < 24000 + 256; at += 256) {
        mixer.render(heard.data() + at, 256, static_cast<double>(at) / 8000.0);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    SoundReader reader(path, format);
    std::vector<float> expected(24000);
    ASSERT_EQ(reader.read(expected.data(), 24000), 24000);
    for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_FLOAT_EQ(heard[i], expected[i]) << "frame " << i;
    EXPECT_FLOAT_EQ(heard[24000], 0.0f);
    EXPECT_EQ(mixer.starvedFrames(), 0);
    EXPECT_EQ(mixer.activeVoices(), 0);
}

TEST(MciEmulator, PlayingStartsAVoiceAndStopSeekAndCloseEndIt) {
    TempDir dir;
    const QString path = dir.file("t.wav");
    ASSERT_TRUE(writeTone(path, 22050, 22050));
    auto output = std::make_shared<RecordingOutput>();
    qint64 now = 0;
    MciEmulator mci([&] { return now; }, output);
    mci.send("open " + path + " alias a");
    mci.send("open " + path + " alias b");
    mci.send("play a");
    now = 400;
    mci.send("play b"); // sounds together with a
    mci.send("stop a");
    mci.send("play a"); // goes on from where it stopped
    mci.send("seek b to start");
    mci.send("close a");
    EXPECT_EQ(output->calls,
              (QStringList{"prepare 22050", "prepare 22050", "start 1 22050 0", "start 2 22050 0",
                           "stop 1", "start 1 22050 400", "stop 2", "stop 1"}));
}
