#pragma once

#include "audio/sentenceschedule.h"
#include "audio/soundreader.h"

#include <QByteArray>

namespace tavik {

// The sentence as the player schedules it, mixed offline into a 16-bit PCM WAVE file image:
// each entry from its start frame to its stop frame (a stop cuts, a positive shift is
// silence). Runtime errors as ScheduleSentence raises them.
QByteArray RenderSentenceWave(const AnnouncementTable& table, const SatzRecord& sentence,
                              OutputFormat format);

// The frame of a millisecond at a rate, as the renderer places starts and stops.
qint64 frameOfMs(qint64 ms, int sampleRate);

} // namespace tavik
