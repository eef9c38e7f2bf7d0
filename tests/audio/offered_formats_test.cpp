#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "audio/preparedsound.h"
#include "audio/sndfileopen.h"
#include "audio/soundfile.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "service/servicebytes.h"
#include "support/buildpaths.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <sndfile.h>
#include <vector>

using namespace tavik;
using tavik::test::readSound;
using tavik::test::ServiceBytes;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;

namespace {

struct FormatCase {
    const char* name;
    const char* extension;
    int format; // libsndfile's major and minor format
    int sampleRate;
    int channels;
    bool lossy;
    bool variableBitRate = false;
};

std::ostream& operator<<(std::ostream& os, const FormatCase& c) {
    return os << c.name;
}

const FormatCase kCases[] = {
    {"Wave8BitMono8kHz", "wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 8000, 1, false},
    {"Wave16BitStereo44kHz", "wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 44100, 2, false},
    {"Wave24BitMono48kHz", "wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 48000, 1, false},
    {"Wave24BitExtensibleStereo96kHz", "wav", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 96000, 2, false},
    {"WaveFloatStereo22kHz", "wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 22050, 2, false},
    {"Mp3ConstantBitRateStereo", "mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 44100, 2, true},
    {"Mp3VariableBitRateStereo", "mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 44100, 2, true,
     true},
    {"Mp3Mono", "mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 22050, 1, true},
    {"OggVorbisStereo", "ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 44100, 2, true},
    {"OggVorbisMono", "ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 22050, 1, true},
    {"Flac16BitStereo", "flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 44100, 2, false},
    {"Flac24BitMono96kHz", "flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 96000, 1, false},
};

constexpr double kSeconds = 0.6;

// A 440 Hz tone of 0.6 s at half scale, written by libsndfile in the case's format.
bool writeCase(const QString& path, const FormatCase& c) {
    SF_INFO info{};
    info.samplerate = c.sampleRate;
    info.channels = c.channels;
    info.format = c.format;
    SNDFILE* file = OpenSndFile(path, SFM_WRITE, &info);
    if (!file)
        return false;
    if (c.variableBitRate) {
        int mode = SF_BITRATE_MODE_VARIABLE;
        sf_command(file, SFC_SET_BITRATE_MODE, &mode, sizeof(mode));
    }
    const auto frames = static_cast<sf_count_t>(kSeconds * c.sampleRate);
    std::vector<float> samples(static_cast<std::size_t>(frames * c.channels));
    for (sf_count_t i = 0; i < frames; ++i)
        for (int ch = 0; ch < c.channels; ++ch)
            samples[static_cast<std::size_t>(i * c.channels + ch)] =
                0.5f *
                static_cast<float>(std::sin(2.0 * std::numbers::pi * 440.0 * i / c.sampleRate));
    const sf_count_t written = sf_writef_float(file, samples.data(), frames);
    sf_close(file);
    return written == frames;
}

float peak(const std::vector<float>& samples) {
    float p = 0;
    for (float x : samples)
        p = std::max(p, std::abs(x));
    return p;
}

// An installation with the delivered formats file and a package "Linie" whose one
// announcement 0000 is the case's sound, with a service 000001 that plays it once.
class OfferedFormat : public ::testing::TestWithParam<FormatCase> {
protected:
    void SetUp() override {
        QDir(root.path()).mkpath("bin");
        QDir(root.path()).mkpath("Data/Linie");
        ASSERT_TRUE(QFile::copy(tavik::test::CheckoutPath("/bin/Formats.ini"),
                                root.file("bin/Formats.ini")));
        qputenv("TAVIK_HOME", root.path().toLocal8Bit());
        folder = root.file("Data/Linie");
        sound = folder + "/0000." + GetParam().extension;
        ASSERT_TRUE(writeCase(sound, GetParam()));
        clsZELDB store;
        store.SaveSetting("INFO", "Name", Variant::fromString("Linie"));
        store.SaveSetting("INDEX", "1", Variant::fromString(JoinIndexEntry("0000", "Ton")));
        WriteAnnouncementSettings(store, "0000", {0, true, -1});
        store.SaveSetting("INDEX", "Count", Variant::fromLong(1));
        store.SaveIOFile(folder + "/Package.io");
        root.write("Data/Linie/_000001._", ServiceBytes()
                                               .header("Linie", "Tavik", "", "000001")
                                               .count(1)
                                               .sentence("0100", "Ton ", {{"0000", 0}}));
    }
    void TearDown() override { qunsetenv("TAVIK_HOME"); }

    // The play time the decoder finds in the file: the written frames for a lossless
    // format, the encoder's padding included for a lossy one.
    qint64 decodedMs() const {
        const std::optional<SoundInfo> info = probeSound(sound);
        return info ? info->lengthMs() : -1;
    }

    TempDir root;
    QString folder;
    QString sound;
};

} // namespace

TEST_P(OfferedFormat, MeasuresToTheMillisecond) {
    const qint64 ms = decodedMs();
    ASSERT_GT(ms, 0);
    if (!GetParam().lossy)
        EXPECT_EQ(ms, static_cast<qint64>(kSeconds * 1000));
    else
        EXPECT_NEAR(static_cast<double>(ms), kSeconds * 1000, 120);
    const ToolRun r = tool({"measure", sound});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, QString::number(ms) + "\t" + sound + "\n");
}

TEST_P(OfferedFormat, IsProbedAsLibsndfileReadsItByName) {
    SF_INFO byName{};
    SNDFILE* file = sf_open(QFile::encodeName(sound).constData(), SFM_READ, &byName);
    ASSERT_NE(file, nullptr);
    sf_close(file);
    const std::optional<SoundInfo> info = probeSound(sound);
    ASSERT_TRUE(info.has_value());
    EXPECT_EQ(info->frames, byName.frames);
    EXPECT_EQ(info->sampleRate, byName.samplerate);
    EXPECT_EQ(info->channels, byName.channels);
    EXPECT_EQ(info->wave, QByteArray(GetParam().extension) == "wav");
}

TEST_P(OfferedFormat, OpensAndPlaysThroughMciByTypeAndByExtension) {
    for (const bool useFormat : {true, false}) {
        EmulatorBackend backend({}, std::make_shared<NullSoundOutput>());
        QStringList log;
        modMCI mci(backend, [&](const QString& line) { log << line; });
        mci.UseFormat = useFormat;
        QString path = sound;
        ASSERT_EQ(mci.MciOpen(path, "0000", IndentifyFormat(GetParam().extension)), -1)
            << useFormat << " " << log.join(" ").toStdString();
        EXPECT_EQ(mci.MciGetLength("0000"), decodedMs());
        mci.MciPlay("0000");
        mci.MciStop("0000");
        mci.MciClose("0000");
        EXPECT_TRUE(log.isEmpty()) << log.join(" ").toStdString();
    }
    // What a real output makes of it when the sound is opened: every frame, not silence.
    const std::optional<SoundInfo> info = probeSound(sound);
    ASSERT_TRUE(info);
    PreparedSound prepared(sound, *info, OutputFormat{}, 10 * 44100);
    prepared.makeReady();
    ASSERT_TRUE(prepared.complete());
    EXPECT_NEAR(static_cast<double>(prepared.headFrames()),
                static_cast<double>(info->frames) * 44100 / GetParam().sampleRate, 64);
    const std::vector<float> head(prepared.head(), prepared.head() + prepared.headFrames() * 2);
    EXPECT_GT(peak(head), 0.4f);
}

TEST_P(OfferedFormat, RendersAndExportsTheSentenceAsWave) {
    const QString out = root.file("satz.wav");
    const ToolRun r = tool({"render", folder, "000001", "0100", "-o", out});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    SoundInfo info;
    const std::vector<float> samples = readSound(out, info);
    EXPECT_TRUE(info.wave);
    // One entry with no shift: its length, then the wait's tick, as the player hears it.
    EXPECT_EQ(info.frames, TicksWaited(static_cast<std::int32_t>(decodedMs())) * 441 / 10);
    EXPECT_GT(peak(samples), 0.4f);
}

INSTANTIATE_TEST_SUITE_P(EveryOffered, OfferedFormat, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<FormatCase>& info) {
                             return std::string(info.param.name);
                         });
