#pragma once

#include <QList>
#include <QString>

namespace tavik {

// Colours are Windows colour values, 0x00BBGGRR.
inline constexpr int NoColor = -1;

inline constexpr quint32 WinRgb(int red, int green, int blue) {
    return static_cast<quint32>(red & 0xFF) | (static_cast<quint32>(green & 0xFF) << 8) |
           (static_cast<quint32>(blue & 0xFF) << 16);
}

// A piece of one paragraph with one text colour and one background; NoColor means the
// box's own colour.
struct RtfRun {
    QString text;
    int color = NoColor;
    int highlight = NoColor;
    bool operator==(const RtfRun&) const = default;
};

using RtfParagraph = QList<RtfRun>;

// The rich text the log box holds: paragraphs of coloured runs. There is always at least one
// paragraph; the last one has no paragraph mark.
struct RtfDocument {
    QList<RtfParagraph> paragraphs{RtfParagraph{}};
};

// The RTF text of `doc`, one paragraph per line (lines end in CR LF), with a colour table of
// the colours in use in order of first use, the auto colour first.
QString WriteRtf(const RtfDocument& doc);

// Reads the subset of RTF the log box writes and edits: groups, the colour table, \cfN,
// \highlightN (\cbN), \plain, \par, \line, \tab, \uN, \'hh (code page 1252) and escaped
// characters. Other destinations are skipped, unknown control words ignored. Linear in the
// input; nesting deeper than the reader keeps track of is read as text of the outer group.
RtfDocument ParseRtf(const QString& rtf);

} // namespace tavik
