#include "bytereader.h"

#include "util/cp1252.h"
#include "util/runtimeerror.h"

#include <QtEndian>
#include <algorithm>
#include <cstring>

namespace tavik {

qint64 ByteReader::take(void* out, qint64 n) {
    std::memset(out, 0, static_cast<std::size_t>(n));
    const qint64 available = std::max<qint64>(0, std::min(n, size_ - pos_));
    if (available > 0)
        std::memcpy(out, data_ + pos_, static_cast<std::size_t>(available));
    pos_ += available;
    if (available < n)
        truncated_ = truncated_ || !broken();
    return available;
}

std::int16_t ByteReader::i16() {
    return static_cast<std::int16_t>(u16());
}

std::uint16_t ByteReader::u16() {
    uchar b[2];
    take(b, 2);
    return qFromLittleEndian<std::uint16_t>(b);
}

std::int32_t ByteReader::i32() {
    uchar b[4];
    take(b, 4);
    return qFromLittleEndian<std::int32_t>(b);
}

std::uint64_t ByteReader::u64() {
    uchar b[8];
    take(b, 8);
    return qFromLittleEndian<std::uint64_t>(b);
}

QByteArray ByteReader::bytes(qint64 count) {
    const qint64 available = std::max<qint64>(0, std::min(count, size_ - pos_));
    QByteArray out(reinterpret_cast<const char*>(data_ + pos_), available);
    pos_ += available;
    if (available < count)
        truncated_ = truncated_ || !broken();
    return out;
}

QString ByteReader::countedString() {
    const std::uint16_t length = u16();
    if (length == 0)
        return {};
    const qint64 available = std::max<qint64>(0, std::min<qint64>(length, size_ - pos_));
    QString text = fromCp1252(reinterpret_cast<const char*>(data_ + pos_), available);
    pos_ += available;
    if (available < length)
        truncated_ = truncated_ || !broken();
    return text;
}

void ByteReader::markBroken(const QString& problem) {
    if (problem_.isEmpty())
        problem_ = problem;
    size_ = std::min(size_, pos_);
}

char* ByteWriter::grow(qsizetype n) {
    const qsizetype at = used_;
    if (out_.size() - at < n)
        out_.resize(std::max({at + n, 2 * out_.size(), qsizetype(256)}));
    used_ = at + n;
    return out_.data() + at;
}

void ByteWriter::raw(const QByteArray& bytes) {
    if (!bytes.isEmpty())
        std::memcpy(grow(bytes.size()), bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void ByteWriter::i16(std::int16_t v) {
    u16(static_cast<std::uint16_t>(v));
}

void ByteWriter::u16(std::uint16_t v) {
    qToLittleEndian(v, grow(2));
}

void ByteWriter::i32(std::int32_t v) {
    qToLittleEndian(v, grow(4));
}

void ByteWriter::u64(std::uint64_t v) {
    qToLittleEndian(v, grow(8));
}

void ByteWriter::countedBytes(QByteArrayView bytes) {
    if (bytes.size() > 0xFFFF)
        throw RuntimeError(rt::Overflow);
    char* p = grow(2 + bytes.size());
    qToLittleEndian(static_cast<std::uint16_t>(bytes.size()), p);
    if (!bytes.isEmpty())
        std::memcpy(p + 2, bytes.data(), static_cast<std::size_t>(bytes.size()));
}

void ByteWriter::countedString(const QString& text) {
    const qsizetype length = text.size();
    if (length <= 0xFFFF) {
        // ASCII and the Latin-1 letters are their own code page 1252 bytes: written straight
        // in, without a copy.
        char* p = grow(2 + length);
        qToLittleEndian(static_cast<std::uint16_t>(length), p);
        const QChar* chars = text.constData();
        qsizetype i = 0;
        while (i < length && (chars[i].unicode() < 0x80 ||
                              (chars[i].unicode() >= 0xA0 && chars[i].unicode() <= 0xFF))) {
            p[2 + i] = static_cast<char>(chars[i].unicode());
            ++i;
        }
        if (i == length)
            return;
        used_ -= 2 + length;
    }
    const QByteArray bytes = toCp1252(text);
    if (bytes.size() > 0xFFFF)
        throw RuntimeError(rt::Overflow);
    u16(static_cast<std::uint16_t>(bytes.size()));
    raw(bytes);
}

} // namespace tavik
