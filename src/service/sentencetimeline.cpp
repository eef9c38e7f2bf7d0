#include "service/sentencetimeline.h"

#include "audio/waveform.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QMouseEvent>
#include <QMutex>
#include <QPainter>
#include <QPointer>
#include <QThreadPool>
#include <QToolTip>

namespace tavik {

namespace {

constexpr int kMargin = 6;
constexpr int kRulerHeight = 18;
constexpr int kLaneHeight = 34;
constexpr int kLaneGap = 4;
constexpr int kBucketMs = 10;

// Outlines are made once per sound file and kept while it stays the same file (path, size and
// time), for every timeline of the program.
struct PeakCache {
    QMutex mutex;
    QHash<QString, QList<float>> done;
    QSet<QString> running;
};

PeakCache& peakCache() {
    static PeakCache cache;
    return cache;
}

QString cacheKey(const QString& path) {
    const QFileInfo info(path);
    return path + u'\n' + QString::number(info.size()) + u'\n' +
           QString::number(info.lastModified().toMSecsSinceEpoch());
}

QString seconds(qint64 ms) {
    return QString::number(double(ms) / 1000.0, 'f', 2) + QStringLiteral(" s");
}

} // namespace

SentenceTimeline::SentenceTimeline(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picTimeline"));
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SentenceTimeline::setBlocks(const QList<TimelineBlock>& blocks) {
    dragged_ = -1;
    blocks_ = blocks;
    problem_.clear();
    requestPeaks();
    update();
}

void SentenceTimeline::setProblem(const QString& text) {
    blocks_.clear();
    problem_ = text;
    update();
}

void SentenceTimeline::setPlayCursor(qint64 ms, int entry) {
    if (ms == cursorMs_ && entry == playingEntry_)
        return;
    cursorMs_ = ms;
    playingEntry_ = entry;
    update();
}

QString SentenceTimeline::lengthText() const {
    return blocks_.isEmpty() ? QString() : seconds(TimelineLengthMs(blocks_));
}

QSize SentenceTimeline::sizeHint() const {
    return {400, minimumSizeHint().height()};
}

QSize SentenceTimeline::minimumSizeHint() const {
    return {120, kMargin * 2 + kRulerHeight + 2 * kLaneHeight + kLaneGap};
}

double SentenceTimeline::pxPerMs() const {
    // The scale stays as it was while an edge is dragged, so the edge stays under the mouse.
    if (dragged_ >= 0)
        return pxPerMsAtDrag_;
    qint64 end = TimelineLengthMs(blocks_);
    for (const TimelineBlock& b : blocks_)
        end = std::max(end, b.soundEndMs);
    const double room = std::max(1, width() - 2 * kMargin);
    return end > 0 ? room / double(end) : 0.0;
}

double SentenceTimeline::xAt(qint64 ms) const {
    return kMargin + double(ms) * pxPerMs();
}

QRectF SentenceTimeline::laneRect(int i) const {
    const double top = kMargin + kRulerHeight + (i % 2) * (kLaneHeight + kLaneGap);
    return {0.0, top, 0.0, double(kLaneHeight)};
}

QRectF SentenceTimeline::playedRect(int i) const {
    const TimelineBlock& b = blocks_.at(i);
    QRectF r = laneRect(i);
    r.setLeft(xAt(b.startMs));
    r.setRight(xAt(std::min(b.soundEndMs, b.stopMs)));
    return r;
}

QRectF SentenceTimeline::gapRect(int i) const {
    const TimelineBlock& b = blocks_.at(i);
    if (b.stopMs <= b.soundEndMs)
        return {};
    QRectF r = laneRect(i);
    r.setLeft(xAt(b.soundEndMs));
    r.setRight(xAt(b.stopMs));
    return r;
}

QRectF SentenceTimeline::cutRect(int i) const {
    const TimelineBlock& b = blocks_.at(i);
    if (b.soundEndMs <= b.stopMs)
        return {};
    QRectF r = laneRect(i);
    r.setLeft(xAt(std::max(b.stopMs, b.startMs)));
    r.setRight(xAt(b.soundEndMs));
    return r;
}

QList<float> SentenceTimeline::peaksOf(const QString& path) const {
    PeakCache& cache = peakCache();
    const QMutexLocker lock(&cache.mutex);
    return cache.done.value(cacheKey(path));
}

void SentenceTimeline::requestPeaks() {
    PeakCache& cache = peakCache();
    for (const TimelineBlock& b : std::as_const(blocks_)) {
        if (b.path.isEmpty())
            continue;
        const QString key = cacheKey(b.path);
        {
            const QMutexLocker lock(&cache.mutex);
            if (cache.done.contains(key) || cache.running.contains(key))
                continue;
            cache.running.insert(key);
        }
        const QPointer<SentenceTimeline> self(this);
        const QString path = b.path;
        // Decoding a long sound takes a while: it is done away from the window, which draws
        // the outline once it is there.
        QThreadPool::globalInstance()->start([self, path, key] {
            QList<float> peaks = WaveformPeaks(path, kBucketMs);
            PeakCache& cache = peakCache();
            {
                const QMutexLocker lock(&cache.mutex);
                cache.running.remove(key);
                cache.done.insert(key, std::move(peaks));
            }
            if (self)
                QMetaObject::invokeMethod(
                    self.data(),
                    [self] {
                        if (self)
                            self->update();
                    },
                    Qt::QueuedConnection);
        });
    }
}

void SentenceTimeline::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), palette().base());
    const QPalette& pal = palette();
    if (blocks_.isEmpty()) {
        p.setPen(pal.color(QPalette::PlaceholderText));
        p.drawText(rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                   Qt::AlignCenter | Qt::TextWordWrap, problem_);
        return;
    }
    // The ruler: a mark and its seconds every step, the sentence's length at the right.
    const qint64 length = TimelineLengthMs(blocks_);
    const qint64 step = RulerStepMs(pxPerMs(), 60);
    p.setPen(pal.color(QPalette::Text));
    const QFontMetrics metrics(font());
    const QString total = lengthText();
    // The length stands at the right; a mark's seconds that would run into it are left out.
    const double totalLeft = width() - kMargin - metrics.horizontalAdvance(total) - 6;
    for (qint64 t = 0; xAt(t) <= width() - kMargin; t += step) {
        const double x = xAt(t);
        p.drawLine(QPointF(x, kMargin + kRulerHeight - 5), QPointF(x, kMargin + kRulerHeight));
        const QString mark = seconds(t);
        if (x + 2 + metrics.horizontalAdvance(mark) < totalLeft)
            p.drawText(QPointF(x + 2, kMargin + metrics.ascent()), mark);
    }
    p.drawText(QRectF(0, kMargin, width() - kMargin, kRulerHeight), Qt::AlignRight | Qt::AlignTop,
               total);
    p.drawLine(QPointF(xAt(length), kMargin), QPointF(xAt(length), height() - kMargin));

    const QColor fills[] = {QColor(0x9ec5e8), QColor(0xa8d8a0)};
    for (int i = 0; i < blocks_.size(); ++i) {
        const TimelineBlock& b = blocks_[i];
        const QRectF played = playedRect(i);
        const QColor fill = fills[i % 2];
        p.fillRect(played, fill);
        // The outline of the sound over its whole length, the cut part included.
        const QList<float> peaks = b.path.isEmpty() ? QList<float>() : peaksOf(b.path);
        if (!peaks.isEmpty()) {
            p.setPen(fill.darker(170));
            const double mid = played.center().y();
            const double half = played.height() / 2 - 2;
            for (int k = 0; k < peaks.size(); ++k) {
                const double x = xAt(b.startMs + qint64(k) * kBucketMs);
                if (x > xAt(std::max(b.soundEndMs, b.stopMs)))
                    break;
                p.drawLine(QPointF(x, mid - peaks[k] * half), QPointF(x, mid + peaks[k] * half));
            }
        }
        const QRectF cut = cutRect(i);
        if (!cut.isEmpty()) {
            p.fillRect(cut, QBrush(QColor(200, 60, 60, 110), Qt::BDiagPattern));
            p.setPen(QPen(QColor(200, 60, 60), 1, Qt::DashLine));
            p.drawRect(cut);
        }
        const QRectF gap = gapRect(i);
        if (!gap.isEmpty()) {
            p.setPen(QPen(pal.color(QPalette::Mid), 1, Qt::DashLine));
            p.drawRect(gap);
        }
        p.setPen(
            QPen(i == playingEntry_ ? pal.color(QPalette::Highlight) : pal.color(QPalette::Text),
                 i == playingEntry_ ? 3 : 1));
        p.drawRect(played);
        p.setPen(pal.color(QPalette::Text));
        p.drawText(played.adjusted(3, 1, -2, -1), Qt::AlignLeft | Qt::AlignTop,
                   metrics.elidedText(b.title, Qt::ElideRight, int(played.width()) - 5));
    }
    if (cursorMs_ >= 0) {
        p.setPen(QPen(QColor(220, 0, 0), 2));
        const double x = xAt(cursorMs_);
        p.drawLine(QPointF(x, kMargin), QPointF(x, height() - kMargin));
    }
}

