#include "frmsetting.h"

#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "dialogs/announcementcolors.h"
#include "dialogs/placestep.h"
#include "package/announcementrecord.h"
#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/accessiblenames.h"
#include "util/codepageguard.h"
#include "util/conversions.h"
#include "util/numberinput.h"
#include "util/numbervalidator.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"
#include "util/wincolor.h"
#include "util/windowplacement.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

namespace tavik {

namespace {

constexpr int kPlacePageStep = 5;
// Long enough for the dialog to show before the title is selected.
constexpr int kSelectTitleDelay = 100;
constexpr int kObjectNotSet = 91;

template <typename T> T* named(T* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

frmSetting::frmSetting(frmMain& main)
    : QDialog(&main), main_(main),
      frame1_(named(new QGroupBox(QStringLiteral("Spez. Eigenschaften"), this), "Frame1")),
      label1_(named(new QLabel(QStringLiteral("Titel:"), this), "Label1")),
      txtTitle_(named(new QLineEdit(this), "txtTitle")),
      chkVisible_(named(new QCheckBox(QStringLiteral("Name für Ansagesatz verwenden"), frame1_),
                        "chkVisible")),
      chkPlace_(named(new QCheckBox(QStringLiteral("Standartplatz"), frame1_), "chkPlace")),
      label4_(named(new QLabel(QStringLiteral("zuweisen"), frame1_), "Label4")),
      txtPlace_(named(new QLineEdit(frame1_), "txtPlace")),
      vscPlace_(named(new QScrollBar(Qt::Vertical, frame1_), "vscPlace")),
      label3_(named(new QLabel(QStringLiteral("Automatisch Platz"), frame1_), "Label3")),
      label2_(named(new QLabel(QStringLiteral("Farblich hervorheben:"), frame1_), "Label2")),
      timer1_(named(new QTimer(this), "Timer1")),
      cmdOK_(named(new QPushButton(QStringLiteral("&OK"), this), "cmdOK")),
      cmdCancel_(named(new QPushButton(QStringLiteral("&Abbrechen"), this), "cmdCancel")) {
    setObjectName(QStringLiteral("frmSetting"));
    setWindowTitle(QStringLiteral("Eigenschaften"));
    buildControls();

    connect(chkPlace_, &QCheckBox::toggled, this,
            [this] { RunHandler([this] { chkPlace_Click(); }); });
    connect(txtPlace_, &QLineEdit::textChanged, this, [this] {
        enableOK();
        followPlaceBox();
    });
    connect(vscPlace_, &QScrollBar::valueChanged, this,
            [this] { RunHandler([this] { vscPlace_Change(); }); });
    connect(timer1_, &QTimer::timeout, this, [this] { RunHandler([this] { Timer1_Timer(); }); });
    connect(cmdOK_, &QPushButton::clicked, this, [this] { RunHandler([this] { cmdOK_Click(); }); });
    connect(cmdCancel_, &QPushButton::clicked, this,
            [this] { RunHandler([this] { cmdCancel_Click(); }); });
    txtTitle_->installEventFilter(this);

    FormLoad();
    PlaceOnOwner(this, &main_);
}

void frmSetting::buildControls() {
    txtPlace_->setEnabled(false);
    vscPlace_->setEnabled(false);
    const PlaceSteps steps{main_.lsvPack()->Count()};
    vscPlace_->setRange(steps.minimumValue(), steps.maximumValue());
    vscPlace_->setValue(steps.maximumValue());
    vscPlace_->setSingleStep(1);
    vscPlace_->setPageStep(kPlacePageStep);
    // The place is read by the 32-bit conversion on OK: the box takes nothing it would refuse.
    txtPlace_->setValidator(new WholeNumberValidator(0, kLongMax, txtPlace_));
    txtPlace_->setMaximumWidth(txtPlace_->fontMetrics().horizontalAdvance(QStringLiteral("0000")) +
                               16);

    // The colour options share one parent, so choosing one clears the others.
    auto* colors = new QWidget(frame1_);
    colors->setObjectName(QStringLiteral("picColors"));
    auto* colorLayout = new QGridLayout(colors);
    colorLayout->setContentsMargins(0, 0, 0, 0);
    colorLayout->setHorizontalSpacing(2);
    for (std::size_t i = 0; i < kAnnouncementColors.size(); ++i) {
        auto* option = named(new QRadioButton(colors), "optColor");
        auto* swatch = named(new QFrame(colors), "shpColor");
        swatch->setFrameShape(QFrame::Box);
        swatch->setFixedSize(28, 14);
        swatch->setAutoFillBackground(true);
        QPalette fill = swatch->palette();
        fill.setColor(QPalette::Window,
                      WinColorToQColor(static_cast<quint32>(kAnnouncementColors[i])));
        swatch->setPalette(fill);
        // Each option sits close to its swatch; a gap sets the pairs apart.
        const int row = static_cast<int>(i) / 3;
        const int column = static_cast<int>(i) % 3 * 3;
        colorLayout->addWidget(option, row, column);
        colorLayout->addWidget(swatch, row, column + 1);
        colorLayout->setColumnMinimumWidth(column + 2, 18);
        colorLayout->setColumnStretch(column + 2, 1);
        optColor_.push_back(option);
        shpColor_.push_back(swatch);
    }

    label1_->setBuddy(txtTitle_);
    label4_->setBuddy(txtPlace_);
    auto* place = new QHBoxLayout;
    place->addWidget(chkPlace_);
    place->addWidget(label4_);
    place->addWidget(txtPlace_);
    place->addWidget(vscPlace_);
    place->addStretch();

    auto* special = new QVBoxLayout(frame1_);
    special->addWidget(chkVisible_);
    special->addWidget(label3_);
    special->addLayout(place);
    special->addWidget(label2_);
    special->addWidget(colors);

    auto* title = new QHBoxLayout;
    title->addWidget(label1_);
    title->addWidget(txtTitle_);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cmdCancel_);
    cmdOK_->setDefault(true);

    titleGuard_ = new CodePageGuard(this, main_.language());
    titleGuard_->watchBox(txtTitle_, label1_);
    connect(titleGuard_, &CodePageGuard::holdsChanged, this, &frmSetting::enableOK);
    buttons->insertWidget(0, titleGuard_->closestButton());

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(title);
    layout->addWidget(titleGuard_->note());
    layout->addWidget(frame1_);
    layout->addLayout(buttons);

    timer1_->setInterval(kSelectTitleDelay);
}

qsizetype frmSetting::selectedRecord() const {
    const ReportListItem* row = main_.lsvPack()->SelectedItem();
    if (!row)
        throw RuntimeError(kObjectNotSet);
    const std::int32_t index = FindAnnouncementByKey(main_.table, row->Text());
    if (index < 0)
        throw RuntimeError(rt::SubscriptOutOfRange);
    return index;
}

void frmSetting::FormLoad() {
    ApplyLanguage(this, objectName(), main_.language().LanguageFile);
    // Names of the colour options and the place scroll bar.
    FollowLanguage(this, main_.language(), [this] {
        const Language& language = main_.language();
        for (std::size_t i = 0; i < optColor_.size(); ++i)
            optColor_[i]->setAccessibleName(
                language.GetLangString(LangText::NameFirstColor + static_cast<std::int32_t>(i)));
        vscPlace_->setAccessibleName(WithoutAccessKey(chkPlace_->text()));
    });
    const ReportListItem* row = main_.lsvPack()->SelectedItem();
    const AnnouncementRecord& record = main_.table.Announcements[selectedRecord()];
    for (std::size_t i = 0; i < optColor_.size(); ++i) {
        if (row->ForeColor() == static_cast<quint32>(kAnnouncementColors[i]))
            optColor_[i]->setChecked(true);
    }
    chkVisible_->setChecked(record.NameVisible);
    if (record.AutoPlace > -1) {
        chkPlace_->setChecked(true);
        txtPlace_->setEnabled(true);
        txtPlace_->setText(QString::number(record.AutoPlace));
        vscPlace_->setEnabled(true);
    }
    setWindowIcon(main_.windowIcon());
    timer1_->start();
}

void frmSetting::chkPlace_Click() {
    const bool on = chkPlace_->isChecked();
    txtPlace_->setEnabled(on);
    vscPlace_->setEnabled(on);
    // A ticked place needs a number: an empty box starts where the scroll bar stands.
    if (on && txtPlace_->text().isEmpty())
        vscPlace_Change();
    enableOK();
}

void frmSetting::enableOK() {
    // An emptied box would fail the conversion on OK.
    cmdOK_->setEnabled((!chkPlace_->isChecked() || txtPlace_->hasAcceptableInput()) &&
                       titleGuard_->holds());
}

void frmSetting::vscPlace_Change() {
    txtPlace_->setText(QString::number(PlaceSteps::placeOf(vscPlace_->value())));
}

void frmSetting::followPlaceBox() {
    // A typed place is where the next step of the bar starts, and one outside the list is
    // kept (the stored limits are wider) but marked so the user sees it.
    const PlaceSteps steps{main_.lsvPack()->Count()};
    bool number = false;
    const qint64 place = txtPlace_->text().toLongLong(&number);
    if (number) {
        const QSignalBlocker blocker(vscPlace_);
        vscPlace_->setValue(steps.valueOf(place));
    }
    const bool outside = number && !steps.inList(place);
    txtPlace_->setProperty("outsideList", outside);
    QPalette palette = QApplication::palette(txtPlace_);
    if (outside)
        palette.setColor(QPalette::Text, Qt::red);
    txtPlace_->setPalette(palette);
    const QString note = outside ? main_.language().GetLangString(LangText::PlaceOutsideList,
                                                                  QString::number(steps.listLength))
                                 : QString();
    txtPlace_->setToolTip(note);
    txtPlace_->setAccessibleDescription(note);
}

void frmSetting::selectTitle() {
    txtTitle_->setSelection(0, static_cast<int>(txtTitle_->text().size()));
}

void frmSetting::Timer1_Timer() {
    selectTitle();
    timer1_->stop();
}

bool frmSetting::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtTitle_ && event->type() == QEvent::FocusIn)
        selectTitle();
    return QDialog::eventFilter(watched, event);
}

void frmSetting::cmdOK_Click() {
    const qsizetype index = selectedRecord();
    ReportListItem* row = main_.lsvPack()->SelectedItem();

    int selected = -1;
    for (std::size_t i = 0; i < optColor_.size(); ++i) {
        if (optColor_[i]->isChecked())
            selected = static_cast<int>(i);
    }
    const ColorChoice color = ChooseColor(selected);
    if (color.changesLook) {
        row->SetForeColor(color.foreColor);
        row->SetBold(color.bold);
    }

    // Not a number here is the runtime's type mismatch; the dialog then stays open.
    const std::int32_t place =
        chkPlace_->isChecked() ? CLng(Variant::fromString(txtPlace_->text())) : -1;

    AnnouncementRecord& record = main_.table.Announcements[index];
    record.AutoPlace = place;
    record.Color = color.stored;
    record.Title = txtTitle_->text();
    row->SetSubItems(1, txtTitle_->text());
    record.NameVisible = chkVisible_->isChecked();
    accept();
}

void frmSetting::cmdCancel_Click() {
    reject();
}

} // namespace tavik
