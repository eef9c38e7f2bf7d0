// Sentences played through the real output to a sound server's null sink, recorded from its
// monitor and compared with the commands that were sent and with the offline rendering.
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "audio/recordingbackend.h"
#include "audio/sentencerender.h"
#include "audio/sequenceplayer.h"
#include "audio/soundreader.h"
#include "monitorrecording.h"
#include "service/cursorsamples.h"
#include "service/dienstfixture.h"
#include "sound/openedsounds.h"
#include "sound/outputtolerance.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/reportlist.h"
#include "util/tickcount.h"

#include <QElapsedTimer>
#include <QSet>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

namespace {

// Every start and cut is heard within this of its command, after the constant latency.
const double kToleranceMs = OwnEngineTolerance().commandsMs;
// Every entry is heard where the rendered file has it, within this, after one constant latency.
const double kAsRenderedMs = OwnEngineTolerance().renderedMs;

// Microseconds of the tick count's clock, so each command's tick can be read off its time.
qint64 microseconds() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
               TickClock::now().time_since_epoch())
        .count();
}

struct Command {
    QString verb;
    QString alias;
    double ms = 0;
};

QList<Command> commands(const RecordingBackend& recorder, double unitsPerMs) {
    QList<Command> list;
    for (const RecordingBackend::Entry& e : recorder.entries()) {
        const QStringList words = e.command.split(u' ');
        list << Command{words.value(0), words.value(1), static_cast<double>(e.time) / unitsPerMs};
    }
    return list;
}

QList<Command> only(const QList<Command>& all, const QString& verb) {
    QList<Command> list;
    for (const Command& c : all)
        if (c.verb == verb)
            list << c;
    return list;
}

// A package of constant-level sounds opened on the real output.
struct SoundPackage {
    TempDir dir;
    EmulatorBackend backend;
    RecordingBackend recorder{backend, [] { return microseconds(); }};
    QStringList log;
    modMCI mci{recorder, [this](const QString& line) { log << line; }};
    AnnouncementTable table;

    void add(const QString& key, const QString& path) {
        EXPECT_EQ(OpenIntoTable(mci, table, key, path, QStringLiteral("waveaudio")), -1)
            << log.join(' ').toStdString();
    }
    void addLevel(const QString& key, float level, int ms) {
        const QString path = dir.file(key + ".wav");
        EXPECT_TRUE(writeLevels(path, ms * 441LL / 10, 44100, {level}));
        add(key, path);
    }
};

std::vector<float> leftOf(const QByteArray& wave, TempDir& dir) {
    const QString path = dir.write(QStringLiteral("render.wav"), wave);
    const SoundInfo info = probeSound(path).value_or(SoundInfo{});
    SoundReader reader(path, {info.sampleRate, 1});
    std::vector<float> samples(static_cast<std::size_t>(info.frames));
    samples.resize(static_cast<std::size_t>(reader.read(samples.data(), info.frames)));
    return samples;
}

// Threads woken this late mean a machine too busy to keep the schedule's ticks.
constexpr double kStallMs = 1.0;

struct Heard {
    std::vector<float> left; // the recording's left channel
    bool calm = false;       // nothing held the output or the player up
};

// Whether every play came in the tick the schedule gives it, counted from the first play's.
bool keptTheTicks(const RecordingBackend& recorder, double unitsPerMs,
                  const QList<ScheduledEntry>& schedule) {
    const QList<Command> plays = only(commands(recorder, unitsPerMs), QStringLiteral("play"));
    if (plays.size() != schedule.size() || plays.isEmpty())
        return false;
    const double first = std::floor(plays[0].ms);
    for (qsizetype i = 0; i < plays.size(); ++i)
        if (std::floor(plays[i].ms) - first != static_cast<double>(schedule[i].startMs))
            return false;
    return true;
}

// The first sound of a new output can be lost while the sound server sets its stream up (under
// Wine for a second or so): half a second of silence is played before anything is recorded.
void warmUp(EmulatorBackend& backend) {
    TempDir dir;
    const QString path = dir.file(QStringLiteral("silence.wav"));
    if (!writeLevels(path, 44100 / 2, 44100, {0.0f}))
        return;
    MciEmulator& emulator = backend.emulator();
    emulator.send(QStringLiteral("open ") + path + QStringLiteral(" alias tavik_warm_up"));
    emulator.send(QStringLiteral("play tavik_warm_up"));
    backend.drain();
    emulator.send(QStringLiteral("close tavik_warm_up"));
}

