#include "audio/mciemulator.h"
#include "audio/mixer.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>
#include <vector>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::writeTone;

namespace {

std::shared_ptr<const DecodedSound> constant(float value, qint64 frames, int rate = 1000) {
    auto s = std::make_shared<DecodedSound>();
    s->info = {frames, rate, 1, true};
    s->samples.assign(static_cast<std::size_t>(frames), value);
    return s;
}

// Keeps what the emulator asks of its output.
class RecordingOutput : public SoundOutput {
public:
    QStringList calls;
    void start(int voice, std::shared_ptr<const DecodedSound> sound, qint64 fromMs) override {
        calls << QStringLiteral("start %1 %2 %3").arg(voice).arg(sound->info.frames).arg(fromMs);
    }
    void stop(int voice) override { calls << QStringLiteral("stop %1").arg(voice); }
};

} // namespace

TEST(Mixer, OverlappingVoicesSoundTogether) {
    Mixer mixer(1000, 2);
    mixer.start(1, constant(0.25f, 100), 0);
    mixer.start(2, constant(0.5f, 50), 0);
    std::vector<qint16> out(2 * 80);
    mixer.mix(out.data(), 80);
    EXPECT_EQ(out[0], qint16(24575)); // 0.75 of full scale, both channels
    EXPECT_EQ(out[1], qint16(24575));
    EXPECT_EQ(out[2 * 60], qint16(8192)); // the shorter voice has ended
    EXPECT_EQ(mixer.activeVoices(), 1);
}

TEST(Mixer, AStoppedVoiceFallsSilentAndAnEndedOneIsDropped) {
    Mixer mixer(1000, 1);
    mixer.start(1, constant(0.5f, 10), 0);
    mixer.stop(1);
    std::vector<qint16> out(10);
    mixer.mix(out.data(), 10);
    EXPECT_EQ(out[0], 0);
    mixer.start(2, constant(0.5f, 10), 5); // from 5 ms of a 10 ms sound
    mixer.mix(out.data(), 10);
    EXPECT_EQ(out[4], qint16(16384));
    EXPECT_EQ(out[5], 0);
    EXPECT_EQ(mixer.activeVoices(), 0);
}

TEST(Mixer, ResamplesEachVoiceToTheOutputRate) {
    Mixer mixer(2000, 1);
    mixer.start(1, constant(1.0f, 100, 1000), 0); // 100 ms at half the output rate
    std::vector<qint16> out(250);
    mixer.mix(out.data(), 250);
    EXPECT_EQ(out[199], qint16(32767));
    EXPECT_EQ(out[200], 0);
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
    EXPECT_EQ(output->calls, (QStringList{"start 1 22050 0", "start 2 22050 0", "stop 1",
                                          "start 1 22050 400", "stop 2", "stop 1"}));
}
