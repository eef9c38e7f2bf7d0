#include "audio/sentencerender.h"
#include "audio/soundfile.h"
#include "service/packagefixture.h"
#include "service/servicebytes.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QFile>
#include <gtest/gtest.h>
#include <vector>

using namespace tavik;
using tavik::test::PackageFixture;
using tavik::test::readSound;
using tavik::test::ServiceBytes;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;
using tavik::test::writeLevels;

namespace {

// Package "Linie" with a gong of 1,000 ms and a train of 800 ms, each a constant level.
struct RenderFixture {
    PackageFixture package{{{"0000", "Gong", 1000}, {"0001", "Zug", 800}}};
    QString service;

    RenderFixture() {
        EXPECT_TRUE(writeLevels(package.folder + "/0000 Gong.wav", 44100, 44100, {0.25f}));
        EXPECT_TRUE(writeLevels(package.folder + "/0001 Zug.wav", 17640, 22050, {0.5f, 0.0f}));
        service = package.root.write(
            "Data/Linie/_000000._",
            ServiceBytes()
                .header("Linie 4", "Tavik", "Werktags", "000000")
                .count(1)
                .sentence("0472", "Gong Zug ", {{"0000", -200}, {"0001", 300}, {"0000", 0}}));
    }
};

} // namespace

TEST(ToolRender, WritesTheSentenceAsThePlayerSchedulesIt) {
    RenderFixture f;
    const QString out = f.package.root.file("satz.wav");
    const ToolRun r = tool({"render", f.package.folder, f.service, "0472", "-o", out});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    SoundInfo info;
    const std::vector<float> s = readSound(out, info);
    EXPECT_TRUE(info.wave);
    EXPECT_EQ(info.sampleRate, 44100);
    EXPECT_EQ(info.channels, 2);
    // 800 + 1100 + 1000 ms, each wait running to the tick after its end
    ASSERT_EQ(info.frames, frameOfMs(2903, 44100));
    const auto left = [&](qint64 ms, int offset = 0) {
        return s[static_cast<std::size_t>((frameOfMs(ms, 44100) + offset) * 2)];
    };
    EXPECT_NEAR(left(801, -1), 0.25f, 1e-3); // the gong, cut 200 ms early
    EXPECT_NEAR(left(801, 44), 0.5f, 2e-3);  // the train, from 22,050 Hz, past its first ringing
    // Its right channel is silent.
    EXPECT_NEAR(s[static_cast<std::size_t>(frameOfMs(1201, 44100) * 2 + 1)], 0.0f, 2e-3);
    EXPECT_NEAR(left(1751), 0.0f, 1e-3); // then 300 ms of silence
    EXPECT_NEAR(left(1902, -1), 0.0f, 1e-3);
    EXPECT_NEAR(left(1902), 0.25f, 1e-3); // the gong again, to its end
    EXPECT_NEAR(left(2902, -1), 0.25f, 1e-3);
}

TEST(ToolRender, TakesTheServiceByItsIdAsByItsPath) {
    RenderFixture f;
    const QString byPath = f.package.root.file("path.wav");
    const QString byId = f.package.root.file("id.wav");
    ASSERT_EQ(tool({"render", f.package.folder, f.service, "0472", "-o", byPath}).code, 0);
    const ToolRun r = tool({"render", f.package.folder, "000000", "0472", "-o", byId});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_EQ(tavik::test::readAll(byId), tavik::test::readAll(byPath));
    const ToolRun unknown = tool({"render", f.package.folder, "000009", "0472", "-o", byId});
    EXPECT_EQ(unknown.code, 2);
    EXPECT_TRUE(unknown.err.contains(QStringLiteral("000009"))) << unknown.err.toStdString();
}

TEST(ToolRender, TakesAnotherRate) {
    RenderFixture f;
    const QString out = f.package.root.file("satz.wav");
    const ToolRun r =
        tool({"render", f.package.folder, f.service, "0472", "-o", out, "--rate", "8000"});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    SoundInfo info;
    readSound(out, info);
    EXPECT_EQ(info.sampleRate, 8000);
    EXPECT_EQ(info.frames, 2903 * 8);
}

TEST(ToolRender, ReportsWhatItCannotDo) {
    RenderFixture f;
    const QString out = f.package.root.file("satz.wav");
    EXPECT_EQ(tool({"render", f.package.folder, f.service, "0472"}).code, 2);
    const ToolRun unknown = tool({"render", f.package.folder, f.service, "9999", "-o", out});
    EXPECT_EQ(unknown.code, 2);
    EXPECT_TRUE(unknown.err.contains("no sentence with the key 9999"));
    const ToolRun rate =
        tool({"render", f.package.folder, f.service, "0472", "-o", out, "--rate", "fast"});
    EXPECT_EQ(rate.code, 2);
    EXPECT_TRUE(rate.err.contains("--rate"));
    EXPECT_FALSE(QFile::exists(out));
}

TEST(ToolRender, AnEntryWithoutAnnouncementIsASubscriptError) {
    RenderFixture f;
    const QString service = f.package.root.write(
        "Data/Linie/_000001._", ServiceBytes()
                                    .header("Linie 4", "Tavik", "Werktags", "000001")
                                    .count(1)
                                    .sentence("0001", "Weg ", {{"0042", 0}}));
    const QString out = f.package.root.file("satz.wav");
    const ToolRun r = tool({"render", f.package.folder, service, "0001", "-o", out});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains("runtime error 9")) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(out));
}

// A sound whose header gives one frame a second lasts 30,000 s; a sentence of it and a gong is
// longer than the 4 GiB a WAVE file's sizes can count at 44,100 Hz stereo.
TEST(ToolRender, ASentenceLongerThanAWaveFileCanHoldWritesNothingAndSaysSo) {
    PackageFixture package{{{"0000", "Gong", 1000}, {"0002", "Lang", -1}}};
    QByteArray slow("RIFF");
    const QByteArray data(60000, '\x10');
    const auto u32 = [](quint32 v) { return QByteArray(reinterpret_cast<const char*>(&v), 4); };
    slow += u32(36 + data.size()) + "WAVEfmt " + u32(16) + QByteArray("\x01\x00\x01\x00", 4) +
            u32(1) + u32(2) + QByteArray("\x02\x00\x10\x00", 4) + "data" + u32(data.size()) + data;
    package.root.write("Data/Linie/0002 Lang.wav", slow);
    const QString service = package.root.write(
        "Data/Linie/_000002._", ServiceBytes()
                                    .header("Linie 4", "Tavik", "Nachts", "000002")
                                    .count(1)
                                    .sentence("0003", "Lang ", {{"0000", 0}, {"0002", 0}}));
    const QString out = package.root.write("satz.wav", "alt");
    const ToolRun r = tool({"render", package.folder, service, "0003", "-o", out});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(r.err.contains("longer than a WAVE file can hold")) << r.err.toStdString();
    EXPECT_EQ(r.err.count('\n'), 1) << r.err.toStdString();
    EXPECT_EQ(tavik::test::readAll(out), QByteArray("alt"));
}
