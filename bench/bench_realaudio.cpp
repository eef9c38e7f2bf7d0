// Plays through the real output to a sound server's null sink, records its monitor and compares
// what is heard with the offline rendering (`tavik render`, the editor's export), ten runs each:
// 20-entry sentences of sounds at 8,000, 22,050, 44,100 and 48,000 Hz with shifts of +40, 0 and
// -60 ms through the sequence player and through the service editor's Play, and one
// announcement through the main window's Play. Prints how long seek, play and stop take to
// return, how late the waits end after their tick, the onset error against the rendering
// (after one constant latency), the processor time while a sentence plays, the output's buffer
// and latency, and how many runs the machine held up; then the resident memory after 1,000
// three-second sounds are opened and how late a 10-minute MP3 played at once after its open is
// heard. Run it by hand through the wrapper that starts the server: tests/sound/with_pulseaudio.sh
// build/bench/bench_realaudio
#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "audio/portaudiooutput.h"
#include "audio/recordingbackend.h"
#include "audio/sentencerender.h"
#include "audio/sequenceplayer.h"
#include "audio/soundreader.h"
#include "service/frmdienst.h"
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "sound/monitorrecording.h"
#include "support/editorfixture.h"
#include "util/reportlist.h"
#include "util/tickcount.h"
#include "util/zelcmd.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QListWidget>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <sndfile.h>
#include <vector>

using namespace tavik;
using tavik::test::framesToMs;
using tavik::test::median;
using tavik::test::MonitorRecording;
using tavik::test::onsetDifferencesMs;
using tavik::test::segmentAfter;
using tavik::test::segmentsAt;

namespace {

double processSeconds() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

qint64 residentKb() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLongLong();
    return -1;
}

bool writeLevel(const QString& path, qint64 frames, int channels, float level) {
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    if (!file)
        return false;
    std::vector<float> samples(static_cast<std::size_t>(frames * channels), level);
    const bool ok = sf_writef_float(file, samples.data(), frames) == frames;
    sf_close(file);
    return ok;
}

// A 10-minute stereo MP3 of a steady tone; false when this libsndfile cannot write MPEG.
bool writeLongMp3(const QString& path) {
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = 2;
    info.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    if (!file)
        return false;
    std::vector<float> second(2 * 44100);
    for (int i = 0; i < 44100; ++i)
        second[2 * i] = second[2 * i + 1] =
            0.5f * static_cast<float>(std::sin(2.0 * M_PI * 441.0 * i / 44100.0));
    bool ok = true;
    for (int s = 0; s < 600 && ok; ++s)
        ok = sf_writef_float(file, second.data(), 44100) == 44100;
    sf_close(file);
    return ok;
}

// The first frame whose left sample is louder than `threshold`, at or after `from`; -1 if none.
qint64 firstLoud(const std::vector<float>& left, float threshold, qint64 from) {
    for (qint64 i = std::max<qint64>(from, 0); i < static_cast<qint64>(left.size()); ++i)
        if (std::fabs(left[static_cast<std::size_t>(i)]) > threshold)
            return i;
    return -1;
}

// The first loud frame of a file as decoded, which the encoder's delay puts after frame 0.
qint64 firstLoudInFile(const QString& path, float threshold) {
    SF_INFO info{};
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file)
        return -1;
    std::vector<float> head(static_cast<std::size_t>(info.channels) * 44100);
    const sf_count_t got = sf_readf_float(file, head.data(), 44100);
    sf_close(file);
    for (sf_count_t i = 0; i < got; ++i)
        if (std::fabs(head[static_cast<std::size_t>(i * info.channels)]) > threshold)
            return i;
    return -1;
}

// Microseconds of the tick count's own clock, so a command's tick can be read off its time.
qint64 tickMicroseconds() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
               TickClock::now().time_since_epoch())
        .count();
}

