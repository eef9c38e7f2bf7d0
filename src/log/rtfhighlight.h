#pragma once

#include "richtextbox.h"

#include <QList>
#include <QStringList>

class QWidget;

// The colouring passes of the log viewer. Each takes the owning window and, unless `noLock`
// is set, freezes its drawing for the pass's duration.
namespace tavik::RTFHighlight {

// The box's RTF colour table: element 0 is the auto colour, element k colour index k.
QList<quint32> ReadColorTable(const RichTextBox& box);

// Background `color` from `marker` to the end of each line, unless the marker lies inside a
// double-quoted text.
void HighlightToLineEnd(QWidget* form, RichTextBox* box, quint32 color, const QString& marker,
                        bool noLock);

// Text `color` for every '...' part that closes on its own line.
void ColorQuoted(QWidget* form, RichTextBox* box, quint32 color, bool noLock);

// Text `color` for every whole-word, case-sensitive match of each of `words`.
void ColorWords(QWidget* form, RichTextBox* box, quint32 color, const QStringList& words,
                bool noLock);

// Scrolls the box until `line` is its first visible line.
void RestoreFirstLine(QWidget* form, RichTextBox* box, int line, bool noLock);

} // namespace tavik::RTFHighlight
