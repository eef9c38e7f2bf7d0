#include "audio/sentencerender.h"
#include "audio/soundfile.h"
#include "audio/soundreader.h"
#include "support/errorof.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/runtimeerror.h"

#include <QFile>
#include <gtest/gtest.h>
#include <vector>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::TempDir;
using tavik::test::writeLevels;

namespace {

struct Package {
    TempDir dir;
    AnnouncementTable table;

    // A sound of constant level at `rate`, `ms` long, opened under `key`.
    void add(const QString& key, float value, std::int32_t ms, int rate = 44100) {
        const QString path = dir.file(key + ".wav");
        EXPECT_TRUE(writeLevels(path, static_cast<long long>(ms) * rate / 1000, rate, {value}));
        AnnouncementRecord record;
        record.Key = key;
        record.Title = key;
        record.FilePath = path;
        record.Length = ms;
        record.Opened = true;
        table.Announcements << record;
        table.AnnouncementCount = static_cast<std::int16_t>(table.Announcements.size());
    }
};

SatzRecord sentence(const QList<SatzTarget>& targets) {
    SatzRecord s;
    s.Key = "0001";
    s.Text = "Test";
    s.Targets = targets;
    s.LastTarget = static_cast<std::int16_t>(targets.size() - 1);
    return s;
}

std::vector<float> decode(const QByteArray& wave, TempDir& dir, SoundInfo& info) {
    const QString path = dir.write("out.wav", wave);
    info = probeSound(path).value_or(SoundInfo{});
    SoundReader reader(path, {info.sampleRate, info.channels});
    std::vector<float> samples(static_cast<std::size_t>(info.frames * info.channels));
    reader.read(samples.data(), info.frames);
    return samples;
}

} // namespace

TEST(SentenceSchedule, EachEntryStartsWhenTheEarlierOnesLengthsAndShiftsHaveRun) {
    Package p;
    p.add("0000", 0.25f, 1000);
    p.add("0001", 0.5f, 800);
    p.add("0002", -0.25f, 600);
    const QList<ScheduledEntry> s = ScheduleSentence(
        p.table, sentence({{"0000", 0}, {"0001", 300}, {"0002", -500}, {"0000", 0}}));
    ASSERT_EQ(s.size(), 4);
    EXPECT_EQ(s[0].startMs, 0);
    EXPECT_EQ(s[0].stopMs, 1000);
    EXPECT_EQ(s[1].startMs, 1000);
    EXPECT_EQ(s[1].stopMs, 2100); // a positive shift is a pause after the sound
    EXPECT_EQ(s[2].startMs, 2100);
    EXPECT_EQ(s[2].stopMs, 2200); // a negative shift cuts the sound
    EXPECT_EQ(s[3].startMs, 2200);
    EXPECT_EQ(s[3].stopMs, 3200);
}

TEST(SentenceSchedule, AShiftLongerThanTheSoundEndsItsWaitAtOnce) {
    Package p;
    p.add("0000", 0.25f, 300);
    const QList<ScheduledEntry> s =
        ScheduleSentence(p.table, sentence({{"0000", -500}, {"0000", 0}}));
    ASSERT_EQ(s.size(), 2);
    EXPECT_EQ(s[0].stopMs, 0);
    EXPECT_EQ(s[1].startMs, 0);
    EXPECT_EQ(s[1].stopMs, 300);
}

TEST(SentenceSchedule, AKeyWithoutAnnouncementIsASubscriptError) {
    Package p;
    p.add("0000", 0.25f, 300);
    EXPECT_EQ(errorOf([&] {
                  ScheduleSentence(p.table, sentence({{"0000", 0}, {"0042", 0}}));
              }),
              rt::SubscriptOutOfRange);
}

TEST(SentenceRender, WritesSixteenBitStereoAt44100WithEveryEntryOnItsFrame) {
    Package p;
    p.add("0000", 0.25f, 1000);
    p.add("0001", 0.5f, 800, 22050); // converted to the file's rate
    p.add("0002", -0.25f, 600);
    const QByteArray wave = RenderSentenceWave(
        p.table, sentence({{"0000", 0}, {"0001", 300}, {"0002", -500}, {"0000", 0}}), {44100, 2});
    ASSERT_GT(wave.size(), 44);
    EXPECT_EQ(wave.left(4), QByteArray("RIFF"));
    SoundInfo info;
    const std::vector<float> s = decode(wave, p.dir, info);
    EXPECT_EQ(info.sampleRate, 44100);
    EXPECT_EQ(info.channels, 2);
    EXPECT_EQ(info.frames, frameOfMs(3200, 44100));
    const auto at = [&](qint64 ms, int offset = 0) {
        return s[static_cast<std::size_t>((frameOfMs(ms, 44100) + offset) * 2 + 1)];
    };
    EXPECT_NEAR(at(0), 0.25f, 1e-3);
    EXPECT_NEAR(at(1000, -1), 0.25f, 1e-3);
    EXPECT_NEAR(at(1400), 0.5f, 2e-3);
    EXPECT_NEAR(at(1850), 0.0f, 1e-3); // the 300 ms pause after the second entry
    EXPECT_NEAR(at(2100, -1), 0.0f, 1e-3);
    EXPECT_NEAR(at(2100), -0.25f, 1e-3);
    EXPECT_NEAR(at(2200, -1), -0.25f, 1e-3); // cut 500 ms early ...
    EXPECT_NEAR(at(2200), 0.25f, 1e-3);      // ... where the next one starts
    EXPECT_NEAR(at(3200, -1), 0.25f, 1e-3);
}

TEST(SentenceRender, TakesTheRateAndChannelsAskedFor) {
    Package p;
    p.add("0000", 0.5f, 500);
    SoundInfo info;
    const std::vector<float> s =
        decode(RenderSentenceWave(p.table, sentence({{"0000", 0}}), {22050, 1}), p.dir, info);
    EXPECT_EQ(info.sampleRate, 22050);
    EXPECT_EQ(info.channels, 1);
    EXPECT_EQ(info.frames, 11025);
    EXPECT_NEAR(s[5000], 0.5f, 2e-3);
}
