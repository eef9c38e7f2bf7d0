#include "eventyield.h"

#include <QCoreApplication>

namespace tavik {

EventYield::EventYield(int intervalMs) : intervalMs_(intervalMs) {}

void EventYield::operator()() {
    if (since_.isValid() && since_.elapsed() < intervalMs_)
        return;
    QCoreApplication::processEvents();
    since_.start();
}

} // namespace tavik
