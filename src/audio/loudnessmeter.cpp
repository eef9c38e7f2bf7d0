#include "audio/loudnessmeter.h"

#include <algorithm>
#include <thread>
#include <vector>

namespace tavik {

QList<std::optional<Loudness>> CachedLoudnessMeter::Measure(const QStringList& paths) {
    // Each thread writes its own slots; a QList could detach under them.
    std::vector<std::optional<Loudness>> figures(static_cast<std::size_t>(paths.size()));
    std::atomic<qsizetype> next = 0;
    std::atomic<int> done = 0;
    const auto work = [&] {
        for (;;) {
            const qsizetype i = next++;
            if (i >= paths.size() || (stop && *stop))
                return;
            figures[static_cast<std::size_t>(i)] = cache_.loudnessOf(paths[i]);
            const int finished = ++done;
            if (progress)
                progress(finished, static_cast<int>(paths.size()));
        }
    };
    const int cores = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    const int count = static_cast<int>(
        std::min<qsizetype>(threads > 0 ? threads : cores, std::max<qsizetype>(paths.size(), 1)));
    std::vector<std::thread> helpers;
    for (int t = 1; t < count; ++t)
        helpers.emplace_back(work);
    work();
    for (std::thread& h : helpers)
        h.join();
    cache_.save();
    return QList<std::optional<Loudness>>(figures.begin(), figures.end());
}

} // namespace tavik
