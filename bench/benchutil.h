#pragma once

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace tavik::bench {

inline double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

// Milliseconds `f` takes, once.
template <typename F> double timeMs(F&& f) {
    QElapsedTimer t;
    t.start();
    f();
    return static_cast<double>(t.nsecsElapsed()) / 1e6;
}

// One line of figures: the median and the worst of `runs` timings, against a target (none
// when `targetMs` is 0).
inline void report(const char* what, int runs, std::vector<double> times, double targetMs) {
    const double m = median(times);
    std::printf("%-48s median %8.2f ms  max %8.2f ms  (%d runs)%s\n", what, m,
                *std::max_element(times.begin(), times.end()), runs,
                targetMs > 0 ? (m < targetMs ? "  target met" : "  TARGET MISSED") : "");
}

} // namespace tavik::bench
