#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "app/readme.h"

#include "app/fadeineffect.h"
#include "app/setasidefiles.h"
#include "app/tavikapplication.h"
#include "audio/mcipackagesounds.h"
#include "audio/modmci.h"
#include "audio/sequenceplayer.h"
#include "dialogs/packagecommands.h"
#include "log/eventlog.h"
#include "log/frmdebug.h"
#include "package/packagefolder.h"
#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/modini.h"
#include "settings/qttranslation.h"
#include "settings/useformat.h"
#include "shell/frmabout.h"
#include "shell/frmsplash.h"
#include "shell/productinfo.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/fileops.h"
#include "util/listrows.h"
#include "util/msgbox.h"
#include "util/platformnames.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"
#include "util/windowplacement.h"
#include "util/zelcmd.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLockFile>
#include <QMenu>
#include <QProcess>
#include <QProgressBar>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <tuple>

namespace tavik {

namespace {

// The title column leaves room for the vertical scroll bar once the list is that long.
constexpr double kKeyColumn = 900.0;
constexpr double kFormatColumn = 900.0;
constexpr double kLengthColumn = 1400.0;
constexpr int kNameInterval = 1000;

zelcmd* makeButton(const char* name, const QString& caption, QWidget* parent) {
    auto* button = new zelcmd(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->SetCaption(caption);
    return button;
}

QAction* makeAction(const char* name, const QString& caption, QMenu* menu) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(QString::fromLatin1(name));
    return action;
}

// The texts the main window takes from numbered language texts; again on a change of language.
void applyCodeTexts(frmMain& main) {
    const Language& language = main.language();
    for (int column = 1; column <= 4; ++column)
        main.lsvPack()->SetColumnText(column, language.GetLangString(28 + column));
    main.Panel(6)->setText(language.GetLangString(LangText::StatusHint));
    // While a load runs the state panel keeps saying so.
    if (main.Panel(2)->isHidden())
        main.Panel(1)->setText(language.GetLangString(LangText::StatusReady));
    main.lsvPack()->setAccessibleName(language.GetLangString(LangText::NameAnnouncementList));
    main.ApplyEditTexts();
    main.ApplyMenuTexts();
}

} // namespace

frmMain::frmMain(Language& language, modMCI& mci, EventLog& eventLog, QWidget* parent)
    : QMainWindow(parent), language_(language), mci_(mci), eventLog_(eventLog) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QString::fromUtf16(kProductName));
    buildControls();
    buildMenus();
    buildEditMenu();
    buildKeys();
    buildLoudnessColumn();
    ApplyMenuTexts();
    buildStatusBar();
    EnableServicButtons(false);
    cmdSave_->setEnabled(false);
    InstallPackageListDrop(*this);

    tmrName_ = new QTimer(this);
    tmrName_->setObjectName(QStringLiteral("tmrName"));
    tmrName_->setInterval(kNameInterval);
    connect(tmrName_, &QTimer::timeout, this, &frmMain::tmrName_Timer);
    tmrName_->start();
}

frmMain::~frmMain() {
    // The list empties itself as it goes, after this window has stopped being one: its last
    // signals must not reach the loudness column's handlers.
    disconnect(lsvPack_->model(), nullptr, this, nullptr);
    // Files still set aside go where the package on disk wants them.
    closeEditedPackage();
}

