#pragma once

#include "audio/modmci.h"
#include "audio/timelinelayout.h"
#include "service/sentencetimeline.h"

#include <QTimer>
#include <algorithm>
#include <functional>
#include <vector>

namespace tavik::test {

// Where the timeline's cursor stood, and where the output's own position of the entry that
// played put it (its block's start plus the position, at most the block's length).
struct CursorSample {
    qint64 cursor;
    int entry;
    qint64 output;
};

// Samples the cursor every 15 ms while `play` runs, whenever an entry plays.
inline std::vector<CursorSample> sampleCursor(SentenceTimeline* timeline, modMCI& mci,
                                              const std::function<void()>& play) {
    const QList<TimelineBlock> blocks = timeline->blocks();
    std::vector<CursorSample> samples;
    QTimer sampler;
    sampler.setInterval(15);
    QObject::connect(&sampler, &QTimer::timeout, [&] {
        const int entry = timeline->playingEntry();
        if (entry < 0 || entry >= blocks.size())
            return;
        // Read right after the cursor: the position the output reports for that entry now.
        const qint64 cursor = timeline->cursorMs();
        const TimelineBlock& block = blocks[entry];
        const qint64 position = mci.PlayPosition(block.key);
        samples.push_back(
            {cursor, entry, block.startMs + std::min(position, block.stopMs - block.startMs)});
    });
    sampler.start();
    play();
    sampler.stop();
    return samples;
}

} // namespace tavik::test
