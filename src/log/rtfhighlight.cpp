#include "rtfhighlight.h"

#include "colortable.h"
#include "eventyield.h"
#include "linehighlight.h"
#include "wordmatch.h"

#include <QApplication>
#include <QWidget>

namespace tavik::RTFHighlight {

namespace {

// Freezes drawing of the window for one pass and releases it at every exit.
class DrawLock {
public:
    DrawLock(QWidget* form, bool noLock) : form_(noLock ? nullptr : form) {
        if (form_ && form_->updatesEnabled())
            form_->setUpdatesEnabled(false);
        else
            form_ = nullptr;
    }
    ~DrawLock() {
        if (form_)
            form_->setUpdatesEnabled(true);
    }
    DrawLock(const DrawLock&) = delete;
    DrawLock& operator=(const DrawLock&) = delete;

private:
    QWidget* form_;
};

class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace

QList<quint32> ReadColorTable(const RichTextBox& box) {
    return tavik::ReadColorTable(box.textRTF());
}

void HighlightToLineEnd(QWidget* form, RichTextBox* box, quint32 color, const QString& marker,
                        bool noLock) {
    if (marker.isEmpty() || !box->text().contains(marker))
        return;
    const int firstLine = box->firstVisibleLine();
    DrawLock lock(form, noLock);

    int index = ColorIndex(ReadColorTable(*box), color);
    bool temporary = false;
    if (index < 0) {
        // Colouring one marker makes the box list the colour in its table.
        const qsizetype at = box->find(marker, 0);
        if (at < 0)
            return;
        box->setSelLength(0);
        box->setSelStart(at);
        box->setSelLength(1);
        box->setSelColor(color);
        index = ColorIndex(ReadColorTable(*box), color);
        temporary = true;
    }
    if (index < 0)
        return;

    {
        WaitCursor wait;
        const LineHighlightResult result = HighlightLines(box->textRTF(), marker, index);
        box->setTextRTF(result.rtf);
        box->refresh();

        if (temporary) {
            qsizetype start = result.linesWalked;
            for (;;) {
                const qsizetype at = box->find(marker, start);
                if (at < 0)
                    break;
                const quint32 was = box->selColor();
                box->setSelColor(0);
                if (was == color)
                    break;
                start = at + 1;
            }
        }
        box->setSelStart(0);
    }
    RestoreFirstLine(form, box, firstLine, true);
}

void ColorQuoted(QWidget* form, RichTextBox* box, quint32 color, bool noLock) {
    const qsizetype selStart = box->selStart();
    DrawLock lock(form, noLock);

    const qsizetype length = box->textLength();
    qsizetype p = box->find(QStringLiteral("'"), 0);
    while (p != -1) {
        if (box->selStart() + box->selLength() >= length)
            break;
        box->setSelStart(p + 1);
        box->span(QStringLiteral("'"), true, true);
        qsizetype next = p + 1;
        if (!box->selText().contains(QStringLiteral("\r\n")) && p + 1 + box->selLength() < length) {
            const qsizetype quoted = box->selLength() + 2;
            box->setSelStart(p);
            box->setSelLength(quoted);
            box->setSelColor(color);
            next = p + quoted;
        }
        box->setSelLength(0);
        box->setSelStart(next);
        p = box->find(QStringLiteral("'"), next);
    }
    box->setSelLength(0);
    box->setSelStart(selStart);
}

void ColorWords(QWidget* form, RichTextBox* box, quint32 color, const QStringList& words,
                bool noLock) {
    const qsizetype selStart = box->selStart();
    DrawLock lock(form, noLock);
    EventYield yield;
    for (const QString& word : words) {
        yield();
        if (word.trimmed().isEmpty())
            continue;
        for (const WordMatch& m : FindWholeWords(box->text(), word)) {
            yield();
            box->setSelStart(m.start);
            box->setSelLength(m.length);
            box->setSelColor(color);
        }
    }
    box->setSelStart(selStart);
}

void RestoreFirstLine(QWidget* form, RichTextBox* box, int line, bool noLock) {
    using Scroll = RichTextBox::ScrollAction;
    const int n = box->lineCount();
    int cur = box->firstVisibleLine();
    DrawLock lock(form, noLock);

    if (line >= cur) {
        while (cur <= line) {
            box->scrollView(Scroll::PageDown);
            const int now = box->firstVisibleLine();
            if (now == 0 || now == n || now == cur) {
                cur = now;
                break;
            }
            cur = now;
        }
    } else {
        // A page that does not move the view ends the loop too: a box too small to scroll.
        while (cur >= line) {
            box->scrollView(Scroll::PageUp);
            const int now = box->firstVisibleLine();
            if (now == 0 || now == n || now == cur) {
                cur = now;
                break;
            }
            cur = now;
        }
    }

    bool atZero = false;
    while (cur != line) {
        box->scrollView(line > cur ? Scroll::LineDown : Scroll::LineUp);
        const int now = box->firstVisibleLine();
        if (now == 0) {
            atZero = true;
            cur = now;
            break;
        }
        if (now == n || now == cur) {
            cur = now;
            break;
        }
        cur = now;
    }
    if (cur != line && atZero)
        box->scrollView(Scroll::LineUp);
}

} // namespace tavik::RTFHighlight