std::int16_t SentenceTimeline::shiftForStopAt(int i, qint64 ms) const {
    const TimelineBlock& b = blocks_.at(i);
    const qint64 length = b.soundEndMs - b.startMs;
    // The player waits length + shift and stops at the tick after it (TicksWaited).
    const qint64 shift = ms - b.startMs - length - 1;
    return static_cast<std::int16_t>(std::clamp<qint64>(shift, -32768, 32767));
}

int SentenceTimeline::edgeAt(double x) const {
    for (int i = blocks_.size() - 1; i >= 0; --i) {
        if (std::abs(x - xAt(blocks_[i].stopMs)) <= 4.0)
            return i;
    }
    return -1;
}

void SentenceTimeline::mousePressEvent(QMouseEvent* event) {
    const int edge =
        editable_ && event->button() == Qt::LeftButton ? edgeAt(event->position().x()) : -1;
    if (edge < 0) {
        QWidget::mousePressEvent(event);
        return;
    }
    pxPerMsAtDrag_ = pxPerMs();
    beforeDrag_ = blocks_;
    dragged_ = edge;
    pressX_ = event->position().x();
}

void SentenceTimeline::mouseMoveEvent(QMouseEvent* event) {
    if (dragged_ >= 0 && std::abs(event->position().x() - pressX_) < 2.0)
        return;
    if (dragged_ < 0) {
        QWidget::setCursor(editable_ && edgeAt(event->position().x()) >= 0 ? Qt::SizeHorCursor
                                                                           : Qt::ArrowCursor);
        return;
    }
    dragTo(event->position().x());
}