void frmMain::buildControls() {
    auto* central = new QWidget(this);
    central->setObjectName(QStringLiteral("centralWidget"));
    setCentralWidget(central);

    lsvPack_ = new ReportList(central);
    lsvPack_->setObjectName(QStringLiteral("lsvPack"));
    lsvPack_->AddColumn(QStringLiteral("Schlüssel"), kKeyColumn);
    lsvPack_->AddColumn(QStringLiteral("Titel"), 5430.6143);
    lsvPack_->AddColumn(QStringLiteral("Format"), kFormatColumn);
    lsvPack_->AddColumn(QStringLiteral("Spielzeit"), kLengthColumn);
    // Room for all four columns at their designed widths.
    lsvPack_->setMinimumSize(kListWidth, 300);
    connect(lsvPack_, &QTreeWidget::itemDoubleClicked, this, [this] { lsvPack_DblClick(); });

    cmdNew_ = makeButton("cmdNew", QStringLiteral("&Neu"), central);
    cmdOpen_ = makeButton("cmdOpen", QStringLiteral("&Öffnen"), central);
    cmdSave_ = makeButton("cmdSave", QStringLiteral("&Speichern"), central);
    cmdAdd_ = makeButton("cmdAdd", QStringLiteral("&Hinzufügen"), central);
    cmdRemove_ = makeButton("cmdRemove", QStringLiteral("&Entfernen"), central);
    cmdEdit_ = makeButton("cmdEdit", QStringLiteral("&Daten"), central);
    cmdPlay_ = makeButton("cmdPlay", QStringLiteral("&Abspielen"), central);
    cmdSort_ = makeButton("cmdSort", QStringLiteral("&Sortieren"), central);
    cmdFUp_ = makeButton("cmdFUp", QString(), central);
    cmdUp_ = makeButton("cmdUp", QString(), central);
    cmdDown_ = makeButton("cmdDown", QString(), central);
    cmdFDown_ = makeButton("cmdFDown", QString(), central);
    cmdExpand_ = makeButton("cmdExpand", QStringLiteral("Erweitert"), central);
    cmdExit_ = makeButton("cmdExit", QStringLiteral("Beenden"), central);

    // The extended panel: the commands a user needs less often.
    picExpand_ = new QWidget(central);
    picExpand_->setObjectName(QStringLiteral("picExpand"));
    cmdDienst_ = makeButton("cmdDienst", QStringLiteral("Diensteditor"), picExpand_);
    cmdCheck_ = makeButton("cmdCheck", QStringLiteral("Paket prüfen"), picExpand_);
    cmdCompress_ = makeButton("cmdCompress", QStringLiteral("Verpacken"), picExpand_);
    cmdDelete_ = makeButton("cmdDelete", QStringLiteral("Optionen"), picExpand_);
    cmdLanguage_ = makeButton("cmdLanguage", QStringLiteral("Sprache"), picExpand_);
    cmdDebug_ = makeButton("cmdDebug", QStringLiteral("Ereignisprotokoll"), picExpand_);
    cmdHelp_ = makeButton("cmdHelp", QStringLiteral("Hilfe"), picExpand_);
    cmdInfo_ = makeButton("cmdInfo", QStringLiteral("Info"), picExpand_);
    cmdUnexpand_ = makeButton("cmdUnexpand", QStringLiteral("&Zurück"), picExpand_);
    auto* panelLayout = new QVBoxLayout(picExpand_);
    panelLayout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* button : {cmdDienst_, cmdCheck_, cmdCompress_, cmdDelete_, cmdLanguage_,
                            cmdDebug_, cmdHelp_, cmdInfo_})
        panelLayout->addWidget(button);
    panelLayout->addStretch();
    panelLayout->addWidget(cmdUnexpand_);
    picExpand_->hide();

    // The move buttons carry pictures only: their tool tips name them, the designed German
    // ones until a language file gives its own.
    auto* moves = new QHBoxLayout;
    const std::tuple<zelcmd*, QStyle::StandardPixmap, const char16_t*> arrows[] = {
        {cmdFUp_, QStyle::SP_MediaSkipBackward, u"An den Anfang der Liste"},
        {cmdUp_, QStyle::SP_ArrowUp, u"Eine Position nach oben"},
        {cmdDown_, QStyle::SP_ArrowDown, u"Eine Position nach unten"},
        {cmdFDown_, QStyle::SP_MediaSkipForward, u"An das Ende der Liste"}};
    for (const auto& [button, arrow, tip] : arrows) {
        button->setToolTip(QString::fromUtf16(tip));
        button->SetCaption(QString());
        button->SetPicture(style()->standardIcon(arrow).pixmap(16, 16));
        button->setMinimumWidth(24);
        moves->addWidget(button);
    }
    auto* commands = new QVBoxLayout;
    for (QWidget* button :
         {cmdNew_, cmdOpen_, cmdSave_, cmdAdd_, cmdRemove_, cmdEdit_, cmdPlay_, cmdSort_})
        commands->addWidget(button);
    commands->addLayout(moves);
    commands->addStretch();
    commands->addWidget(cmdExpand_);
    commands->addWidget(cmdExit_);

    auto* layout = new QGridLayout(central);
    auto* listColumn = new QVBoxLayout;
    listColumn->addWidget(buildFilter(central));
    listColumn->addWidget(lsvPack_, 1);
    layout->addLayout(listColumn, 0, 0);
    layout->addLayout(commands, 0, 1);
    layout->addWidget(picExpand_, 0, 2);
    layout->setColumnStretch(0, 1);

    const std::pair<zelcmd*, void (frmMain::*)()> handlers[] = {
        {cmdNew_, &frmMain::cmdNew_Click},       {cmdOpen_, &frmMain::cmdOpen_Click},
        {cmdSave_, &frmMain::cmdSave_Click},     {cmdAdd_, &frmMain::cmdAdd_Click},
        {cmdRemove_, &frmMain::cmdRemove_Click}, {cmdEdit_, &frmMain::cmdEdit_Click},
        {cmdPlay_, &frmMain::cmdPlay_Click},     {cmdUp_, &frmMain::cmdUp_Click},
        {cmdDown_, &frmMain::cmdDown_Click},     {cmdFUp_, &frmMain::cmdFUp_Click},
        {cmdFDown_, &frmMain::cmdFDown_Click},   {cmdSort_, &frmMain::cmdSort_Click},
        {cmdExpand_, &frmMain::cmdExpand_Click}, {cmdUnexpand_, &frmMain::cmdUnexpand_Click},
        {cmdDienst_, &frmMain::cmdDienst_Click}, {cmdCompress_, &frmMain::cmdCompress_Click},
        {cmdDelete_, &frmMain::cmdDelete_Click}, {cmdLanguage_, &frmMain::cmdLanguage_Click},
        {cmdDebug_, &frmMain::cmdDebug_Click},   {cmdHelp_, &frmMain::cmdHelp_Click},
        {cmdInfo_, &frmMain::cmdInfo_Click},     {cmdCheck_, &frmMain::cmdCheck_Click},
    };
    for (const auto& [button, handler] : handlers)
        connect(button, &QPushButton::clicked, this,
                [this, handler] { RunHandler([this, handler] { (this->*handler)(); }); });
    connect(cmdExit_, &QPushButton::clicked, this, &QWidget::close);
}

