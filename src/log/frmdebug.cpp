#include "frmdebug.h"

#include "logsettings.h"
#include "richtextbox.h"
#include "rtfhighlight.h"
#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/vbstrings.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QSignalBlocker>

namespace tavik {

namespace {

// 100 twips at 15 twips per pixel.
constexpr int kMargin = 7;
constexpr int kBoxLeft = kMargin / 2;

constexpr quint32 kRed = 0x0000FF;
constexpr quint32 kDarkGrey = 0x404040;
constexpr quint32 kBlue = 0xFF0000;
constexpr quint32 kYellow = 0x00FFFF;

} // namespace

frmDebug::frmDebug(QString programFolder, const Language* language, QWidget* parent)
    : QWidget(parent, Qt::Window), programFolder_(std::move(programFolder)),
      txtDebug_(new RichTextBox(this)),
      chkLogToFile_(new QCheckBox(QStringLiteral("In Datei protokollieren"), this)) {
    setObjectName(QStringLiteral("frmDebug"));
    setWindowTitle(QStringLiteral("Debug"));
    txtDebug_->setObjectName(QStringLiteral("txtDebug"));
    txtDebug_->setReadOnly(true);
    // Shown by the first Highlight, so the user never sees the log uncoloured.
    txtDebug_->setVisible(false);
    chkLogToFile_->setObjectName(QStringLiteral("chkLogToFile"));
    connect(chkLogToFile_, &QCheckBox::toggled, this, &frmDebug::storeLogToFile);

    errorWords_ = Split(QStringLiteral("ERROR|MCI ERROR|ERRORS"), QStringLiteral("|"));
    eventWords_ = Split(QStringLiteral("LOAD|READY|FOUND|ANNOUNCE|PLAY"), QStringLiteral("|"));
    resize(480, 360);
    layoutControls();
    if (language) {
        ApplyLanguage(this, objectName(), language->LanguageFile);
        FollowLanguage(this, *language, [this, language] {
            txtDebug_->setAccessibleName(language->GetLangString(LangText::NameLog));
        });
    }
}

void frmDebug::Highlight() {
    RTFHighlight::HighlightToLineEnd(this, txtDebug_, kRed, QStringLiteral("!"), true);
    RTFHighlight::ColorQuoted(this, txtDebug_, kDarkGrey, true);
    RTFHighlight::ColorWords(this, txtDebug_, kBlue, eventWords_, true);
    RTFHighlight::ColorWords(this, txtDebug_, kYellow, errorWords_, true);
    txtDebug_->setVisible(true);
}

void frmDebug::layoutControls() {
    // The box fills the window less the margin; the switch sits in a row below it.
    const int row = chkLogToFile_->sizeHint().height();
    const int width = this->width() - kMargin;
    const int height = this->height() - row - kMargin;
    chkLogToFile_->setGeometry(kBoxLeft, this->height() - row, std::max(0, width), row);
    if (width < 0 || height < 0)
        return;
    txtDebug_->setGeometry(kBoxLeft, kBoxLeft, width, height);
}

void frmDebug::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layoutControls();
}

void frmDebug::closeEvent(QCloseEvent* event) {
    // The viewer stays loaded for the whole run; closing takes it off the screen only.
    event->ignore();
    hide();
}

void frmDebug::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    {
        const QSignalBlocker block(chkLogToFile_);
        chkLogToFile_->setChecked(ReadLogSettings(programFolder_).toFile);
    }
    Highlight();
}

void frmDebug::storeLogToFile(bool on) {
    WriteLogToFile(programFolder_, on);
}

} // namespace tavik
