#include "jsontextwriter.h"

#include <QIODevice>
#include <QLocale>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace tavik {

namespace {

constexpr qsizetype kChunk = 1 << 16;

char hexDigit(unsigned value) {
    return static_cast<char>(value < 10 ? '0' + value : 'a' + value - 10);
}

} // namespace

JsonTextWriter::JsonTextWriter(QIODevice* device) : device_(device) {
    enlarge(kChunk + 4096);
}

JsonTextWriter::~JsonTextWriter() {
    flush();
}

void JsonTextWriter::enlarge(qsizetype needed) {
    const qsizetype capacity = std::max(needed, 2 * capacity_);
    auto larger = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(capacity));
    if (size_ > 0)
        std::memcpy(larger.get(), buffer_.get(), static_cast<std::size_t>(size_));
    buffer_ = std::move(larger);
    capacity_ = capacity;
}

void JsonTextWriter::put(const char* text, qsizetype count) {
    std::memcpy(grow(count), text, static_cast<std::size_t>(count));
}

void JsonTextWriter::put(char c) {
    *grow(1) = c;
}

JsonTextWriter& JsonTextWriter::name(QLatin1StringView name) {
    pendingName_ = name;
    return *this;
}

void JsonTextWriter::indent(qsizetype level) {
    std::memset(grow(4 * level), ' ', static_cast<std::size_t>(4 * level));
}

void JsonTextWriter::beginValue() {
    if (filled_.empty())
        return;
    if (filled_.back())
        put(",\n", 2);
    filled_.back() = true;
    indent(static_cast<qsizetype>(filled_.size()));
    if (!pendingName_.isNull()) {
        put('"');
        put(pendingName_.data(), pendingName_.size());
        put("\": ", 3);
        pendingName_ = QLatin1StringView();
    }
}

void JsonTextWriter::open(char bracket) {
    beginValue();
    put(bracket);
    put('\n');
    filled_.push_back(false);
}

void JsonTextWriter::close(char bracket) {
    if (filled_.empty())
        return;
    if (filled_.back())
        put('\n');
    filled_.pop_back();
    indent(static_cast<qsizetype>(filled_.size()));
    put(bracket);
    if (filled_.empty() && bracket == '}')
        put('\n');
    flushWhenFull();
}

void JsonTextWriter::beginObject() {
    open('{');
}

void JsonTextWriter::endObject() {
    close('}');
}

void JsonTextWriter::beginArray() {
    open('[');
}

void JsonTextWriter::endArray() {
    close(']');
}

void JsonTextWriter::integer(qint64 value) {
    beginValue();
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    put(digits, result.ptr - digits);
}

void JsonTextWriter::boolean(bool value) {
    beginValue();
    value ? put("true", 4) : put("false", 5);
}

void JsonTextWriter::number(double value) {
    beginValue();
    if (std::isfinite(value)) {
        const QByteArray digits = QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
        put(digits.constData(), digits.size());
    } else
        put("null", 4);
}

void JsonTextWriter::null() {
    beginValue();
    put("null", 4);
}

void JsonTextWriter::string(QStringView text) {
    beginValue();
    put('"');
    escaped(text);
    put('"');
    flushWhenFull();
}

// UTF-8 with the escapes QJsonDocument uses; a lone surrogate, which has no UTF-8, is
// written as \uXXXX.
void JsonTextWriter::escaped(QStringView text) {
    const char16_t* src = text.utf16();
    const char16_t* const end = src + text.size();
    while (src != end) {
        const char16_t* run = src;
        while (src != end && *src >= 0x20 && *src < 0x80 && *src != '"' && *src != '\\')
            ++src;
        if (src != run) {
            char* out = grow(src - run);
            for (const char16_t* c = run; c != src; ++c)
                *out++ = static_cast<char>(*c);
        }
        if (src == end)
            break;
        const unsigned u = *src++;
        if (u < 0x80) {
            put('\\');
            switch (u) {
            case '"':
                put('"');
                break;
            case '\\':
                put('\\');
                break;
            case '\b':
                put('b');
                break;
            case '\f':
                put('f');
                break;
            case '\n':
                put('n');
                break;
            case '\r':
                put('r');
                break;
            case '\t':
                put('t');
                break;
            default:
                put("u00", 3);
                put(hexDigit(u >> 4));
                put(hexDigit(u & 0xf));
            }
        } else if (u < 0x800) {
            put(static_cast<char>(0xc0 | (u >> 6)));
            put(static_cast<char>(0x80 | (u & 0x3f)));
        } else if (u >= 0xd800 && u < 0xdc00 && src != end && *src >= 0xdc00 && *src < 0xe000) {
            const unsigned code = 0x10000 + ((u - 0xd800) << 10) + (*src++ - 0xdc00);
            put(static_cast<char>(0xf0 | (code >> 18)));
            put(static_cast<char>(0x80 | ((code >> 12) & 0x3f)));
            put(static_cast<char>(0x80 | ((code >> 6) & 0x3f)));
            put(static_cast<char>(0x80 | (code & 0x3f)));
        } else if (u >= 0xd800 && u < 0xe000) {
            put("\\u", 2);
            for (int shift = 12; shift >= 0; shift -= 4)
                put(hexDigit((u >> shift) & 0xf));
        } else {
            put(static_cast<char>(0xe0 | (u >> 12)));
            put(static_cast<char>(0x80 | ((u >> 6) & 0x3f)));
            put(static_cast<char>(0x80 | (u & 0x3f)));
        }
    }
}

void JsonTextWriter::flushWhenFull() {
    if (device_ && size_ >= kChunk)
        flush();
}

bool JsonTextWriter::flush() {
    if (!device_)
        return true;
    if (size_ > 0 && !failed_)
        failed_ = device_->write(buffer_.get(), size_) != size_;
    size_ = 0; // the room stays for the next chunk
    return !failed_;
}

} // namespace tavik
