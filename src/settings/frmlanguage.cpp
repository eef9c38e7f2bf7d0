#include "settings/frmlanguage.h"

#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/modini.h"
#include "util/accessiblenames.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/fileops.h"
#include "util/msgbox.h"
#include "util/windowplacement.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

namespace tavik {

namespace {

// Before any language is known there is no file to take a message from: both languages at once.
const char16_t kNoLanguageFile[] = u"Keine Sprachdatei gefunden! Programm kann nicht gestartet "
                                   u"werden\rNo languagefile found! Can't start application";

const char16_t kLanguageSettingTooLong[] =
    u"Die Spracheinstellung in Tavik.ini ist zu lang und wird nicht verwendet. Bitte wählen Sie "
    u"die Sprache.\rThe language setting in Tavik.ini is too long and is not used. Please choose "
    u"the language.";

// Where a list line keeps the name of its language file.
constexpr int kFileNameRole = Qt::UserRole + 1;

// Only has to fire once the load handler has returned.
constexpr int kUnloadDelay = 1;

QString settingsFile() {
    return NativePath(AppPath() + QStringLiteral("\\Tavik.ini"));
}

// Refuses every close request that reaches the window from outside its own code.
class CloseGuard : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Close) {
            event->ignore();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }
};

QLabel* makeLabel(const char* name, const QString& caption, QWidget* parent) {
    auto* label = new QLabel(caption, parent);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

QLineEdit* makeTextBox(const char* name, QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setReadOnly(true);
    return box;
}

} // namespace

frmLanguage::frmLanguage(Language& language, QWidget* parent)
    : QDialog(parent), language_(language), File1_(new QListWidget(this)),
      txtName_(makeTextBox("txtName", this)), txtVersion_(makeTextBox("txtVersion", this)),
      txtAutor_(makeTextBox("txtAutor", this)),
      Label1_(makeLabel("Label1", QStringLiteral("Name:"), this)),
      Label2_(makeLabel("Label2", QStringLiteral("Version:"), this)),
      Label3_(makeLabel("Label3", QStringLiteral("Autor:"), this)),
      cmdOK_(new QPushButton(QStringLiteral("OK"), this)),
      cmdCancel_(new QPushButton(QStringLiteral("&Abbruch"), this)), Timer1_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmLanguage"));
    setWindowTitle(QStringLiteral("Sprachauswahl"));
    File1_->setObjectName(QStringLiteral("File1"));
    File1_->setSelectionMode(QAbstractItemView::SingleSelection);
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cmdOK_->setEnabled(false);
    cmdOK_->setDefault(true);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    Timer1_->setObjectName(QStringLiteral("Timer1"));
    Timer1_->setInterval(kUnloadDelay);

    auto* layout = new QGridLayout(this);
    layout->addWidget(File1_, 0, 0, 4, 1);
    layout->addWidget(Label1_, 0, 1);
    layout->addWidget(txtName_, 0, 2);
    layout->addWidget(Label2_, 1, 1);
    layout->addWidget(txtVersion_, 1, 2);
    layout->addWidget(Label3_, 2, 1);
    layout->addWidget(txtAutor_, 2, 2);
    layout->setRowStretch(3, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cmdCancel_);
    layout->addLayout(buttons, 4, 0, 1, 3);
    // The designed size: it has to be known before the dialog centres itself unseen.
    adjustSize();

    Label1_->setBuddy(txtName_);
    Label2_->setBuddy(txtVersion_);
    Label3_->setBuddy(txtAutor_);
    // Not labelled at load (no language may be known yet); a change of language relabels it.
    FollowLanguage(this, language_, [this] {
        File1_->setAccessibleName(language_.GetLangString(LangText::NameLanguageFiles));
    });

    connect(File1_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            File1_Click();
    });
    connect(cmdOK_, &QPushButton::clicked, this, &frmLanguage::cmdOK_Click);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmLanguage::cmdCancel_Click);
    connect(Timer1_, &QTimer::timeout, this, &frmLanguage::Timer1_Timer);
}

void frmLanguage::DisableCloseButton(QWidget* window) {
    const QString guardName = QStringLiteral("CloseGuard");
    if (!window || window->findChild<QObject*>(guardName, Qt::FindDirectChildrenOnly))
        return;
    const bool visible = window->isVisible();
    Qt::WindowFlags flags = window->windowFlags() | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                            Qt::WindowSystemMenuHint;
    flags &= ~Qt::WindowCloseButtonHint;
    window->setWindowFlags(flags);
    auto* guard = new CloseGuard(window);
    guard->setObjectName(guardName);
    window->installEventFilter(guard);
    // Changing the flags hides a window that is on screen.
    if (visible)
        window->show();
}

