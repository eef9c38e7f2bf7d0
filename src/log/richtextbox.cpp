#include "richtextbox.h"

#include "util/wincolor.h"

#include "rtfdocument.h"

#include <QAbstractTextDocumentLayout>
#include <QFontDatabase>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtMath>
#include <algorithm>
#include <utility>

namespace tavik {

namespace {

// Colour changes reach the layout once they have stopped coming for this long.
constexpr int kColorSettleMs = 30;

// The box knows no system colours: only the low 24 bits of a colour value count.
QColor toQColor(quint32 c) {
    return WinColorToQColor(c & 0x00FFFFFFu);
}

int toWinColor(const QColor& c) {
    return static_cast<int>(QColorToWinColor(c));
}

int brushColor(const QTextCharFormat& f, QTextFormat::Property property) {
    if (!f.hasProperty(property))
        return NoColor;
    const QBrush brush = f.brushProperty(property);
    return brush.style() == Qt::NoBrush ? NoColor : toWinColor(brush.color());
}

// What the document turns into a new line when it is inserted.
bool isLineBreak(QChar c) {
    return c == u'\r' || c == u'\n' || c == QChar::ParagraphSeparator;
}

// Every line end as CR LF.
QString normalizeLineEnds(const QString& text) {
    QString out;
    out.reserve(text.size() + 2);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (isLineBreak(c)) {
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
            out += QStringLiteral("\r\n");
        } else {
            out += c;
        }
    }
    return out;
}

QTextCharFormat runFormat(const RtfRun& run) {
    QTextCharFormat fmt;
    if (run.color != NoColor)
        fmt.setForeground(toQColor(static_cast<quint32>(run.color)));
    if (run.highlight != NoColor)
        fmt.setBackground(toQColor(static_cast<quint32>(run.highlight)));
    return fmt;
}

RtfParagraph blockRuns(const QTextBlock& block) {
    RtfParagraph para;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment f = it.fragment();
        const QTextCharFormat fmt = f.charFormat();
        RtfRun run{f.text(), brushColor(fmt, QTextFormat::ForegroundBrush),
                   brushColor(fmt, QTextFormat::BackgroundBrush)};
        if (!para.isEmpty() && para.last().color == run.color &&
            para.last().highlight == run.highlight)
            para.last().text += run.text;
        else
            para.append(run);
    }
    return para;
}

QString paragraphText(const RtfParagraph& para) {
    QString text;
    for (const RtfRun& run : para)
        text += run.text;
    return text;
}

} // namespace

RichTextBox::RichTextBox(QWidget* parent) : QTextEdit(parent) {
    setUndoRedoEnabled(false);
    setLineWrapMode(QTextEdit::NoWrap);
    setAcceptRichText(false);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    syncTimer_.setSingleShot(true);
    syncTimer_.setInterval(0);
    connect(&syncTimer_, &QTimer::timeout, this, &RichTextBox::syncSelection);
    flushTimer_.setSingleShot(true);
    flushTimer_.setInterval(kColorSettleMs);
    connect(&flushTimer_, &QTimer::timeout, this, &RichTextBox::flushColors);
    connect(document(), &QTextDocument::contentsChange, this, [this](int, int removed, int added) {
        rtfValid_ = false;
        if (!internal_ && removed != added)
            textValid_ = false;
    });
    connect(this, &QTextEdit::cursorPositionChanged, this, &RichTextBox::pullSelection);
    connect(this, &QTextEdit::selectionChanged, this, &RichTextBox::pullSelection);
}

RichTextBox::~RichTextBox() {
    // Lines nobody saw are not laid out on the way out.
    pending_.clear();
    endBatch();
}

QString RichTextBox::text() const {
    if (!textValid_) {
        flushPending();
        text_.clear();
        for (QTextBlock b = document()->begin(); b.isValid(); b = b.next()) {
            if (b != document()->begin())
                text_ += QStringLiteral("\r\n");
            text_ += b.text();
        }
        textValid_ = true;
    }
    return text_;
}

