#pragma once

#include "audio/loudnesscache.h"
#include "package/soundloudness.h"

#include <atomic>
#include <functional>

namespace tavik {

// Measures sounds through the user's loudness cache; the sounds it does not hold yet are
// decoded on every core at once.
class CachedLoudnessMeter : public LoudnessMeter {
public:
    explicit CachedLoudnessMeter(LoudnessCache& cache) : cache_(cache) {}

    QList<std::optional<Loudness>> Measure(const QStringList& paths) override;

    // Called from the measuring threads with the number of sounds done so far and of all.
    std::function<void(int done, int total)> progress;
    // When set, the sounds not measured yet are left without a figure.
    const std::atomic<bool>* stop = nullptr;
    // How many threads measure; 0 for one per core.
    int threads = 0;

private:
    LoudnessCache& cache_;
};

} // namespace tavik