void SentenceTimeline::dragTo(double x) {
    const TimelineBlock& was = beforeDrag_.at(dragged_);
    const qint64 ms = qRound64((x - kMargin) / pxPerMsAtDrag_);
    blocks_ = beforeDrag_;
    const std::int16_t shift = shiftForStopAt(dragged_, ms);
    // The stop as the player computes it; every later entry moves with it.
    const qint64 wait = qint64(was.soundEndMs - was.startMs) + shift;
    const qint64 stop = was.startMs + std::max<qint64>(wait + 1, 0);
    const qint64 delta = stop - was.stopMs;
    blocks_[dragged_].shiftMs = shift;
    blocks_[dragged_].stopMs = stop;
    for (int i = dragged_ + 1; i < blocks_.size(); ++i) {
        blocks_[i].startMs += delta;
        blocks_[i].soundEndMs += delta;
        blocks_[i].stopMs += delta;
    }
    const QString text = (shift > 0 ? QStringLiteral("+") : QString()) + QString::number(shift) +
                         QStringLiteral(" ms");
    setToolTip(text);
    QToolTip::showText(mapToGlobal(QPoint(int(xAt(stop)), 0)), text, this);
    update();
}

void SentenceTimeline::mouseReleaseEvent(QMouseEvent* event) {
    if (dragged_ < 0) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    // A click on an edge, or a hand that shook a pixel, is no drag.
    if (std::abs(event->position().x() - pressX_) < 2.0)
        blocks_ = beforeDrag_;
    else
        dragTo(event->position().x());
    const int entry = dragged_;
    const std::int16_t shift = blocks_[entry].shiftMs;
    const bool changed = shift != beforeDrag_[entry].shiftMs;
    dragged_ = -1;
    setToolTip(QString());
    QToolTip::hideText();
    if (changed)
        Q_EMIT shiftDragged(entry, shift);
    else
        blocks_ = beforeDrag_;
    update();
}

} // namespace tavik
