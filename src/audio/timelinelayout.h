#pragma once

#include "package/announcementrecord.h"
#include "service/satzrecord.h"

#include <QList>
#include <QString>

namespace tavik {

// One entry of a sentence as the timeline draws it: the sound from its start for its stored
// length, and where the player stops it and starts the next entry. A positive shift leaves a
// gap after the sound, a negative one cuts the sound's end.
struct TimelineBlock {
    QString key;
    QString title;
    QString path;          // "" when the announcement has no playable sound
    qint64 startMs = 0;    // when the player starts it
    qint64 soundEndMs = 0; // where the sound itself would end
    qint64 stopMs = 0;     // when the player stops it and starts the next one
    std::int16_t shiftMs = 0;
};

// The blocks of `sentence`, from the schedule the player and the renderer share. Raises what
// the schedule raises (runtime error 9 for an entry without an announcement).
QList<TimelineBlock> LayoutTimeline(const AnnouncementTable& table, const SatzRecord& sentence);

// Where the sentence ends: the last entry's stop.
qint64 TimelineLengthMs(const QList<TimelineBlock>& blocks);

// The step of the time ruler, in milliseconds: the smallest of 100, 200, 500 ms, 1, 2, 5, 10, 20,
// 30 and 60 s whose marks stand at least `minGapPx` apart at `pxPerMs`.
qint64 RulerStepMs(double pxPerMs, int minGapPx);

// The index of the block that plays at `ms`, or -1 when none does.
int BlockAt(const QList<TimelineBlock>& blocks, qint64 ms);

} // namespace tavik
