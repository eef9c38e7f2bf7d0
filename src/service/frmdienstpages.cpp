// The service editor's controls: four pages of which one shows at a time, the tab strip over
// them and the menu bar.
#include "service/frmdienst.h"
#include "service/sentencetimeline.h"

#include "service/serviceeditorrules.h"
#include "util/numberinput.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTabBar>
#include <QVBoxLayout>
#include <QValidator>
#include <functional>

namespace tavik {

namespace {

// Only the time shift of a target row is edited in place, and a positive number gets its "+".
// The cell takes only signs and digits, and every digit typed stays: a number outside what the
// 16-bit conversion on saving or playing the sentence takes is refused with a message when the
// edit is to end (Enter, or leaving the cell, where the row keeps its shift). An edit left
// empty or at a lone sign keeps the shift too.
class TimeShiftValidator : public QValidator {
public:
    TimeShiftValidator(QObject* parent, std::function<void(const QString&)> refuse)
        : QValidator(parent), refuse_(std::move(refuse)) {}

    State validate(QString& input, int& /*pos*/) const override {
        switch (CheckWholeNumberInput(input, kIntegerMin, kIntegerMax)) {
        case NumberInput::Acceptable:
            return Acceptable;
        case NumberInput::Intermediate:
            return Intermediate;
        case NumberInput::Invalid:
            break;
        }
        // Digits past the range stay on screen, so the refusal names what was typed.
        return outsideRange(input) ? Intermediate : Invalid;
    }

    // Asked when the edit is to end with a text that is not acceptable.
    void fixup(QString& input) const override {
        if (outsideRange(input))
            refuse_(input);
    }

private:
    static bool outsideRange(const QString& input) {
        // Far past any shift; a number typed that long is refused as typed.
        constexpr std::int64_t kTypedBound = std::int64_t(1) << 40;
        return CheckWholeNumberInput(input, kIntegerMin, kIntegerMax) == NumberInput::Invalid &&
               CheckWholeNumberInput(input, -kTypedBound, kTypedBound) == NumberInput::Acceptable;
    }

    std::function<void(const QString&)> refuse_;
};

class TimeShiftDelegate : public QStyledItemDelegate {
public:
    TimeShiftDelegate(QObject* parent, std::function<void(const QString&)> refuse)
        : QStyledItemDelegate(parent), refuse_(std::move(refuse)) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        if (index.column() != 0)
            return nullptr;
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            // The message waits for the event loop: the edit may be closing, and a box
            // opened inside that would end it a second time.
            auto* self = const_cast<TimeShiftDelegate*>(this);
            line->setValidator(new TimeShiftValidator(line, [self](const QString& typed) {
                QMetaObject::invokeMethod(
                    self, [self, typed] { self->refuse_(typed); }, Qt::QueuedConnection);
            }));
        }
        return editor;
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override {
        auto* line = qobject_cast<QLineEdit*>(editor);
        if (!line) {
            QStyledItemDelegate::setModelData(editor, model, index);
            return;
        }
        if (!line->hasAcceptableInput())
            return;
        model->setData(index, TimeShiftAfterEdit(line->text()), Qt::EditRole);
    }

private:
    std::function<void(const QString&)> refuse_;
};

// A caption label; with a buddy its access key moves the focus there and it names that box.
QLabel* label(const char* name, const QString& text, QWidget* parent, QWidget* buddy = nullptr) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(QString::fromLatin1(name));
    l->setBuddy(buddy);
    return l;
}

QLineEdit* textBox(const char* name, QWidget* parent) {
    auto* t = new QLineEdit(parent);
    t->setObjectName(QString::fromLatin1(name));
    return t;
}

// A button with a caption as designed; the language file may replace both texts.
zelcmd* button(const char* name, const QString& caption, QWidget* parent) {
    auto* b = new zelcmd(parent);
    b->setObjectName(QString::fromLatin1(name));
    b->SetCaption(caption);
    return b;
}

// A picture button: no caption, only a tool tip.
zelcmd* pictureButton(const char* name, QStyle::StandardPixmap picture, const QString& toolTip,
                      QWidget* parent) {
    auto* b = new zelcmd(parent);
    b->setObjectName(QString::fromLatin1(name));
    b->SetPicture(QApplication::style()->standardIcon(picture).pixmap(16, 16));
    b->setToolTip(toolTip);
    return b;
}

} // namespace