// Starts recording the sink's monitor; says why not when it cannot.
bool startRecording(MonitorRecording& recording) {
    QString problem;
    if (recording.start(problem))
        return true;
    std::printf("%s\n", qPrintable(problem));
    return false;
}

double percentile(std::vector<double> v, int p) {
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, v.size() * static_cast<std::size_t>(p) / 100)];
}

std::vector<double> magnitudes(const std::vector<double>& v) {
    std::vector<double> m;
    for (const double x : v)
        m.push_back(std::fabs(x));
    return m;
}

// The rendered file's left channel at the recording's rate.
std::vector<float> renderedLeft(const AnnouncementTable& table, const SatzRecord& satz,
                                QTemporaryDir& dir) {
    const QString path = dir.filePath(QStringLiteral("render.wav"));
    RenderSentenceToFile(table, satz, {MonitorRecording::kRate, 2}, path);
    SoundReader reader(path, {MonitorRecording::kRate, 1});
    std::vector<float> left;
    std::vector<float> block(65536);
    for (qint64 got; (got = reader.read(block.data(), 65536)) > 0;)
        left.insert(left.end(), block.begin(), block.begin() + got);
    return left;
}

// The 20-entry sentence: levels 0.04 to 0.8, rates and shifts in turn.
struct TwentyEntries {
    static constexpr int kRates[] = {8000, 22050, 44100, 48000};
    static constexpr std::int16_t kShifts[] = {40, 0, -60};
    std::vector<float> levels;
    SatzRecord satz{QStringLiteral("0001"), QStringLiteral("Benchmark"), {}, 19};

    // Writes the sounds into `folder` as KEY.wav.
    bool write(const QString& folder) {
        levels.clear();
        satz.Targets.clear();
        for (int i = 0; i < 20; ++i) {
            const QString key = QString::asprintf("%04d", i);
            const int rate = kRates[i % 4];
            const int ms = 150 + 10 * i;
            levels.push_back(0.04f * static_cast<float>(i + 1));
            if (!tavik::test::writeLevels(
                    folder + QStringLiteral("/") + key + QStringLiteral(".wav"),
                    static_cast<long long>(ms) * rate / 1000, rate, {levels.back()}))
                return false;
            satz.Targets.append({key, kShifts[i % 3]});
        }
        return true;
    }
};

// What one way of playing gave over its runs.
struct Figures {
    std::vector<double> errors;           // every entry's onset error against the rendering, ms
    std::vector<double> first;            // the first entry's
    std::vector<double> last;             // the last entry's
    std::vector<double> seek, play, stop; // command return times, ms
    std::vector<double> lateness;         // wait end after its tick, ms
    std::vector<double> cpu;              // share of a core while playing
    int missing = 0;
    int interrupted = 0; // runs in which the device ran dry or its stream jumped
    int stalled = 0;     // runs in which a sleeping thread woke a millisecond or more late

    // Onset errors of one run, after one constant latency (the median difference).
    void addOnsets(const std::vector<double>& differences, std::size_t entries) {
        if (differences.size() != entries || entries == 0) {
            ++missing;
            return;
        }
        const double latency = median(differences);
        for (const double d : differences)
            errors.push_back(d - latency);
        first.push_back(differences.front() - latency);
        last.push_back(differences.back() - latency);
    }

    // Return times from the recorded commands, and each wait's end against the tick it
    // waited for (the wait starts as play returns; it is over when stop is sent).
    void addCommands(const RecordingBackend& recorder, const std::vector<std::int32_t>& waits) {
        qint64 playReturned = -1;
        std::size_t entry = 0;
        for (const RecordingBackend::Entry& e : recorder.entries()) {
            const double took = static_cast<double>(e.returned - e.time) / 1000.0;
            if (e.command.startsWith(QStringLiteral("seek "))) {
                seek.push_back(took);
            } else if (e.command.startsWith(QStringLiteral("play "))) {
                play.push_back(took);
                playReturned = e.returned;
            } else if (e.command.startsWith(QStringLiteral("stop "))) {
                stop.push_back(took);
                if (playReturned >= 0 && entry < waits.size() && waits[entry] >= 0) {
                    const qint64 due = (playReturned / 1000 + waits[entry] + 1) * 1000;
                    lateness.push_back(static_cast<double>(e.time - due) / 1000.0);
                }
                ++entry;
                playReturned = -1;
            }
        }
    }

