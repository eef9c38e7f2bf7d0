#include "cli/lossytext.h"

#include "cli/tool.h"
#include "util/cp1252.h"
#include "util/cp1252guard.h"

#include <QJsonArray>

namespace tavik::cli {

namespace {

QString asWritten(const QString& text) {
    return ThroughCp1252(text);
}

QJsonValue lossyValue(const QJsonValue& value) {
    if (value.isString())
        return asWritten(value.toString());
    if (value.isArray()) {
        QJsonArray array;
        for (const QJsonValue& element : value.toArray())
            array.append(lossyValue(element));
        return array;
    }
    if (value.isObject())
        return lossyTexts(value.toObject());
    return value;
}

} // namespace

bool takeLossy(QStringList& args) {
    return args.removeAll(QStringLiteral("--lossy")) > 0;
}

int refuseUnheld(QTextStream& err, const QString& file, const QString& field, const QString& text) {
    const QString problem = UnheldCharactersProblem(text);
    if (problem.isEmpty())
        return 0;
    return fail(err, file, field + QStringLiteral(": ") + problem);
}

QJsonObject lossyTexts(const QJsonObject& json) {
    QJsonObject lossy;
    for (auto it = json.begin(); it != json.end(); ++it)
        lossy.insert(asWritten(it.key()), lossyValue(it.value()));
    return lossy;
}

} // namespace tavik::cli
