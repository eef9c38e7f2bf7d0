#include "audio/mciemulator.h"
#include "audio/mcierrors.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::writeTone;

namespace {

struct FakeClock {
    qint64 now = 0;
    MciEmulator::Clock clock() {
        return [this] { return now; };
    }
};

} // namespace

TEST(MciEmulator, OpensAWaveFileAndReportsItsLengthInMilliseconds) {
    TempDir dir;
    const QString path = dir.file("0000.wav");
    ASSERT_TRUE(writeTone(path, 27225, 22050)); // 1234.69 ms
    MciEmulator mci;
    EXPECT_EQ(mci.send("open " + path + " type waveaudio alias 0000").code, 0);
    EXPECT_EQ(mci.send("set 0000 time format milliseconds").code, 0);
    const MciEmulator::Reply length = mci.send("status 0000 length");
    EXPECT_EQ(length.code, 0);
    EXPECT_EQ(length.text, QStringLiteral("1234"));
}

TEST(MciEmulator, OpeningAnAliasTwiceIsADuplicateAlias) {
    TempDir dir;
    const QString path = dir.file("a b.wav");
    ASSERT_TRUE(writeTone(path, 2205));
    MciEmulator mci;
    EXPECT_EQ(mci.send("open " + path + " alias x").code, 0);
    EXPECT_EQ(mci.send("open " + path + " alias x").code, mci::DuplicateAlias);
    EXPECT_EQ(mci.send("close x").code, 0);
    EXPECT_EQ(mci.send("open " + path + " alias X").code, 0);
}

TEST(MciEmulator, AnswersWithMciErrorCodes) {
    TempDir dir;
    const QString wav = dir.file("a.wav");
    const QString flac = dir.file("a.flac");
    ASSERT_TRUE(writeTone(wav, 100));
    ASSERT_TRUE(writeTone(flac, 100));
    const QString broken = dir.write("broken.wav", "RIFF but nothing else");
    MciEmulator mci;
    EXPECT_EQ(mci.send("open " + dir.file("missing.wav") + " alias a").code, mci::FileNotFound);
    EXPECT_EQ(mci.send("open " + wav + " type nosuchdevice alias a").code, mci::InvalidDeviceName);
    const QString unknown = dir.file("a.xyz");
    ASSERT_TRUE(QFile::copy(wav, unknown));
    EXPECT_EQ(mci.send("open " + unknown + " alias a").code, mci::ExtensionNotFound);
    EXPECT_EQ(mci.send("open " + flac + " type waveaudio alias a").code, mci::InvalidFile);
    EXPECT_EQ(mci.send("open " + broken + " alias a").code, mci::InvalidFile);
    EXPECT_EQ(mci.send("open " + flac + " type mpegvideo alias a").code, 0);
    EXPECT_EQ(mci.send("play nothing").code, mci::InvalidDeviceName);
    EXPECT_EQ(mci.send("status nothing length").code, mci::InvalidDeviceName);
    EXPECT_EQ(mci.send("frobnicate a").code, mci::UnrecognizedCommand);
    EXPECT_EQ(mci.send("set a time format frames").code, mci::BadTimeFormat);
}

TEST(MciEmulator, PlaysStopsAndSeeksOnItsClock) {
    TempDir dir;
    const QString path = dir.file("t.wav");
    ASSERT_TRUE(writeTone(path, 22050)); // one second
    FakeClock time;
    MciEmulator mci(time.clock());
    ASSERT_EQ(mci.send("open " + path + " alias t").code, 0);
    EXPECT_EQ(mci.send("status t mode").text, QStringLiteral("stopped"));
    mci.send("play t");
    time.now = 300;
    EXPECT_TRUE(mci.isPlaying("t"));
    EXPECT_EQ(mci.send("status t position").text, QStringLiteral("300"));
    mci.send("stop t");
    time.now = 800;
    EXPECT_EQ(mci.send("status t position").text, QStringLiteral("300"));
    mci.send("play t");
    time.now = 2000;
    EXPECT_FALSE(mci.isPlaying("t"));
    EXPECT_EQ(mci.send("status t position").text, QStringLiteral("1000"));
    EXPECT_EQ(mci.send("status t mode").text, QStringLiteral("stopped"));
    mci.send("seek t to start");
    EXPECT_EQ(mci.send("status t position").text, QStringLiteral("0"));
}

TEST(MciEmulator, CloseAllClosesEveryAlias) {
    TempDir dir;
    const QString path = dir.file("t.wav");
    ASSERT_TRUE(writeTone(path, 100));
    MciEmulator mci;
    mci.send("open " + path + " alias a");
    mci.send("open " + path + " alias b");
    EXPECT_EQ(mci.send("close all").code, 0);
    EXPECT_FALSE(mci.isOpen("a"));
    EXPECT_FALSE(mci.isOpen("b"));
}

TEST(MciEmulator, MeasuresAnMp3ByItsDecodedFrames) {
    TempDir dir;
    const QString path = dir.file("0001.mp3");
    ASSERT_TRUE(writeTone(path, 44100, 44100)) << "this system's libsndfile cannot write MP3";
    const std::optional<SoundInfo> info = probeSound(path);
    ASSERT_TRUE(info.has_value());
    EXPECT_FALSE(info->wave);
    // The count holds every frame the decoder gives, the encoder's padding included: at
    // least what was encoded and less than two MPEG frames (1,152 each) more.
    const std::optional<DecodedSound> decoded = decodeSound(path);
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(decoded->info.frames, info->frames);
    EXPECT_GE(info->frames, 44100);
    EXPECT_LT(info->frames, 44100 + 2 * 1152);
    MciEmulator mci;
    ASSERT_EQ(mci.send("open " + path + " alias m").code, 0);
    EXPECT_EQ(mci.send("status m length").text, QString::number(info->frames * 1000 / 44100));
    EXPECT_EQ(mci.send("open " + path + " type waveaudio alias w").code, mci::InvalidFile);
}
