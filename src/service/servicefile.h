#pragma once

#include "service/satzrecord.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <cstdint>

namespace tavik {

// The four texts of a service's properties page.
struct ServiceHeader {
    QString Title;
    QString Author;
    QString Description;
    QString Id;
};

// What reading a whole service file found, for the editor to show.
struct ServiceReadResult {
    enum class Status {
        Complete,  // every sentence read
        Missing,   // absent or empty: message 13, nothing changes
        NoService, // a sentence count below 1: the runtime's subscript error
        Truncated, // the data ends inside a field: the runtime's read-past-end error
        Broken,    // a field no service file can hold (a negative text length, an odd array)
    };
    Status status = Status::Complete;
    // The runtime error the open command raises; 0 when none.
    int runtimeError = 0;
    // One line for tools: what went wrong and where.
    QString problem;
    ServiceHeader header;
    // The count the file declares; `sentences` holds only those that were read.
    std::int16_t declaredCount = 0;
    QList<SatzRecord> sentences;
    // Where a complete read stopped: bytes from here on belong to no sentence.
    qint64 endOffset = 0;

    bool ok() const { return status == Status::Complete; }
};

// The language text shown when a service file is missing or empty.
inline constexpr int kServiceMissingMessage = 13;

// The bytes of a service: header lengths, header texts, count, sentences in service order.
// Raises the overflow error for a text that does not fit its length field.
QByteArray ServiceFileBytes(const ServiceHeader& header, const QList<SatzRecord>& sentences);

// Reads a service from bytes. Reading goes by counts, so bytes behind the last sentence
// are ignored. Never takes memory beyond a small multiple of `size`.
ServiceReadResult ReadServiceBytes(const uchar* data, qint64 size);

// The open command's read: the shared file check (an empty file is deleted unless
// `deleteEmpty` is false, as tools that only look want), then the bytes.
ServiceReadResult ReadServiceFile(const QString& path, bool deleteEmpty = true);

// Writes `bytes` over `path` from its start without truncating it: the tail of a longer
// older file stays behind the new data. The write is atomic.
void WriteServiceFile(const QString& path, const QByteArray& bytes);

// Reads the first three header texts of a service file as the list of services needs them.
// Every failure is ignored: what cannot be read stays empty. An empty file is deleted.
void GetFileInfo(const QString& path, QString& title, QString& author, QString& description);

} // namespace tavik
