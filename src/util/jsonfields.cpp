#include "jsonfields.h"

#include "util/cp1252guard.h"

#include <cmath>

namespace tavik {

namespace {

// What is wrong with `value` as a text, or nothing.
QString textProblem(const JsonValue& value, const QString& text, qint64 maxBytes) {
    if (!value.isString())
        return QStringLiteral("not a text");
    if (const QString unheld = UnheldCharactersProblem(text); !unheld.isEmpty())
        return unheld;
    if (text.size() > maxBytes)
        return QStringLiteral("longer than %1 bytes").arg(maxBytes);
    return {};
}

bool isWholeNumberIn(const JsonValue& value, qint64 min, qint64 max) {
    const double d = value.toDouble();
    return value.isDouble() && std::isfinite(d) && std::floor(d) == d && d >= double(min) &&
           d <= double(max);
}

} // namespace

QString JsonFields::path() const {
    if (parent_)
        return jsonElementPath(parent_->fieldPath(path_), index_);
    return index_ < 0 ? path_ : jsonElementPath(path_, index_);
}

QString JsonFields::fieldPath(const QString& name) const {
    const QString at = path();
    return at.isEmpty() ? name : at + u'.' + name;
}

void JsonFields::fail(const QString& name, const QString& problem) const {
    throw JsonFieldError(fieldPath(name), problem);
}

JsonValue JsonFields::value(const JsonName& name) const {
    const JsonValue v = object_.value(name, next_);
    if (v.isUndefined())
        fail(name.text(), QStringLiteral("missing"));
    return v;
}

QString JsonFields::text(const JsonName& name, qint64 maxBytes) const {
    const JsonValue v = value(name);
    const QString text = v.toString();
    const QString problem = textProblem(v, text, maxBytes);
    if (!problem.isEmpty())
        fail(name.text(), problem);
    return text;
}

qint64 JsonFields::integer(const JsonName& name, qint64 min, qint64 max) const {
    const JsonValue v = value(name);
    if (!isWholeNumberIn(v, min, max))
        fail(name.text(), QStringLiteral("not a whole number from %1 to %2").arg(min).arg(max));
    return static_cast<qint64>(v.toDouble());
}

bool JsonFields::boolean(const JsonName& name) const {
    const JsonValue v = value(name);
    if (!v.isBool())
        fail(name.text(), QStringLiteral("not true or false"));
    return v.toBool();
}

JsonValue JsonFields::array(const JsonName& name) const {
    const JsonValue v = value(name);
    if (!v.isArray())
        fail(name.text(), QStringLiteral("not an array"));
    return v;
}

JsonValue JsonFields::object(const JsonName& name) const {
    const JsonValue v = value(name);
    if (!v.isObject())
        fail(name.text(), QStringLiteral("not an object"));
    return v;
}

QByteArray JsonFields::hex(const JsonName& name) const {
    const JsonValue v = value(name);
    static const QString digits = QStringLiteral("0123456789abcdefABCDEF");
    const QString s = v.toString();
    bool ok = v.isString() && s.size() % 2 == 0;
    for (qsizetype i = 0; ok && i < s.size(); ++i)
        ok = digits.contains(s[i]);
    if (!ok)
        fail(name.text(), QStringLiteral("not an even number of hexadecimal digits"));
    return QByteArray::fromHex(s.toLatin1());
}

QString jsonElementPath(const QString& path, qsizetype index) {
    return QStringLiteral("%1[%2]").arg(path).arg(index);
}

JsonFields jsonElement(const JsonValue& array, const QString& path, qsizetype index) {
    const JsonValue element = array.at(index);
    if (!element.isObject())
        throw JsonFieldError(jsonElementPath(path, index), QStringLiteral("not an object"));
    return JsonFields(element, path, index);
}

JsonFields jsonElement(const JsonValue& array, const JsonFields& parent, const QString& arrayName,
                       qsizetype index) {
    const JsonValue element = array.at(index);
    if (!element.isObject())
        throw JsonFieldError(jsonElementPath(parent.fieldPath(arrayName), index),
                             QStringLiteral("not an object"));
    return JsonFields(element, parent, arrayName, index);
}

} // namespace tavik
