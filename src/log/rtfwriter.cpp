#include "rtfdocument.h"

#include "util/cp1252.h"

namespace tavik {

namespace {

class ColorTable {
public:
    // The table index of `color`; 0 for the auto colour.
    int indexOf(int color) {
        if (color == NoColor)
            return 0;
        const qsizetype at = colors_.indexOf(color);
        if (at >= 0)
            return static_cast<int>(at) + 1;
        colors_.append(color);
        return static_cast<int>(colors_.size());
    }
    QString text() const {
        QString out = QStringLiteral("{\\colortbl ;");
        for (int c : colors_) {
            out += QStringLiteral("\\red%1\\green%2\\blue%3;")
                       .arg(c & 0xFF)
                       .arg((c >> 8) & 0xFF)
                       .arg((c >> 16) & 0xFF);
        }
        return out + u'}';
    }

private:
    QList<int> colors_;
};

void appendEscaped(QString& out, const QString& text) {
    for (const QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c == u'\\' || c == u'{' || c == u'}') {
            out += u'\\';
            out += ch;
        } else if (c == u'\t') {
            out += QStringLiteral("\\tab ");
        } else if (c >= 0x20 && c < 0x80) {
            out += ch;
        } else {
            const QByteArray byte = toCp1252(QString(ch));
            if (byte.size() == 1 && byte[0] != '?') {
                out += QStringLiteral("\\'%1").arg(static_cast<uchar>(byte[0]), 2, 16,
                                                   QLatin1Char('0'));
            } else {
                out += QStringLiteral("\\u%1?").arg(static_cast<short>(c));
            }
        }
    }
}

} // namespace

QString WriteRtf(const RtfDocument& doc) {
    ColorTable table;
    QString body;
    int color = 0;
    int highlight = 0;
    for (qsizetype p = 0; p < doc.paragraphs.size(); ++p) {
        for (const RtfRun& run : doc.paragraphs[p]) {
            if (run.text.isEmpty())
                continue;
            const int c = table.indexOf(run.color);
            const int h = table.indexOf(run.highlight);
            if (c != color)
                body += QStringLiteral("\\cf%1 ").arg(c);
            if (h != highlight)
                body += QStringLiteral("\\highlight%1 ").arg(h);
            color = c;
            highlight = h;
            appendEscaped(body, run.text);
        }
        if (p + 1 < doc.paragraphs.size())
            body += QStringLiteral("\\par\r\n");
    }
    if (!body.endsWith(u'\n'))
        body += QStringLiteral("\r\n");
    return QStringLiteral("{\\rtf1\\ansi\\ansicpg1252\\deff0"
                          "{\\fonttbl{\\f0\\fmodern\\fcharset0 Courier New;}}\r\n") +
           table.text() + QStringLiteral("\r\n\\viewkind4\\uc1\\pard\\f0\\fs20 ") + body +
           QStringLiteral("}\r\n");
}

} // namespace tavik
