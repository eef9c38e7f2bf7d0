// A minimal profile-file reader and writer so the event log builds and runs until the
// settings module's own implementation is in place.
#include "settings/modini.h"

#include "util/conversions.h"
#include "util/cp1252.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QFile>

namespace tavik {

namespace {

struct Line {
    QString text;
    QString ending;
};

QList<Line> readLines(const QString& file) {
    QList<Line> lines;
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return lines;
    const QString text = fromCp1252(f.readAll());
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = text.indexOf(u'\n', start);
        if (end < 0) {
            lines.append({text.mid(start), {}});
            break;
        }
        const bool cr = end > start && text[end - 1] == u'\r';
        lines.append({text.mid(start, end - start - (cr ? 1 : 0)),
                      cr ? QStringLiteral("\r\n") : QStringLiteral("\n")});
        start = end + 1;
    }
    return lines;
}

bool isSection(const QString& line, QString* name) {
    const QString t = line.trimmed();
    if (!t.startsWith(u'[') || !t.contains(u']'))
        return false;
    *name = t.mid(1, t.indexOf(u']') - 1).trimmed();
    return true;
}

bool isKey(const QString& line, const QString& key, QString* value) {
    const qsizetype eq = line.indexOf(u'=');
    if (eq < 0 || line.left(eq).trimmed().compare(key.trimmed(), Qt::CaseInsensitive) != 0)
        return false;
    QString v = line.mid(eq + 1).trimmed();
    if (v.size() >= 2 && (v.front() == u'"' || v.front() == u'\'') && v.back() == v.front())
        v = v.mid(1, v.size() - 2);
    *value = v;
    return true;
}

// Index of the key's line, or -1; `sectionEnd` receives the line after the section's last
// non-blank line (-1 when the section is absent).
qsizetype findKey(const QList<Line>& lines, const QString& section, const QString& key,
                  qsizetype* sectionEnd, QString* value) {
    bool inSection = false;
    bool seen = false;
    *sectionEnd = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QString name;
        if (isSection(lines[i].text, &name)) {
            if (seen && inSection)
                return -1;
            inSection = name.compare(section.trimmed(), Qt::CaseInsensitive) == 0;
            if (inSection) {
                seen = true;
                *sectionEnd = i + 1;
            }
            continue;
        }
        if (!inSection)
            continue;
        if (!lines[i].text.trimmed().isEmpty())
            *sectionEnd = i + 1;
        if (isKey(lines[i].text, key, value))
            return i;
    }
    return -1;
}

void save(const QString& file, const QList<Line>& lines) {
    QString text;
    for (const Line& l : lines)
        text += l.text + l.ending;
    WriteFileAtomically(file, toCp1252(text));
}

} // namespace

Variant ReadINI(const QString& file, const QString& section, const QString& key,
                const Variant& defaultValue) {
    qsizetype end = -1;
    QString value;
    if (findKey(readLines(file), StripBrackets(section), key, &end, &value) >= 0)
        return Variant::fromString(value.left(1023));
    return Variant::fromString(CStr(defaultValue));
}

void WriteINI(const QString& file, const QString& section, const QString& key,
              const QString& value) {
    QList<Line> lines = readLines(file);
    qsizetype end = -1;
    QString old;
    const QString s = StripBrackets(section);
    const qsizetype at = findKey(lines, s, key, &end, &old);
    if (!lines.isEmpty() && lines.last().ending.isEmpty() && at != lines.size() - 1)
        lines.last().ending = QStringLiteral("\r\n");
    if (at >= 0)
        lines[at].text = key + u'=' + value;
    else if (end >= 0)
        lines.insert(end, {key + u'=' + value, QStringLiteral("\r\n")});
    else
        lines.append({{u'[' + s + u']', QStringLiteral("\r\n")},
                      {key + u'=' + value, QStringLiteral("\r\n")}});
    try {
        save(file, lines);
    } catch (const RuntimeError&) {
        // A profile write reports nothing.
    }
}

std::int32_t DeleteINI(const QString& file, const QString& section, const QString& key,
                       const MessageReporter& report) {
    QList<Line> lines = readLines(file);
    qsizetype end = -1;
    QString old;
    const qsizetype at = findKey(lines, StripBrackets(section), key, &end, &old);
    try {
        if (at >= 0) {
            lines.removeAt(at);
            save(file, lines);
        }
    } catch (const RuntimeError&) {
        if (report)
            report(QStringLiteral("Error code is :") + QString::number(5));
        return 0;
    }
    return 1;
}

QString StripBrackets(const QString& section) {
    QString s = section;
    if (s.startsWith(u'['))
        s.remove(0, 1);
    if (s.endsWith(u']'))
        s.chop(1);
    return s;
}

} // namespace tavik
