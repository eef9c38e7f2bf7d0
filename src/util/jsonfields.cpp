#include "jsonfields.h"

#include "util/cp1252guard.h"

#include <cmath>

namespace tavik {

QString JsonFields::fieldPath(const QString& name) const {
    return path_.isEmpty() ? name : path_ + u'.' + name;
}

void JsonFields::fail(const QString& name, const QString& problem) const {
    throw JsonFieldError(fieldPath(name), problem);
}

QJsonValue JsonFields::value(const QString& name) const {
    if (!object_.contains(name))
        fail(name, QStringLiteral("missing"));
    return object_.value(name);
}

QString JsonFields::text(const QString& name, qint64 maxBytes) const {
    return jsonText(value(name), fieldPath(name), maxBytes);
}

qint64 JsonFields::integer(const QString& name, qint64 min, qint64 max) const {
    return jsonInteger(value(name), fieldPath(name), min, max);
}

bool JsonFields::boolean(const QString& name) const {
    const QJsonValue v = value(name);
    if (!v.isBool())
        fail(name, QStringLiteral("not true or false"));
    return v.toBool();
}

QJsonArray JsonFields::array(const QString& name) const {
    const QJsonValue v = value(name);
    if (!v.isArray())
        fail(name, QStringLiteral("not an array"));
    return v.toArray();
}

QJsonObject JsonFields::object(const QString& name) const {
    const QJsonValue v = value(name);
    if (!v.isObject())
        fail(name, QStringLiteral("not an object"));
    return v.toObject();
}

QByteArray JsonFields::hex(const QString& name) const {
    const QJsonValue v = value(name);
    static const QString digits = QStringLiteral("0123456789abcdefABCDEF");
    const QString s = v.toString();
    bool ok = v.isString() && s.size() % 2 == 0;
    for (qsizetype i = 0; ok && i < s.size(); ++i)
        ok = digits.contains(s[i]);
    if (!ok)
        fail(name, QStringLiteral("not an even number of hexadecimal digits"));
    return QByteArray::fromHex(s.toLatin1());
}

QString jsonElementPath(const QString& path, qsizetype index) {
    return QStringLiteral("%1[%2]").arg(path).arg(index);
}

JsonFields jsonElement(const QJsonArray& array, const QString& path, qsizetype index) {
    const QString at = jsonElementPath(path, index);
    if (!array.at(index).isObject())
        throw JsonFieldError(at, QStringLiteral("not an object"));
    return JsonFields(array.at(index).toObject(), at);
}

qint64 jsonInteger(const QJsonValue& value, const QString& path, qint64 min, qint64 max) {
    const double d = value.toDouble();
    if (!value.isDouble() || !std::isfinite(d) || std::floor(d) != d || d < double(min) ||
        d > double(max))
        throw JsonFieldError(path,
                             QStringLiteral("not a whole number from %1 to %2").arg(min).arg(max));
    return static_cast<qint64>(d);
}

QString jsonText(const QJsonValue& value, const QString& path, qint64 maxBytes) {
    if (!value.isString())
        throw JsonFieldError(path, QStringLiteral("not a text"));
    const QString text = value.toString();
    if (const QString unheld = UnheldCharactersProblem(text); !unheld.isEmpty())
        throw JsonFieldError(path, unheld);
    if (text.size() > maxBytes)
        throw JsonFieldError(path, QStringLiteral("longer than %1 bytes").arg(maxBytes));
    return text;
}

} // namespace tavik
