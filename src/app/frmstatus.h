#pragma once

#include <QWidget>

class QLabel;

namespace tavik {

// The small modeless window that tells what a long task is doing: a status line, and a second
// line for the item at hand. It belongs to the window that opens it and floats above it.
class frmStatus : public QWidget {
    Q_OBJECT
public:
    explicit frmStatus(QWidget* owner);

    QLabel* lblStatus() const { return lblStatus_; }
    QLabel* lblFile() const { return lblFile_; }

    // Shows the window (not modal) with `statusLine` and an empty second line.
    void ShowStatus(const QString& statusLine);
    // Puts `text` on the second line, as far as the window can show it, and repaints at once:
    // the caller is busy.
    void ShowSecondLine(const QString& text);

private:
    QLabel* lblStatus_;
    QLabel* lblFile_;
};

} // namespace tavik
