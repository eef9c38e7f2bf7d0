#include "servicesentences.h"

#include "util/conversions.h"
#include "util/packagelock.h"
#include "util/runtimeerror.h"

#include <QFileInfo>
#include <QSet>

namespace tavik {

namespace {

constexpr int kKeyLength = 4;
constexpr int kPossibleKeys = 10000;

bool allKeysTaken(const QList<SatzRecord>& slots, qsizetype upTo) {
    QSet<QString> taken;
    for (qsizetype i = 0; i <= upTo && i < slots.size(); ++i) {
        const QString& key = slots[i].Key;
        if (key.size() == kKeyLength && key.front().isDigit())
            taken.insert(key);
    }
    return taken.size() >= kPossibleKeys;
}

} // namespace

std::int16_t ServiceSentences::CreateItem(RandomGenerator& generator) {
    const std::int16_t next = addInteger(SatzCount, 1); // the slot after it must be countable
    Q_UNUSED(next);
    Saetze.resize(SatzCount + 1);
    // With every key taken the search below could never end.
    if (SatzCount + 1 >= kPossibleKeys && allKeysTaken(Saetze, SatzCount))
        throw RuntimeError(rt::Overflow);
    QString key;
    bool taken = true;
    while (taken) {
        key = GenerateKey(generator, kKeyLength);
        taken = false;
        for (qsizetype i = 0; i <= SatzCount; ++i) {
            if (Saetze[i].Key == key) {
                taken = true;
                break;
            }
        }
    }
    SatzRecord& slot = Saetze[SatzCount];
    slot = SatzRecord{};
    slot.Key = key;
    // A new sentence's entries are not set until it is saved on its page.
    slot.LastTarget = 0;
    slot.TargetsDimensioned = false;
    const std::int16_t result = SatzCount;
    SatzCount = next;
    return result;
}

std::int32_t ServiceSentences::FindTargetByKey(const QString& key) const {
    for (std::int32_t i = 0; i <= SatzCount + 1; ++i) {
        if (i >= Saetze.size())
            throw RuntimeError(rt::SubscriptOutOfRange);
        if (Saetze[i].Key == key)
            return i;
    }
    return -1;
}

std::int32_t ServiceSentences::SentenceIndex(const QString& key) const {
    const std::int32_t index = FindTargetByKey(key);
    if (index < 0 || index >= Saetze.size())
        throw RuntimeError(rt::SubscriptOutOfRange);
    return index;
}

QList<SatzRecord> ServiceSentences::SentencesInOrder(const QStringList& rowKeys) const {
    QList<SatzRecord> ordered;
    ordered.reserve(rowKeys.size());
    for (const QString& key : rowKeys)
        ordered.append(Saetze[SentenceIndex(key)]);
    return ordered;
}

void ServiceSentences::Load(const QList<SatzRecord>& sentences) {
    Saetze = sentences;
    SatzCount = static_cast<std::int16_t>(sentences.size());
}

QString SentenceText(const QList<SatzTarget>& targets, std::int16_t lastTarget,
                     const AnnouncementTable& table) {
    QString text;
    for (std::int32_t i = 0; i <= lastTarget; ++i) {
        if (i >= targets.size())
            throw RuntimeError(rt::SubscriptOutOfRange);
        const std::int32_t index = FindAnnouncementByKey(table, targets[i].AnnouncementKey);
        if (index < 0)
            throw RuntimeError(rt::SubscriptOutOfRange);
        const AnnouncementRecord& record = table.Announcements[index];
        if (record.NameVisible)
            text += record.Title + u' ';
    }
    return text;
}

void SaveIntoArray(SatzRecord& satz, const QList<TargetRow>& rows, const AnnouncementTable& table) {
    satz.LastTarget = CInt(static_cast<double>(rows.size()) - 1);
    satz.Targets.resize(rows.size());
    satz.TargetsDimensioned = true;
    for (qsizetype j = 0; j < rows.size(); ++j) {
        satz.Targets[j].AnnouncementKey = rows[j].AnnouncementKey;
        satz.Targets[j].TimeOffset = CInt(Variant::fromString(rows[j].TimeText));
    }
    satz.Text.clear();
    satz.Text = SentenceText(satz.Targets, satz.LastTarget, table);
}

void SaveToFile(const QString& path, const ServiceHeader& header, const ServiceSentences& sentences,
                const QStringList& rowKeys) {
    // The service file's tail is read and written back: one writer of the package at a time.
    const PackageWriteLock lock(QFileInfo(path).absolutePath());
    WriteServiceFile(path, ServiceFileBytes(header, sentences.SentencesInOrder(rowKeys)));
}

QStringList ServiceSentences::RekeyDuplicates(RandomGenerator& generator) {
    QStringList duplicated;
    const qsizetype used = std::min<qsizetype>(SatzCount, Saetze.size());
    // Every key of the file counts as taken, so a fresh key meets none of them.
    QSet<QString> taken;
    for (qsizetype i = 0; i < used; ++i)
        taken.insert(Saetze[i].Key);
    QSet<QString> seen;
    for (qsizetype i = 0; i < used; ++i) {
        QString& key = Saetze[i].Key;
        if (!seen.contains(key)) {
            seen.insert(key);
            continue;
        }
        if (!duplicated.contains(key))
            duplicated << key;
        if (taken.size() >= kPossibleKeys)
            throw RuntimeError(rt::Overflow);
        QString fresh;
        do {
            fresh = GenerateKey(generator, kKeyLength);
        } while (taken.contains(fresh));
        key = fresh;
        taken.insert(fresh);
        seen.insert(fresh);
    }
    return duplicated;
}

} // namespace tavik
