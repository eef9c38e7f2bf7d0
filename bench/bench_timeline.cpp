// Times what the timeline and the loudness check cost: the outline of a minute of sound (WAVE
// and MP3), against decoding the same minute, and measuring the loudness of 1,000
// announcements of 2 s, first and from the cache, against decoding them once. Prints its
// figures; run by hand from the build folder (`bench/bench_timeline`).
#include "audio/loudness.h"
#include "audio/loudnesscache.h"
#include "audio/loudnessmeter.h"
#include "audio/soundfile.h"
#include "audio/waveform.h"

#include "benchutil.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <cstdio>
#include <sndfile.h>
#include <thread>
#include <vector>

using namespace tavik;
using tavik::bench::median;
using tavik::bench::timeMs;

namespace {

bool writeSpeechLike(const QString& path, double seconds, int format, int rate = 44100) {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 2;
    info.format = format;
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info);
    if (!file)
        return false;
    const sf_count_t frames = sf_count_t(seconds * rate);
    std::vector<float> samples(static_cast<std::size_t>(frames * 2));
    for (sf_count_t f = 0; f < frames; ++f) {
        // A tone that swells and fades four times a second, as syllables do.
        const double t = double(f) / rate;
        const float v = float(0.3 * std::sin(2 * M_PI * 4 * t) * std::sin(2 * M_PI * 440 * t));
        samples[static_cast<std::size_t>(2 * f)] = v;
        samples[static_cast<std::size_t>(2 * f + 1)] = v;
    }
    sf_writef_float(file, samples.data(), frames);
    return sf_close(file) == 0;
}

} // namespace

int main() {
    QTemporaryDir dir;
    std::printf("Outline of one minute of sound (buckets of 10 ms), 5 runs each\n");
    for (const auto& [name, format] :
         {std::pair{"WAVE 16-bit stereo", SF_FORMAT_WAV | SF_FORMAT_PCM_16},
          std::pair{"MP3 stereo", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}}) {
        const QString path =
            dir.filePath(QStringLiteral("minute.") +
                         (format & SF_FORMAT_MPEG ? QStringLiteral("mp3") : QStringLiteral("wav")));
        if (!writeSpeechLike(path, 60.0, format)) {
            std::printf("%-20s cannot be written here\n", name);
            continue;
        }
        std::vector<double> outline, decode;
        for (int r = 0; r < 5; ++r) {
            outline.push_back(timeMs([&] { WaveformPeaks(path, 10); }));
            decode.push_back(timeMs([&] { decodeSound(path); }));
        }
        std::printf("%-20s outline %8.1f ms   decoding alone %8.1f ms   ratio %5.2fx\n", name,
                    median(outline), median(decode), median(outline) / median(decode));
    }

    std::printf("\nLoudness of 1,000 announcements of 2 s (WAVE 16-bit stereo)\n");
    QStringList paths;
    for (int i = 0; i < 1000; ++i) {
        const QString path = dir.filePath(QString::number(i).rightJustified(4, u'0') + ".wav");
        writeSpeechLike(path, 2.0, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
        paths << path;
    }
    const QString cacheFile = dir.filePath(QStringLiteral("cache/loudness.tsv"));
    const double decodeAll = timeMs([&] {
        for (const QString& p : paths)
            decodeSound(p);
    });
    const double first = timeMs([&] {
        LoudnessCache cache(cacheFile);
        for (const QString& p : paths)
            cache.loudnessOf(p);
    });
    const double cached = timeMs([&] {
        LoudnessCache cache(cacheFile);
        for (const QString& p : paths)
            cache.loudnessOf(p);
    });
    std::printf("measured        %8.1f ms (%.2f ms per announcement)   decoding alone %8.1f ms   "
                "ratio %5.2fx\n",
                first, first / 1000, decodeAll, first / decodeAll);
    std::printf("from the cache  %8.1f ms   ratio to decoding %5.3fx\n", cached,
                cached / decodeAll);
    // As the check and the list measure: the sounds not in the cache on every core at once.
    const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    QFile::remove(cacheFile);
    const double parallel = timeMs([&] {
        LoudnessCache cache(cacheFile);
        CachedLoudnessMeter meter(cache);
        meter.Measure(paths);
    });
    const double parallelCached = timeMs([&] {
        LoudnessCache cache(cacheFile);
        CachedLoudnessMeter meter(cache);
        meter.Measure(paths);
    });
    std::printf("on %d threads   %8.1f ms (%.2f ms per announcement)   ratio to decoding on one "
                "%5.2fx; from the cache %8.1f ms\n",
                cores, parallel, parallel / 1000, parallel / decodeAll, parallelCached);
    return 0;
}
