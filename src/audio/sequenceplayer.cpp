#include "sequenceplayer.h"

#include "util/conversions.h"
#include "util/runtimeerror.h"

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
        if (i >= sequence.Targets.size())
            throw RuntimeError(rt::SubscriptOutOfRange);
        const SatzTarget& target = sequence.Targets[i];
        const std::int32_t index = FindAnnouncementByKey(table, target.AnnouncementKey);
        if (index < 0)
            throw RuntimeError(rt::SubscriptOutOfRange);
        const AnnouncementRecord& record = table.Announcements[index];
        writeLog(QStringLiteral("\tPLAY '") + record.Key + QStringLiteral("' '") + record.Title +
                 QStringLiteral("'"));
        const std::int32_t wait = addLong(target.TimeOffset, record.Length);
        mci.MciSeekToStart(record.Key);
        mci.MciPlay(record.Key);
        WaitMilliseconds(wait);
        mci.MciStop(record.Key);
        QCoreApplication::processEvents();
    }
    writeLog(QStringLiteral("READY"));
    busy = VbFalse;
}

} // namespace tavik
