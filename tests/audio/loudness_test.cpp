// Loudness as broadcasters measure it: sounds made here at known levels, the package's median
// and what lies too far from it or peaks too high, and the cache that keeps each measurement.
#include "audio/loudness.h"
#include "audio/loudnesscache.h"
#include "support/tempdir.h"

#include <QFile>
#include <QThread>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <sndfile.h>
#include <vector>

using namespace tavik;
using tavik::test::TempDir;

namespace {

// A 1 kHz sine of `peakDbfs` on every channel.
QString writeSine(const QString& path, double peakDbfs, int channels, double seconds = 6.0,
                  int rate = 48000) {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* file = sf_open(path.toLocal8Bit().constData(), SFM_WRITE, &info);
    EXPECT_NE(file, nullptr);
    if (!file)
        return path;
    const double amplitude = peakDbfs <= -200 ? 0.0 : std::pow(10.0, peakDbfs / 20.0);
    const sf_count_t frames = sf_count_t(seconds * rate);
    std::vector<float> samples(static_cast<std::size_t>(frames * channels));
    for (sf_count_t f = 0; f < frames; ++f) {
        const float v =
            float(amplitude * std::sin(2.0 * std::numbers::pi * 1000.0 * double(f) / rate));
        for (int c = 0; c < channels; ++c)
            samples[static_cast<std::size_t>(f * channels + c)] = v;
    }
    sf_writef_float(file, samples.data(), frames);
    sf_close(file);
    return path;
}

} // namespace

TEST(Loudness, AStereoSineAtMinus23DbfsMeasuresMinus23LufsWithinATenth) {
    TempDir dir;
    const auto l = MeasureLoudness(writeSine(dir.file(QStringLiteral("a.wav")), -23.0, 2));
    ASSERT_TRUE(l);
    ASSERT_TRUE(l->integratedLufs);
    EXPECT_NEAR(*l->integratedLufs, -23.0, 0.1);
    EXPECT_NEAR(l->truePeakDbtp, -23.0, 0.2);
}

TEST(Loudness, AMonoSineCountsOneChannelAndALouderOneMeasuresLouder) {
    TempDir dir;
    const auto mono = MeasureLoudness(writeSine(dir.file(QStringLiteral("m.wav")), -23.0, 1));
    const auto loud = MeasureLoudness(writeSine(dir.file(QStringLiteral("l.wav")), -13.0, 2));
    ASSERT_TRUE(mono && mono->integratedLufs && loud && loud->integratedLufs);
    EXPECT_NEAR(*mono->integratedLufs, -26.0, 0.1);
    EXPECT_NEAR(*loud->integratedLufs, -13.0, 0.1);
}

TEST(Loudness, SilenceHasNoLoudnessAndAFileThatIsNoSoundIsNotMeasured) {
    TempDir dir;
    const auto quiet = MeasureLoudness(writeSine(dir.file(QStringLiteral("q.wav")), -300.0, 1));
    ASSERT_TRUE(quiet);
    EXPECT_FALSE(quiet->integratedLufs);
    EXPECT_LT(quiet->truePeakDbtp, -100.0);
    const QString text = dir.write(QStringLiteral("t.wav"), "no sound at all");
    EXPECT_FALSE(MeasureLoudness(text));
    EXPECT_FALSE(MeasureLoudness(dir.file(QStringLiteral("missing.wav"))));
}

TEST(Loudness, SoundsFarFromThePackagesMedianOrPeakingTooHighAreMarked) {
    const auto at = [](std::optional<double> lufs, double peak) {
        Loudness l;
        l.integratedLufs = lufs;
        l.truePeakDbtp = peak;
        return l;
    };
    const QList<Loudness> sounds{at(-23.0, -10), at(-22.0, -10),  at(-24.5, -10),
                                 at(-18.0, -10), at(-23.5, -0.5), at(std::nullopt, -200)};
    EXPECT_DOUBLE_EQ(*MedianLoudness(sounds), -23.0);
    const QList<LoudnessVerdict> v =
        JudgeLoudness({"0000", "0001", "0002", "0003", "0004", "0005"}, sounds);
    ASSERT_EQ(v.size(), 6);
    EXPECT_FALSE(v[0].farFromMedian);
    EXPECT_FALSE(v[1].farFromMedian);
    EXPECT_FALSE(v[2].farFromMedian); // 1.5 LU
    EXPECT_TRUE(v[3].farFromMedian);  // 5 LU
    EXPECT_FALSE(v[3].peakTooHigh);
    EXPECT_TRUE(v[4].peakTooHigh);
    EXPECT_FALSE(v[5].farFromMedian); // silence has no loudness to compare
    EXPECT_FALSE(MedianLoudness({at(std::nullopt, -200)}));
}

TEST(LoudnessCache, MeasuresEachSoundOnceAndAgainWhenItChanges) {
    TempDir dir;
    const QString cacheFile = dir.file(QStringLiteral("cache/loudness.tsv"));
    const QString sound = writeSine(dir.file(QStringLiteral("a.wav")), -23.0, 2, 3.0);
    {
        LoudnessCache cache(cacheFile);
        ASSERT_TRUE(cache.loudnessOf(sound));
        ASSERT_TRUE(cache.loudnessOf(sound));
        EXPECT_EQ(cache.measured(), 1);
    }
    ASSERT_TRUE(QFile::exists(cacheFile));
    {
        // Another run reads the first run's measurement.
        LoudnessCache cache(cacheFile);
        const auto l = cache.loudnessOf(sound);
        ASSERT_TRUE(l && l->integratedLufs);
        EXPECT_NEAR(*l->integratedLufs, -23.0, 0.1);
        EXPECT_EQ(cache.measured(), 0);
    }
    // The same file made louder: measured again.
    QThread::msleep(20);
    writeSine(sound, -13.0, 2, 2.0);
    LoudnessCache cache(cacheFile);
    const auto l = cache.loudnessOf(sound);
    ASSERT_TRUE(l && l->integratedLufs);
    EXPECT_NEAR(*l->integratedLufs, -13.0, 0.1);
    EXPECT_EQ(cache.measured(), 1);
}

TEST(LoudnessCache, ABrokenCacheFileIsMeasuredAgainNotBelieved) {
    TempDir dir;
    const QString sound = writeSine(dir.file(QStringLiteral("a.wav")), -23.0, 2, 3.0);
    const QString cacheFile =
        dir.write(QStringLiteral("loudness.tsv"), "garbage\nmore\tgarbage\n\t\t\t\t\n" +
                                                      QFile::encodeName(sound) + "\t1\t2\tx\ty\n");
    LoudnessCache cache(cacheFile);
    const auto l = cache.loudnessOf(sound);
    ASSERT_TRUE(l && l->integratedLufs);
    EXPECT_NEAR(*l->integratedLufs, -23.0, 0.1);
    EXPECT_EQ(cache.measured(), 1);
}
