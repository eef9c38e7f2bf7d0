#include "clicklabel.h"

#include <QMouseEvent>

namespace tavik {

void ClickLabel::mouseReleaseEvent(QMouseEvent* event) {
    QLabel::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

} // namespace tavik
