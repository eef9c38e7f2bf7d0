#pragma once

#include <QDialog>

class QLabel;
class QTimer;

namespace tavik {

class ClickLabel;
class Language;

// Shown while the editor starts: the product picture and the version line. It closes itself
// when its timer runs out or when its label is clicked.
class frmSplash : public QDialog {
    Q_OBJECT
public:
    explicit frmSplash(const Language& language, QWidget* parent = nullptr);

    // Shows the splash modally and returns when it has closed, also when it closed while it
    // was being shown.
    void ShowModal();

    // Puts a window into the topmost band or takes it out, without moving or sizing it.
    static void FormOnTop(QWidget* window, bool onTop);

    QLabel* picture() const { return picture_; }
    QLabel* lblVersion() const { return lblVersion_; }
    ClickLabel* lblClick() const { return lblClick_; }
    QTimer* Timer1() const { return timer_; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLabel* picture_;
    QLabel* lblVersion_;
    ClickLabel* lblClick_;
    QTimer* timer_;
};

// The product picture as the language file names it, for the splash and about windows.
QPixmap ProductPicture(const Language& language);

} // namespace tavik
