#include "frmsplash.h"

#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/language.h"
#include "shell/clicklabel.h"
#include "shell/productinfo.h"
#include "util/windowplacement.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPixmap>
#include <QTimer>
#include <QVBoxLayout>

namespace tavik {

namespace {

// Long enough to read the version line, short enough not to hold up work.
constexpr int kSplashMilliseconds = 2500;

} // namespace

QPixmap ProductPicture(const Language& language) {
    return QPixmap(language.GetLangFile(PictureFileNumber(QCoreApplication::applicationName())));
}

void frmSplash::FormOnTop(QWidget* window, bool onTop) {
    const bool visible = window->isVisible();
    const QRect geometry = window->geometry();
    window->setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    if (visible) {
        window->setGeometry(geometry);
        window->show();
    }
}

frmSplash::frmSplash(const Language& language, QWidget* parent)
    : QDialog(parent, Qt::SplashScreen), picture_(new QLabel(this)), lblVersion_(new QLabel(this)),
      lblClick_(new ClickLabel(QStringLiteral("Klicken Sie hier, um fortzufahren"), this)),
      timer_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmSplash"));
    picture_->setObjectName(QStringLiteral("picLogo"));
    lblVersion_->setObjectName(QStringLiteral("lblVersion"));
    lblClick_->setObjectName(QStringLiteral("lblClick"));
    timer_->setObjectName(QStringLiteral("Timer1"));
    timer_->setSingleShot(true);
    timer_->setInterval(kSplashMilliseconds);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(picture_, 0, Qt::AlignCenter);
    layout->addWidget(lblVersion_, 0, Qt::AlignCenter);
    layout->addWidget(lblClick_, 0, Qt::AlignCenter);

    ApplyLanguage(this, objectName(), language.LanguageFile);
    FollowLanguage(this, language);
    FormOnTop(this, true);
    picture_->setPixmap(ProductPicture(language));
    lblVersion_->setText(ProgramVersionLine());
    connect(timer_, &QTimer::timeout, this, &QDialog::accept);
    connect(lblClick_, &ClickLabel::clicked, this, &QDialog::accept);
}

void frmSplash::ShowModal() {
    // Not exec(): showing a splash window before the application's loop runs processes events,
    // so the window may already be closed when show() returns, and exec() would then wait for
    // a close that never comes.
    QEventLoop loop;
    connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
    setWindowModality(Qt::ApplicationModal);
    PlaceOnScreen(this, parentWidget());
    show();
    if (isVisible())
        loop.exec(QEventLoop::DialogExec);
}

void frmSplash::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // Counted from when the window shows, so a slow start still shows it its full time.
    timer_->start();
}

} // namespace tavik
