#include "servicejson.h"

#include <QJsonArray>

namespace tavik {

QJsonObject serviceToJson(const ServiceHeader& header, const QList<SatzRecord>& sentences) {
    QJsonArray list;
    for (const SatzRecord& satz : sentences) {
        QJsonValue targets = QJsonValue::Null;
        if (satz.TargetsDimensioned) {
            QJsonArray entries;
            for (const SatzTarget& target : satz.Targets)
                entries.append(QJsonObject{{"key", target.AnnouncementKey},
                                           {"offset", int(target.TimeOffset)}});
            targets = entries;
        }
        list.append(QJsonObject{{"key", satz.Key},
                                {"text", satz.Text},
                                {"targets", targets},
                                {"last_target", int(satz.LastTarget)}});
    }
    return QJsonObject{{"format", "service"},     {"title", header.Title},
                       {"author", header.Author}, {"description", header.Description},
                       {"id", header.Id},         {"sentences", list}};
}

} // namespace tavik
