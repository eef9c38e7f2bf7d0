#include "frmstatus.h"
#include "util/windowplacement.h"

#include <QLabel>
#include <QVBoxLayout>

namespace tavik {

frmStatus::frmStatus(QWidget* owner)
    : QWidget(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      lblStatus_(new QLabel(this)), lblFile_(new QLabel(this)) {
    setObjectName(QStringLiteral("frmStatus"));
    lblStatus_->setObjectName(QStringLiteral("lblStatus"));
    lblFile_->setObjectName(QStringLiteral("lblFile"));
    // Long titles are cut at the window's edge rather than widening it.
    lblFile_->setMinimumWidth(1);
    lblFile_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblStatus_);
    layout->addWidget(lblFile_);
    setFixedSize(320, 80);
}

void frmStatus::ShowStatus(const QString& statusLine) {
    lblStatus_->setText(statusLine);
    lblFile_->clear();
    if (!isVisible())
        PlaceOnOwner(this, parentWidget());
    show();
    repaint();
}

void frmStatus::ShowSecondLine(const QString& text) {
    // The line is cut at the window's edge: no more characters can show than the window has
    // pixels, and laying out a 64 KB title would cost as much as the rest of a load.
    lblFile_->setText(text.size() > width() ? text.left(width()) : text);
    repaint();
}

} // namespace tavik
