#include "service/serviceeditorrules.h"

#include "util/conversions.h"

namespace tavik {

DienstCommandStates DienstCommandsFor(const DienstListState& state) {
    DienstCommandStates c;
    const bool rows = state.serviceHasRows;
    c.cmdEdit = rows;
    c.cmdRem = rows;
    c.cmdUp = rows;
    c.cmdDown = rows;
    c.cmdPlay = rows && !state.isPlaying;
    c.txtText = rows;

    const bool targets = state.targetHasRows;
    c.cmdAuf = targets;
    c.cmdAb = targets;
    c.cmdEntf = targets;
    c.cmdSave = targets;

    if (state.isPlaying) {
        c.cmdAbsp = false;
        c.cmdPlay = false;
        c.cmdAdd = false;
        c.cmdEdit = false;
    } else {
        c.cmdAbsp = targets;
        c.cmdAdd = true;
    }
    return c;
}

QString TimeShiftAfterEdit(const QString& typed) {
    double value = 0;
    if (!parseNumericText(typed, value))
        return typed;
    if (roundHalfEven(value) > 0 && !typed.contains(u'+'))
        return u'+' + typed;
    return typed;
}

double ServiceTextColumnWidth(int rowCount) {
    return rowCount < kServiceRowsBeforeScrolling ? kServiceTextWidth : kServiceTextWidthScrolling;
}

int FindRowContaining(const QStringList& texts, const QString& answer) {
    if (answer.isEmpty())
        return -1;
    const QString wanted = answer.toLower();
    for (int i = 0; i < texts.size(); ++i) {
        if (texts[i].toLower().contains(wanted))
            return i;
    }
    return -1;
}

} // namespace tavik