void frmDienst::buildPropertiesPage() {
    QWidget* p = picTab_[0];
    txtTitle_ = textBox("txtTitle", p);
    txtAutor_ = textBox("txtAutor", p);
    txtComment_ = textBox("txtComment", p);
    txtID_ = textBox("txtID", p);
    txtID_->setText(QStringLiteral("000000"));
    cmdSv_ = button("cmdSv", QStringLiteral("&Speichern"), p);
    cmdEsc_ = button("cmdEsc", QStringLiteral("&Abbruch"), p);

    auto* grid = new QGridLayout(p);
    grid->addWidget(label("lblTitle", QStringLiteral("Dienstname:"), p, txtTitle_), 0, 0);
    grid->addWidget(txtTitle_, 0, 1, 1, 2);
    grid->addWidget(label("lblAutor", QStringLiteral("Autor:"), p, txtAutor_), 1, 0);
    grid->addWidget(txtAutor_, 1, 1, 1, 2);
    grid->addWidget(label("lblComment", QStringLiteral("Beschreibung:"), p, txtComment_), 2, 0);
    grid->addWidget(txtComment_, 2, 1, 1, 2);
    grid->addWidget(label("lblID", QStringLiteral("ID-Nummer:"), p, txtID_), 3, 0);
    grid->addWidget(txtID_, 3, 1);
    grid->addWidget(label("lblIDHint", QStringLiteral("(Legt auch den Dateinamen fest)"), p), 3, 2);
    grid->setRowStretch(4, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSv_);
    buttons->addWidget(cmdEsc_);
    grid->addLayout(buttons, 5, 0, 1, 3);
}

void frmDienst::buildServicePage() {
    QWidget* p = picTab_[1];
    lsvDienst_ = new ReportList(p);
    lsvDienst_->setObjectName(QStringLiteral("lsvDienst"));
    // The key column stays at width 0: it only carries each row's sentence key.
    lsvDienst_->AddColumn(QStringLiteral("Key"), 0);
    lsvDienst_->AddColumn(QStringLiteral("Text"), kServiceTextWidth);
    lsvDienst_->header()->setSectionsClickable(true);
    txtText_ = textBox("txtText", p);
    cmdAdd_ = pictureButton("cmdAdd", QStyle::SP_FileIcon, QStringLiteral("Neuer Eintrag"), p);
    cmdRem_ = pictureButton("cmdRem", QStyle::SP_TrashIcon, QStringLiteral("Eintrag löschen"), p);
    cmdEdit_ = pictureButton("cmdEdit", QStyle::SP_FileDialogDetailedView,
                             QStringLiteral("Eintrag bearbeiten"), p);
    cmdUp_ =
        pictureButton("cmdUp", QStyle::SP_ArrowUp, QStringLiteral("Eintrag eins nach oben"), p);
    cmdDown_ = pictureButton("cmdDown", QStyle::SP_ArrowDown,
                             QStringLiteral("Eintrag eins nach unten"), p);
    cmdPlay_ = pictureButton("cmdPlay", QStyle::SP_MediaPlay, QStringLiteral("Satz abspielen"), p);
    cmdTausch_ =
        pictureButton("cmdTausch", QStyle::SP_BrowserReload, QStringLiteral("Liste umkehren"), p);

    auto* grid = new QGridLayout(p);
    grid->addWidget(lsvDienst_, 0, 0, 8, 1);
    int row = 0;
    for (zelcmd* b : {cmdAdd_, cmdRem_, cmdEdit_, cmdUp_, cmdDown_, cmdPlay_, cmdTausch_})
        grid->addWidget(b, row++, 1);
    grid->setRowStretch(7, 1);
    grid->addWidget(buildTimeline(p), 8, 0, 1, 2);
    auto* text = new QHBoxLayout;
    text->addWidget(label("lblText", QStringLiteral("Angezeigter Name:"), p, txtText_));
    text->addWidget(txtText_, 1);
    grid->addLayout(text, 9, 0, 1, 2);
}

