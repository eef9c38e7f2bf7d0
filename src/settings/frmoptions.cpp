#include "settings/frmoptions.h"

#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/modini.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/msgbox.h"
#include "util/runtimeerror.h"
#include "util/windowplacement.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavik {

namespace {

// A check box value beyond unchecked, checked and grayed is refused as the runtime does.
constexpr int kInvalidPropertyValue = 380;

QString settingsFile() {
    return NativePath(AppPath() + QStringLiteral("\\Tavik.ini"));
}

// The stored value is the check box's own: 0 unchecked, 1 checked, 2 grayed.
Qt::CheckState toCheckState(int value) {
    switch (value) {
    case 0:
        return Qt::Unchecked;
    case 1:
        return Qt::Checked;
    case 2:
        return Qt::PartiallyChecked;
    default:
        throw RuntimeError(kInvalidPropertyValue, QStringLiteral("Unzulässiger Eigenschaftswert"));
    }
}

int checkValue(const QCheckBox* box) {
    switch (box->checkState()) {
    case Qt::Checked:
        return 1;
    case Qt::PartiallyChecked:
        return 2;
    case Qt::Unchecked:
        break;
    }
    return 0;
}

} // namespace

frmOptions::frmOptions(const Language& language, std::function<void(bool)> setUseFormat,
                       QWidget* parent)
    : QDialog(parent), language_(language), setUseFormat_(std::move(setUseFormat)),
      Frame1_(new QGroupBox(QStringLiteral("Problembehandlung"), this)),
      Label1_(new QLabel(QStringLiteral("Bei Wiedergabe-Problemen, kann eventuell die folgenden "
                                        "Einstellung helfen:"),
                         Frame1_)),
      chkMedia_(new QCheckBox(QStringLiteral("Medientypen verwenden"), Frame1_)),
      cmdOK_(new QPushButton(QStringLiteral("OK"), this)),
      cmdCancel_(new QPushButton(QStringLiteral("&Abbruch"), this)) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Optionen"));
    Frame1_->setObjectName(QStringLiteral("Frame1"));
    Label1_->setObjectName(QStringLiteral("Label1"));
    Label1_->setWordWrap(true);
    chkMedia_->setObjectName(QStringLiteral("chkMedia"));
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cmdOK_->setDefault(true);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));

    auto* frameLayout = new QVBoxLayout(Frame1_);
    frameLayout->addWidget(Label1_);
    frameLayout->addWidget(chkMedia_);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cmdCancel_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Frame1_);
    layout->addLayout(buttons);

    ApplyLanguage(this, objectName(), language_.LanguageFile);
    FollowLanguage(this, language_);
    chkMedia_->setCheckState(
        toCheckState(CInt(ReadINI(settingsFile(), QStringLiteral("SOUND"),
                                  QStringLiteral("UseFormat"), Variant::fromInteger(0)))));

    connect(cmdOK_, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmOptions::cmdCancel_Click);
    PlaceOnOwner(this, parent);
}

void frmOptions::cmdOK_Click() {
    const int value = checkValue(chkMedia_);
    if (setUseFormat_)
        setUseFormat_(value != 0);
    WriteINI(settingsFile(), QStringLiteral("SOUND"), QStringLiteral("UseFormat"),
             QString::number(value));
    MsgBox(this, language_.GetLangString(LangText::OptionStored), MsgButtons::OK,
           MsgIcon::Information);
    accept();
}

void frmOptions::cmdCancel_Click() {
    reject();
}

} // namespace tavik
