#include "jsontextwriter.h"

#include <QIODevice>
#include <QLocale>
#include <cmath>

namespace tavik {

namespace {

constexpr qsizetype kChunk = 1 << 16;

char hexDigit(unsigned value) {
    return static_cast<char>(value < 10 ? '0' + value : 'a' + value - 10);
}

} // namespace

JsonTextWriter::~JsonTextWriter() {
    flush();
}

JsonTextWriter& JsonTextWriter::name(QLatin1StringView name) {
    pendingName_ = name;
    return *this;
}

void JsonTextWriter::indent(qsizetype level) {
    buffer_.append(4 * level, ' ');
}

void JsonTextWriter::beginValue() {
    if (filled_.empty())
        return;
    if (filled_.back())
        buffer_.append(",\n", 2);
    filled_.back() = true;
    indent(static_cast<qsizetype>(filled_.size()));
    if (!pendingName_.isNull()) {
        buffer_.append('"');
        buffer_.append(pendingName_.data(), pendingName_.size());
        buffer_.append("\": ", 3);
        pendingName_ = QLatin1StringView();
    }
}

void JsonTextWriter::open(char bracket) {
    beginValue();
    buffer_.append(bracket);
    buffer_.append('\n');
    filled_.push_back(false);
}

void JsonTextWriter::close(char bracket) {
    if (filled_.empty())
        return;
    if (filled_.back())
        buffer_.append('\n');
    filled_.pop_back();
    indent(static_cast<qsizetype>(filled_.size()));
    buffer_.append(bracket);
    if (filled_.empty() && bracket == '}')
        buffer_.append('\n');
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
    buffer_.append(QByteArray::number(value));
}

void JsonTextWriter::boolean(bool value) {
    beginValue();
    buffer_.append(value ? "true" : "false");
}

void JsonTextWriter::number(double value) {
    beginValue();
    if (std::isfinite(value))
        buffer_.append(QByteArray::number(value, 'g', QLocale::FloatingPointShortest));
    else
        buffer_.append("null", 4);
}

void JsonTextWriter::null() {
    beginValue();
    buffer_.append("null", 4);
}

void JsonTextWriter::string(QStringView text) {
    beginValue();
    buffer_.append('"');
    escaped(text);
    buffer_.append('"');
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
            const qsizetype at = buffer_.size();
            buffer_.resize(at + (src - run));
            char* out = buffer_.data() + at;
            for (const char16_t* c = run; c != src; ++c)
                *out++ = static_cast<char>(*c);
        }
        if (src == end)
            break;
        const unsigned u = *src++;
        if (u < 0x80) {
            buffer_.append('\\');
            switch (u) {
            case '"':
                buffer_.append('"');
                break;
            case '\\':
                buffer_.append('\\');
                break;
            case '\b':
                buffer_.append('b');
                break;
            case '\f':
                buffer_.append('f');
                break;
            case '\n':
                buffer_.append('n');
                break;
            case '\r':
                buffer_.append('r');
                break;
            case '\t':
                buffer_.append('t');
                break;
            default:
                buffer_.append("u00", 3);
                buffer_.append(hexDigit(u >> 4));
                buffer_.append(hexDigit(u & 0xf));
            }
        } else if (u < 0x800) {
            buffer_.append(static_cast<char>(0xc0 | (u >> 6)));
            buffer_.append(static_cast<char>(0x80 | (u & 0x3f)));
        } else if (u >= 0xd800 && u < 0xdc00 && src != end && *src >= 0xdc00 && *src < 0xe000) {
            const unsigned code = 0x10000 + ((u - 0xd800) << 10) + (*src++ - 0xdc00);
            buffer_.append(static_cast<char>(0xf0 | (code >> 18)));
            buffer_.append(static_cast<char>(0x80 | ((code >> 12) & 0x3f)));
            buffer_.append(static_cast<char>(0x80 | ((code >> 6) & 0x3f)));
            buffer_.append(static_cast<char>(0x80 | (code & 0x3f)));
        } else if (u >= 0xd800 && u < 0xe000) {
            buffer_.append("\\u", 2);
            for (int shift = 12; shift >= 0; shift -= 4)
                buffer_.append(hexDigit((u >> shift) & 0xf));
        } else {
            buffer_.append(static_cast<char>(0xe0 | (u >> 12)));
            buffer_.append(static_cast<char>(0x80 | ((u >> 6) & 0x3f)));
            buffer_.append(static_cast<char>(0x80 | (u & 0x3f)));
        }
    }
}

void JsonTextWriter::flushWhenFull() {
    if (device_ && buffer_.size() >= kChunk)
        flush();
}

bool JsonTextWriter::flush() {
    if (!device_)
        return true;
    if (!buffer_.isEmpty() && !failed_)
        failed_ = device_->write(buffer_) != buffer_.size();
    buffer_.resize(0); // keeps the chunk's room
    return !failed_;
}

} // namespace tavik
