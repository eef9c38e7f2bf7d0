#include "conversions.h"

#include "runtimeerror.h"

#include <QDateTime>
#include <cmath>
#include <limits>

namespace tavik {

namespace {

bool isValBlank(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n';
}

int digitValue(QChar c, int base) {
    int v = -1;
    if (c >= u'0' && c <= u'9')
        v = c.unicode() - u'0';
    else if (c >= u'a' && c <= u'f')
        v = c.unicode() - u'a' + 10;
    else if (c >= u'A' && c <= u'F')
        v = c.unicode() - u'A' + 10;
    return v < base ? v : -1;
}

// "&H..." and "&O..." literals: up to four digits are a 16-bit number, up to eight a 32-bit
// one, so "&HFFFF" is -1 as it is in the runtime.
double radixValue(std::uint64_t value, int digits, int base) {
    const int bitsPerDigit = base == 16 ? 4 : 3;
    if (digits * bitsPerDigit <= 16 || value <= 0xFFFF)
        return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
    if (value <= 0xFFFFFFFFull)
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    return static_cast<double>(value);
}

template <typename Next> double readRadix(Next&& next, int base) {
    std::uint64_t value = 0;
    int digits = 0;
    for (QChar c = next(); digitValue(c, base) >= 0; c = next()) {
        if (value <= (std::numeric_limits<std::uint64_t>::max() >> 4))
            value = value * base + digitValue(c, base);
        ++digits;
    }
    return radixValue(value, digits, base);
}

double checkedFinite(double v) {
    if (!std::isfinite(v))
        throw RuntimeError(rt::Overflow);
    return v;
}

} // namespace

double Val(const QString& text) {
    qsizetype pos = 0;
    const qsizetype n = text.size();
    auto next = [&]() -> QChar {
        while (pos < n && isValBlank(text[pos]))
            ++pos;
        return pos < n ? text[pos++] : QChar();
    };
    auto peek = [&]() -> QChar {
        const qsizetype saved = pos;
        QChar c = next();
        pos = saved;
        return c;
    };

    QChar c = peek();
    if (c == u'&') {
        next();
        QChar kind = peek().toUpper();
        if (kind == u'H') {
            next();
            return readRadix(next, 16);
        }
        if (kind == u'O')
            next();
        return readRadix(next, 8);
    }

    QByteArray number;
    if (c == u'-' || c == u'+') {
        number.append(static_cast<char>(next().unicode()));
    }
    bool digits = false;
    bool point = false;
    while (true) {
        c = peek();
        if (c.isDigit() && c.unicode() < 128) {
            number.append(static_cast<char>(next().unicode()));
            digits = true;
        } else if (c == u'.' && !point) {
            number.append('.');
            next();
            point = true;
        } else {
            break;
        }
    }
    if (!digits)
        return 0.0;
    c = peek().toUpper();
    if (c == u'E' || c == u'D') {
        const qsizetype beforeExponent = pos;
        next();
        QByteArray exponent = "e";
        QChar s = peek();
        if (s == u'-' || s == u'+')
            exponent.append(static_cast<char>(next().unicode()));
        bool expDigits = false;
        while (peek().isDigit() && peek().unicode() < 128) {
            exponent.append(static_cast<char>(next().unicode()));
            expDigits = true;
        }
        if (expDigits)
            number.append(exponent);
        else
            pos = beforeExponent;
    }
    return checkedFinite(std::strtod(number.constData(), nullptr));
}

double roundHalfEven(double value) {
    if (!std::isfinite(value))
        return value;
    const double floor = std::floor(value);
    const double fraction = value - floor;
    if (fraction > 0.5)
        return floor + 1.0;
    if (fraction < 0.5)
        return floor;
    return std::fmod(floor, 2.0) == 0.0 ? floor : floor + 1.0;
}

namespace {

// Plain whole numbers ("0", "-1", "255": every default a setting is read with) need no
// locale: an optional sign and up to fifteen ASCII digits are exact as a double.
bool parsePlainInteger(const QString& text, double& out) {
    const qsizetype n = text.size();
    const qsizetype start = n > 0 && (text[0] == u'-' || text[0] == u'+') ? 1 : 0;
    if (n - start < 1 || n - start > 15)
        return false;
    qint64 value = 0;
    for (qsizetype i = start; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c < u'0' || c > u'9')
            return false;
        value = value * 10 + (c - u'0');
    }
    // strtod keeps the sign of a minus zero.
    out = start == 1 && text[0] == u'-' ? -static_cast<double>(value) : static_cast<double>(value);
    return true;
}

} // namespace

