// Times the real output through a sound server's null sink: how closely what is heard follows
// the commands of a 20-entry sentence (shifts 0, +300 and -500, five runs), how late the first
// play of a fresh output is heard, the processor time while a sentence plays, and the resident
// memory after 1,000 three-second sounds are opened; and how late a 10-minute MP3 played at
// once after its open is heard. Run it by hand through the wrapper that
// starts the server: tests/sound/with_pulseaudio.sh build/bench/bench_realaudio
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "audio/recordingbackend.h"
#include "audio/sequenceplayer.h"
#include "sound/monitorrecording.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <sndfile.h>
#include <vector>

using namespace tavik;
using tavik::test::framesToMs;
using tavik::test::MonitorRecording;
using tavik::test::segmentAfter;

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

qint64 microseconds() {
    static QElapsedTimer clock = [] {
        QElapsedTimer t;
        t.start();
        return t;
    }();
    return clock.nsecsElapsed() / 1000;
}

// Starts recording the sink's monitor; says why not when it cannot.
bool startRecording(MonitorRecording& recording) {
    QString problem;
    if (recording.start(problem))
        return true;
    std::printf("%s\n", qPrintable(problem));
    return false;
}

// When each "play" was sent, in milliseconds of the bench's clock.
std::vector<double> playTimes(const RecordingBackend& recorder) {
    std::vector<double> plays;
    for (const auto& e : recorder.entries())
        if (e.command.startsWith(QStringLiteral("play ")))
            plays.push_back(static_cast<double>(e.time) / 1000.0);
    return plays;
}

double percentile(std::vector<double> v, int p) {
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, v.size() * static_cast<std::size_t>(p) / 100)];
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("PULSE_SERVER")) {
        std::printf("run through tests/sound/with_pulseaudio.sh\n");
        return 1;
    }
    qunsetenv("TAVIK_AUDIO");
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;

    std::vector<double> errors;
    std::vector<double> firstStarts;
    double cpuShare = 0;
    const int runs = 5;
    for (int run = 0; run < runs; ++run) {
        // A fresh output each run, so each run's first play is a first play.
        EmulatorBackend backend;
        RecordingBackend recorder(backend, [] { return microseconds(); });
        modMCI mci(recorder, {});
        AnnouncementTable table;
        SatzRecord sentence{"0001", "Benchmark", {}, 19};
        std::vector<float> levels;
        for (int i = 0; i < 20; ++i) {
            const QString key = QString::asprintf("%04d", i);
            const QString path = dir.filePath(key + QStringLiteral(".wav"));
            const float level = 0.04f * static_cast<float>(i + 1);
            levels.push_back(level);
            const int ms = 600 + 20 * i;
            if (run == 0 && !writeLevel(path, ms * 441LL / 10, 1, level))
                return 1;
            QString opened = path;
            mci.MciOpen(opened, key, QStringLiteral("waveaudio"));
            table.Announcements.append(
                {key, path, key, mci.MciGetLength(key), true, -1, 0, false, true});
            const std::int16_t shifts[] = {0, 300, -500};
            sentence.Targets.append({key, shifts[i % 3]});
        }
        table.AnnouncementCount = 20;
        MonitorRecording recording;
        if (!startRecording(recording))
            return 1;
        recorder.clear();
        std::int16_t busy = 0;
        const double cpuBefore = processSeconds();
        QElapsedTimer wall;
        wall.start();
        PlayAnnouncementSequence(mci, table, sentence, busy, [](const QString&) {});
        cpuShare +=
            (processSeconds() - cpuBefore) / (static_cast<double>(wall.nsecsElapsed()) / 1e9);
        backend.drain();
        recording.stop();

        const std::vector<double> plays = playTimes(recorder);
        std::vector<double> offsets; // heard minus sent, per entry
        qint64 from = 0;
        for (std::size_t i = 0; i < levels.size() && i < plays.size(); ++i) {
            const auto heard = segmentAfter(recording.left(), levels[i], from);
            if (heard.onset < 0) {
                std::printf("run %d: entry %zu not heard\n", run + 1, i);
                continue;
            }
            from = heard.onset + 1;
            offsets.push_back(framesToMs(heard.onset) - plays[i]);
        }
        if (offsets.size() < 2)
            continue;
        // The constant latency: the median of the later entries' offsets.
        std::vector<double> later(offsets.begin() + 1, offsets.end());
        const double latency = percentile(later, 50);
        for (std::size_t i = 1; i < offsets.size(); ++i)
            errors.push_back(std::fabs(offsets[i] - latency));
        firstStarts.push_back(offsets[0] - latency);
    }
    if (errors.empty())
        return 1;
    std::printf("onset error against the commands, 20 entries x%d: p50 %.2f ms, p99 %.2f ms, "
                "max %.2f ms%s\n",
                runs, percentile(errors, 50), percentile(errors, 99), percentile(errors, 100),
                percentile(errors, 99) < 5 ? "  target met" : "  TARGET MISSED");
    const double firstWorst = *std::max_element(firstStarts.begin(), firstStarts.end());
    std::printf("first play of a fresh output, heard late by: worst %.2f ms, runs:", firstWorst);
    for (const double f : firstStarts)
        std::printf(" %.2f", f);
    std::printf("%s\n", firstWorst < 5 ? "  target met" : "  TARGET MISSED");
    std::printf("processor while a sentence plays: %.2f%% of a core%s\n", 100.0 * cpuShare / runs,
                100.0 * cpuShare / runs < 3 ? "  target met" : "  TARGET MISSED");

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
        for (int run = 0; run < runs; ++run) {
            EmulatorBackend backend;
            RecordingBackend recorder(backend, [] { return microseconds(); });
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
            const std::vector<double> plays = playTimes(recorder);
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
