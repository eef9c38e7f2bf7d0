#pragma once

#include <QByteArray>
#include <QtEndian>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace tavik::test {

// Builds service file bytes field by field from the file format's tables, independent of the
// editor's writer. Texts are given as cp1252 bytes.
class ServiceBytes {
public:
    ServiceBytes& i16(std::int16_t v) {
        uchar b[2];
        qToLittleEndian(v, b);
        data_.append(reinterpret_cast<const char*>(b), 2);
        return *this;
    }
    ServiceBytes& u16(std::uint16_t v) { return i16(static_cast<std::int16_t>(v)); }
    ServiceBytes& i32(std::int32_t v) {
        uchar b[4];
        qToLittleEndian(v, b);
        data_.append(reinterpret_cast<const char*>(b), 4);
        return *this;
    }
    ServiceBytes& raw(const QByteArray& bytes) {
        data_.append(bytes);
        return *this;
    }
    ServiceBytes& counted(const QByteArray& text) {
        u16(static_cast<std::uint16_t>(text.size()));
        return raw(text);
    }
    // Lengths block, then the four texts without prefix.
    ServiceBytes& header(const QByteArray& title, const QByteArray& author,
                         const QByteArray& description, const QByteArray& id) {
        i32(title.size()).i32(author.size()).i32(description.size()).i32(id.size());
        return raw(title).raw(author).raw(description).raw(id);
    }
    ServiceBytes& count(std::int16_t n) { return i16(n); }
    // A sentence with a one-dimensional entry array from 0 and LastTarget m - 1, or the
    // LastTarget given.
    ServiceBytes& sentence(const QByteArray& key, const QByteArray& text,
                           const std::vector<std::pair<QByteArray, std::int16_t>>& entries,
                           std::optional<std::int16_t> lastTarget = std::nullopt) {
        counted(key).counted(text);
        u16(1).i32(static_cast<std::int32_t>(entries.size())).i32(0);
        for (const auto& [announcement, offset] : entries)
            counted(announcement).i16(offset);
        return i16(lastTarget.value_or(static_cast<std::int16_t>(entries.size() - 1)));
    }
    // A sentence whose entries were never set: 0 dimensions, nothing more of the descriptor.
    ServiceBytes& unsetSentence(const QByteArray& key, std::int16_t lastTarget = 0) {
        return counted(key).counted({}).u16(0).i16(lastTarget);
    }

    const QByteArray& data() const { return data_; }
    operator QByteArray() const { return data_; }

private:
    QByteArray data_;
};

} // namespace tavik::test
