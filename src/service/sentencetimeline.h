#pragma once

#include "audio/timelinelayout.h"

#include <QList>
#include <QRectF>
#include <QWidget>

namespace tavik {

// A sentence drawn as a line of time: one block per entry where the player starts and stops
// it, with its sound's outline, the gap a positive shift leaves after it and the end a negative
// shift cuts, a ruler in seconds and the sentence's length. Entries lie in two alternating lanes
// so that a cut end stays visible under the entry that starts over it.
class SentenceTimeline : public QWidget {
    Q_OBJECT
public:
    explicit SentenceTimeline(QWidget* parent = nullptr);

    void setBlocks(const QList<TimelineBlock>& blocks);
    // Nothing to draw, and why (a sentence whose announcement is gone).
    void setProblem(const QString& text);
    const QList<TimelineBlock>& blocks() const { return blocks_; }
    // While the sentence plays: where the output stands and the entry that plays; -1 for none.
    void setPlayCursor(qint64 ms, int entry);
    qint64 cursorMs() const { return cursorMs_; }
    int playingEntry() const { return playingEntry_; }
    // The label of the length, "3.42 s".
    QString lengthText() const;

    // Where block `i` is drawn: the part that plays, the gap after it (empty when none) and its
    // cut end (empty when none).
    QRectF playedRect(int i) const;
    QRectF gapRect(int i) const;
    QRectF cutRect(int i) const;
    // The x of a time.
    double xAt(qint64 ms) const;
    // The outline of a sound, once it has been computed (empty before).
    QList<float> peaksOf(const QString& path) const;

    // The time shift that puts entry `i`'s stop at `ms`, within what a shift can hold.
    std::int16_t shiftForStopAt(int i, qint64 ms) const;
    // While the right edge of a block is dragged: its entry, else -1.
    int draggedEntry() const { return dragged_; }
    // Whether the timeline takes drags (not while a sentence plays).
    void setEditable(bool editable) { editable_ = editable; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    // A drag of entry `entry`'s right edge ended at a new time shift.
    void shiftDragged(int entry, std::int16_t shiftMs);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void requestPeaks();
    double pxPerMs() const;
    QRectF laneRect(int i) const;

    QList<TimelineBlock> blocks_;
    QString problem_;
    int edgeAt(double x) const;
    void dragTo(double x);

    qint64 cursorMs_ = -1;
    bool editable_ = true;
    int dragged_ = -1;
    // The blocks as they were when the drag began: the drag moves from them.
    QList<TimelineBlock> beforeDrag_;
    double pxPerMsAtDrag_ = 0.0;
    double pressX_ = 0.0;
    int playingEntry_ = -1;
};

} // namespace tavik