bool parseNumericText(const QString& text, double& out, const QLocale& locale) {
    if (parsePlainInteger(text, out))
        return true;
    const QString t = text.trimmed();
    if (t.isEmpty())
        return false;
    if (t.startsWith(u'&')) {
        int base = 8;
        qsizetype start = 1;
        if (t.size() > 1 && (t[1] == u'H' || t[1] == u'h')) {
            base = 16;
            start = 2;
        } else if (t.size() > 1 && (t[1] == u'O' || t[1] == u'o')) {
            start = 2;
        }
        if (start >= t.size())
            return false;
        qsizetype pos = start;
        for (qsizetype i = start; i < t.size(); ++i) {
            if (digitValue(t[i], base) < 0)
                return false;
        }
        out = readRadix([&]() { return pos < t.size() ? t[pos++] : QChar(); }, base);
        return true;
    }

    const QString decimal = locale.decimalPoint();
    const QString group = locale.groupSeparator();
    QByteArray number;
    qsizetype i = 0;
    if (t[i] == u'-' || t[i] == u'+')
        number.append(static_cast<char>(t[i++].unicode()));
    bool digits = false;
    bool point = false;
    while (i < t.size()) {
        const QChar c = t[i];
        if (c.isDigit() && c.unicode() < 128) {
            number.append(static_cast<char>(c.unicode()));
            digits = true;
            ++i;
        } else if (!point && QStringView(t).mid(i).startsWith(decimal)) {
            number.append('.');
            point = true;
            i += decimal.size();
        } else if (!point && digits && !group.isEmpty() &&
                   QStringView(t).mid(i).startsWith(group)) {
            i += group.size();
        } else {
            break;
        }
    }
    if (!digits)
        return false;
    if (i < t.size() && (t[i] == u'E' || t[i] == u'e' || t[i] == u'D' || t[i] == u'd')) {
        number.append('e');
        ++i;
        if (i < t.size() && (t[i] == u'-' || t[i] == u'+'))
            number.append(static_cast<char>(t[i++].unicode()));
        bool expDigits = false;
        while (i < t.size() && t[i].isDigit() && t[i].unicode() < 128) {
            number.append(static_cast<char>(t[i++].unicode()));
            expDigits = true;
        }
        if (!expDigits)
            return false;
    }
    if (i != t.size())
        return false;
    out = checkedFinite(std::strtod(number.constData(), nullptr));
    return true;
}

std::int16_t CInt(double value) {
    const double r = roundHalfEven(value);
    if (!(r >= -32768.0 && r <= 32767.0))
        throw RuntimeError(rt::Overflow);
    return static_cast<std::int16_t>(r);
}

std::int32_t CLng(double value) {
    const double r = roundHalfEven(value);
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        throw RuntimeError(rt::Overflow);
    return static_cast<std::int32_t>(r);
}

double CDbl(const Variant& value) {
    switch (value.type()) {
    case VarType::Empty:
        return 0.0;
    case VarType::Integer:
    case VarType::Boolean:
        return value.int16Bits();
    case VarType::Long:
        return value.int32Bits();
    case VarType::Double:
    case VarType::Date:
        return value.doubleValue();
    case VarType::String: {
        double d = 0;
        if (!parseNumericText(value.stringValue(), d))
            throw RuntimeError(rt::TypeMismatch);
        return d;
    }
    }
    throw RuntimeError(rt::TypeMismatch);
}

std::int16_t CInt(const Variant& value) {
    if (value.type() == VarType::Integer || value.type() == VarType::Boolean)
        return value.int16Bits();
    return CInt(CDbl(value));
}

std::int32_t CLng(const Variant& value) {
    if (value.type() == VarType::Long)
        return value.int32Bits();
    return CLng(CDbl(value));
}

bool CBool(const Variant& value) {
    if (value.type() == VarType::String) {
        const QString t = value.stringValue().trimmed();
        if (t.compare(u"True", Qt::CaseInsensitive) == 0 ||
            t.compare(u"Wahr", Qt::CaseInsensitive) == 0)
            return true;
        if (t.compare(u"False", Qt::CaseInsensitive) == 0 ||
            t.compare(u"Falsch", Qt::CaseInsensitive) == 0)
            return false;
    }
    return CDbl(value) != 0.0;
}

QString CStr(const Variant& value) {
    switch (value.type()) {
    case VarType::Empty:
        return {};
    case VarType::Integer:
        return QString::number(value.int16Bits());
    case VarType::Long:
        return QString::number(value.int32Bits());
    case VarType::Boolean:
        return value.int16Bits() != 0 ? QStringLiteral("True") : QStringLiteral("False");
    case VarType::String:
        return value.stringValue();
    case VarType::Double: {
        // Fifteen significant digits and an upper-case exponent, with the user's decimal separator.
        QString s = QString::number(value.doubleValue(), 'g', 15).toUpper();
        s.replace(u'.', QLocale().decimalPoint());
        return s;
    }
    case VarType::Date: {
        const double days = value.doubleValue();
        if (!std::isfinite(days) || std::fabs(days) > 3.0e6)
            throw RuntimeError(rt::Overflow);
        const QDateTime epoch(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC);
        const double whole = std::trunc(days);
        const qint64 ms = static_cast<qint64>(std::llround(std::fabs(days - whole) * 86400000.0));
        const QDateTime when = epoch.addDays(static_cast<qint64>(whole)).addMSecs(ms);
        return QLocale().toString(when, QLocale::ShortFormat);
    }
    }
    return {};
}

std::int32_t addLong(std::int32_t a, std::int32_t b) {
    std::int32_t r = 0;
    if (__builtin_add_overflow(a, b, &r))
        throw RuntimeError(rt::Overflow);
    return r;
}

std::int16_t addInteger(std::int16_t a, std::int16_t b) {
    std::int16_t r = 0;
    if (__builtin_add_overflow(a, b, &r))
        throw RuntimeError(rt::Overflow);
    return r;
}

} // namespace tavik
