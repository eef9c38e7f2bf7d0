#include "audio/modmci.h"
#include "audio/sentencerender.h"
#include "audio/soundfile.h"
#include "support/errorof.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QtEndian>
#include <cerrno>
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
    return tavik::test::readSound(dir.write("out.wav", wave), info);
}

} // namespace

TEST(SentenceSchedule, EachEntryStartsWhenTheWaitOfThePreviousHasRunToTheNextTick) {
    Package p;
    p.add("0000", 0.25f, 1000);
    p.add("0001", 0.5f, 800);
    p.add("0002", -0.25f, 600);
    const QList<ScheduledEntry> s = ScheduleSentence(
        p.table, sentence({{"0000", 0}, {"0001", 300}, {"0002", -500}, {"0000", 0}}));
    ASSERT_EQ(s.size(), 4);
    // Each wait ends at the first tick after its end: one millisecond beyond its count.
    EXPECT_EQ(s[0].startMs, 0);
    EXPECT_EQ(s[0].stopMs, 1001);
    EXPECT_EQ(s[1].startMs, 1001);
    EXPECT_EQ(s[1].stopMs, 2102); // a positive shift is a pause after the sound
    EXPECT_EQ(s[2].startMs, 2102);
    EXPECT_EQ(s[2].stopMs, 2203); // a negative shift cuts the sound
    EXPECT_EQ(s[3].startMs, 2203);
    EXPECT_EQ(s[3].stopMs, 3204);
}

TEST(SentenceSchedule, ANegativeShiftStartsTheNextSoundThatMuchBeforeThePreviousEnds) {
    Package p;
    p.add("0000", 0.25f, 800);
    p.add("0001", 0.5f, 300);
    const QList<ScheduledEntry> s =
        ScheduleSentence(p.table, sentence({{"0000", -500}, {"0001", 0}}));
    ASSERT_EQ(s.size(), 2);
    // 500 ms before the first sound's end, less the tick the wait runs beyond its count.
    EXPECT_EQ(s[0].startMs + 800 - s[1].startMs, 500 - 1);
}

TEST(SentenceSchedule, AWaitThatComesOutNegativeEndsAtOnceAndMinusOneLikeZeroTicks) {
    Package p;
    p.add("0000", 0.25f, 300);
    const QList<ScheduledEntry> s = ScheduleSentence(
        p.table, sentence({{"0000", -500}, {"0000", -301}, {"0000", -300}, {"0000", 0}}));
    ASSERT_EQ(s.size(), 4);
    EXPECT_EQ(s[0].stopMs, 0);
    EXPECT_EQ(s[1].startMs, 0);
    EXPECT_EQ(s[1].stopMs, 0); // a wait of -1 ends at once
    EXPECT_EQ(s[2].stopMs, 1); // a wait of 0 runs to the next tick
    EXPECT_EQ(s[3].startMs, 1);
    EXPECT_EQ(s[3].stopMs, 302);
}

TEST(SentenceSchedule, TheTickRuleIsTheWaitsOwn) {
    EXPECT_EQ(TicksWaited(-2), 0);
    EXPECT_EQ(TicksWaited(-1), 0);
    EXPECT_EQ(TicksWaited(0), 1);
    EXPECT_EQ(TicksWaited(250), 251);
    EXPECT_EQ(TicksWaited(2147483647), 2147483648LL);
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
    EXPECT_EQ(info.frames, frameOfMs(3204, 44100));
    const auto at = [&](qint64 ms, int offset = 0) {
        return s[static_cast<std::size_t>((frameOfMs(ms, 44100) + offset) * 2 + 1)];
    };
    EXPECT_NEAR(at(0), 0.25f, 1e-3);
    EXPECT_NEAR(at(1000, -1), 0.25f, 1e-3);
    EXPECT_NEAR(at(1000), 0.0f, 1e-3);     // the tick after the sound's end is silent
    EXPECT_NEAR(at(1001, 44), 0.5f, 2e-3); // converted from 22,050 Hz, past its first ringing
    EXPECT_NEAR(at(1401), 0.5f, 2e-3);
    EXPECT_NEAR(at(1851), 0.0f, 1e-3); // the 300 ms pause after the second entry
    EXPECT_NEAR(at(2102, -1), 0.0f, 1e-3);
    EXPECT_NEAR(at(2102), -0.25f, 1e-3);
    EXPECT_NEAR(at(2203, -1), -0.25f, 1e-3); // cut 500 ms early ...
    EXPECT_NEAR(at(2203), 0.25f, 1e-3);      // ... where the next one starts
    EXPECT_NEAR(at(3203, -1), 0.25f, 1e-3);
}

TEST(SentenceRender, TakesTheRateAndChannelsAskedFor) {
    Package p;
    p.add("0000", 0.5f, 500);
    SoundInfo info;
    const std::vector<float> s =
        decode(RenderSentenceWave(p.table, sentence({{"0000", 0}}), {22050, 1}), p.dir, info);
    EXPECT_EQ(info.sampleRate, 22050);
    EXPECT_EQ(info.channels, 1);
    EXPECT_EQ(info.frames, frameOfMs(501, 22050));
    EXPECT_NEAR(s[5000], 0.5f, 2e-3);
}