// Records the null sink while `play` plays and the output drains. When the machine holds
// threads up, what is heard says nothing about the player, and the run is played again, three
// times at most: when the device ran dry, when nothing was heard, and, given `keptTicks`, when
// the player missed a tick of its schedule while a sleeping thread woke a millisecond late. A
// missed tick while no thread was held up is the player's own and is judged. Where the system's
// sound path breaks sounds by itself now and then, a run with a break is played again too, as
// often as this system's tolerance allows; elsewhere a break is judged.
Heard recordWhile(EmulatorBackend& backend, const std::function<void()>& play,
                  const std::function<bool()>& keptTicks = {},
                  const std::function<qint64(const std::vector<float>&)>& findBreak = firstBreak) {
    warmUp(backend);
    int breaksLeft = OwnEngineTolerance().playsAgainAfterABreak;
    for (int attempt = 1;;) {
        MonitorRecording recording;
        QString problem;
        if (!recording.start(problem)) {
            ADD_FAILURE() << problem.toStdString();
            return {};
        }
        const int interruptions = backend.emulator().outputInterruptions();
        double stall = 0;
        {
            const StallWatch watch;
            play();
            stall = watch.worstMs();
        }
        backend.drain();
        recording.stop();
        const qint64 broken = breaksLeft > 0 ? findBreak(recording.left()) : -1;
        if (broken >= 0) {
            --breaksLeft;
            std::fprintf(stderr,
                         "the system's sound path broke the sound at %.0f ms of the "
                         "recording; playing again\n",
                         framesToMs(broken));
            continue;
        }
        const bool ranDry = backend.emulator().outputInterruptions() != interruptions;
        const bool missed = keptTicks && !keptTicks();
        // Every play here sounds: a recording of nothing means the device or the recorder was
        // not yet running (seen under Wine after a run dry), and is played again like one.
        const bool silent = std::none_of(recording.left().begin(), recording.left().end(),
                                         [](float x) { return std::fabs(x) > 0.01f; });
        const bool heldUp = ranDry || silent || (missed && stall >= kStallMs);
        if (!heldUp || attempt == 3)
            return {recording.left(), !heldUp};
        ++attempt;
        std::fprintf(stderr,
                     "the machine held the sound up (output ran dry: %d, a tick missed while a "
                     "thread woke %.2f ms late%s); playing again\n",
                     ranDry ? 1 : 0, stall, silent ? ", nothing heard" : "");
    }
}

// Checks every entry's onset against its play command and its cut against its stop command,
// or against its sound's end when the sound ends before the stop.
void expectOnCommands(const std::vector<float>& heard, const QList<float>& levels,
                      const QList<int>& lengths, const QList<Command>& plays,
                      const QList<Command>& stops, std::vector<Segment>& segments) {
    ASSERT_EQ(plays.size(), levels.size());
    ASSERT_EQ(stops.size(), levels.size());
    qint64 from = 0;
    for (const float level : levels) {
        const Segment s = segmentAfter(heard, level, from);
        ASSERT_GE(s.onset, 0) << "level " << level << " is not in the recording";
        segments.push_back(s);
        from = s.onset + 1;
    }
    const double latency = framesToMs(segments[0].onset) - plays[0].ms;
    std::vector<double> onsetErrors;
    std::vector<double> cutErrors;
    for (qsizetype i = 0; i < levels.size(); ++i) {
        const Segment& s = segments[static_cast<std::size_t>(i)];
        onsetErrors.push_back(framesToMs(s.onset) - plays[i].ms - latency);
        EXPECT_NEAR(onsetErrors.back(), 0.0, kToleranceMs) << "onset of entry " << i;
        const double end = std::min(stops[i].ms, plays[i].ms + lengths[i]);
        cutErrors.push_back(framesToMs(s.cut) - end - latency);
        EXPECT_NEAR(cutErrors.back(), 0.0, kToleranceMs) << "cut of entry " << i;
    }
    // The first entry sets the latency: the others' errors are the figures.
    onsetErrors.erase(onsetErrors.begin());
    printErrors("own engine", "onset", onsetErrors);
    printErrors("own engine", "cut", cutErrors);
}