qsizetype RichTextBox::textLength() const {
    return text().size();
}

void RichTextBox::invalidate() {
    textValid_ = false;
    rtfValid_ = false;
}

void RichTextBox::insertPlain(QTextCursor& cursor, const QString& text) {
    const QTextCharFormat plain;
    qsizetype from = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !isLineBreak(text[i]))
            continue;
        if (i > from)
            cursor.insertText(text.mid(from, i - from), plain);
        if (i < text.size()) {
            if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
            cursor.insertBlock(QTextBlockFormat(), plain);
        }
        from = i + 1;
    }
}

void RichTextBox::setText(const QString& text) {
    endBatch();
    internal_ = true;
    document()->clear();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    insertPlain(cursor, text);
    cursor.endEditBlock();
    internal_ = false;
    invalidate();
    selStart_ = 0;
    selLength_ = 0;
    scheduleSelectionSync();
}

QString RichTextBox::textRTF() const {
    if (!rtfValid_) {
        flushPending();
        RtfDocument doc;
        doc.paragraphs.clear();
        for (QTextBlock b = document()->begin(); b.isValid(); b = b.next()) {
            doc.paragraphs.append(blockRuns(b));
        }
        if (doc.paragraphs.isEmpty())
            doc.paragraphs.append(RtfParagraph{});
        rtf_ = WriteRtf(doc);
        rtfValid_ = true;
    }
    return rtf_;
}

bool RichTextBox::sameText(const RtfDocument& doc) const {
    flushPending();
    if (doc.paragraphs.size() != document()->blockCount())
        return false;
    qsizetype p = 0;
    for (QTextBlock b = document()->begin(); b.isValid(); b = b.next(), ++p) {
        if (paragraphText(doc.paragraphs[p]) != b.text())
            return false;
    }
    return true;
}

void RichTextBox::setTextRTF(const QString& rtf) {
    RtfDocument doc = ParseRtf(rtf);
    // Dropping empty runs makes paragraphs compare equal however they were written.
    for (RtfParagraph& para : doc.paragraphs)
        para.removeIf([](const RtfRun& run) { return run.text.isEmpty(); });
    if (sameText(doc)) {
        // Same text, new colours: the lines keep their layout, only changed ones are
        // recoloured, and the view need not be rebuilt.
        qsizetype p = 0;
        for (QTextBlock b = document()->begin(); b.isValid(); b = b.next(), ++p) {
            const RtfParagraph& para = doc.paragraphs[p];
            if (blockRuns(b) == para)
                continue;
            beginBatch(false);
            QTextCursor cursor(document());
            int at = b.position();
            for (const RtfRun& run : para) {
                cursor.setPosition(at);
                cursor.setPosition(at + static_cast<int>(run.text.size()), QTextCursor::KeepAnchor);
                cursor.setCharFormat(runFormat(run));
                at += static_cast<int>(run.text.size());
            }
        }
        rtfValid_ = false;
    } else {
        endBatch();
        internal_ = true;
        document()->clear();
        QTextCursor cursor(document());
        cursor.beginEditBlock();
        for (qsizetype p = 0; p < doc.paragraphs.size(); ++p) {
            if (p > 0)
                cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
            for (const RtfRun& run : doc.paragraphs[p])
                cursor.insertText(run.text, runFormat(run));
        }
        cursor.endEditBlock();
        internal_ = false;
        invalidate();
    }
    selStart_ = 0;
    selLength_ = 0;
    scheduleSelectionSync();
}

qsizetype RichTextBox::toDocument(qsizetype pos) const {
    flushPending();
    const QTextDocument* doc = document();
    // The last block whose start, counted with CR LF line ends, is at or before pos. A log
    // appends at its end, so the last block is tried first.
    int lo = 0;
    int hi = doc->blockCount() - 1;
    if (doc->lastBlock().position() + hi <= pos)
        lo = hi;
    while (lo < hi) {
        const int mid = lo + (hi - lo + 1) / 2;
        if (doc->findBlockByNumber(mid).position() + mid <= pos)
            lo = mid;
        else
            hi = mid - 1;
    }
    const QTextBlock block = doc->findBlockByNumber(lo);
    return std::clamp<qsizetype>(pos - lo, block.position(), block.position() + block.length() - 1);
}

