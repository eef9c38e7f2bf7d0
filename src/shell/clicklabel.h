#pragma once

#include <QLabel>

namespace tavik {

// A label that answers a click, as the splash and about windows' labels do.
class ClickLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

Q_SIGNALS:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
};

} // namespace tavik