// Every entry's onset in the recording against its onset in the rendered file: after one
// constant latency (the median of the differences) each is within `toleranceMs`, and the last
// entry's error is within it of the first's.
void expectAsRendered(const Heard& heard, const std::vector<float>& rendered,
                      const QList<float>& levels, double toleranceMs) {
    if (!heard.calm) {
        std::fprintf(stderr, "the machine was too busy in every run to hold the sentence to its "
                             "rendering; it was checked against its commands only\n");
        return;
    }
    const std::vector<double> differences =
        onsetDifferencesMs(heard.left, rendered, {levels.cbegin(), levels.cend()});
    ASSERT_EQ(differences.size(), static_cast<std::size_t>(levels.size()))
        << "entry " << differences.size() << " is missing from the recording or the file";
    const double latency = median(differences);
    for (std::size_t i = 0; i < differences.size(); ++i)
        EXPECT_NEAR(differences[i] - latency, 0.0, toleranceMs) << "onset of entry " << i;
    EXPECT_NEAR(differences.back() - differences.front(), 0.0, toleranceMs)
        << "the sentence drifts from its first entry to its last";
}

} // namespace

TEST(RealOutput, ASentenceSoundsOnItsCommandsAndAsTheRendererWritesIt) {
    SoundPackage p;
    const QList<float> levels = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f};
    const QList<int> lengths = {400, 500, 600, 450, 300, 350};
    for (int i = 0; i < 6; ++i)
        p.addLevel(QStringLiteral("000%1").arg(i), levels[i], lengths[i]);
    const SatzRecord satz = sentence(
        {{"0000", 0}, {"0001", 300}, {"0002", -500}, {"0003", 0}, {"0004", -100}, {"0005", 0}});
    const Heard recorded = recordWhile(
        p.backend,
        [&] {
            p.recorder.clear();
            std::int16_t busy = 0;
            PlayAnnouncementSequence(p.mci, p.table, satz, busy, [](const QString&) {});
        },
        [&] { return keptTheTicks(p.recorder, 1000.0, ScheduleSentence(p.table, satz)); });

    const QList<Command> sent = commands(p.recorder, 1000.0);
    std::vector<Segment> heard;
    expectOnCommands(recorded.left, levels, lengths, only(sent, "play"), only(sent, "stop"), heard);
    if (HasFatalFailure() || heard.size() != 6u)
        return;
    // The first entry is heard for its whole length.
    EXPECT_NEAR(framesToMs(heard[0].cut - heard[0].onset), 400.0, 5.0);

    // Entry by entry where the renderer puts it.
    expectAsRendered(recorded, leftOf(RenderSentenceWave(p.table, satz, {44100, 2}), p.dir), levels,
                     kAsRenderedMs);
    const QList<Command> plays = only(sent, "play");
    const QList<Command> stops = only(sent, "stop");
    // The -500 ms shift starts the fourth sound 500 ms before the third one's end.
    EXPECT_NEAR(framesToMs(heard[3].onset - heard[2].onset), plays[3].ms - plays[2].ms,
                kToleranceMs);
    EXPECT_NEAR(framesToMs(heard[2].cut - heard[2].onset), stops[2].ms - plays[2].ms, kToleranceMs);
}

// Sounds at 8,000, 22,050, 44,100 and 48,000 Hz, shifts of +40, 0 and -60 ms: twenty entries
// played through the sound server sound where the renderer's file has them, with no drift.
TEST(RealOutput, TwentyEntriesOfEveryRateAndShiftSoundWhereTheRendererPutsThem) {
    SoundPackage p;
    const int rates[] = {8000, 22050, 44100, 48000};
    const std::int16_t shifts[] = {40, 0, -60};
    QList<float> levels;
    QList<int> lengths;
    QList<SatzTarget> targets;
    for (int i = 0; i < 20; ++i) {
        const QString key = QString::asprintf("%04d", i);
        const QString path = p.dir.file(key + QStringLiteral(".wav"));
        const int rate = rates[i % 4];
        const int ms = 120 + 7 * i;
        lengths << ms;
        levels << 0.04f * static_cast<float>(i + 1);
        ASSERT_TRUE(
            writeLevels(path, static_cast<long long>(ms) * rate / 1000, rate, {levels.last()}));
        p.add(key, path);
        targets << SatzTarget{key, shifts[i % 3]};
    }
    const SatzRecord satz = sentence(targets);
    const Heard recorded = recordWhile(
        p.backend,
        [&] {
            p.recorder.clear();
            std::int16_t busy = 0;
            PlayAnnouncementSequence(p.mci, p.table, satz, busy, [](const QString&) {});
        },
        [&] { return keptTheTicks(p.recorder, 1000.0, ScheduleSentence(p.table, satz)); });
    const QList<Command> sent = commands(p.recorder, 1000.0);
    std::vector<Segment> heard;
    expectOnCommands(recorded.left, levels, lengths, only(sent, "play"), only(sent, "stop"), heard);
    expectAsRendered(recorded, leftOf(RenderSentenceWave(p.table, satz, {44100, 2}), p.dir), levels,
                     kAsRenderedMs);
}

