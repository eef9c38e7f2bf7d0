#include "audio/timelinelayout.h"

#include "audio/sentenceschedule.h"

namespace tavik {

QList<TimelineBlock> LayoutTimeline(const AnnouncementTable& table, const SatzRecord& sentence) {
    const QList<ScheduledEntry> schedule = ScheduleSentence(table, sentence);
    QList<TimelineBlock> blocks;
    blocks.reserve(schedule.size());
    for (int i = 0; i < schedule.size(); ++i) {
        const AnnouncementRecord& record = EntryAnnouncement(table, sentence, i);
        TimelineBlock block;
        block.key = schedule[i].key;
        block.title = record.Title;
        block.path = schedule[i].path;
        block.startMs = schedule[i].startMs;
        block.stopMs = schedule[i].stopMs;
        block.soundEndMs = block.startMs + record.Length;
        block.shiftMs = sentence.Targets[i].TimeOffset;
        blocks << block;
    }
    return blocks;
}

qint64 TimelineLengthMs(const QList<TimelineBlock>& blocks) {
    return blocks.isEmpty() ? 0 : blocks.last().stopMs;
}

qint64 RulerStepMs(double pxPerMs, int minGapPx) {
    static constexpr qint64 kSteps[] = {100,  200,   500,   1000,  2000,
                                        5000, 10000, 20000, 30000, 60000};
    for (const qint64 step : kSteps) {
        if (step * pxPerMs >= minGapPx)
            return step;
    }
    return kSteps[std::size(kSteps) - 1];
}

int BlockAt(const QList<TimelineBlock>& blocks, qint64 ms) {
    for (int i = 0; i < blocks.size(); ++i) {
        if (ms >= blocks[i].startMs && ms < blocks[i].stopMs)
            return i;
    }
    return -1;
}

} // namespace tavik
