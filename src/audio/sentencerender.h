#pragma once

#include "audio/sentenceschedule.h"
#include "audio/soundreader.h"

#include <QByteArray>
#include <functional>

namespace tavik {

// The sentence as the player schedules it, mixed offline into a 16-bit PCM WAVE file: each
// entry from its start frame to its stop frame (a stop cuts, a positive shift is silence).
// The file is made block by block, so a long sentence never sits in memory whole. Runtime
// errors as ScheduleSentence raises them, before anything is made.

// The size of the WAVE file the sentence renders to; -1 when it is longer than a WAVE file
// can hold (its data size is a 32-bit count).
qint64 RenderedWaveBytes(const AnnouncementTable& table, const SatzRecord& sentence,
                         OutputFormat format);

// Hands the file to `sink` piece by piece: the header first, then the frames in order. False,
// with nothing handed on, when the sentence is longer than a WAVE file can hold.
using WaveSink = std::function<void(const char* data, qint64 size)>;
bool RenderSentence(const AnnouncementTable& table, const SatzRecord& sentence, OutputFormat format,
                    const WaveSink& sink);

// The whole file image; empty when the sentence is longer than a WAVE file can hold.
QByteArray RenderSentenceWave(const AnnouncementTable& table, const SatzRecord& sentence,
                              OutputFormat format);

// Writes the file to `path` like every other file of the program (a failed write keeps the
// old file); false, with nothing written, when the sentence is longer than a WAVE file can
// hold.
bool RenderSentenceToFile(const AnnouncementTable& table, const SatzRecord& sentence,
                          OutputFormat format, const QString& path);

// The frame of a millisecond at a rate, as the renderer places starts and stops.
qint64 frameOfMs(qint64 ms, int sampleRate);

} // namespace tavik
