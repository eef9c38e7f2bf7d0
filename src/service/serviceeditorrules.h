#pragma once

#include <QString>
#include <QStringList>

namespace tavik {

// What the service editor's timer looks at.
struct DienstListState {
    bool serviceHasRows = false; // lsvDienst
    bool targetHasRows = false;  // lsvTarget
    bool isPlaying = false;
};

// Which commands the timer leaves enabled; `txtText` disabled also means it is emptied.
struct DienstCommandStates {
    bool cmdEdit = false;
    bool cmdRem = false;
    bool cmdUp = false;
    bool cmdDown = false;
    bool cmdPlay = false;
    bool txtText = false;
    bool cmdAuf = false;
    bool cmdAb = false;
    bool cmdEntf = false;
    bool cmdSave = false;
    bool cmdAbsp = false;
    bool cmdAdd = false;

    bool operator==(const DienstCommandStates&) const = default;
};

// The rules the editor re-derives every 100 ms: the service commands need a sentence row, the
// sentence commands a target row, and while a sentence plays nothing may start another
// playback, add a sentence or edit one.
DienstCommandStates DienstCommandsFor(const DienstListState& state);

// A time shift as it stands after the user typed it: a number above 0 typed without "+" gets
// one in front (5 becomes +5). Zero, negative numbers and texts that are no number stay as
// typed; saving the sentence is what rejects those.
QString TimeShiftAfterEdit(const QString& typed);

// Widths in twips. The narrower ones leave room for the vertical scroll bar.
inline constexpr double kServiceTextWidth = 4124.977;
inline constexpr double kServiceTextWidthScrolling = 3885.166;
inline constexpr int kServiceRowsBeforeScrolling = 14;
inline constexpr double kTargetTitleWidth = 3749.669;
inline constexpr double kTargetTitleWidthScrolling = 3509.858;
inline constexpr int kTargetRowsBeforeScrolling = 6; // narrowed once a row above this is added
inline constexpr double kSourceNameWidth = 4604.599;
inline constexpr double kSourceNameWidthScrolling = 4364.788;
inline constexpr int kSourceRowsBeforeScrolling = 6; // narrowed from announcement index 7 on

// The text column of the service list for `rowCount` rows: narrow from 14 rows on.
double ServiceTextColumnWidth(int rowCount);

// The first of `texts` (counted from 0) that holds `answer`, both lower-cased; -1 when none
// does or the answer is empty.
int FindRowContaining(const QStringList& texts, const QString& answer);

} // namespace tavik
