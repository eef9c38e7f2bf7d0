#include "servicefromjson.h"

#include "service/servicefile.h"
#include "util/jsonfields.h"

#include <limits>

namespace tavik {

namespace {

constexpr qint64 kMaxCounted = 65535;
constexpr qint64 kMaxHeaderText = std::numeric_limits<std::int32_t>::max();
constexpr qint64 kInt16Min = std::numeric_limits<std::int16_t>::min();
constexpr qint64 kInt16Max = std::numeric_limits<std::int16_t>::max();

SatzRecord readSentence(const JsonFields& f) {
    SatzRecord satz;
    satz.Key = f.text(QStringLiteral("key"), kMaxCounted);
    satz.Text = f.text(QStringLiteral("text"), kMaxCounted);
    satz.LastTarget =
        static_cast<std::int16_t>(f.integer(QStringLiteral("last_target"), kInt16Min, kInt16Max));
    const JsonValue targets = f.value(QStringLiteral("targets"));
    const QString path = f.fieldPath(QStringLiteral("targets"));
    if (targets.isNull()) {
        satz.TargetsDimensioned = false;
        return satz;
    }
    if (!targets.isArray())
        throw JsonFieldError(path, QStringLiteral("not an array or null"));
    const JsonValue& list = targets;
    for (qsizetype i = 0; i < list.size(); ++i) {
        const JsonFields entry = jsonElement(list, path, i);
        SatzTarget target;
        target.AnnouncementKey = entry.text(QStringLiteral("key"), kMaxCounted);
        target.TimeOffset = static_cast<std::int16_t>(
            entry.integer(QStringLiteral("offset"), kInt16Min, kInt16Max));
        satz.Targets.append(target);
    }
    return satz;
}

} // namespace

QByteArray serviceBytesFromJson(const JsonValue& json) {
    const JsonFields top(json, QString());
    const JsonValue format = top.value(QStringLiteral("format"));
    if (!format.isString() || format.toString() != u"service")
        throw JsonFieldError(QStringLiteral("format"), QStringLiteral("not \"service\""));
    ServiceHeader header;
    header.Title = top.text(QStringLiteral("title"), kMaxHeaderText);
    header.Author = top.text(QStringLiteral("author"), kMaxHeaderText);
    header.Description = top.text(QStringLiteral("description"), kMaxHeaderText);
    header.Id = top.text(QStringLiteral("id"), kMaxHeaderText);
    const JsonValue list = top.array(QStringLiteral("sentences"));
    // The editor cannot open a service without sentences: sizing its list fails.
    if (list.isEmpty() || list.size() > kInt16Max)
        throw JsonFieldError(QStringLiteral("sentences"),
                             QStringLiteral("not 1 to %1 sentences").arg(kInt16Max));
    QList<SatzRecord> sentences;
    for (qsizetype i = 0; i < list.size(); ++i)
        sentences.append(readSentence(jsonElement(list, QStringLiteral("sentences"), i)));
    QByteArray bytes = ServiceFileBytes(header, sentences);
    if (top.has(QStringLiteral("tail")))
        bytes.append(top.hex(QStringLiteral("tail")));
    return bytes;
}

} // namespace tavik
