#include "app/frmmain.h"
#include "audio/sndfileopen.h"
#include "audio/soundfile.h"
#include "support/editorfixture.h"
#include "util/zelcmd.h"

#include <QFile>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <vector>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

struct EditorFormat {
    const char* name;
    const char* extension;
    int format;
    int sampleRate;
    int channels;
};

std::ostream& operator<<(std::ostream& os, const EditorFormat& f) {
    return os << f.name;
}

bool writeSound(const QString& path, const EditorFormat& f, sf_count_t frames) {
    SF_INFO info{};
    info.samplerate = f.sampleRate;
    info.channels = f.channels;
    info.format = f.format;
    SNDFILE* file = OpenSndFile(path, SFM_WRITE, &info);
    if (!file)
        return false;
    std::vector<float> samples(static_cast<std::size_t>(frames * f.channels));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = 0.4f * static_cast<float>(std::sin(static_cast<double>(i) / 7.0));
    const sf_count_t written = sf_writef_float(file, samples.data(), frames);
    sf_close(file);
    return written == frames;
}

class EditorPlaysFormat : public ::testing::TestWithParam<EditorFormat> {};

} // namespace

// The editor loads the sound as every offered format, shows its format and measured length,
// and Play opens and plays it without an MCI error.
TEST_P(EditorPlaysFormat, LoadsMeasuresAndPlaysTheAnnouncement) {
    for (const bool useFormat : {false, true}) {
        EditorFixture editor;
        editor.mci.UseFormat = useFormat;
        ASSERT_TRUE(editor.main->FormLoad());
        const QString folder =
            editor.writePackage(QStringLiteral("Linie"), QStringLiteral("Linie"),
                                {{QStringLiteral("0000"), QStringLiteral("Ton"), -1}});
        const QString sound = folder + "/0000." + GetParam().extension;
        ASSERT_TRUE(writeSound(sound, GetParam(), GetParam().sampleRate * 3 / 10));
        const std::optional<SoundInfo> info = probeSound(sound);
        ASSERT_TRUE(info);
        editor.open(folder);
        ASSERT_EQ(editor.main->table.AnnouncementCount, 1);
        EXPECT_EQ(editor.main->table.Announcements[0].Length, info->lengthMs()) << useFormat;
        EXPECT_EQ(editor.column(2), QStringList{QString(GetParam().extension)});
        EXPECT_TRUE(editor.logLines.filter(QStringLiteral("MCI ERROR")).isEmpty())
            << editor.logLines.join(u'\n').toStdString();

        editor.recorder.clear();
        editor.main->lsvPack()->ListItems(1)->SetSelected(true);
        QTest::mouseClick(editor.main->cmdPlay(), Qt::LeftButton);
        EXPECT_TRUE(editor.recorder.commands().contains(QStringLiteral("play 0000")))
            << editor.recorder.commands().join(u'\n').toStdString();
        EXPECT_TRUE(editor.messages.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryOffered, EditorPlaysFormat,
    ::testing::Values(
        EditorFormat{"Wave16Bit", "wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 44100, 2},
        EditorFormat{"WaveFloat", "wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 48000, 1},
        EditorFormat{"Mp3", "mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 44100, 2},
        EditorFormat{"OggVorbis", "ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 44100, 2},
        EditorFormat{"Flac16Bit", "flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 44100, 2},
        EditorFormat{"Flac24Bit", "flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 96000, 1}),
    [](const ::testing::TestParamInfo<EditorFormat>& info) {
        return std::string(info.param.name);
    });
