#include "service_input.h"

#include "service/servicefile.h"
#include "util/runtimeerror.h"

namespace tavik::fuzz {

namespace {

// Records held after a read: each one began at bytes of its own in the input.
qint64 storedRecords(const ServiceReadResult& read) {
    qint64 total = read.sentences.size();
    for (const SatzRecord& satz : read.sentences)
        total += satz.Targets.size();
    return total;
}

bool sameSentences(const QList<SatzRecord>& a, const QList<SatzRecord>& b) {
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (a[i].Key != b[i].Key || a[i].Text != b[i].Text || a[i].LastTarget != b[i].LastTarget ||
            a[i].TargetsDimensioned != b[i].TargetsDimensioned ||
            a[i].Targets.size() != b[i].Targets.size())
            return false;
        for (qsizetype j = 0; j < a[i].Targets.size(); ++j) {
            if (a[i].Targets[j].AnnouncementKey != b[i].Targets[j].AnnouncementKey ||
                a[i].Targets[j].TimeOffset != b[i].Targets[j].TimeOffset)
                return false;
        }
    }
    return true;
}

} // namespace

bool serviceInput(const std::uint8_t* data, std::size_t size) {
    const ServiceReadResult read = ReadServiceBytes(data, static_cast<qint64>(size));
    if (storedRecords(read) > static_cast<qint64>(size))
        return false;
    const qint64 textBytes = read.header.Title.size() + read.header.Author.size() +
                             read.header.Description.size() + read.header.Id.size();
    if (textBytes > static_cast<qint64>(size))
        return false;

    QByteArray written;
    try {
        written = ServiceFileBytes(read.header, read.sentences);
    } catch (const RuntimeError&) {
        // Nothing read can overflow its field again; a raise here is an inconsistency.
        return false;
    }
    // Reading goes by counts, so a complete read is exactly a prefix of its input.
    if (read.ok() && written != QByteArray::fromRawData(reinterpret_cast<const char*>(data),
                                                        std::min<qsizetype>(written.size(), size)))
        return false;
    if (!read.sentences.isEmpty()) {
        const ServiceReadResult again =
            ReadServiceBytes(reinterpret_cast<const uchar*>(written.constData()), written.size());
        if (!again.ok() || !sameSentences(again.sentences, read.sentences) ||
            again.header.Title != read.header.Title || again.header.Id != read.header.Id)
            return false;
    }
    return true;
}

} // namespace tavik::fuzz
