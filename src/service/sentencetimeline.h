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
    void setCursor(qint64 ms, int entry);
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

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void requestPeaks();
    double pxPerMs() const;
    QRectF laneRect(int i) const;

    QList<TimelineBlock> blocks_;
    QString problem_;
    qint64 cursorMs_ = -1;
    int playingEntry_ = -1;
};

} // namespace tavik
