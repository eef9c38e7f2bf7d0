#include "profiletext.h"

namespace tavik::profile {

namespace {

struct Line {
    qsizetype begin = 0;
    qsizetype end = 0;  // before the line end
    qsizetype next = 0; // after the line end
    bool hasLineEnd = false;
};

Line lineAt(QStringView text, qsizetype begin) {
    Line line;
    line.begin = begin;
    qsizetype i = begin;
    const qsizetype n = text.size();
    const QChar* data = text.data();
    while (i < n && data[i] != u'\r' && data[i] != u'\n')
        ++i;
    line.end = i;
    if (i < n) {
        line.hasLineEnd = true;
        if (data[i] == u'\r' && i + 1 < n && data[i + 1] == u'\n')
            ++i;
        ++i;
    }
    line.next = i;
    return line;
}

bool sameName(QStringView a, QStringView b) {
    return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0;
}

// A header is "[" after leading blanks and a "]" somewhere after it; the name runs to the
// last "]" and loses its blanks, so "[ A ]" names "A". Text after the "]" is ignored. A "["
// line without "]" is no header: it is read as an ordinary line of the section it is in.
bool headerName(QStringView line, QStringView& name) {
    const QStringView body = trimBlanks(line);
    if (body.isEmpty() || body.front() != u'[')
        return false;
    const qsizetype close = body.lastIndexOf(u']');
    if (close < 1)
        return false;
    name = trimBlanks(body.mid(1, close - 1));
    return true;
}

// A comment is never a key, whatever it holds.
bool isComment(QStringView body) {
    return !body.isEmpty() && body.front() == u';';
}

} // namespace

bool isBlank(QChar c) {
    const char16_t u = c.unicode();
    return u == u' ' || u == u'\t' || u == u'\v' || u == u'\f' || u == 0x1A;
}

QStringView trimBlanks(QStringView text) {
    qsizetype b = 0;
    qsizetype e = text.size();
    while (b < e && isBlank(text[b]))
        ++b;
    while (e > b && isBlank(text[e - 1]))
        --e;
    return text.mid(b, e - b);
}

QStringView cutAtNul(QStringView text) {
    const qsizetype nul = text.indexOf(QChar(u'\0'));
    return nul < 0 ? text : text.left(nul);
}

KeyLocation findKey(QStringView text, QStringView section, QStringView key) {
    KeyLocation loc;
    const QStringView wantedSection = trimBlanks(section);
    const QStringView wantedKey = trimBlanks(key);
    bool inSection = false;
    for (qsizetype pos = 0; pos < text.size();) {
        const Line line = lineAt(text, pos);
        pos = line.next;
        const QStringView content = text.mid(line.begin, line.end - line.begin);
        QStringView name;
        if (headerName(content, name)) {
            if (inSection)
                break; // only the first section of that name counts
            if (sameName(name, wantedSection)) {
                inSection = true;
                loc.sectionFound = true;
                loc.insertAt = line.end;
                loc.insertAfterLineEnd = line.hasLineEnd;
            }
            continue;
        }
        if (!inSection)
            continue;
        const QStringView body = trimBlanks(content);
        // Comments and blank lines after a section's last key stay with what follows them.
        if (body.isEmpty() || isComment(body))
            continue;
        loc.insertAt = line.end;
        loc.insertAfterLineEnd = line.hasLineEnd;
        const qsizetype eq = body.indexOf(u'=');
        const QStringView keyName = trimBlanks(eq < 0 ? body : body.left(eq));
        if (!sameName(keyName, wantedKey))
            continue;
        loc.keyFound = true;
        loc.lineBegin = line.begin;
        loc.lineEnd = line.end;
        loc.lineNext = line.next;
        loc.keyName = keyName;
        loc.hasValue = eq >= 0;
        if (loc.hasValue)
            loc.value = trimBlanks(body.mid(eq + 1));
        break;
    }
    return loc;
}

QStringView unquote(QStringView value) {
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
        value.back() == value.front())
        return value.mid(1, value.size() - 2);
    return value;
}

} // namespace tavik::profile
