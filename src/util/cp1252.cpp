#include "cp1252.h"

#include <algorithm>
#include <array>

namespace tavik {

namespace {

// Bytes 0x80 to 0x9F; the rest of the code page equals Latin-1.
constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char encodeOne(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return static_cast<char>(c);
    for (std::size_t i = 0; i < kHigh.size(); ++i) {
        if (kHigh[i] == c)
            return static_cast<char>(0x80 + i);
    }
    return '?';
}

} // namespace

QString fromCp1252(const char* data, qsizetype size) {
    QString out(size, Qt::Uninitialized);
    QChar* dst = out.data();
    for (qsizetype i = 0; i < size; ++i) {
        const auto b = static_cast<unsigned char>(data[i]);
        dst[i] = (b >= 0x80 && b < 0xA0) ? QChar(kHigh[b - 0x80]) : QChar(b);
    }
    return out;
}

QByteArray toCp1252(const QString& text) {
    QByteArray out(text.size(), Qt::Uninitialized);
    char* dst = out.data();
    qsizetype n = 0;
    // ASCII and the Latin-1 letters are their own bytes; the rest is looked up one by one.
    const QChar* chars = text.constData();
    while (n < text.size() && (chars[n].unicode() < 0x80 ||
                               (chars[n].unicode() >= 0xA0 && chars[n].unicode() <= 0xFF))) {
        dst[n] = static_cast<char>(chars[n].unicode());
        ++n;
    }
    for (qsizetype i = n; i < text.size(); ++i) {
        const QChar c = text[i];
        // A pair of surrogates is one character, written as one "?".
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        dst[n++] = encodeOne(c.isSurrogate() ? 0xFFFD : c.unicode());
    }
    out.truncate(n);
    return out;
}

QString ThroughCp1252(const QString& text) {
    // Every command and setting name the program sends passes here; nearly all of them are
    // plain ASCII, which the code page keeps as it is.
    const bool same = std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x80 || (c.unicode() >= 0xA0 && c.unicode() <= 0xFF);
    });
    return same ? text : fromCp1252(toCp1252(text));
}

char Cp1252Byte(char32_t c) {
    return encodeOne(c);
}

bool Cp1252HoldsCharacter(char32_t c) {
    return c == U'?' || (c <= 0xFFFF && !QChar::isSurrogate(c) && encodeOne(c) != '?');
}

bool CanHoldInCp1252(const QString& text) {
    // ASCII is held as it is; only other texts need the round trip.
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; }))
        return true;
    return fromCp1252(toCp1252(text)) == text;
}

} // namespace tavik
