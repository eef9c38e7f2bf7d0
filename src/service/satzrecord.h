#pragma once

#include <QList>
#include <QString>
#include <cstdint>

namespace tavik {

// One entry of a sentence: an announcement and the time shift added to its play time.
struct SatzTarget {
    QString AnnouncementKey;
    std::int16_t TimeOffset = 0; // milliseconds
    bool operator==(const SatzTarget&) const = default;
};

// A sentence of a service: entries 0 to LastTarget are played in order.
struct SatzRecord {
    QString Key;
    QString Text;
    QList<SatzTarget> Targets;
    std::int16_t LastTarget = -1;
    // False for a sentence whose entries were never set: its array has no dimension at all,
    // which the service file records as a descriptor of 0 dimensions.
    bool TargetsDimensioned = true;
    bool operator==(const SatzRecord&) const = default;
};

} // namespace tavik
