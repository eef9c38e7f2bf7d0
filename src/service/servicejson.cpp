#include "servicejson.h"

namespace tavik {

// Names are written in sorted order: the order a JSON object of these fields prints in.
void writeServiceJson(JsonTextWriter& json, const ServiceHeader& header,
                      const QList<SatzRecord>& sentences, const QByteArray& tail) {
    json.beginObject();
    json.name(QLatin1StringView("author")).string(header.Author);
    json.name(QLatin1StringView("description")).string(header.Description);
    json.name(QLatin1StringView("format")).string(u"service");
    json.name(QLatin1StringView("id")).string(header.Id);
    json.name(QLatin1StringView("sentences")).beginArray();
    for (const SatzRecord& satz : sentences) {
        json.beginObject();
        json.name(QLatin1StringView("key")).string(satz.Key);
        json.name(QLatin1StringView("last_target")).integer(satz.LastTarget);
        json.name(QLatin1StringView("targets"));
        if (satz.TargetsDimensioned) {
            json.beginArray();
            for (const SatzTarget& target : satz.Targets) {
                json.beginObject();
                json.name(QLatin1StringView("key")).string(target.AnnouncementKey);
                json.name(QLatin1StringView("offset")).integer(int(target.TimeOffset));
                json.endObject();
            }
            json.endArray();
        } else {
            json.null();
        }
        json.name(QLatin1StringView("text")).string(satz.Text);
        json.endObject();
    }
    json.endArray();
    if (!tail.isEmpty())
        json.name(QLatin1StringView("tail")).string(QString::fromLatin1(tail.toHex()));
    json.name(QLatin1StringView("title")).string(header.Title);
    json.endObject();
}

} // namespace tavik
