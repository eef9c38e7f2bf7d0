#include "pacer.h"

namespace tavik {

Pacer::Pacer(qint64 intervalMs, Clock clock) : interval_(intervalMs), clock_(std::move(clock)) {
    elapsed_.start();
}

bool Pacer::due() {
    const qint64 now = clock_ ? clock_() : elapsed_.elapsed();
    if (asked_ && now - last_ < interval_)
        return false;
    asked_ = true;
    last_ = now;
    return true;
}

} // namespace tavik