    void print(const char* what) const {
        std::printf("%s, %zu runs (%d not heard whole, %d with the output interrupted, %d with "
                    "the machine waking threads 1 ms late or more):\n",
                    what, first.size(), missing, interrupted, stalled);
        const std::vector<double> all = magnitudes(errors);
        std::printf("  onset error against the rendering: p50 %.2f ms, p99 %.2f ms, worst %.2f ms"
                    "%s\n",
                    percentile(all, 50), percentile(all, 99), percentile(all, 100),
                    percentile(all, 100) <= 1.0 ? "  target met" : "  TARGET MISSED");
        auto list = [](const char* name, const std::vector<double>& v) {
            std::printf("  %s:", name);
            for (const double x : v)
                std::printf(" %+.2f", x);
            std::printf(" ms\n");
        };
        list("first entry's error per run", first);
        list("last entry's error per run ", last);
        std::vector<double> drift;
        for (std::size_t i = 0; i < first.size(); ++i)
            drift.push_back(std::fabs(last[i] - first[i]));
        std::printf("  drift, last entry against first: worst %.2f ms%s\n", percentile(drift, 100),
                    percentile(drift, 100) <= 1.0 ? "  target met" : "  TARGET MISSED");
        for (const auto& [name, v] :
             {std::pair{"seek", &seek}, std::pair{"play", &play}, std::pair{"stop", &stop}})
            if (!v->empty())
                std::printf("  %s returns after: p50 %.3f ms, p99 %.3f ms, worst %.3f ms%s\n", name,
                            percentile(*v, 50), percentile(*v, 99), percentile(*v, 100),
                            percentile(*v, 99) < 0.2 ? "  target met" : "  TARGET MISSED");
        if (!lateness.empty())
            std::printf(
                "  wait ends after its tick by: p50 %.3f ms, p99 %.3f ms, worst %.3f ms%s\n",
                percentile(lateness, 50), percentile(lateness, 99), percentile(lateness, 100),
                percentile(lateness, 99) < 0.5 ? "  target met" : "  TARGET MISSED");
        if (!cpu.empty()) {
            double sum = 0;
            for (const double c : cpu)
                sum += c;
            const double share = 100.0 * sum / static_cast<double>(cpu.size());
            std::printf("  processor while a sentence plays: %.2f%% of a core%s\n", share,
                        share < 3 ? "  target met" : "  TARGET MISSED");
        }
    }
};

std::vector<std::int32_t> waitsOf(const AnnouncementTable& table, const SatzRecord& satz) {
    std::vector<std::int32_t> waits;
    for (int i = 0; i <= satz.LastTarget; ++i)
        waits.push_back(EntryWait(satz.Targets[i], EntryAnnouncement(table, satz, i)));
    return waits;
}

