#pragma once

#include <QElapsedTimer>
#include <QtGlobal>
#include <functional>

namespace tavik {

// When a long task that runs row by row shows its progress and lets events through: the first
// time it asks, and after that once at least the interval has passed since it last did. A
// thousand rows a second then cost twenty repaints instead of a thousand.
class Pacer {
public:
    // Milliseconds from any fixed start, never going back.
    using Clock = std::function<qint64()>;

    explicit Pacer(qint64 intervalMs, Clock clock = {});

    bool due();

private:
    qint64 interval_;
    Clock clock_;
    QElapsedTimer elapsed_;
    bool asked_ = false;
    qint64 last_ = 0;
};

// How often a load shows progress and lets events through.
inline constexpr qint64 kLoadPaceMs = 50;

} // namespace tavik
