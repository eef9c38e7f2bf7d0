#pragma once

#include "log/richtextbox.h"

#include <QColor>
#include <QTextBlock>
#include <QTextDocument>

namespace tavik::test {

// The character format of one character of the log box, read from its document.
inline QTextCharFormat formatAt(const RichTextBox& box, int line, int column) {
    const QTextBlock block = box.document()->findBlockByNumber(line);
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment f = it.fragment();
        const int offset = f.position() - block.position();
        if (column >= offset && column < offset + f.length())
            return f.charFormat();
    }
    return {};
}

// The text colour of a character; invalid when it has the box's own colour.
inline QColor textColor(const RichTextBox& box, int line, int column) {
    const QTextCharFormat f = formatAt(box, line, column);
    return f.hasProperty(QTextFormat::ForegroundBrush) ? f.foreground().color() : QColor();
}

// The background of a character; invalid when it has none of its own.
inline QColor backColor(const RichTextBox& box, int line, int column) {
    const QTextCharFormat f = formatAt(box, line, column);
    return f.hasProperty(QTextFormat::BackgroundBrush) ? f.background().color() : QColor();
}

inline const QColor kRed{255, 0, 0};
inline const QColor kDarkGrey{0x40, 0x40, 0x40};
inline const QColor kBlue{0, 0, 255};
inline const QColor kYellow{255, 255, 0};

} // namespace tavik::test
