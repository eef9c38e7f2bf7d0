// Loudness as broadcasters measure it: sounds made here at known levels, the package's median
// and what lies too far from it or peaks too high, and the cache that keeps each measurement.
#include "audio/loudness.h"
#include "audio/loudnesscache.h"
#include "audio/loudnessmeter.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>
#include <cmath>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

namespace {

QString writeSine(const QString& path, double peakDbfs, int channels, double seconds = 6.0) {
    return tavik::test::writeLevelSine(path, peakDbfs, channels, seconds);
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

TEST(LoudnessCache, LivesInTheUsersCacheFolderUnlessTavikCacheNamesAnother) {
    const QByteArray kept = qgetenv("TAVIK_CACHE");
    qunsetenv("TAVIK_CACHE");
    EXPECT_EQ(LoudnessCache::defaultFile(),
              QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                  QStringLiteral("/tavik/loudness.tsv"));
    TempDir dir;
    qputenv("TAVIK_CACHE", dir.file(QStringLiteral("Zoë cache")).toLocal8Bit());
    EXPECT_EQ(LoudnessCache::defaultFile(), dir.file(QStringLiteral("Zoë cache/loudness.tsv")));
    {
        LoudnessCache cache;
        ASSERT_TRUE(cache.loudnessOf(writeSine(dir.file(QStringLiteral("a.wav")), -23.0, 2, 1.0)));
    }
    EXPECT_TRUE(QFile::exists(dir.file(QStringLiteral("Zoë cache/loudness.tsv"))));
    qputenv("TAVIK_CACHE", kept);
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

TEST(LoudnessCache, FiguresAreReadAsQtReadsThemAndAnyOtherSpellingIsMeasuredAgainOrReadByQt) {
    TempDir dir;
    const QString sound = writeSine(dir.file(QStringLiteral("a.wav")), -23.0, 2, 2.0);
    const QFileInfo info(sound);
    const QByteArray key = QFile::encodeName(info.absoluteFilePath()) + '\t' +
                           QByteArray::number(info.size()) + '\t' +
                           QByteArray::number(info.lastModified().toMSecsSinceEpoch());
    const char* figures[][2] = {
        {"-23.40123457", "-1.5"}, {"-0", "0"},     {"007.25", "-0.000123456789"},
        {"-70.1", "1e-05"},       {"1.", ".5"},    {"+3", " 2"},
        {"-23.4x", "0"},          {"-", "-12.75"}, {"12345678901234567890.5", "-3"}};
    for (const auto& [lufs, peak] : figures) {
        SCOPED_TRACE(std::string(lufs) + " " + peak);
        const QString cacheFile =
            dir.write(QStringLiteral("loudness.tsv"), key + '\t' + lufs + '\t' + peak + '\n');
        bool lufsOk = true;
        bool peakOk = false;
        const bool silent = QByteArray(lufs) == "-";
        const double lufsValue = silent ? 0 : QString::fromLatin1(lufs).toDouble(&lufsOk);
        const double peakValue = QString::fromLatin1(peak).toDouble(&peakOk);
        LoudnessCache cache(cacheFile);
        const auto l = cache.loudnessOf(sound);
        ASSERT_TRUE(l.has_value());
        if (!lufsOk || !peakOk) {
            EXPECT_EQ(cache.measured(), 1);
            continue;
        }
        EXPECT_EQ(cache.measured(), 0);
        EXPECT_EQ(l->truePeakDbtp, peakValue);
        if (silent)
            EXPECT_FALSE(l->integratedLufs.has_value());
        else
            EXPECT_EQ(l->integratedLufs, lufsValue);
    }
}

TEST(LoudnessCache, ANameWithALineBreakOrTabIsMeasuredEachTimeAndNeverWritten) {
    TempDir dir;
    const QString cacheFile = dir.file(QStringLiteral("loudness.tsv"));
    // Such a name could otherwise pose as another file's line in the cache.
    const QString sound =
        writeSine(dir.file(QStringLiteral("a\nelse.wav\t1\t2\t-5\t-5\tb.wav")), -23.0, 2, 2.0);
    if (!QFile::exists(sound))
        GTEST_SKIP() << "this system's file names hold no line break or tab (Windows')";
    {
        LoudnessCache cache(cacheFile);
        ASSERT_TRUE(cache.loudnessOf(sound));
        ASSERT_TRUE(cache.loudnessOf(sound));
        EXPECT_EQ(cache.measured(), 2);
    }
    EXPECT_FALSE(QFile::exists(cacheFile) && QFile(cacheFile).size() > 0);
}

TEST(LoudnessCache, ManyThreadsAskingAtOnceGetEachSoundsOwnFigure) {
    TempDir dir;
    QStringList sounds;
    for (int i = 0; i < 8; ++i)
        sounds << writeSine(dir.file(QStringLiteral("%1.wav").arg(i)), -30.0 + i, 2, 1.0);
    LoudnessCache cache(dir.file(QStringLiteral("loudness.tsv")));
    CachedLoudnessMeter meter(cache);
    meter.threads = 4;
    const QList<std::optional<Loudness>> figures = meter.Measure(sounds + sounds);
    ASSERT_EQ(figures.size(), 16);
    for (int i = 0; i < 16; ++i) {
        ASSERT_TRUE(figures[i] && figures[i]->integratedLufs) << i;
        EXPECT_NEAR(*figures[i]->integratedLufs, -30.0 + i % 8, 0.1) << i;
    }
    EXPECT_LE(cache.measured(), 16);
    EXPECT_GE(cache.measured(), 8);
}
