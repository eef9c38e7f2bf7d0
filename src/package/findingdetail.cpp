#include "findingdetail.h"

#include <QRegularExpression>
#include <array>
#include <vector>

namespace tavik {

namespace {

struct Pattern {
    const char* english;
    unsigned nested; // bit n-1: argument %n is a detail of its own
    unsigned text;   // bit n-1: argument %n is any text; the others are numbers
};

constexpr std::array<Pattern, kTranslatedDetailCount + 2> kPatterns = {{
    {"missing or empty", 0, 0},
    {"cannot be read", 0, 0},
    {"changed on every read; not read", 0, 0},
    {"not a package index file (no IOZELDBV10 at its start)", 0, 0},
    {"negative key count %1", 0, 0},
    {"truncated at byte %1", 0, 0},
    {"unknown value type %1 at byte %2", 0, 0},
    {"item array with %1 dimensions at byte %2", 0, 0},
    {"item array of %1 slots from %2 at byte %3", 0, 0},
    {"entry array with %1 dimensions at byte %2", 0, 0},
    {"entry array of %1 entries from %2 at byte %3", 0, 0},
    {"file ends inside a field at byte %1", 0, 0},
    {"header text %1 has the length %2", 0, 0},
    {"sentence count %1", 0, 0},
    {"sentence %1: %2", 2, 2},
    {"no package folder", 0, 0},
    {"key count %1: the editor does not open it", 0, 0},
    {"runtime error %1", 0, 0},
    {"no entry at this position", 0, 0},
    {"no entries at positions %1 to %2", 0, 0},
    {"\"%1\" shows as \"%2\"", 0, 3},
    {"also at INDEX %1", 0, 0},
    {"%1 is %2, not %3", 0, 7},
    {"%1: loading stops with %2", 2, 3},
    {"%1 bytes", 0, 0},
    {"media error %1", 0, 0},
    {"Count %1, entries up to %2 are never loaded", 0, 0},
    {"Count %1: the list stays empty", 0, 0},
    {"Count %1, but no entry at %1", 0, 0},
    {"byte 0x%1 is no character of code page 1252", 0, 0},
    {"UTF-8 text \"%1\" shows as \"%2\"", 0, 3},
    {"last entry %1: runtime error 9 when played", 0, 0},
    {"last entry %1 of %2: runtime error 9 when played", 0, 0},
    {"last entry %1 of %2: the rest is never played", 0, 0},
    {"empty: deleted when the services are listed", 0, 0},
    {"ID \"%1\" leads out of the package: saving is refused", 0, 1},
    {"ID \"%1\": saving writes _%1._ beside it", 0, 1},
    {"key \"%1\" at sentences %2 and %3", 0, 1},
    {"plays nothing", 0, 0},
    {"%1 LUFS, %2 LU above the median of %3 LUFS", 0, 7},
    {"%1 LUFS, %2 LU below the median of %3 LUFS", 0, 7},
    {"true peak %1 dBTP", 0, 1},
    {"%1: %2", 1 | 2, 3},
    {"%1, %2", 1 | 2, 3},
}};
static_assert(static_cast<int>(DetailText::Labelled) == kTranslatedDetailCount);

// Replaces %1 ... %9 in one pass, so that an argument holding "%2" stays as it is.
QString fill(const QString& pattern, const QStringList& args) {
    QString out;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (c == u'%' && i + 1 < pattern.size() && pattern[i + 1] >= u'1' &&
            pattern[i + 1] <= u'9') {
            const qsizetype n = pattern[i + 1].unicode() - u'1';
            out += n < args.size() ? args[n] : QString();
            ++i;
        } else {
            out += c;
        }
    }
    return out;
}

// A detail's pattern as an expression: each argument a group, read again where it repeats.
struct Reader {
    QRegularExpression expression;
    int arguments = 0;
};

std::vector<Reader> makeReaders() {
    std::vector<Reader> readers;
    for (const Pattern& p : kPatterns) {
        const QString english = QString::fromLatin1(p.english);
        QString expression = QStringLiteral("^");
        int arguments = 0;
        qsizetype literal = 0;
        for (qsizetype i = 0; i + 1 < english.size(); ++i) {
            if (english[i] != u'%' || english[i + 1] < u'1' || english[i + 1] > u'9')
                continue;
            expression += QRegularExpression::escape(english.mid(literal, i - literal));
            const int n = english[i + 1].unicode() - u'0';
            if (n > arguments) {
                arguments = n;
                expression += QStringLiteral("(?<a%1>%2)")
                                  .arg(QString::number(n), (p.text >> (n - 1)) & 1
                                                               ? QStringLiteral(".*?")
                                                               : QStringLiteral("-?[0-9a-f]+"));
            } else {
                expression += QStringLiteral("\\k<a%1>").arg(n);
            }
            literal = i + 2;
            ++i;
        }
        expression += QRegularExpression::escape(english.mid(literal)) + QStringLiteral("$");
        readers.push_back(
            {QRegularExpression(expression, QRegularExpression::DotMatchesEverythingOption),
             arguments});
    }
    return readers;
}

} // namespace

QString detailText(DetailText id, const QStringList& args) {
    return fill(QString::fromLatin1(kPatterns[static_cast<std::size_t>(id)].english), args);
}

QString localDetail(const QString& english, const NumberedText& numbered) {
    static const std::vector<Reader> readers = makeReaders();
    for (std::size_t i = 0; i < readers.size(); ++i) {
        const QRegularExpressionMatch match = readers[i].expression.match(english);
        if (!match.hasMatch())
            continue;
        QStringList args;
        for (int n = 1; n <= readers[i].arguments; ++n) {
            const QString arg = match.captured(QStringLiteral("a%1").arg(n));
            args << ((kPatterns[i].nested >> (n - 1)) & 1 ? localDetail(arg, numbered) : arg);
        }
        if (static_cast<int>(i) < kTranslatedDetailCount) {
            const QString local = numbered(detailTextNumber(static_cast<int>(i)), args);
            if (!local.isEmpty())
                return local;
        }
        return fill(QString::fromLatin1(kPatterns[i].english), args);
    }
    return english;
}

} // namespace tavik