namespace {

// Where a tone falls silent for a millisecond or more between its first and its last loud
// sample (a dropout); -1 when it never does. A sine crosses zero far quicker than that.
qint64 silenceInTone(const std::vector<float>& samples) {
    const auto loud = [](float x) { return std::fabs(x) > 0.3f; };
    const auto first = std::find_if(samples.begin(), samples.end(), loud);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), loud).base();
    qint64 quiet = 0;
    for (auto it = first; it < last; ++it) {
        quiet = std::fabs(*it) < 0.05f ? quiet + 1 : 0;
        if (quiet >= MonitorRecording::kRate / 1000)
            return (it - samples.begin()) - quiet + 1;
    }
    return -1;
}

} // namespace

TEST(RealOutput, AToneAt22050HzKeepsItsPitch) {
    SoundPackage p;
    const QString path = p.dir.file(QStringLiteral("tone.wav"));
    ASSERT_TRUE(writeSine(path, 22050, 22050, 1000.0));
    p.add(QStringLiteral("0000"), path);
    const std::vector<float> heard =
        recordWhile(
            p.backend,
            [&] {
                // A run played again starts where the first did.
                p.mci.MciSeekToStart(QStringLiteral("0000"));
                PlayAnnouncement(p.mci, p.table.Announcements[0], true);
            },
            {}, silenceInTone)
            .left;
    qint64 first = -1;
    qint64 last = -1;
    for (qint64 i = 0; i < static_cast<qint64>(heard.size()); ++i) {
        if (std::fabs(heard[static_cast<std::size_t>(i)]) > 0.3f) {
            if (first < 0)
                first = i;
            last = i;
        }
    }
    ASSERT_GT(last - first, 40000) << "the tone is not in the recording";
    int crossings = 0;
    double a = -1;
    double b = -1;
    for (qint64 i = first + 441; i < last - 441; ++i) {
        const float x0 = heard[static_cast<std::size_t>(i)];
        const float x1 = heard[static_cast<std::size_t>(i + 1)];
        if (x0 < 0 && x1 >= 0) {
            const double at = static_cast<double>(i) + x0 / (x0 - x1);
            if (a < 0)
                a = at;
            b = at;
            ++crossings;
        }
    }
    EXPECT_NEAR((crossings - 1) * 44100.0 / (b - a), 1000.0, 1.0);
    EXPECT_NEAR(framesToMs(last - first), 1000.0, 5.0);
}

namespace {

// Where each part of a sound lies in the recording, for a message.
std::string partsInMs(const std::vector<Segment>& parts) {
    QString text;
    for (const Segment& s : parts)
        text += QStringLiteral(" %1-%2 ms")
                    .arg(std::lround(framesToMs(s.onset)))
                    .arg(std::lround(framesToMs(s.cut)));
    return text.toStdString();
}

} // namespace

TEST(RealOutput, ABusyWindowThreadCausesNoDropout) {
    SoundPackage p;
    p.addLevel(QStringLiteral("0000"), 0.3f, 2000);
    const Heard recorded = recordWhile(p.backend, [&] {
        // The window's thread stalls twice for 200 ms while the sound plays.
        for (const int at : {300, 900})
            QTimer::singleShot(at, [] { QThread::msleep(200); });
        p.recorder.clear();
        // A run played again starts where the first did.
        p.mci.MciSeekToStart(QStringLiteral("0000"));
        PlayAnnouncement(p.mci, p.table.Announcements[0], true);
    });
    const std::vector<Segment> heard = segmentsAt(recorded.left, 0.3f);
    ASSERT_EQ(heard.size(), 1u) << "the sound was broken into " << heard.size()
                                << " parts:" << partsInMs(heard);
    const QList<Command> sent = commands(p.recorder, 1000.0);
    const QList<Command> plays = only(sent, "play");
    const QList<Command> stops = only(sent, "stop");
    ASSERT_EQ(plays.size(), 1);
    ASSERT_EQ(stops.size(), 1);
    // Heard to its stop, or to its end when the stop came after it.
    EXPECT_NEAR(framesToMs(heard[0].cut - heard[0].onset),
                std::min(stops[0].ms - plays[0].ms, 2000.0), kToleranceMs);
}