qsizetype RichTextBox::fromDocument(qsizetype pos) const {
    flushPending();
    return pos + document()->findBlock(static_cast<int>(pos)).blockNumber();
}

void RichTextBox::setSelStart(qsizetype start) {
    selStart_ = std::clamp<qsizetype>(start, 0, textLength());
    selLength_ = 0;
    scheduleSelectionSync();
}

void RichTextBox::setSelLength(qsizetype length) {
    selLength_ = std::clamp<qsizetype>(length, 0, std::max<qsizetype>(0, textLength() - selStart_));
    scheduleSelectionSync();
}

QString RichTextBox::selText() const {
    return text().mid(selStart_, selLength_);
}

void RichTextBox::setSelText(const QString& newText) {
    const QString inserted = normalizeLineEnds(newText);
    if (!isVisible() && textValid_ && selLength_ == 0 && selStart_ == text_.size()) {
        // Appended to a hidden box: gathered with the lines before it until the document is
        // needed, where it goes in as it would have gone in now.
        beginBatch(true);
        pending_ += inserted;
        text_ += inserted;
        rtfValid_ = false;
        selStart_ += inserted.size();
        scheduleSelectionSync();
        return;
    }
    const bool keepCache = textValid_;
    // A hidden box gathers its appended lines too; a visible one shows each at once.
    if (isVisible())
        endBatch();
    else
        beginBatch(true);
    internal_ = true;
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(toDocument(selStart_)));
    cursor.setPosition(static_cast<int>(toDocument(selStart_ + selLength_)),
                       QTextCursor::KeepAnchor);
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    insertPlain(cursor, inserted);
    cursor.endEditBlock();
    internal_ = false;
    rtfValid_ = false;
    // Appending a line must not rebuild the whole text: the cached text is edited likewise.
    if (keepCache)
        text_.replace(selStart_, selLength_, inserted);
    else
        textValid_ = false;
    selStart_ += inserted.size();
    selLength_ = 0;
    scheduleSelectionSync();
}

quint32 RichTextBox::selColor() const {
    QTextCursor cursor(document());
    const qsizetype start = toDocument(selStart_);
    // The format of the character before the cursor position.
    const qsizetype at =
        selLength_ > 0 ? std::min<qsizetype>(start + 1, document()->characterCount() - 1) : start;
    cursor.setPosition(static_cast<int>(at));
    const int c = brushColor(cursor.charFormat(), QTextFormat::ForegroundBrush);
    return c == NoColor ? 0u : static_cast<quint32>(c);
}

void RichTextBox::setSelColor(quint32 color) {
    if (selLength_ <= 0)
        return;
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(toDocument(selStart_)));
    cursor.setPosition(static_cast<int>(toDocument(selStart_ + selLength_)),
                       QTextCursor::KeepAnchor);
    QTextCharFormat fmt;
    fmt.setForeground(toQColor(color));
    beginBatch(false);
    cursor.mergeCharFormat(fmt);
    rtfValid_ = false;
}

void RichTextBox::beginBatch(bool text) {
    if (!batchOpen_) {
        batch_ = QTextCursor(document());
        batch_.beginEditBlock();
        batchOpen_ = true;
    }
    if (text)
        batchHasText_ = true;
    else
        flushTimer_.start();
}

void RichTextBox::flushPending() const {
    if (pending_.isEmpty())
        return;
    const QString lines = std::exchange(pending_, QString());
    internal_ = true;
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    insertPlain(cursor, lines);
    cursor.endEditBlock();
    internal_ = false;
}

