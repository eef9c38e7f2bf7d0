#include "app/fadeineffect.h"

#include "audio/modmci.h"
#include "util/windowplacement.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace tavik {

namespace {

// Transparent, frameless and never in the way of the mouse: it only shows the trail.
class ZoomOverlay : public QWidget {
public:
    explicit ZoomOverlay(const QRect& area)
        : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                               Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus) {
        setObjectName(QStringLiteral("zoomOverlay"));
        setAttribute(Qt::WA_TranslucentBackground);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setGeometry(area);
    }

    void addFrame(const QRect& screenRect) {
        frames_ << screenRect.translated(-geometry().topLeft());
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QPen pen(Qt::DotLine);
        pen.setColor(palette().color(QPalette::WindowText));
        painter.setPen(pen);
        for (const QRect& frame : frames_)
            painter.drawRect(frame.adjusted(0, 0, -1, -1));
    }

private:
    QList<QRect> frames_;
};

ZoomObserver& zoomObserver() {
    static ZoomObserver observer;
    return observer;
}

} // namespace

ZoomObserver SetZoomObserver(ZoomObserver observer) {
    ZoomObserver previous = std::move(zoomObserver());
    zoomObserver() = std::move(observer);
    return previous;
}

void Delay(int ms) {
    WaitMilliseconds(ms);
}

QList<QRect> ZoomTrail(const QRect& from, const QRect& to, int steps) {
    QList<QRect> trail;
    if (steps < 1)
        return trail;
    double left = from.left(), top = from.top(), right = from.right() + 1.0,
           bottom = from.bottom() + 1.0;
    const double dLeft = (to.left() - left) / steps, dTop = (to.top() - top) / steps,
                 dRight = (to.right() + 1.0 - right) / steps,
                 dBottom = (to.bottom() + 1.0 - bottom) / steps;
    for (int step = 1; step <= steps; ++step) {
        trail << QRect(QPoint(qRound(left), qRound(top)),
                       QPoint(qRound(right) - 1, qRound(bottom) - 1));
        left += dLeft;
        top += dTop;
        right += dRight;
        bottom += dBottom;
    }
    return trail;
}

QRect ScreenRect(const QWidget* widget) {
    if (!widget)
        return {};
    if (widget->isWindow())
        return ExpectedFrame(widget);
    return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
}

void RunZoomEffect(const QRect& from, const QRect& to, int steps) {
    if (zoomObserver())
        zoomObserver()(from, to);
    const QScreen* screen = QGuiApplication::screenAt(from.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen || steps < 1)
        return;
    ZoomOverlay overlay(screen->virtualGeometry());
    overlay.show();
    for (const QRect& frame : ZoomTrail(from, to, steps)) {
        overlay.addFrame(frame);
        QCoreApplication::processEvents();
        Delay(1);
    }
}

} // namespace tavik
