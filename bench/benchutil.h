#pragma once

#include <QElapsedTimer>
#include <algorithm>
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

} // namespace tavik::bench