void RichTextBox::endBatch() {
    flushPending();
    if (!batchOpen_)
        return;
    batchOpen_ = false;
    batchHasText_ = false;
    flushTimer_.stop();
    // Every change in the batch was made here, so the cached text is already up to date.
    internal_ = true;
    batch_.endEditBlock();
    internal_ = false;
    batch_ = QTextCursor();
}

void RichTextBox::showEvent(QShowEvent* event) {
    endBatch();
    syncSelection();
    QTextEdit::showEvent(event);
}

qsizetype RichTextBox::find(const QString& what, qsizetype start) {
    const QString& t = text();
    if (what.isEmpty() || start < 0 || start > t.size())
        return -1;
    const qsizetype at = t.indexOf(what, start, Qt::CaseInsensitive);
    if (at < 0)
        return -1;
    selStart_ = at;
    selLength_ = what.size();
    scheduleSelectionSync();
    return at;
}

void RichTextBox::span(const QString& charset, bool forward, bool negate) {
    const QString& t = text();
    auto inSpan = [&](QChar c) { return charset.contains(c) != negate; };
    if (forward) {
        qsizetype end = selStart_ + selLength_;
        while (end < t.size() && inSpan(t[end]))
            ++end;
        selLength_ = end - selStart_;
    } else {
        const qsizetype end = selStart_ + selLength_;
        while (selStart_ > 0 && inSpan(t[selStart_ - 1]))
            --selStart_;
        selLength_ = end - selStart_;
    }
    scheduleSelectionSync();
}

int RichTextBox::firstVisibleLine() {
    layoutNeeded_ = true;
    syncSelection();
    layoutNeeded_ = false;
    // One pixel down: a line whose top is the view's top edge is the first visible one.
    return cursorForPosition(QPoint(0, 1)).blockNumber();
}

int RichTextBox::lineCount() const {
    flushPending();
    return document()->blockCount();
}

void RichTextBox::scrollView(ScrollAction action) {
    layoutNeeded_ = true;
    syncSelection();
    layoutNeeded_ = false;
    QScrollBar* bar = verticalScrollBar();
    const int first = firstVisibleLine();
    auto topOf = [&](int line) {
        const QTextBlock block = document()->findBlockByNumber(line);
        return qCeil(document()->documentLayout()->blockBoundingRect(block).top());
    };
    switch (action) {
    case ScrollAction::LineUp:
        bar->setValue(first > 0 ? topOf(first - 1) : 0);
        break;
    case ScrollAction::LineDown:
        if (first + 1 < lineCount())
            bar->setValue(topOf(first + 1));
        break;
    case ScrollAction::PageUp:
        bar->triggerAction(QAbstractSlider::SliderPageStepSub);
        break;
    case ScrollAction::PageDown:
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        break;
    }
}

void RichTextBox::refresh() {
    syncSelection();
    viewport()->update();
}

void RichTextBox::scheduleSelectionSync() {
    selectionDirty_ = true;
    if (!syncTimer_.isActive())
        syncTimer_.start();
}

void RichTextBox::flushColors() {
    if (batchHasText_ && !isVisible())
        return;
    endBatch();
}

void RichTextBox::syncSelection() {
    // A hidden box keeps gathering: nobody sees it, and its layout can wait.
    if (!isVisible() && !layoutNeeded_)
        return;
    // Pending colours leave every line where it is; pending lines must be laid out first.
    if (batchHasText_)
        endBatch();
    if (!selectionDirty_)
        return;
    selectionDirty_ = false;
    syncTimer_.stop();
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(toDocument(selStart_)));
    cursor.setPosition(static_cast<int>(toDocument(selStart_ + selLength_)),
                       QTextCursor::KeepAnchor);
    internal_ = true;
    setTextCursor(cursor);
    internal_ = false;
}

void RichTextBox::pullSelection() {
    if (internal_ || selectionDirty_)
        return;
    // The user moved the caret or selected with the mouse or keys.
    const QTextCursor cursor = textCursor();
    selStart_ = fromDocument(cursor.selectionStart());
    selLength_ = fromDocument(cursor.selectionEnd()) - selStart_;
}

} // namespace tavik
