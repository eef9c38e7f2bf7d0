#pragma once

#include <QElapsedTimer>

namespace tavik {

// Lets the user interface process pending events, at most once per interval: long passes
// stay responsive without paying for an event round trip per step.
class EventYield {
public:
    explicit EventYield(int intervalMs = 15);
    void operator()();

private:
    QElapsedTimer since_;
    int intervalMs_;
};

} // namespace tavik