void frmMain::buildMenus() {
    buildSortMenu();

    mnuHlp_ = new QMenu(QStringLiteral("Hilfe"), this);
    mnuHlp_->setObjectName(QStringLiteral("mnuHlp"));
    mnuHP_ = makeAction("mnuHP", QStringLiteral("Homepage"), mnuHlp_);
    mnuSupport_ = makeAction("mnuSupport", QStringLiteral("Support"), mnuHlp_);
    mnuHlp_->addSeparator()->setObjectName(QStringLiteral("mnuS1"));
    mnuReadme_ = makeAction("mnuReadme", QStringLiteral("Readme"), mnuHlp_);
    // There is no web site to send users to: the home page entry opens the read-me, the
    // support entry a mail to the author.
    connect(mnuHP_, &QAction::triggered, this,
            [this] { QDesktopServices::openUrl(QUrl::fromLocalFile(language_.GetLangFile(6))); });
    connect(mnuSupport_, &QAction::triggered, this,
            [] { QDesktopServices::openUrl(QUrl(MailLink(QString::fromUtf16(kAuthorMail)))); });
    connect(mnuReadme_, &QAction::triggered, this, [this] { OpenReadme(this, language_); });
}

void frmMain::buildStatusBar() {
    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("barStatus"));
    bar->setSizeGripEnabled(true);
    for (int i = 1; i <= 6; ++i) {
        auto* panel = new QLabel(bar);
        panel->setObjectName(i == 4 ? QStringLiteral("Title") : QStringLiteral("Panel%1").arg(i));
        panel->setFrameShape(QFrame::StyledPanel);
        panel->setFrameShadow(QFrame::Sunken);
        panels_ << panel;
    }
    prgStatus_ = new QProgressBar(panels_[1]);
    prgStatus_->setObjectName(QStringLiteral("prgStatus"));
    prgStatus_->setTextVisible(false);
    auto* progressLayout = new QHBoxLayout(panels_[1]);
    progressLayout->setContentsMargins(1, 1, 1, 1);
    progressLayout->addWidget(prgStatus_);
    panels_[1]->setMinimumWidth(160);
    panels_[1]->hide();
    prgStatus_->hide();

    bar->addWidget(panels_[0]);
    bar->addWidget(panels_[1]);
    bar->addWidget(panels_[2]);
    bar->addWidget(panels_[3], 1);
    bar->addPermanentWidget(panels_[4]);
    bar->addPermanentWidget(panels_[5]);
}

