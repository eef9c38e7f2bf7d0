// Times the MCI layer on the emulator: opening and measuring 1,000 sounds, how closely a
// 20-entry sentence keeps its schedule on the null output, and the processor time a 5 s wait
// takes. Prints its figures; run by hand from the build folder.
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "audio/recordingbackend.h"
#include "audio/sequenceplayer.h"
#include "benchsound.h"
#include "util/tickcount.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <vector>

using namespace tavik;
using tavik::bench::writeTone;

namespace {

double processSeconds() {
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("TAVIK_AUDIO", "null");
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;

    // 1,000 sounds, half WAV and half MP3, 1 to 5 seconds long.
    std::printf("making 1,000 sound files...\n");
    QStringList files;
    for (int i = 0; i < 1000; ++i) {
        const bool wave = i % 2 == 0;
        const QString path = dir.filePath(QString::asprintf("%04d.%s", i, wave ? "wav" : "mp3"));
        const qint64 frames = 22050LL * (1 + i % 5);
        const int format =
            wave ? (SF_FORMAT_WAV | SF_FORMAT_PCM_16) : (SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III);
        if (!writeTone(path, format, frames, 22050)) {
            std::printf("cannot write %s\n", qPrintable(path));
            return 1;
        }
        files << path;
    }
    {
        EmulatorBackend backend;
        modMCI mci(backend, {});
        QElapsedTimer t;
        t.start();
        qint64 total = 0;
        for (int i = 0; i < files.size(); ++i) {
            QString path = files[i];
            const QString alias = QString::asprintf("%04d", i);
            if (mci.MciOpen(path, alias, {}) == -1)
                total += mci.MciGetLength(alias);
        }
        const double ms = static_cast<double>(t.nsecsElapsed()) / 1e6;
        std::printf("open and measure 1,000 sounds (500 WAV, 500 MP3): %8.1f ms in all%s "
                    "(%lld s of sound)\n",
                    ms, ms < 1000 ? "  target met" : "  TARGET MISSED",
                    static_cast<long long>(total / 1000));
    }

    // A 20-entry sentence on the null output: when each play starts against its schedule.
    {
        EmulatorBackend emulator;
        RecordingBackend recorder(emulator, [] { return qint64(GetTickCount()); });
        modMCI mci(recorder, {});
        AnnouncementTable table;
        SatzRecord sentence{"0001", "Benchmark", {}, 19};
        std::vector<std::int32_t> waits;
        for (int i = 0; i < 20; ++i) {
            QString path = files[i];
            const QString key = QString::asprintf("%04d", i);
            mci.MciOpen(path, key, {});
            const std::int32_t length = 50 + 10 * i;
            table.Announcements.append({key, files[i], key, length, true, -1, 0, false});
            const auto offset = static_cast<std::int16_t>(i % 3 == 0 ? -20 : 15);
            sentence.Targets.append({key, offset});
            waits.push_back(length + offset);
        }
        table.AnnouncementCount = 20;
        std::int16_t busy = 0;
        std::vector<double> errors;
        const int rounds = 5;
        for (int round = 0; round < rounds; ++round) {
            recorder.clear();
            PlayAnnouncementSequence(mci, table, sentence, busy, [](const QString&) {});
            std::vector<qint64> plays;
            for (const auto& e : recorder.entries())
                if (e.command.startsWith(QStringLiteral("play ")))
                    plays.push_back(e.time);
            // Each play is due when the previous entry's wait has passed.
            for (std::size_t i = 1; i < plays.size(); ++i)
                errors.push_back(static_cast<double>(plays[i] - plays[i - 1] - waits[i - 1]));
        }
        std::sort(errors.begin(), errors.end());
        const double p99 = errors[std::min(errors.size() - 1, errors.size() * 99 / 100)];
        std::printf("20-entry sentence x%d, play start against schedule: p50 %.1f ms, p99 %.1f ms, "
                    "max %.1f ms%s\n",
                    rounds, errors[errors.size() / 2], p99, errors.back(),
                    p99 < 5 ? "  target met" : "  TARGET MISSED");
    }

    // Processor time of a 5 s wait.
    {
        const double before = processSeconds();
        QElapsedTimer t;
        t.start();
        WaitMilliseconds(5000);
        const double cpu = processSeconds() - before;
        const double wall = static_cast<double>(t.elapsed()) / 1000.0;
        std::printf("5 s WaitMilliseconds: %.3f s processor time over %.3f s, %.2f%% of a core%s\n",
                    cpu, wall, 100.0 * cpu / wall,
                    100.0 * cpu / wall < 3 ? "  target met" : "  TARGET MISSED");
    }
    return 0;
}
