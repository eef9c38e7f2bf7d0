#pragma once

#include "util/jsontree.h"

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
// wrong kind raises JsonFieldError naming the field as "keys[2].items[0].value". The path is
// put together only for that message: a dump has hundreds of thousands of fields.
class JsonFields {
public:
    JsonFields(JsonValue object, QString path) : object_(object), path_(std::move(path)) {}
    // Element `index` of the array at `arrayPath`.
    JsonFields(JsonValue object, QString arrayPath, qsizetype index)
        : object_(object), path_(std::move(arrayPath)), index_(index) {}

    QString path() const;
    QString fieldPath(const QString& name) const;
    bool has(const QString& name) const { return object_.contains(name); }
    JsonValue value(const QString& name) const;

    // A text that code page 1252 holds and that fits `maxBytes` bytes on disk.
    QString text(const QString& name, qint64 maxBytes) const;
    // A whole number between `min` and `max`.
    qint64 integer(const QString& name, qint64 min, qint64 max) const;
    bool boolean(const QString& name) const;
    JsonValue array(const QString& name) const;
    JsonValue object(const QString& name) const;
    // Bytes written as hexadecimal digits.
    QByteArray hex(const QString& name) const;

private:
    [[noreturn]] void fail(const QString& name, const QString& problem) const;

    JsonValue object_;
    QString path_;
    qsizetype index_ = -1;
};

// The path of element `index` of the array at `path`.
QString jsonElementPath(const QString& path, qsizetype index);

// Element `index` of the array at `path`, which must be an object.
JsonFields jsonElement(const JsonValue& array, const QString& path, qsizetype index);

} // namespace tavik