TEST(SentenceRender, WritesTheCanonicalHeaderAndStreamsTheFramesInPieces) {
    Package p;
    p.add("0000", 0.5f, 1000);
    p.add("0001", -0.5f, 500);
    const SatzRecord s = sentence({{"0000", 0}, {"0001", 0}});
    QList<qint64> pieces;
    QByteArray streamed;
    ASSERT_TRUE(RenderSentence(p.table, s, {44100, 2}, [&](const char* data, qint64 size) {
        pieces << size;
        streamed.append(data, size);
    }));
    const qint64 frames = frameOfMs(1502, 44100);
    EXPECT_EQ(RenderedWaveBytes(p.table, s, {44100, 2}), 44 + frames * 4);
    ASSERT_EQ(streamed.size(), 44 + frames * 4);
    EXPECT_EQ(pieces.first(), 44);
    EXPECT_GT(pieces.size(), 3); // never the whole sound at once
    const char* h = streamed.constData();
    EXPECT_EQ(QByteArray(h, 4), QByteArray("RIFF"));
    EXPECT_EQ(qFromLittleEndian<quint32>(h + 4), 36 + frames * 4);
    EXPECT_EQ(QByteArray(h + 8, 8), QByteArray("WAVEfmt "));
    EXPECT_EQ(qFromLittleEndian<quint16>(h + 20), 1);
    EXPECT_EQ(qFromLittleEndian<quint16>(h + 22), 2);
    EXPECT_EQ(qFromLittleEndian<quint32>(h + 24), 44100u);
    EXPECT_EQ(qFromLittleEndian<quint32>(h + 28), 44100u * 4);
    EXPECT_EQ(qFromLittleEndian<quint16>(h + 32), 4);
    EXPECT_EQ(qFromLittleEndian<quint16>(h + 34), 16);
    EXPECT_EQ(QByteArray(h + 36, 4), QByteArray("data"));
    EXPECT_EQ(qFromLittleEndian<quint32>(h + 40), frames * 4);
    const auto sample = [&](qint64 frame, int channel) {
        return qFromLittleEndian<qint16>(h + 44 + (frame * 2 + channel) * 2);
    };
    EXPECT_EQ(sample(0, 0), 16384);
    EXPECT_EQ(sample(frameOfMs(1000, 44100) - 1, 1), 16384);
    EXPECT_EQ(sample(frameOfMs(1000, 44100), 0), 0);
    EXPECT_EQ(sample(frameOfMs(1001, 44100), 0), -16384);
    EXPECT_EQ(sample(frameOfMs(1501, 44100) - 1, 1), -16384);
    EXPECT_EQ(sample(frames - 1, 1), 0);
    EXPECT_EQ(RenderSentenceWave(p.table, s, {44100, 2}), streamed);
}

TEST(SentenceRender, ASentenceLongerThanAWaveFileCanHoldMakesNothing) {
    Package p;
    p.add("0000", 0.5f, 100);
    // Lengths as a package may state them: 2,147,483,647 ms is almost 25 days.
    p.table.Announcements[0].Length = 2147483647;
    const SatzRecord s = sentence({{"0000", 0}, {"0000", 0}});
    EXPECT_EQ(RenderedWaveBytes(p.table, s, {44100, 2}), -1);
    bool handedOn = false;
    EXPECT_FALSE(
        RenderSentence(p.table, s, {8000, 1}, [&](const char*, qint64) { handedOn = true; }));
    EXPECT_FALSE(handedOn);
    EXPECT_TRUE(RenderSentenceWave(p.table, s, {44100, 2}).isEmpty());
    const QString out = p.dir.write("satz.wav", "alt");
    EXPECT_FALSE(RenderSentenceToFile(p.table, s, {44100, 2}, out));
    EXPECT_EQ(tavik::test::readAll(out), QByteArray("alt"));
    EXPECT_EQ(QDir(p.dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 2); // no temporary
}

TEST(SentenceRender, TheLongestSentenceAWaveFileHoldsIsStillMade) {
    Package p;
    p.add("0000", 0.5f, 100);
    // 4 GiB less the header's 36 counted bytes, at 1,000 Hz mono: 2,147,483,629 frames, the
    // wait's extra tick included.
    p.table.Announcements[0].Length = 2147483628;
    const SatzRecord s = sentence({{"0000", 0}});
    EXPECT_EQ(RenderedWaveBytes(p.table, s, {1000, 1}), 44 + 2147483629LL * 2);
    p.table.Announcements[0].Length = 2147483629;
    EXPECT_EQ(RenderedWaveBytes(p.table, s, {1000, 1}), -1);
}

TEST(SentenceRender, AFailedWriteKeepsTheOldFile) {
    Package p;
    p.add("0000", 0.5f, 300);
    const QString out = p.dir.write("satz.wav", "alt");
    EXPECT_TRUE(RenderSentenceToFile(p.table, sentence({{"0000", 0}}), {44100, 2}, out));
    const QByteArray made = tavik::test::readAll(out);
    EXPECT_EQ(made, RenderSentenceWave(p.table, sentence({{"0000", 0}}), {44100, 2}));
    InjectWriteFault({1, WriteStep::Write, ENOSPC});
    EXPECT_EQ(
        errorOf([&] {
            RenderSentenceToFile(p.table, sentence({{"0000", 0}, {"0000", 0}}), {44100, 2}, out);
        }),
        61);
    ClearWriteFault();
    EXPECT_EQ(tavik::test::readAll(out), made);
}
