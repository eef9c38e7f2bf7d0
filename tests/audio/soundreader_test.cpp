#include "audio/sndfileopen.h"
#include "audio/soundreader.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <QFile>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <sndfile.h>
#include <vector>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::writeLevels;
using tavik::test::writeSine;

namespace {

std::vector<float> readAll(const QString& path, OutputFormat format, qint64 frames) {
    SoundReader reader(path, format);
    std::vector<float> out(static_cast<std::size_t>(frames * format.channels));
    out.resize(static_cast<std::size_t>(reader.read(out.data(), frames) * format.channels));
    return out;
}

// Frequency from the rising zero crossings between the first and the last one.
double frequencyOf(const std::vector<float>& v, int rate) {
    double first = -1;
    double last = -1;
    int crossings = 0;
    for (std::size_t i = 1; i < v.size(); ++i) {
        if (v[i - 1] < 0 && v[i] >= 0) {
            const double at = static_cast<double>(i - 1) + v[i - 1] / (v[i - 1] - v[i]);
            if (first < 0)
                first = at;
            last = at;
            ++crossings;
        }
    }
    return (crossings - 1) * rate / (last - first);
}

double rms(const std::vector<float>& v, std::size_t from, std::size_t to) {
    double sum = 0;
    for (std::size_t i = from; i < to; ++i)
        sum += static_cast<double>(v[i]) * v[i];
    return std::sqrt(sum / static_cast<double>(to - from));
}

} // namespace

TEST(SoundReader, AStereoSoundIsAveragedForAMonoOutput) {
    TempDir dir;
    ASSERT_TRUE(writeLevels(dir.file("s.wav"), 100, 8000, {0.5f, -0.1f}));
    const std::vector<float> mono = readAll(dir.file("s.wav"), {8000, 1}, 100);
    ASSERT_EQ(mono.size(), 100u);
    EXPECT_NEAR(mono[50], 0.2f, 1e-4);
}

TEST(SoundReader, AMonoSoundIsCopiedToEveryChannel) {
    TempDir dir;
    ASSERT_TRUE(writeLevels(dir.file("m.wav"), 100, 8000, {0.25f}));
    const std::vector<float> stereo = readAll(dir.file("m.wav"), {8000, 2}, 100);
    ASSERT_EQ(stereo.size(), 200u);
    EXPECT_FLOAT_EQ(stereo[100], 0.25f);
    EXPECT_FLOAT_EQ(stereo[101], 0.25f);
}

TEST(SoundReader, AToneAt22050HzKeepsItsPitchAndLengthAt44100Hz) {
    TempDir dir;
    ASSERT_TRUE(writeSine(dir.file("t.wav"), 22050, 22050, 1000.0));
    const std::vector<float> out = readAll(dir.file("t.wav"), {44100, 1}, 50000);
    EXPECT_NEAR(static_cast<double>(out.size()), 44100.0, 2.0);
    EXPECT_NEAR(frequencyOf(out, 44100), 1000.0, 0.5);
}

TEST(SoundReader, AHighToneKeepsItsLevelThroughTheRateConversion) {
    // Interpolating between neighbouring samples would lose most of a 9 kHz tone.
    TempDir dir;
    ASSERT_TRUE(writeSine(dir.file("t.wav"), 22050, 22050, 9000.0));
    const std::vector<float> out = readAll(dir.file("t.wav"), {44100, 1}, 50000);
    ASSERT_GT(out.size(), 40000u);
    EXPECT_NEAR(rms(out, 4000, 40000), 0.5 / std::sqrt(2.0), 0.02);
    EXPECT_NEAR(frequencyOf(out, 44100), 9000.0, 1.0);
}

TEST(SoundReader, SkippingGivesWhatAReadFromTheStartGivesThere) {
    TempDir dir;
    ASSERT_TRUE(writeSine(dir.file("t.wav"), 22050, 22050, 440.0));
    const std::vector<float> whole = readAll(dir.file("t.wav"), {48000, 1}, 48000);
    SoundReader reader(dir.file("t.wav"), {48000, 1});
    EXPECT_EQ(reader.skip(12345), 12345);
    std::vector<float> rest(1000);
    ASSERT_EQ(reader.read(rest.data(), 1000), 1000);
    for (std::size_t i = 0; i < rest.size(); ++i)
        ASSERT_FLOAT_EQ(rest[i], whole[12345 + i]);
}

TEST(SoundReader, AFileThatIsNoSoundGivesNothing) {
    TempDir dir;
    SoundReader reader(dir.write("x.wav", "not a sound"), {44100, 2});
    EXPECT_FALSE(reader.isOpen());
    float frame[2];
    EXPECT_EQ(reader.read(frame, 1), 0);
}

TEST(SoundReader, NonFiniteAndOutOfRangeFloatSamplesAreSilencedOrClipped) {
    TempDir dir;
    const QString path = dir.file("wild.wav");
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* file = OpenSndFile(path, SFM_WRITE, &info);
    ASSERT_NE(file, nullptr);
    sf_command(file, SFC_SET_NORM_FLOAT, nullptr, SF_FALSE);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const std::vector<float> wild = {nan, inf, -inf, 1e30f, -1e30f, 0.25f};
    ASSERT_EQ(sf_writef_float(file, wild.data(), 6), 6);
    sf_close(file);
    SoundReader reader(path, {44100, 1});
    ASSERT_TRUE(reader.isOpen());
    std::vector<float> out(6, 7.0f);
    ASSERT_EQ(reader.read(out.data(), 6), 6);
    const std::vector<float> expected = {0.0f, 0.0f, 0.0f, 1.0f, -1.0f, 0.25f};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_FLOAT_EQ(out[i], expected[i]) << i;
}
