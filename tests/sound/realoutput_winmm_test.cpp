// Sentences played through the system's own MCI (winmm), the way the editor plays on Windows
// unless the project's engine is chosen, recorded from the sound server's null sink. winmm
// keeps no frame-exact schedule of its own: each entry is judged against its play and stop
// commands within a tolerance of this system's output, and the errors are printed.
#include "audio/modmci.h"
#include "audio/recordingbackend.h"
#include "audio/sequenceplayer.h"
#include "audio/winmmbackend.h"
#include "monitorrecording.h"
#include "sound/openedsounds.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

namespace {

// Each onset lies within this of its play command, after one constant latency.
constexpr double kWinmmToleranceMs = 40.0;
// A stop silences what the device has not yet been given; what it already holds plays on (under
// Wine up to about 200 ms of the sound server's buffer), so a cut is judged within this.
constexpr double kWinmmCutToleranceMs = 250.0;

struct WinmmPackage {
    TempDir dir;
    WinmmBackend winmm;
    QElapsedTimer clock;
    RecordingBackend recorder{winmm, [this] { return clock.nsecsElapsed() / 1000; }};
    QStringList log;
    modMCI mci{recorder, [this](const QString& line) { log << line; }};
    AnnouncementTable table;

    WinmmPackage() { clock.start(); }
    ~WinmmPackage() {
        for (const AnnouncementRecord& r : table.Announcements)
            mci.MciClose(r.Key);
    }
    // Opens the file under `key`; the MCI code (-1 when it opened).
    int add(const QString& key, const QString& path, const QString& type) {
        return OpenIntoTable(mci, table, key, path, type);
    }
    // The time, in milliseconds of the recorder's clock, of each command `verb` sent.
    QList<double> times(const QString& verb) const {
        QList<double> list;
        for (const RecordingBackend::Entry& e : recorder.entries())
            if (e.command.startsWith(verb + u' '))
                list << static_cast<double>(e.time) / 1000.0;
        return list;
    }
};

} // namespace

TEST(RealOutputWinmm, ASentenceSoundsEachEntryInTurnOnItsCommands) {
    WinmmPackage p;
    const QList<float> levels = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f};
    const QList<int> lengths = {400, 500, 600, 450, 300, 350};
    for (int i = 0; i < 6; ++i) {
        const QString key = QStringLiteral("000%1").arg(i);
        const QString path = p.dir.file(key + QStringLiteral(".wav"));
        ASSERT_TRUE(writeLevels(path, lengths[i] * 441LL / 10, 44100, {levels[i]}));
        ASSERT_EQ(p.add(key, path, QStringLiteral("waveaudio")), -1)
            << p.log.join(u' ').toStdString();
        EXPECT_NEAR(p.table.Announcements.last().Length, lengths[i], 1.0);
    }
    const SatzRecord satz = sentence(
        {{"0000", 0}, {"0001", 300}, {"0002", -200}, {"0003", 0}, {"0004", -100}, {"0005", 0}});

    MonitorRecording recording;
    QString problem;
    ASSERT_TRUE(recording.start(problem)) << problem.toStdString();
    p.recorder.clear();
    std::int16_t busy = 0;
    PlayAnnouncementSequence(p.mci, p.table, satz, busy, [](const QString&) {});
    recording.stop();

    const QList<double> plays = p.times(QStringLiteral("play"));
    const QList<double> stops = p.times(QStringLiteral("stop"));
    ASSERT_EQ(plays.size(), levels.size());
    ASSERT_EQ(stops.size(), levels.size());
    std::vector<Segment> heard;
    qint64 from = 0;
    for (const float level : levels) {
        const Segment s = segmentAfter(recording.left(), level, from);
        ASSERT_GE(s.onset, 0) << "level " << level << " is not in the recording";
        heard.push_back(s);
        from = s.onset + 1;
    }
    // The recording starts at an unknown moment: one constant latency, the median difference.
    std::vector<double> offsets;
    for (qsizetype i = 0; i < plays.size(); ++i)
        offsets.push_back(framesToMs(heard[static_cast<std::size_t>(i)].onset) - plays[i]);
    const double latency = median(offsets);
    std::vector<double> onsetErrors, cutErrors;
    for (qsizetype i = 0; i < plays.size(); ++i) {
        const Segment& s = heard[static_cast<std::size_t>(i)];
        const double onset = framesToMs(s.onset) - plays[i] - latency;
        const double end = std::min(stops[i], plays[i] + lengths[i]);
        const double cut = framesToMs(s.cut) - end - latency;
        onsetErrors.push_back(onset);
        cutErrors.push_back(cut);
        EXPECT_NEAR(onset, 0.0, kWinmmToleranceMs) << "onset of entry " << i;
        EXPECT_NEAR(cut, 0.0, kWinmmCutToleranceMs) << "cut of entry " << i;
    }
    printErrors("winmm MCI", "onset", onsetErrors);
    printErrors("winmm MCI", "cut", cutErrors);
}

// Wine's winmm opens MP3 files only with a decoder of the system's media framework; where it
// has none, the open fails with an MCI error and the announcement plays through the project's
// engine instead (TAVIK_AUDIO=engine), which the RealOutput tests hear.
TEST(RealOutputWinmm, AnMp3OpensAndSoundsOrTheOpenSaysWhyNot) {
    WinmmPackage p;
    const QString path = p.dir.file(QStringLiteral("0000.mp3"));
    ASSERT_TRUE(writeSine(path, 44100 * 2, 44100, 1000.0));
    const int code = p.add(QStringLiteral("0000"), path, QStringLiteral("mpegvideo"));
    if (code != -1) {
        ASSERT_EQ(p.log.size(), 1);
        EXPECT_EQ(p.log[0], QStringLiteral("!MCI ERROR '%1' 'Unable to load file!'").arg(code));
        std::printf("winmm MCI cannot open an MP3 here (error %d: %s); MP3 announcements play "
                    "through the project's engine (TAVIK_AUDIO=engine)\n",
                    code, qPrintable(p.winmm.errorString(code)));
        return;
    }
    EXPECT_NEAR(p.table.Announcements[0].Length, 2000.0, 60.0);
    MonitorRecording recording;
    QString problem;
    ASSERT_TRUE(recording.start(problem)) << problem.toStdString();
    PlayAnnouncement(p.mci, p.table.Announcements[0], true);
    recording.stop();
    const std::vector<float>& heard = recording.left();
    const auto loud =
        std::count_if(heard.begin(), heard.end(), [](float x) { return std::fabs(x) > 0.2f; });
    EXPECT_GT(loud, 44100 / 2) << "the MP3 is not heard";
}