void frmDienst::buildSentencePage() {
    QWidget* p = picTab_[2];
    fraSource_ = new QGroupBox(QStringLiteral("Auswahlliste"), p);
    fraSource_->setObjectName(QStringLiteral("fraSource"));
    lsvSource_ = new ReportList(fraSource_);
    lsvSource_->setObjectName(QStringLiteral("lsvSource"));
    lsvSource_->AddColumn(QStringLiteral("Name"), kSourceNameWidth);
    (new QVBoxLayout(fraSource_))->addWidget(lsvSource_);

    fraTarget_ = new QGroupBox(QStringLiteral("Zielliste"), p);
    fraTarget_->setObjectName(QStringLiteral("fraTarget"));
    lsvTarget_ = new ReportList(fraTarget_);
    lsvTarget_->setObjectName(QStringLiteral("lsvTarget"));
    lsvTarget_->AddColumn(QStringLiteral("Zeit (+/-)"), 1000);
    lsvTarget_->AddColumn(QStringLiteral("Titel"), kTargetTitleWidth);
    lsvTarget_->setItemDelegate(new TimeShiftDelegate(
        lsvTarget_, [this](const QString& typed) { refuseTimeShift(typed); }));
    lsvTarget_->setEditTriggers(QAbstractItemView::DoubleClicked |
                                QAbstractItemView::SelectedClicked |
                                QAbstractItemView::EditKeyPressed);
    (new QVBoxLayout(fraTarget_))->addWidget(lsvTarget_);

    // The titles once more as a plain list; the editor only ever selects its first entry.
    list1_ = new QListWidget(p);
    list1_->setObjectName(QStringLiteral("List1"));
    list1_->hide();

    cmdHinzu_ = pictureButton("cmdHinzu", QStyle::SP_ArrowRight,
                              QStringLiteral("Ansage zum Satz hinzufügen"), p);
    cmdEntf_ = pictureButton("cmdEntf", QStyle::SP_ArrowLeft,
                             QStringLiteral("Ansage aus dem Satz entfernen"), p);
    cmdAuf_ =
        pictureButton("cmdAuf", QStyle::SP_ArrowUp, QStringLiteral("Ansage eins nach oben"), p);
    cmdAb_ =
        pictureButton("cmdAb", QStyle::SP_ArrowDown, QStringLiteral("Ansage eins nach unten"), p);
    cmdSearch_ = pictureButton("cmdSearch", QStyle::SP_FileDialogContentsView,
                               QStringLiteral("Ansage suchen"), p);
    cmdAbsp_ = pictureButton("cmdAbsp", QStyle::SP_MediaPlay, QStringLiteral("Satz abspielen"), p);
    cmdSave_ = button("cmdSave", QStringLiteral("&Übernehmen"), p);
    cmdCancel_ = button("cmdCancel", QStringLiteral("&Verwerfen"), p);

    auto* middle = new QVBoxLayout;
    middle->addStretch();
    for (zelcmd* b : {cmdSearch_, cmdHinzu_, cmdEntf_})
        middle->addWidget(b);
    middle->addStretch();
    auto* right = new QVBoxLayout;
    for (zelcmd* b : {cmdAuf_, cmdAb_, cmdAbsp_})
        right->addWidget(b);
    right->addStretch();

    auto* grid = new QGridLayout(p);
    grid->addWidget(fraSource_, 0, 0);
    grid->addLayout(middle, 0, 1);
    grid->addWidget(fraTarget_, 0, 2);
    grid->addLayout(right, 0, 3);
    grid->addWidget(list1_, 1, 0);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSave_);
    buttons->addWidget(cmdCancel_);
    grid->addLayout(buttons, 2, 0, 1, 4);
}

void frmDienst::buildOpenPage() {
    QWidget* p = picTab_[3];
    lstOpen_ = new QListWidget(p);
    lstOpen_->setObjectName(QStringLiteral("lstOpen"));
    for (QLineEdit*& info : txtInfo_) {
        info = textBox("txtInfo", p);
        info->setReadOnly(true);
    }
    cmdOpen_ = button("cmdOpen", QStringLiteral("&Öffnen"), p);
    cmdOpen_->setEnabled(false); // until a service is chosen
    cmdAbbr_ = button("cmdAbbr", QStringLiteral("&Abbruch"), p);
    cmdKill_ = pictureButton("cmdKill", QStyle::SP_TrashIcon, QStringLiteral("Dienst löschen"), p);
    cmdRefresh_ = pictureButton("cmdRefresh", QStyle::SP_BrowserReload,
                                QStringLiteral("Liste aktualisieren"), p);

    auto* grid = new QGridLayout(p);
    grid->addWidget(lstOpen_, 0, 0, 1, 3);
    auto* tools = new QVBoxLayout;
    tools->addWidget(cmdKill_);
    tools->addWidget(cmdRefresh_);
    tools->addStretch();
    grid->addLayout(tools, 0, 3);
    grid->addWidget(label("lblInfoAutor", QStringLiteral("Autor:"), p, txtInfo_[0]), 1, 0);
    grid->addWidget(txtInfo_[0], 1, 1, 1, 3);
    grid->addWidget(label("lblInfoComment", QStringLiteral("Beschreibung:"), p, txtInfo_[1]), 2, 0);
    grid->addWidget(txtInfo_[1], 2, 1, 1, 3);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOpen_);
    buttons->addWidget(cmdAbbr_);
    grid->addLayout(buttons, 3, 0, 1, 4);
}

void frmDienst::buildMenus() {
    auto menu = [this](const char* name, const QString& text) {
        QAction* action = menuBar()->addAction(text);
        action->setObjectName(QString::fromLatin1(name));
        return action;
    };
    mnuNew_ = menu("mnuNew", QStringLiteral("&Neu"));
    mnuOpen_ = menu("mnuOpen", QStringLiteral("&Öffnen"));
    mnuSave_ = menu("mnuSave", QStringLiteral("&Speichern"));
    // Edits enable it; there is nothing to save before the first one.
    mnuSave_->setEnabled(false);
    mnuClose_ = menu("mnuClose", QStringLiteral("Schließen"));
}

} // namespace tavik
