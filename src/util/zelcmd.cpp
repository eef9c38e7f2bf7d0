#include "zelcmd.h"

#include "wincolor.h"

#include <QEnterEvent>
#include <QIcon>

namespace tavik {

zelcmd::zelcmd(QWidget* parent) : QPushButton(parent) {}

void zelcmd::SetPicture(const QPixmap& picture) {
    picture_ = picture;
    setIcon(picture.isNull() ? QIcon() : QIcon(picture));
    if (!picture.isNull())
        setIconSize(picture.size());
}

void zelcmd::SetForeColor(quint32 color) {
    foreColor_ = color;
    applyColors();
}

void zelcmd::SetBackColor(quint32 color) {
    backColor_ = color;
    applyColors();
}

void zelcmd::SetHoverForeColor(quint32 color) {
    hoverForeColor_ = color;
    applyColors();
}

void zelcmd::SetHoverBackColor(quint32 color) {
    hoverBackColor_ = color;
    applyColors();
}

void zelcmd::enterEvent(QEnterEvent* event) {
    hovered_ = true;
    applyColors();
    QPushButton::enterEvent(event);
}

void zelcmd::leaveEvent(QEvent* event) {
    hovered_ = false;
    applyColors();
    QPushButton::leaveEvent(event);
}

void zelcmd::applyColors() {
    // Only the roles set here override what the button inherits.
    QPalette p;
    const QColor fore = WinColorToQColor(hovered_ ? hoverForeColor_ : foreColor_);
    const QColor back = WinColorToQColor(hovered_ ? hoverBackColor_ : backColor_);
    if (fore.isValid())
        p.setColor(QPalette::ButtonText, fore);
    if (back.isValid())
        p.setColor(QPalette::Button, back);
    setPalette(p);
    setAutoFillBackground(back.isValid());
}

} // namespace tavik
