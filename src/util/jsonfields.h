#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <exception>
#include <utility>

namespace tavik {

// A JSON document that does not describe a file: the field, by its path, and what is wrong.
class JsonFieldError : public std::exception {
public:
    JsonFieldError(QString field, QString problem)
        : field_(std::move(field)), problem_(std::move(problem)) {}
    const QString& field() const { return field_; }
    const QString& problem() const { return problem_; }
    const char* what() const noexcept override { return "bad JSON field"; }

private:
    QString field_;
    QString problem_;
};

// Typed reads of one JSON object's fields. Each read that finds the field missing or of the
// wrong kind raises JsonFieldError naming the field as "keys[2].items[0].value".
class JsonFields {
public:
    JsonFields(QJsonObject object, QString path)
        : object_(std::move(object)), path_(std::move(path)) {}

    QString fieldPath(const QString& name) const;
    bool has(const QString& name) const { return object_.contains(name); }
    QJsonValue value(const QString& name) const;

    // A text that code page 1252 holds and that fits `maxBytes` bytes on disk.
    QString text(const QString& name, qint64 maxBytes) const;
    // A whole number between `min` and `max`.
    qint64 integer(const QString& name, qint64 min, qint64 max) const;
    bool boolean(const QString& name) const;
    QJsonArray array(const QString& name) const;
    QJsonObject object(const QString& name) const;
    // Bytes written as hexadecimal digits.
    QByteArray hex(const QString& name) const;

private:
    [[noreturn]] void fail(const QString& name, const QString& problem) const;

    QJsonObject object_;
    QString path_;
};

// The path of element `index` of the array at `path`.
QString jsonElementPath(const QString& path, qsizetype index);

// Element `index` of the array at `path`, which must be an object.
JsonFields jsonElement(const QJsonArray& array, const QString& path, qsizetype index);

// The same checks for a value that is not inside an object.
qint64 jsonInteger(const QJsonValue& value, const QString& path, qint64 min, qint64 max);
QString jsonText(const QJsonValue& value, const QString& path, qint64 maxBytes);

} // namespace tavik
