#pragma once

#include <QPixmap>
#include <QPushButton>

namespace tavik {

// The editor's push button: a caption, an optional picture, and text and face colours that
// change while the mouse is over it. Colours are Windows colour values; a system colour
// (high bit set) leaves the style's own.
class zelcmd : public QPushButton {
    Q_OBJECT
public:
    explicit zelcmd(QWidget* parent = nullptr);

    QString Caption() const { return text(); }
    void SetCaption(const QString& caption) { setText(caption); }
    QPixmap Picture() const { return picture_; }
    void SetPicture(const QPixmap& picture);

    quint32 ForeColor() const { return foreColor_; }
    void SetForeColor(quint32 color);
    quint32 BackColor() const { return backColor_; }
    void SetBackColor(quint32 color);
    quint32 HoverForeColor() const { return hoverForeColor_; }
    void SetHoverForeColor(quint32 color);
    quint32 HoverBackColor() const { return hoverBackColor_; }
    void SetHoverBackColor(quint32 color);

    bool Hovered() const { return hovered_; }

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void applyColors();

    QPixmap picture_;
    quint32 foreColor_ = 0x80000012u; // button text
    quint32 backColor_ = 0x8000000Fu; // button face
    quint32 hoverForeColor_ = 0x80000012u;
    quint32 hoverBackColor_ = 0x8000000Fu;
    bool hovered_ = false;
};

} // namespace tavik
