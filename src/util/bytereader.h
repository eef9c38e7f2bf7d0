#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

namespace tavik {

// Reads little-endian fields from a byte range the way the runtime reads a binary file:
// what lies past the end reads as zero bytes and marks the read as truncated. A reader that
// was told the data is broken behaves as if the data ended there.
class ByteReader {
public:
    ByteReader(const uchar* data, qint64 size) : data_(data), size_(size) {}

    std::int16_t i16();
    std::uint16_t u16();
    std::int32_t i32();
    std::uint64_t u64();
    // A text preceded by its 16-bit length, in code page 1252. A length that runs past the
    // end gives only the bytes that are there.
    QString countedString();
    // Up to `count` bytes; fewer when the data ends first.
    QByteArray bytes(qint64 count);

    bool atEnd() const { return pos_ >= size_; }
    qint64 remaining() const { return pos_ < size_ ? size_ - pos_ : 0; }
    qint64 pos() const { return pos_; }
    bool truncated() const { return truncated_; }
    bool broken() const { return !problem_.isEmpty(); }
    const QString& problem() const { return problem_; }

    void markTruncated() { truncated_ = true; }
    void markBroken(const QString& problem);

private:
    // Copies up to n bytes into out (zero-filled), returns how many were there.
    qint64 take(void* out, qint64 n);

    const uchar* data_;
    qint64 size_;
    qint64 pos_ = 0;
    bool truncated_ = false;
    QString problem_;
};

// Appends little-endian fields.
class ByteWriter {
public:
    void i16(std::int16_t v);
    void u16(std::uint16_t v);
    void i32(std::int32_t v);
    void u64(std::uint64_t v);
    void raw(const QByteArray& bytes);
    // Raises the overflow error when the text needs more than 65,535 bytes.
    void countedString(const QString& text);
    // A text already in code page 1252 bytes, of at most 65,535, after its 16-bit length.
    void countedBytes(QByteArrayView bytes);
    // Room for `bytes` bytes in all, so that a large output is not copied as it grows.
    void reserve(qsizetype bytes) { out_.reserve(bytes); }
    // Forgets what was written and keeps the room it took, for the next output.
    void clear() { used_ = 0; }

    QByteArray& data() {
        out_.resize(used_);
        return out_;
    }

private:
    // Room for `n` more bytes at the end: a package index is written in millions of small
    // fields, so the buffer grows by doubling and is cut to what was written when asked for.
    char* grow(qsizetype n);

    QByteArray out_;
    qsizetype used_ = 0;
};

} // namespace tavik
