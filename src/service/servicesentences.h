#pragma once

#include "package/announcementrecord.h"
#include "service/satzrecord.h"
#include "service/servicefile.h"
#include "util/modrandom.h"

#include <QList>
#include <QStringList>
#include <cstdint>

namespace tavik {

// The sentences the service editor holds: every sentence created or loaded since the service
// was opened, in that order. Sentences removed from the service list stay here; the list
// rows (their keys, in service order) say which ones the service holds.
class ServiceSentences {
public:
    QList<SatzRecord> Saetze;
    std::int16_t SatzCount = 0;

    // Appends a sentence with a fresh four-digit key, unique among the slots in use, and
    // returns its index. Raises the overflow error when all ten thousand keys are taken.
    std::int16_t CreateItem(RandomGenerator& generator);

    // The index of the sentence with this key. A key that is not held runs past the last
    // slot: the runtime's subscript error.
    std::int32_t FindTargetByKey(const QString& key) const;

    // FindTargetByKey for a caller that goes on to use the sentence: a key it does not find
    // (-1) is the runtime's subscript error too, so no caller ever reads before the first slot.
    std::int32_t SentenceIndex(const QString& key) const;

    // The sentences of the service list rows, in row order, as the file holds them.
    QList<SatzRecord> SentencesInOrder(const QStringList& rowKeys) const;

    // Takes over the sentences of a service that was read whole.
    void Load(const QList<SatzRecord>& sentences);

    // Gives every sentence in use whose key an earlier one already has a fresh key, so that
    // each is found by its own key. Returns the keys that were held more than once.
    QStringList RekeyDuplicates(RandomGenerator& generator);
};

// One row of the target list: the time shift as typed and the announcement key (its tag).
struct TargetRow {
    QString TimeText;
    QString AnnouncementKey;
};

// The display text of a sentence: the title and a blank of every entry whose announcement
// shows its name. An entry whose key is not in the table raises the subscript error.
QString SentenceText(const QList<SatzTarget>& targets, std::int16_t lastTarget,
                     const AnnouncementTable& table);

// Copies the target list into `satz` and rebuilds its text. A time shift that is not a
// number raises the type-mismatch error, one out of the 16-bit range the overflow error.
void SaveIntoArray(SatzRecord& satz, const QList<TargetRow>& rows, const AnnouncementTable& table);

// The save command's file: the header texts and the listed sentences, written over `path`.
void SaveToFile(const QString& path, const ServiceHeader& header, const ServiceSentences& sentences,
                const QStringList& rowKeys);

} // namespace tavik