// The sequence player on a fresh output, as `tavik play` runs it.
bool playerRuns(int runs, Figures& figures, double& latencyMs) {
    QTemporaryDir dir;
    TwentyEntries sentence;
    if (!sentence.write(dir.path()))
        return false;
    for (int run = 0; run < runs; ++run) {
        std::shared_ptr<SoundOutput> output = createSoundOutput({});
        if (const auto real = std::dynamic_pointer_cast<PortAudioOutput>(output))
            latencyMs = real->latency() * 1000.0;
        EmulatorBackend backend({}, output);
        RecordingBackend recorder(backend, [] { return tickMicroseconds(); });
        modMCI mci(recorder, {});
        AnnouncementTable table;
        for (const SatzTarget& target : sentence.satz.Targets) {
            const QString path = dir.filePath(target.AnnouncementKey + QStringLiteral(".wav"));
            QString opened = path;
            mci.MciOpen(opened, target.AnnouncementKey, QStringLiteral("waveaudio"));
            AnnouncementRecord record;
            record.Key = record.Title = target.AnnouncementKey;
            record.FilePath = path;
            record.Length = mci.MciGetLength(target.AnnouncementKey);
            record.Opened = true;
            table.Announcements.append(record);
        }
        table.AnnouncementCount = 20;
        MonitorRecording recording;
        if (!startRecording(recording))
            return false;
        recorder.clear();
        const int interruptions = output->interruptions();
        std::int16_t busy = 0;
        const double cpuBefore = processSeconds();
        QElapsedTimer wall;
        wall.start();
        double watchCpu = 0;
        {
            const tavik::test::StallWatch watch;
            PlayAnnouncementSequence(mci, table, sentence.satz, busy, [](const QString&) {});
            figures.stalled += watch.worstMs() >= 1.0 ? 1 : 0;
            watchCpu = watch.cpuSeconds();
        }
        // The watch's own processor time is not the player's.
        figures.cpu.push_back((processSeconds() - cpuBefore - watchCpu) /
                              (static_cast<double>(wall.nsecsElapsed()) / 1e9));
        backend.drain();
        recording.stop();
        figures.interrupted += output->interruptions() != interruptions ? 1 : 0;
        figures.addOnsets(onsetDifferencesMs(recording.left(),
                                             renderedLeft(table, sentence.satz, dir),
                                             sentence.levels),
                          sentence.levels.size());
        figures.addCommands(recorder, waitsOf(table, sentence.satz));
    }
    return true;
}

// The editor's main window on a package of the 20 sounds, its own output fresh each run.
struct Editor : tavik::test::EditorFixture {
    QString folder;
    TwentyEntries sentence;

    bool start() {
        std::vector<Entry> entries;
        for (int i = 0; i < 20; ++i)
            entries.push_back(
                {QString::asprintf("%04d", i), QString::asprintf("Ansage %d", i), 100});
        folder = writePackage(QStringLiteral("Linie"), QStringLiteral("Linie"), entries);
        if (!sentence.write(folder) || !main->FormLoad())
            return false;
        open(folder);
        return main->lsvPack()->Count() == 20;
    }
};

// The service editor's Play on the sentence saved in a service file, against its export.
bool serviceEditorRuns(int runs, Figures& figures) {
    for (int run = 0; run < runs; ++run) {
        Editor editor;
        if (!editor.start())
            return false;
        WriteServiceFile(ServiceFilePath(editor.folder, QStringLiteral("000001")),
                         ServiceFileBytes({QStringLiteral("Benchmark"), QStringLiteral("Tavik"),
                                           QString(), QStringLiteral("000001")},
                                          {editor.sentence.satz}));
        editor.main->show();
        editor.main->cmdDienst()->click();
        auto* dienst = qobject_cast<frmDienst*>(editor.main->serviceEditor());
        if (!dienst)
            return false;
        dienst->mnuOpen_Click();
        dienst->lstOpen()->setCurrentRow(0);
        dienst->cmdOpen_Click();
        if (dienst->lsvDienst()->Count() != 1)
            return false;
        dienst->lsvDienst()->ListItems(1)->SetSelected(true);
        dienst->Timer1_Timer();
        MonitorRecording recording;
        if (!startRecording(recording))
            return false;
        editor.recorder.clear();
        const int interruptions = editor.backend.emulator().outputInterruptions();
        const double cpuBefore = processSeconds();
        QElapsedTimer wall;
        wall.start();
        double watchCpu = 0;
        {
            const tavik::test::StallWatch watch;
            dienst->cmdPlay()->click();
            figures.stalled += watch.worstMs() >= 1.0 ? 1 : 0;
            watchCpu = watch.cpuSeconds();
        }
        figures.cpu.push_back((processSeconds() - cpuBefore - watchCpu) /
                              (static_cast<double>(wall.nsecsElapsed()) / 1e9));
        editor.backend.drain();
        recording.stop();
        figures.interrupted +=
            editor.backend.emulator().outputInterruptions() != interruptions ? 1 : 0;
        // What "Satz als WAV speichern..." writes for the sentence.
        QTemporaryDir dir;
        const SatzRecord& played = dienst->Saetze()[0];
        figures.addOnsets(onsetDifferencesMs(recording.left(),
                                             renderedLeft(editor.main->table, played, dir),
                                             editor.sentence.levels),
                          editor.sentence.levels.size());
        // The fixture's recorder counts whole ticks: return times and lateness are the
        // player's above.
        dienst->close();
    }
    return true;
}

