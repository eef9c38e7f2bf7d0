#include "sequenceplayer.h"

#include "audio/sentenceschedule.h"
#include "util/conversions.h"

#include <QCoreApplication>

namespace tavik {

void PlayAnnouncement(modMCI& mci, const AnnouncementRecord& record, bool wait) {
    mci.MciPlay(record.Key);
    if (wait) {
        WaitMilliseconds(record.Length);
        mci.MciStop(record.Key);
    }
}

void PlayAnnouncementSequence(modMCI& mci, const AnnouncementTable& table,
                              const SatzRecord& sequence, std::int16_t& busy,
                              const std::function<void(const QString&)>& writeLog) {
    busy = VbTrue;
    writeLog(QString());
    writeLog(QStringLiteral("ANNOUNCE '") + sequence.Text + QStringLiteral("'"));
    for (int i = 0; i <= sequence.LastTarget; ++i) {
        // A copy: events run while it plays, and they may load the table afresh.
        const AnnouncementRecord record = EntryAnnouncement(table, sequence, i);
        writeLog(QStringLiteral("\tPLAY '") + record.Key + QStringLiteral("' '") + record.Title +
                 QStringLiteral("'"));
        // The wait, and with it when the next entry starts, is the one ScheduleSentence
        // gives the renderer.
        const std::int32_t wait = EntryWait(sequence.Targets[i], record);
        mci.MciSeekToStart(record.Key);
        mci.MciPlay(record.Key);
        const bool waited = WaitMilliseconds(wait);
        mci.MciStop(record.Key);
        if (!waited)
            break; // the editor is closing
        QCoreApplication::processEvents();
    }
    writeLog(QStringLiteral("READY"));
    busy = VbFalse;
}

} // namespace tavik