QStatusBar* frmMain::barStatus() const {
    return const_cast<frmMain*>(this)->statusBar();
}

frmStatus* frmMain::statusWindow() const {
    return status_;
}

QLabel* frmMain::Panel(int index) const {
    if (index < 1 || index > panels_.size())
        throw RuntimeError(rt::IndexOutOfBounds);
    return panels_[index - 1];
}

bool frmMain::UseFormat() const {
    return mci_.UseFormat;
}

void frmMain::SetUseFormat(bool useFormat) {
    mci_.UseFormat = useFormat;
}

bool frmMain::FormLoad() {
    // Every window of the program shows it, the ones without an owner too.
    const QIcon icon(ProgramIconFile());
    QApplication::setWindowIcon(icon);
    setWindowIcon(icon);
    if (!chooseLanguage())
        return false;
    UseQtTranslation(QtLocaleOf(language_.LanguageFile));
    ApplyLanguage(this, objectName(), language_.LanguageFile);
    // A bad value is shown as any unhandled runtime error is, and the editor starts with the
    // default.
    SetUseFormat(ReadUseFormat([](const RuntimeError& error) { ReportRuntimeError(error); }));

    instanceLock_ =
        std::make_unique<QLockFile>(NativePath(AppPath() + QStringLiteral("\\Tavik.lock")));
    instanceLock_->setStaleLockTime(0);
    if (!instanceLock_->tryLock(0)) {
        instanceLock_.reset();
        MsgBox(this, language_.GetLangString(24), MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }

    FollowLanguage(this, language_, [this] { applyCodeTexts(*this); });

    if (ShowSplash) {
        frmSplash splash(language_, this);
        splash.ShowModal();
    }
    resize(size().expandedTo(sizeHint()));
    minHeight_ = height();
    minWidth_ = width();
    setMinimumSize(minWidth_, minHeight_);
    return true;
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    // A window manager may ignore the minimum size; the designed rule puts it back.
    if (minHeight_ > 0 && (height() < minHeight_ || width() < minWidth_) && !isMinimized())
        resize(std::max(width(), minWidth_), std::max(height(), minHeight_));
}

void frmMain::closeEvent(QCloseEvent* event) {
    // Exit, the close button, Alt+F4 and the end of the session all come here.
    if (serviceEditor_ && !serviceEditor_->close()) {
        event->ignore();
        return;
    }
    // While a load, an unload or a save goes through the list, everything the user did is
    // being saved or was given up before it began: a question now could only offer to save
    // half a list.
    bool goOn = listWork_ > 0;
    if (!goOn)
        RunHandler([this, &goOn] { goOn = MaySaveOrDiscard(); });
    if (!goOn) {
        event->ignore();
        return;
    }
    if (listWork_ > 0)
        closedDuringListWork_ = true;
    // A sound or sentence playing ends now, not when its wait would have.
    EndRunningWaits();
    closeEditedPackage();
    // A package created and never filled disappears; one with files stays.
    if (!PackageFolder.isEmpty()) {
        try {
            RmDir(NativePath(PackageFolder));
        } catch (const RuntimeError&) {
        }
    }
    if (eventLog_.viewerCreated())
        eventLog_.viewer()->close();
    event->accept();
}

void frmMain::EnableServicButtons(bool enabled) {
    for (zelcmd* button : {cmdAdd_, cmdRemove_, cmdUp_, cmdDown_, cmdSort_, cmdPlay_, cmdDienst_,
                           cmdFUp_, cmdFDown_, cmdEdit_})
        button->setEnabled(enabled);
    applyMoveLock();
}

void frmMain::FadeInEffect(QWidget* source, QWidget* target, int steps) {
    RunZoomEffect(ScreenRect(source), ScreenRect(target), steps);
}

QString frmMain::GetFileName(const QString& key) const {
    return tavik::GetFileName(PackageFolder, key);
}

void frmMain::showReadyState() {
    prgStatus_->hide();
    Panel(2)->hide();
    Panel(3)->show();
    Panel(1)->setText(language_.GetLangString(27));
    try {
        Panel(4)->setText(CStr(
            PackageIndex.GetSetting(QStringLiteral("INFO"), QStringLiteral("Name"), QString())));
    } catch (const RuntimeError&) {
    }
}

void frmMain::cmdPlay_Click() {
    const ReportListItem* row = lsvPack_->SelectedItem();
    if (!row)
        return;
    const std::int32_t index = FindAnnouncementByKey(table, row->Text());
    if (index == -1)
        return;
    // A copy: the table may be reloaded while the sound plays and events run.
    const AnnouncementRecord record = table.Announcements[index];
    cmdPlay_->setEnabled(false);
    try {
        PlayAnnouncement(mci_, record, true);
    } catch (...) {
        cmdPlay_->setEnabled(true);
        throw;
    }
    mci_.MciSeekToStart(record.Key);
    cmdPlay_->setEnabled(true);
}

void frmMain::cmdSort_Click() {
    mnuSort_->popup(cmdSort_->mapToGlobal(QPoint(0, cmdSort_->height())));
}

void frmMain::cmdCompress_Click() {
    const QString packer = PackerPath();
    if (QFileInfo(packer).isFile())
        QProcess::startDetached(packer, {}, QFileInfo(packer).absolutePath());
    else
        MsgBox(this, language().GetLangString(LangText::PackerMissing, packer), MsgButtons::OK,
               MsgIcon::Exclamation);
}

QString frmMain::PackerPath() {
    return NativePath(AppPath() + QStringLiteral("\\") +
                      ProgramFileName(QStringLiteral("tavikpm")));
}

void frmMain::cmdDebug_Click() {
    frmDebug* viewer = eventLog_.viewer();
    // The viewer has no owner of its own; it opens over the window that asks for it.
    if (!viewer->isVisible())
        PlaceOnOwner(viewer, this);
    viewer->show();
    viewer->raise();
}

void frmMain::cmdHelp_Click() {
    mnuHlp_->popup(cmdHelp_->mapToGlobal(QPoint(0, cmdHelp_->height())));
}

void frmMain::cmdInfo_Click() {
    frmAbout about(language_, this);
    about.exec();
}

void frmMain::tmrName_Timer() {
    try {
        Panel(4)->setText(CStr(
            PackageIndex.GetSetting(QStringLiteral("INFO"), QStringLiteral("Name"), QString())));
    } catch (...) {
    }
}

} // namespace tavik