namespace {

// The editor's own package, its sounds replaced by constant levels at 44,100 Hz.
std::vector<DienstHost::Entry> station() {
    return {
        {"0000", "Gong", 300, 255, true, 1},
        {"0001", "Achtung an Gleis 1", 250, 0, true, 2},
        {"0002", "Bahnsteig", 200, 0, true, 3},
    };
}

void useLevels(DienstHost& host, const QList<float>& levels) {
    const int lengths[] = {300, 250, 200};
    for (qsizetype i = 0; i < levels.size(); ++i)
        EXPECT_TRUE(writeLevels(host.folder + QStringLiteral("/000%1.wav").arg(i),
                                lengths[i] * 441LL / 10, 44100, {levels[i]}));
    host.open(host.folder);
}

// The service editor with a new sentence of the three places in order, saved, its second
// entry shifted by 150 ms, and selected; nullptr when the editor did not open.
frmDienst* openStationSentence(DienstHost& host) {
    frmDienst* editor = host.openEditor();
    if (!editor)
        return nullptr;
    editor->cmdAdd()->click();
    press(editor, editor->cmdSave());
    editor->Saetze()[0].Targets[1].TimeOffset = 150;
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    return editor;
}

} // namespace

TEST(RealOutputEditor, TheServiceEditorsPlaySoundsOnItsCommandsAndAsItExports) {
    DienstHost host(station());
    const QList<float> levels = {0.15f, 0.35f, 0.55f};
    useLevels(host, levels);
    frmDienst* editor = openStationSentence(host);
    ASSERT_NE(editor, nullptr);
    const Heard recorded = recordWhile(
        host.backend,
        [&] {
            host.recorder.clear();
            press(editor, editor->cmdPlay());
        },
        [&] {
            return keptTheTicks(host.recorder, 1.0,
                                ScheduleSentence(host.main->table, editor->Saetze()[0]));
        });
    ASSERT_TRUE(host.errors.isEmpty()) << host.errors.join(' ').toStdString();
    const QList<Command> sent = commands(host.recorder, 1.0);
    std::vector<Segment> heard;
    expectOnCommands(recorded.left, levels, {300, 250, 200}, only(sent, "play"), only(sent, "stop"),
                     heard);
    // And as the editor exports the sentence.
    expectAsRendered(
        recorded,
        leftOf(RenderSentenceWave(host.main->table, editor->Saetze()[0], {44100, 2}), host.root),
        levels, kAsRenderedMs);
}

TEST(RealOutputEditor, TheMainWindowsPlaySoundsTheWholeAnnouncement) {
    DienstHost host(station());
    useLevels(host, {0.15f, 0.35f, 0.55f});
    host.main->show();
    host.main->lsvPack()->ListItems(2)->SetSelected(true);
    const Heard recorded = recordWhile(host.backend, [&] {
        host.recorder.clear();
        host.main->cmdPlay()->click();
    });
    const std::vector<Segment> heard = segmentsAt(recorded.left, 0.35f);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_NEAR(framesToMs(heard[0].cut - heard[0].onset), 250.0, 3.0);
}

TEST(RealOutputEditor, TheTimelineCursorFollowsTheRealOutputsPositionWhileItIsHeard) {
    DienstHost host(station());
    const QList<float> levels = {0.15f, 0.35f, 0.55f};
    useLevels(host, levels);
    frmDienst* editor = openStationSentence(host);
    ASSERT_NE(editor, nullptr);
    SentenceTimeline* timeline = editor->timeline();
    const QList<TimelineBlock> blocks = timeline->blocks();
    ASSERT_EQ(blocks.size(), 3);
    std::vector<CursorSample> samples;
    const Heard recorded = recordWhile(host.backend, [&] {
        samples = sampleCursor(timeline, host.mci, [&] { press(editor, editor->cmdPlay()); });
    });
    // The sentence was heard, each entry at its level.
    for (const float level : levels)
        EXPECT_FALSE(segmentsAt(recorded.left, level).empty()) << level;
    ASSERT_GE(samples.size(), 10u);
    std::vector<qint64> lags;
    QSet<int> entries;
    for (const CursorSample& s : samples) {
        lags.push_back(std::abs(s.cursor - s.output));
        EXPECT_LE(lags.back(), 50) << s.entry << ' ' << s.cursor << ' ' << s.output;
        entries.insert(s.entry);
    }
    EXPECT_EQ(entries, (QSet<int>{0, 1, 2}));
    std::sort(lags.begin(), lags.end());
    std::fprintf(stderr,
                 "timeline cursor against the output's position: median %lld ms, worst %lld ms "
                 "over %zu samples\n",
                 static_cast<long long>(lags[lags.size() / 2]), static_cast<long long>(lags.back()),
                 lags.size());
}
