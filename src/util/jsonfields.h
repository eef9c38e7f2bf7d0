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
    // Element `index` of the array in field `arrayName` of `parent`, which must outlive it.
    JsonFields(JsonValue object, const JsonFields& parent, QString arrayName, qsizetype index)
        : object_(object), path_(std::move(arrayName)), index_(index), parent_(&parent) {}

    QString path() const;
    QString fieldPath(const QString& name) const;
    bool has(const JsonName& name) const { return !object_.value(name, next_).isUndefined(); }
    JsonValue value(const JsonName& name) const;

    // A text that code page 1252 holds and that fits `maxBytes` bytes on disk.
    QString text(const JsonName& name, qint64 maxBytes) const;
    // A whole number between `min` and `max`.
    qint64 integer(const JsonName& name, qint64 min, qint64 max) const;
    bool boolean(const JsonName& name) const;
    JsonValue array(const JsonName& name) const;
    JsonValue object(const JsonName& name) const;
    // Bytes written as hexadecimal digits.
    QByteArray hex(const JsonName& name) const;

private:
    [[noreturn]] void fail(const QString& name, const QString& problem) const;

    JsonValue object_;
    QString path_;
    qsizetype index_ = -1;
    const JsonFields* parent_ = nullptr;
    // Where the next field is looked for first.
    mutable std::uint32_t next_ = 0;
};

// The path of element `index` of the array at `path`.
QString jsonElementPath(const QString& path, qsizetype index);

// Element `index` of the array at `path`, which must be an object.
JsonFields jsonElement(const JsonValue& array, const QString& path, qsizetype index);

// Element `index` of the array in field `arrayName` of `parent`, which must be an object.
JsonFields jsonElement(const JsonValue& array, const JsonFields& parent, const QString& arrayName,
                       qsizetype index);

} // namespace tavik