// The main window's Play on one announcement: where it is cut against the rendering of a
// sentence of it alone.
bool mainWindowRuns(int runs, Figures& figures) {
    for (int run = 0; run < runs; ++run) {
        Editor editor;
        if (!editor.start())
            return false;
        editor.main->show();
        const int row = 1 + run % 20;
        editor.main->lsvPack()->ListItems(row)->SetSelected(true);
        const QString key = editor.main->lsvPack()->ListItems(row)->Text();
        const float level = editor.sentence.levels[static_cast<std::size_t>(row - 1)];
        MonitorRecording recording;
        if (!startRecording(recording))
            return false;
        editor.main->cmdPlay()->click();
        editor.backend.drain();
        recording.stop();
        QTemporaryDir dir;
        const SatzRecord alone{QStringLiteral("0001"), QString(), {{key, 0}}, 0};
        const std::vector<float> rendered = renderedLeft(editor.main->table, alone, dir);
        const auto heard = segmentAfter(recording.left(), level, 0);
        const auto written = segmentAfter(rendered, level, 0);
        if (heard.onset < 0 || written.onset < 0) {
            ++figures.missing;
            continue;
        }
        const double error = framesToMs((heard.cut - heard.onset) - (written.cut - written.onset));
        figures.errors.push_back(error);
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("PULSE_SERVER")) {
        std::printf("run through tests/sound/with_pulseaudio.sh\n");
        return 1;
    }
    qunsetenv("TAVIK_AUDIO");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TavikApplication app(argc, argv);
    QTemporaryDir dir;
    const int runs = 10;

    Figures player;
    double latencyMs = 0;
    if (!playerRuns(runs, player, latencyMs))
        return 1;
    std::printf("output: buffers of %lu frames (%.1f ms at 44,100 Hz), latency from a command to "
                "its frame %.1f ms\n",
                PortAudioOutput::framesPerBuffer(),
                1000.0 * static_cast<double>(PortAudioOutput::framesPerBuffer()) / 44100.0,
                latencyMs);
    player.print("sequence player (tavik play), 20 entries against tavik render");

    Figures editor;
    if (!serviceEditorRuns(runs, editor))
        return 1;
    editor.print("service editor's Play, 20 entries against its WAV export");

    Figures mainWindow;
    if (!mainWindowRuns(runs, mainWindow))
        return 1;
    const std::vector<double> cut = magnitudes(mainWindow.errors);
    std::printf("main window's Play, one announcement, %zu runs: heard length against the "
                "rendering: p50 %.2f ms, p99 %.2f ms, worst %.2f ms%s\n",
                cut.size(), percentile(cut, 50), percentile(cut, 99), percentile(cut, 100),
                !cut.empty() && percentile(cut, 100) <= 1.0 ? "  target met" : "  TARGET MISSED");

    // 1,000 three-second stereo sounds opened on the real output.
    {
        EmulatorBackend backend;
        modMCI mci(backend, {});
        const QString path = dir.filePath(QStringLiteral("three.wav"));
        if (!writeLevel(path, 3 * 44100, 2, 0.1f))
            return 1;
        const qint64 before = residentKb();
        for (int i = 0; i < 1000; ++i) {
            QString opened = path;
            mci.MciOpen(opened, QString::asprintf("%04d", i), QStringLiteral("waveaudio"));
        }
        // A play needs each sound ready: whatever the decoder thread has not reached yet is
        // made ready now.
        for (int i = 0; i < 1000; ++i) {
            mci.MciPlay(QString::asprintf("%04d", i));
            mci.MciStop(QString::asprintf("%04d", i));
        }
        const qint64 after = residentKb();
        std::printf("resident memory after opening 1,000 three-second stereo sounds: %.1f MB "
                    "(%.1f MB before)%s\n",
                    static_cast<double>(after) / 1024.0, static_cast<double>(before) / 1024.0,
                    after < 300 * 1024 ? "  target met" : "  TARGET MISSED");
    }

    // A 10-minute MP3 played the moment it is opened: a short wave sound before it gives the
    // output's constant latency, so what remains is the delay the decoding adds.
    {
        const QString longPath = dir.filePath(QStringLiteral("ten.mp3"));
        const QString markPath = dir.filePath(QStringLiteral("mark.wav"));
        if (!writeLongMp3(longPath)) {
            std::printf("10-minute MP3: this libsndfile writes no MPEG, not measured\n");
            return 0;
        }
        if (!writeLevel(markPath, 22050, 1, 0.3f))
            return 1;
        const qint64 toneStart = firstLoudInFile(longPath, 0.1f);
        std::vector<double> lates;
        const int mp3Runs = 5;
        for (int run = 0; run < mp3Runs; ++run) {
            EmulatorBackend backend;
            RecordingBackend recorder(backend, [] { return tickMicroseconds(); });
            modMCI mci(recorder, {});
            QString mark = markPath;
            mci.MciOpen(mark, QStringLiteral("mark"), QStringLiteral("waveaudio"));
            MonitorRecording recording;
            if (!startRecording(recording))
                return 1;
            recorder.clear();
            mci.MciPlay(QStringLiteral("mark"));
            WaitMilliseconds(500);
            mci.MciStop(QStringLiteral("mark"));
            WaitMilliseconds(200);
            QString opened = longPath;
            mci.MciOpen(opened, QStringLiteral("ten"), QStringLiteral("mpegvideo"));
            mci.MciPlay(QStringLiteral("ten"));
            WaitMilliseconds(1000);
            mci.MciStop(QStringLiteral("ten"));
            backend.drain();
            recording.stop();
            std::vector<double> plays;
            for (const auto& e : recorder.entries())
                if (e.command.startsWith(QStringLiteral("play ")))
                    plays.push_back(static_cast<double>(e.time) / 1000.0);
            const auto heardMark = segmentAfter(recording.left(), 0.3f, 0);
            const qint64 heardTone = firstLoud(recording.left(), 0.1f, heardMark.cut);
            if (plays.size() != 2 || heardMark.onset < 0 || heardTone < 0 || toneStart < 0) {
                std::printf("10-minute MP3, run %d: not heard\n", run + 1);
                continue;
            }
            const double latency = framesToMs(heardMark.onset) - plays[0];
            lates.push_back(framesToMs(heardTone - toneStart) - plays[1] - latency);
        }
        if (lates.empty())
            return 1;
        const double worst = *std::max_element(lates.begin(), lates.end());
        std::printf("10-minute MP3 played at once after its open, heard late by: worst %.2f ms, "
                    "runs:",
                    worst);
        for (const double l : lates)
            std::printf(" %.2f", l);
        std::printf("%s\n", worst < 5 ? "  target met" : "  TARGET MISSED");
    }
    return 0;
}