void frmLanguage::FormLoad() {
    if (loaded_)
        return;
    loaded_ = true;
    DisableCloseButton(this);

    QString setting = CStr(ReadINI(settingsFile(), QStringLiteral("Settings"),
                                   QStringLiteral("Language"), Variant::fromString({})));
    if (!ReadINIIsWhole(settingsFile(), QStringLiteral("Settings"), QStringLiteral("Language"))) {
        // A cut path names another file or none: the language is asked for again instead.
        MsgBox(this, QString::fromUtf16(kLanguageSettingTooLong), MsgButtons::OK,
               MsgIcon::Exclamation, QStringLiteral("Tavik"));
        setting.clear();
    }
    refreshFileList();

    if (!setting.isEmpty() && !KeepOpen) {
        language_.LanguageFile = setting;
        Timer1_->start();
        return;
    }
    // Opened again to change the language: it speaks the language in use, which is chosen.
    if (!setting.isEmpty()) {
        if (QListWidgetItem* current = itemOfFile(QFileInfo(setting).fileName()))
            File1_->setCurrentItem(current);
    }
    if (setting.isEmpty()) {
        if (File1_->count() == 1) {
            // The only language there is needs no question.
            File1_->setCurrentRow(0);
            cmdOK_Click();
        } else if (File1_->count() == 0) {
            MsgBox(this, QString::fromUtf16(kNoLanguageFile), MsgButtons::OK, MsgIcon::Critical,
                   QStringLiteral("Tavik"));
            endProgram_ = true;
            unload(QDialog::Rejected);
            return;
        }
    }
    centreOnScreen();
}

void frmLanguage::ShowModal() {
    FormLoad();
    if (unloaded_)
        return;
    if (Timer1_->isActive()) {
        // The timer unloads the dialog before it is ever shown; wait for that.
        QEventLoop wait;
        connect(this, &QDialog::finished, &wait, &QEventLoop::quit);
        wait.exec();
        return;
    }
    exec();
}

void frmLanguage::refreshFileList() {
    File1_->clear();
    for (const QString& name : ListFiles(LanguageFolder())) {
        if (!WildcardMatch(QStringLiteral("*.lng"), name))
            continue;
        // Each language is listed by its own name; the file name stays with it.
        const QString own = ReadLanguageValue(LanguageFolder() + name, QStringLiteral("_Language"),
                                              QStringLiteral("Name"));
        auto* item = new QListWidgetItem(own.isEmpty() ? name : own, File1_);
        item->setData(kFileNameRole, name);
        item->setToolTip(name);
    }
}

QListWidgetItem* frmLanguage::itemOfFile(const QString& fileName) const {
    for (int i = 0; i < File1_->count(); ++i) {
        QListWidgetItem* item = File1_->item(i);
        if (item->data(kFileNameRole).toString().compare(fileName, Qt::CaseInsensitive) == 0)
            return item;
    }
    return nullptr;
}

void frmLanguage::centreOnScreen() {
    // At start-up the main window is not shown yet: then the screen is the owner.
    PlaceOnOwner(this, parentWidget());
}

QString frmLanguage::selectedFilePath() const {
    const QListWidgetItem* item = File1_->currentItem();
    return LanguageFolder() + (item ? item->data(kFileNameRole).toString() : QString());
}

void frmLanguage::File1_Click() {
    // The choice takes effect at once, before it is confirmed.
    language_.LanguageFile = selectedFilePath();
    ApplyLanguage(this, objectName(), language_.LanguageFile);
    File1_->setAccessibleName(language_.GetLangString(LangText::NameLanguageFiles));
    NameControlsForAccessibility(this);
    const QString file = language_.LanguageFile;
    const QString section = QStringLiteral("_Language");
    txtName_->setText(ReadLanguageValue(file, section, QStringLiteral("Name")));
    txtVersion_->setText(ReadLanguageValue(file, section, QStringLiteral("FileVersion")));
    txtAutor_->setText(ReadLanguageValue(file, section, QStringLiteral("Autor")));
    // Once a complete file has been seen OK stays enabled, whatever is selected after it.
    if (!txtName_->text().isEmpty() && !txtVersion_->text().isEmpty() &&
        !txtAutor_->text().isEmpty())
        cmdOK_->setEnabled(true);
}

void frmLanguage::cmdOK_Click() {
    language_.LanguageFile = selectedFilePath();
    WriteINI(settingsFile(), QStringLiteral("Settings"), QStringLiteral("Language"),
             language_.LanguageFile);
    unload(QDialog::Accepted);
}

void frmLanguage::cmdCancel_Click() {
    // The last selection stays the active language even though it was not stored.
    if (!KeepOpen)
        endProgram_ = true;
    unload(QDialog::Rejected);
}

void frmLanguage::Timer1_Timer() {
    unload(QDialog::Accepted);
}

void frmLanguage::reject() {
    cmdCancel_Click();
}

void frmLanguage::showEvent(QShowEvent* event) {
    wasShown_ = true;
    QDialog::showEvent(event);
}

void frmLanguage::unload(int result) {
    Timer1_->stop();
    if (unloaded_)
        return;
    unloaded_ = true;
    done(result);
}

} // namespace tavik
