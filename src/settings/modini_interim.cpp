// Interim profile-file reader so the language routines can be built and tested; replaced by
// the settings module's own implementation.
#include "settings/modini.h"

#include "util/conversions.h"
#include "util/cp1252.h"

#include <QFile>

namespace tavik {

namespace {

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t';
}

QString trimmed(QStringView s) {
    qsizetype b = 0, e = s.size();
    while (b < e && isBlank(s[b]))
        ++b;
    while (e > b && isBlank(s[e - 1]))
        --e;
    return s.mid(b, e - b).toString();
}

} // namespace

Variant ReadINI(const QString& file, const QString& section, const QString& key,
                const Variant& defaultValue) {
    QString result = CStr(defaultValue);
    QFile f(file);
    if (!file.isEmpty() && f.open(QIODevice::ReadOnly)) {
        const QString text = fromCp1252(f.readAll());
        bool inSection = false;
        bool sectionSeen = false;
        qsizetype pos = 0;
        while (pos <= text.size()) {
            qsizetype end = pos;
            while (end < text.size() && text[end] != u'\r' && text[end] != u'\n')
                ++end;
            const QString line = trimmed(QStringView(text).mid(pos, end - pos));
            pos = end + 1;
            if (line.startsWith(u'[')) {
                if (inSection)
                    break; // only the first section of that name counts
                const qsizetype close = line.indexOf(u']');
                const QString name = trimmed(QStringView(line).mid(1, close < 0 ? -1 : close - 1));
                inSection = !sectionSeen && name.compare(section, Qt::CaseInsensitive) == 0;
                sectionSeen = sectionSeen || inSection;
                continue;
            }
            const qsizetype eq = line.indexOf(u'=');
            if (!inSection || eq < 0)
                continue;
            if (trimmed(QStringView(line).left(eq)).compare(key, Qt::CaseInsensitive) == 0) {
                result = trimmed(QStringView(line).mid(eq + 1));
                break;
            }
        }
    }
    const qsizetype nul = result.indexOf(QChar(0));
    if (nul >= 0)
        result.truncate(nul);
    result.truncate(1023);
    return Variant::fromString(result);
}

} // namespace tavik
