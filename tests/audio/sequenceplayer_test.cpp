#include "audio/emulatorbackend.h"
#include "audio/recordingbackend.h"
#include "audio/sentenceschedule.h"
#include "audio/sequenceplayer.h"
#include "support/errorof.h"
#include "util/tickcount.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;

namespace {

struct Player {
    EmulatorBackend emulator;
    RecordingBackend recorder{emulator, [] { return qint64(GetTickCount()); }};
    modMCI mci{recorder, {}};
    AnnouncementTable table;
    QStringList log;
    std::int16_t busy = 0;

    void add(const QString& key, const QString& title, std::int32_t length) {
        table.Announcements.append({title, {}, key, length, true, -1, 0, false});
        table.AnnouncementCount = static_cast<std::int16_t>(table.Announcements.size());
    }
    void play(const SatzRecord& s) {
        PlayAnnouncementSequence(mci, table, s, busy, [this](const QString& l) { log << l; });
    }
    qint64 timeOf(const QString& command, int nth = 0) const {
        for (const auto& e : recorder.entries())
            if (e.command == command && nth-- == 0)
                return e.time;
        return -1;
    }
};

SatzRecord sentence(const QString& text, const QList<SatzTarget>& targets) {
    return {"0472", text, targets, static_cast<std::int16_t>(targets.size() - 1)};
}

} // namespace

TEST(PlayAnnouncementSequence, AnEmptySentenceLogsThreeLinesAndPlaysNothing) {
    Player p;
    p.play(sentence("Leer", {}));
    EXPECT_EQ(p.log, (QStringList{"", "ANNOUNCE 'Leer'", "READY"}));
    EXPECT_TRUE(p.recorder.entries().isEmpty());
    EXPECT_EQ(p.busy, 0);
}

TEST(PlayAnnouncementSequence, PlaysEachEntryForItsLengthAndLogsIt) {
    Player p;
    p.add("0000", "Gong", 120);
    p.add("0001", "Achtung an Gleis 1", 80);
    p.play(sentence("Gong Achtung an Gleis 1", {{"0000", 0}, {"0001", 0}}));
    EXPECT_EQ(p.log, (QStringList{"", "ANNOUNCE 'Gong Achtung an Gleis 1'", "\tPLAY '0000' 'Gong'",
                                  "\tPLAY '0001' 'Achtung an Gleis 1'", "READY"}));
    EXPECT_EQ(p.recorder.commands(), (QStringList{"seek 0000 to start", "play 0000", "stop 0000",
                                                  "seek 0001 to start", "play 0001", "stop 0001"}));
    const qint64 firstPlay = p.timeOf("play 0000");
    const qint64 firstStop = p.timeOf("stop 0000");
    // Lower bounds are exact; upper bounds leave room for a busy machine.
    EXPECT_GT(firstStop - firstPlay, 120);
    EXPECT_LT(firstStop - firstPlay, 120 + 150);
    // With no shift the next sound starts as soon as the previous one's length has passed.
    EXPECT_LT(p.timeOf("play 0001") - firstStop, 100);
    EXPECT_EQ(p.busy, 0);
}

TEST(PlayAnnouncementSequence, ANegativeShiftStartsTheNextSoundBeforeThePreviousEnds) {
    Player p;
    p.add("0000", "Einfahrt", 300);
    p.add("0001", "Zug nach Berlin Hauptbahnhof", 50);
    p.play(sentence("x", {{"0000", -200}, {"0001", 0}}));
    const qint64 play0 = p.timeOf("play 0000");
    const qint64 play1 = p.timeOf("play 0001");
    // The first sound is cut by its stop 200 ms before its end, and the next one starts.
    EXPECT_GT(play1 - play0, 100);
    EXPECT_LT(play1 - play0, 300);
    EXPECT_LE(p.timeOf("stop 0000"), play1);
}

TEST(PlayAnnouncementSequence, AShiftOfMinus500PlaysTheNextSound500MsBeforeThePreviousEnds) {
    Player p;
    p.add("0000", "Bitte Vorsicht bei der Einfahrt", 600);
    p.add("0001", "Gong", 20);
    p.play(sentence("x", {{"0000", -500}, {"0001", 0}}));
    const qint64 play0 = p.timeOf("play 0000");
    const qint64 play1 = p.timeOf("play 0001");
    // 0000 would sound until play0 + 600; the next play comes 500 ms before that, right
    // after the stop that cuts 0000 off.
    EXPECT_GT(play1 - play0, 100);
    EXPECT_LT(play1 - play0, 100 + 150);
    EXPECT_LE(p.timeOf("stop 0000"), play1);
    EXPECT_GE(p.timeOf("stop 0000"), play0 + 100);
}

TEST(PlayAnnouncementSequence, EachEntryStartsNoSoonerThanTheRenderersScheduleHasIt) {
    Player p;
    p.add("0000", "Gong", 30);
    p.add("0001", "Achtung", 20);
    const SatzRecord s =
        sentence("x", {{"0000", 0}, {"0001", 15}, {"0000", -10}, {"0001", -40}, {"0000", 0}});
    p.play(s);
    const QList<ScheduledEntry> schedule = ScheduleSentence(p.table, s);
    ASSERT_EQ(schedule.size(), 5);
    // Ticks of the plays: each wait runs to the tick after its end, counted from a tick no
    // earlier than its play's, so the schedule's steps are the least the ticks can show.
    for (int i = 0; i + 1 < 5; ++i) {
        const QString key = s.Targets[i].AnnouncementKey;
        const QString next = s.Targets[i + 1].AnnouncementKey;
        const int nth = static_cast<int>(
            std::count_if(s.Targets.cbegin(), s.Targets.cbegin() + i,
                          [&](const SatzTarget& t) { return t.AnnouncementKey == key; }));
        const int nextNth = static_cast<int>(
            std::count_if(s.Targets.cbegin(), s.Targets.cbegin() + i + 1,
                          [&](const SatzTarget& t) { return t.AnnouncementKey == next; }));
        EXPECT_GE(p.timeOf("play " + next, nextNth) - p.timeOf("play " + key, nth),
                  schedule[i + 1].startMs - schedule[i].startMs)
            << "entry " << i + 1;
    }
}

TEST(PlayAnnouncementSequence, AnUnknownKeyRaisesTheSubscriptErrorAndLeavesBusySet) {
    Player p;
    p.add("0000", "Gong", 10);
    EXPECT_EQ(errorOf([&] {
                  p.play(sentence("x", {{"0000", 0}, {"0099", 0}}));
              }),
              rt::SubscriptOutOfRange);
    EXPECT_EQ(p.busy, -1);
    EXPECT_FALSE(p.log.contains("READY"));
    EXPECT_EQ(p.log.last(), QStringLiteral("\tPLAY '0000' 'Gong'"));
}

TEST(PlayAnnouncementSequence, AWaitBeyond32BitsRaisesOverflow) {
    Player p;
    p.add("0000", "Lang", 2147483647);
    EXPECT_EQ(errorOf([&] { p.play(sentence("x", {{"0000", 1}})); }), rt::Overflow);
    EXPECT_EQ(p.busy, -1);
}
