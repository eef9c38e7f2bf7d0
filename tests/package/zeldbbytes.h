#pragma once

#include <QByteArray>
#include <QtEndian>
#include <cstdint>

namespace tavik::test {

// Builds package index bytes field by field, straight from the file format's tables, so
// tests compare the store's output with bytes made independently of its writer.
class Bytes {
public:
    Bytes& magic() { return raw("IOZELDBV10"); }
    Bytes& i16(std::int16_t v) {
        uchar b[2];
        qToLittleEndian(v, b);
        data_.append(reinterpret_cast<const char*>(b), 2);
        return *this;
    }
    Bytes& i32(std::int32_t v) {
        uchar b[4];
        qToLittleEndian(v, b);
        data_.append(reinterpret_cast<const char*>(b), 4);
        return *this;
    }
    Bytes& u64(std::uint64_t v) {
        uchar b[8];
        qToLittleEndian(v, b);
        data_.append(reinterpret_cast<const char*>(b), 8);
        return *this;
    }
    Bytes& str(const QByteArray& s) {
        i16(static_cast<std::int16_t>(s.size()));
        data_.append(s);
        return *this;
    }
    Bytes& raw(const QByteArray& s) {
        data_.append(s);
        return *this;
    }
    // The header of a new store: three empty texts, six zero bytes, an empty text, the count.
    Bytes& emptyHeader(std::int16_t keyCount) {
        return str("").str("").str("").raw(QByteArray(6, '\0')).str("").i16(keyCount);
    }
    // A key record with an items array of `slots` items (the items follow).
    Bytes& key(std::int16_t inUse, const QByteArray& name, std::int16_t itemCount,
               std::int32_t slots) {
        return i16(inUse).str(name).i16(itemCount).i16(1).i32(slots).i32(0);
    }
    // A key slot without items array.
    Bytes& freeKey() { return i16(0).str("").i16(0).i16(0); }
    Bytes& stringItem(std::int16_t inUse, const QByteArray& name, const QByteArray& value) {
        return i16(inUse).str(name).i16(0).i16(8).str(value);
    }
    Bytes& longItem(const QByteArray& name, std::int32_t value) {
        return i16(-1).str(name).i16(0).i16(3).i32(value);
    }

    const QByteArray& data() const { return data_; }
    operator QByteArray() const { return data_; }

private:
    QByteArray data_;
};

} // namespace tavik::test
