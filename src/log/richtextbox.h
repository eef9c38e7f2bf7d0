#pragma once

#include "rtfdocument.h"

#include <QTextCursor>
#include <QTextEdit>
#include <QTimer>

namespace tavik {

// The rich-text box the log viewer shows, with the operations its colouring passes use.
// Text positions count a line end as CR LF, as the box's plain text reads; colours are
// Windows colour values (0x00BBGGRR). Like the Windows box, changing the selection scrolls it
// into view; here that happens when events are next processed or the view is next asked
// about, so long passes over the selection do not scroll on every step. Likewise colour
// changes reach the layout together, when events are next processed or the view is needed;
// a hidden box gathers colours and appended lines until it is shown.
class RichTextBox : public QTextEdit {
    Q_OBJECT
public:
    enum class ScrollAction { LineUp = 0, LineDown = 1, PageUp = 2, PageDown = 3 };

    explicit RichTextBox(QWidget* parent = nullptr);
    ~RichTextBox() override;

    // The plain text with CR LF line ends.
    QString text() const;
    qsizetype textLength() const;
    // Replaces the whole contents with uncoloured text; CR LF, CR and LF each end a line.
    void setText(const QString& text);

    // The contents as RTF; its colour table holds every colour in use.
    QString textRTF() const;
    // Rebuilds the contents from RTF, colours and highlights included.
    void setTextRTF(const QString& rtf);

    qsizetype selStart() const { return selStart_; }
    // Places the caret; the selection length becomes 0.
    void setSelStart(qsizetype start);
    qsizetype selLength() const { return selLength_; }
    void setSelLength(qsizetype length);
    QString selText() const;
    // Replaces the selection with uncoloured text and puts the caret after it.
    void setSelText(const QString& text);
    // The text colour of the selection's first character (0 for the box's own colour).
    quint32 selColor() const;
    void setSelColor(quint32 color);

    // Finds `what` (without regard to case) from `start` on, selects it and returns its
    // position; -1 when it is not there.
    qsizetype find(const QString& what, qsizetype start);
    // Extends the selection over the characters in `charset` (or, with `negate`, over those
    // not in it): its end moves forward, or its start backward.
    void span(const QString& charset, bool forward, bool negate);

    int firstVisibleLine();
    int lineCount() const;
    void scrollView(ScrollAction action);
    void refresh();
    // True while changes wait to reach the layout (and so the screen).
    bool hasPendingChanges() const { return batchOpen_; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    qsizetype toDocument(qsizetype pos) const;
    qsizetype fromDocument(qsizetype pos) const;
    static void insertPlain(QTextCursor& cursor, const QString& text);
    void flushPending() const;
    void invalidate();
    void scheduleSelectionSync();
    void syncSelection();
    void pullSelection();
    void beginBatch(bool text);
    void endBatch();
    void flushColors();
    bool sameText(const RtfDocument& doc) const;

    mutable QString text_;
    mutable bool textValid_ = false;
    mutable QString rtf_;
    mutable bool rtfValid_ = false;
    qsizetype selStart_ = 0;
    qsizetype selLength_ = 0;
    mutable bool internal_ = false;
    bool selectionDirty_ = false;
    QTimer syncTimer_;
    // Changes are gathered in one open edit block, so the layout follows them once instead
    // of once per change. Colours leave the geometry as it is and settle on a timer; lines
    // appended to a hidden box wait until it is shown or its layout is needed.
    QTextCursor batch_;
    bool batchOpen_ = false;
    bool batchHasText_ = false;
    QTimer flushTimer_;
    bool layoutNeeded_ = false;
    // Lines appended to the end of a hidden box that the document has not taken yet: a log
    // nobody looks at grows by its text alone, a few microseconds a line, and the document
    // takes them all at once when the box is shown or anything asks it. Part of text_.
    mutable QString pending_;
};

} // namespace tavik
