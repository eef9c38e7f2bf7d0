#include "dialogs/frmfile.h"

#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "app/tavikapplication.h"
#include "audio/modmci.h"
#include "audio/soundcheck.h"
#include "dialogs/announcementcolors.h"
#include "dialogs/browselists.h"
#include "dialogs/filebrowsing.h"
#include "dialogs/importformats.h"
#include "dialogs/importrefusal.h"
#include "dialogs/sounddrop.h"
#include "dialogs/soundimport.h"
#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/apppath.h"
#include "util/codepageguard.h"
#include "util/fileops.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/tickcount.h"
#include "util/windowplacement.h"
#include "util/zelcmd.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>
#include <memory>

namespace tavik {

namespace {

constexpr char16_t kPreviewAlias[] = u"tavik_preview";
// As wide as a drive letter or a usual mount point needs.
constexpr int kDriveListCharacters = 16;
constexpr char16_t kPreviewDevice[] = u"waveaudio";

// The swatches of the colour panel, as colour values (red in the low byte).
constexpr quint32 kSwatches[] = {8421504, 0,        255,      33023,   49344,
                                 49152,   12632064, 16711680, 16711935};

zelcmd* makeButton(const char* name, const QString& caption, QWidget* parent) {
    auto* button = new zelcmd(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->SetCaption(caption);
    return button;
}

// The device type the formats file gives the file's extension; the wave device for one it
// does not list.
QString previewDeviceType(const QString& file) {
    const QString type = IndentifyFormat(ImportExtension(file));
    return type.isEmpty() ? QString::fromUtf16(kPreviewDevice) : type;
}

QColor swatchColor(quint32 value) {
    return QColor(int(value & 0xFF), int((value >> 8) & 0xFF), int((value >> 16) & 0xFF));
}

} // namespace

frmFile::frmFile(frmMain& main) : QDialog(&main), main_(main) {
    setObjectName(QStringLiteral("frmFile"));
    setWindowTitle(QStringLiteral("Datei(en) importieren"));
    buildControls();

    ApplyLanguage(this, objectName(), main_.language().LanguageFile);
    const QStringList entries =
        FormatFilterEntries(InstalledFormats(AppPath() + QStringLiteral("\\Formats.ini")));
    cboFormat_->addItems(entries);
    connect(cboFormat_, &QComboBox::currentIndexChanged, this,
            [this] { RunHandler([this] { cboFormat_Click(); }); });
    cboFormat_->setCurrentIndex(1);
    // The fixed format entries and the names of controls without a caption.
    FollowLanguage(this, main_.language(), [this] {
        const Language& language = main_.language();
        using namespace LangText;
        // Only the two fixed entries have words; the filter goes by index, not by text.
        if (cboFormat_->count() >= 2) {
            cboFormat_->setItemText(
                0, LangTextOr(language, FormatAllFiles, QString::fromUtf16(kAllFilesEntry)));
            cboFormat_->setItemText(
                1, LangTextOr(language, FormatAllMedia, QString::fromUtf16(kAllMediaEntry)));
        }
        drive1_->setAccessibleName(language.GetLangString(NameDrive));
        dir1_->setAccessibleName(language.GetLangString(NameFolder));
        file1_->setAccessibleName(language.GetLangString(NameFiles));
        cboFormat_->setAccessibleName(language.GetLangString(NameFileType));
        txtName_->setAccessibleName(language.GetLangString(NameImportTitle));
        for (qsizetype i = 0; i < optColor_.size(); ++i)
            optColor_[i]->setAccessibleName(
                language.GetLangString(NameFirstColor + static_cast<std::int32_t>(i)));
    });
    setWindowIcon(main_.windowIcon());
    PlaceOnOwner(this, &main_);
}

frmFile::~frmFile() = default;

void frmFile::buildControls() {
    fraSelect_ = new QGroupBox(QStringLiteral("Auswahl"), this);
    fraSelect_->setObjectName(QStringLiteral("fraSelect"));
    drive1_ = new QComboBox(fraSelect_);
    drive1_->setObjectName(QStringLiteral("Drive1"));
    // A volume mounted deep in a tree must not stretch the dialog past the screen: the list
    // keeps a drive's width and shortens long names in their middle, each shown whole as its tip.
    drive1_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    drive1_->setMinimumContentsLength(kDriveListCharacters);
    drive1_->view()->setTextElideMode(Qt::ElideMiddle);
    dir1_ = new FolderList(fraSelect_);
    dir1_->setObjectName(QStringLiteral("Dir1"));
    file1_ = new FileList(fraSelect_);
    file1_->setObjectName(QStringLiteral("File1"));
    cboFormat_ = new QComboBox(fraSelect_);
    cboFormat_->setObjectName(QStringLiteral("cboFormat"));
    cmdRefresh_ = makeButton("cmdRefresh", QStringLiteral("Dateiliste aktualisieren"), fraSelect_);
    cmdAdd_ = makeButton("cmdAdd", QStringLiteral("Datei(en) hinzufügen"), fraSelect_);
    auto* selectLayout = new QGridLayout(fraSelect_);
    selectLayout->addWidget(drive1_, 0, 0);
    selectLayout->addWidget(dir1_, 1, 0);
    selectLayout->addWidget(file1_, 0, 1, 2, 1);
    selectLayout->addWidget(cboFormat_, 2, 1);
    selectLayout->addWidget(cmdRefresh_, 3, 0);
    selectLayout->addWidget(cmdAdd_, 3, 1);

    fraImport_ = new QGroupBox(QStringLiteral("Importliste"), this);
    fraImport_->setObjectName(QStringLiteral("fraImport"));
    lstImport_ = new QListWidget(fraImport_);
    lstImport_->setObjectName(QStringLiteral("lstImport"));
    lstImport_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstHidden_ = new QListWidget(fraImport_);
    lstHidden_->setObjectName(QStringLiteral("lstHidden"));
    lstHidden_->hide();
    txtName_ = new QLineEdit(fraImport_);
    txtName_->setObjectName(QStringLiteral("txtName"));
    cmdDel_ = makeButton("cmdDel", QStringLiteral("Datei(en) entfernen"), fraImport_);
    cmdClear_ = makeButton("cmdClear", QStringLiteral("Alle Dateien entfernen"), fraImport_);
    cmdPlay_ = makeButton("cmdPlay", QString(), fraImport_);
    cmdPlay_->SetPicture(style()->standardIcon(QStyle::SP_MediaPlay).pixmap(16, 16));
    cmdColor_ = makeButton("cmdColor", QStringLiteral("Farblich hervorheben"), fraImport_);
    cmdColor_->setCheckable(true);

    picColor_ = new QFrame(fraImport_);
    picColor_->setObjectName(QStringLiteral("picColor"));
    picColor_->setFrameShape(QFrame::StyledPanel);
    auto* colorLayout = new QGridLayout(picColor_);
    colorLayout->setHorizontalSpacing(24);
    for (int i = 0; i < 9; ++i) {
        auto* option = new QRadioButton(picColor_);
        option->setObjectName(QStringLiteral("optColor"));
        option->installEventFilter(this);
        auto* swatch = new QFrame(picColor_);
        swatch->setObjectName(QStringLiteral("shpColor"));
        swatch->setFixedSize(24, 14);
        swatch->setAutoFillBackground(true);
        QPalette palette = swatch->palette();
        palette.setColor(QPalette::Window, swatchColor(kSwatches[i]));
        swatch->setPalette(palette);
        // Each swatch sits right beside its own option, with room before the next pair, so
        // no swatch reads as belonging to its neighbour.
        auto* pair = new QHBoxLayout;
        pair->setSpacing(2);
        pair->addWidget(option);
        pair->addWidget(swatch);
        pair->addStretch();
        colorLayout->addLayout(pair, i / 3, i % 3);
        optColor_ << option;
        shpColor_ << swatch;
    }
    picColor_->hide();

    auto* importButtons = new QHBoxLayout;
    importButtons->addWidget(cmdDel_);
    importButtons->addWidget(cmdClear_);
    importButtons->addWidget(cmdPlay_);
    importButtons->addWidget(cmdColor_);
    auto* importLayout = new QVBoxLayout(fraImport_);
    importLayout->addWidget(lstImport_);
    importLayout->addWidget(txtName_);
    importLayout->addLayout(importButtons);
    importLayout->addWidget(picColor_);

    cmdOK_ = makeButton("cmdOK", QStringLiteral("&OK"), this);
    cmdCancel_ = makeButton("cmdCancel", QStringLiteral("&Abbruch"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cmdCancel_);
    // The display names become titles in the index, code page 1252: what it cannot hold (a
    // typed name, or one taken from a file name) is shown and keeps OK refused.
    auto* guard = new CodePageGuard(this, main_.language());
    CodePageGuard::Source titles;
    titles.name = [this] { return fraImport_->title(); };
    titles.itemName = [](qsizetype i) { return QString::number(i + 1); };
    titles.texts = [this] {
        QStringList texts;
        for (int i = 0; i < lstImport_->count(); ++i)
            texts << lstImport_->item(i)->text();
        return texts;
    };
    titles.setTexts = [this](const QStringList& texts) {
        for (int i = 0; i < lstImport_->count() && i < texts.size(); ++i)
            lstImport_->item(i)->setText(texts[i]);
        if (const QListWidgetItem* entry = lstImport_->currentItem())
            txtName_->setText(entry->text());
    };
    guard->watch(titles);
    // Removals are looked at from the event loop: the list also empties itself while the
    // dialog is destroyed, when its names can no longer be read.
    const QAbstractItemModel* model = lstImport_->model();
    connect(model, &QAbstractItemModel::dataChanged, guard, &CodePageGuard::refresh);
    connect(model, &QAbstractItemModel::rowsInserted, guard, &CodePageGuard::refresh);
    connect(model, &QAbstractItemModel::rowsRemoved, guard, &CodePageGuard::refresh,
            Qt::QueuedConnection);
    connect(model, &QAbstractItemModel::modelReset, guard, &CodePageGuard::refresh,
            Qt::QueuedConnection);
    connect(guard, &CodePageGuard::holdsChanged, cmdOK_, &QPushButton::setEnabled);
    buttons->insertWidget(0, guard->closestButton());

    auto* layout = new QGridLayout(this);
    layout->addWidget(fraSelect_, 0, 0);
    layout->addWidget(fraImport_, 0, 1);
    layout->addWidget(guard->note(), 1, 0, 1, 2);
    layout->addLayout(buttons, 2, 0, 1, 2);

    const std::pair<zelcmd*, void (frmFile::*)()> handlers[] = {
        {cmdRefresh_, &frmFile::cmdRefresh_Click}, {cmdAdd_, &frmFile::cmdAdd_Click},
        {cmdDel_, &frmFile::cmdDel_Click},         {cmdClear_, &frmFile::cmdClear_Click},
        {cmdPlay_, &frmFile::cmdPlay_Click},       {cmdOK_, &frmFile::cmdOK_Click},
    };
    for (const auto& [button, handler] : handlers)
        connect(button, &QPushButton::clicked, this,
                [this, handler] { RunHandler([this, handler] { (this->*handler)(); }); });
    connect(cmdCancel_, &QPushButton::clicked, this, &frmFile::reject);
    connect(cmdColor_, &QPushButton::toggled, this,
            [this](bool value) { RunHandler([this, value] { cmdColor_Click(value); }); });
    connect(lstImport_, &QListWidget::currentRowChanged, this,
            [this] { RunHandler([this] { lstImport_Click(); }); });
    connect(lstImport_, &QListWidget::itemClicked, this,
            [this] { RunHandler([this] { lstImport_Click(); }); });
    connect(txtName_, &QLineEdit::textChanged, this,
            [this] { RunHandler([this] { txtName_Change(); }); });
    connect(dir1_, &FolderList::Change, this, [this] { RunHandler([this] { Dir1_Change(); }); });
    file1_->installEventFilter(this);
    lstImport_->installEventFilter(this);

    // Sound files dragged from a file manager join the import list.
    auto* drop =
        new SoundDrop(lstImport_, InstalledFormats(AppPath() + QStringLiteral("\\Formats.ini")));
    connect(drop, &SoundDrop::filesDropped, this,
            [this](const QStringList& files) { RunHandler([this, files] { AddFiles(files); }); });

    // Browsing starts in the package's folder, on its drive.
    dir1_->SetPath(PackageDialogFolder(main_.PackageFolder));
    fillDrives();
    file1_->SetPath(dir1_->Path());
    connect(drive1_, &QComboBox::currentIndexChanged, this,
            [this] { RunHandler([this] { Drive1_Change(); }); });
}

void frmFile::fillDrives() {
    const QSignalBlocker blocker(drive1_);
    drive1_->clear();
    drive1_->addItems(DriveRoots());
    for (int i = 0; i < drive1_->count(); ++i)
        drive1_->setItemData(i, drive1_->itemText(i), Qt::ToolTipRole);
    const QString current = DriveOf(dir1_->Path().isEmpty() ? QDir::homePath() : dir1_->Path());
    drive1_->setCurrentIndex(std::max(0, drive1_->findText(current)));
}

QString frmFile::GetFileName(const QString& path, bool stripExtension) {
    return PathFileName(path, stripExtension);
}

void frmFile::Drive1_Change() {
    if (dir1_->SetPath(drive1_->currentText()))
        return;
    MsgBox(this, main_.language().GetLangString(17), MsgButtons::OK, MsgIcon::Exclamation);
    // The list shows the drive of the folder that stays open.
    const QSignalBlocker blocker(drive1_);
    drive1_->setCurrentIndex(std::max(0, drive1_->findText(DriveOf(dir1_->Path()))));
}

void frmFile::Dir1_Change() {
    file1_->SetPath(dir1_->Path());
}

void frmFile::cboFormat_Click() {
    file1_->SetPattern(QString());
    QStringList entries;
    for (int i = 0; i < cboFormat_->count(); ++i)
        entries << cboFormat_->itemText(i);
    file1_->SetPattern(FilterPattern(entries, cboFormat_->currentIndex()));
}

void frmFile::cmdRefresh_Click() {
    fillDrives();
    dir1_->Refresh();
    file1_->Refresh();
}

void frmFile::addImportFile(const QString& path, QStringList& refused) {
    // A file that vanished since it was listed is skipped without a word; anything else that
    // is no whole sound is named with the reason, so it is never copied into the package.
    const SoundProblem problem = FindSoundProblem(path);
    if (problem == SoundProblem::Missing)
        return;
    if (problem != SoundProblem::None) {
        refused << main_.language().GetLangString(ImportRefusalText(problem), path);
        return;
    }
    lstHidden_->addItem(path);
    lstImport_->addItem(GetFileName(path, true));
}

void frmFile::reportRefused(const QStringList& refused) {
    if (refused.isEmpty())
        return;
    MsgBox(this,
           main_.language().GetLangString(LangText::ImportRefused) + u'\n' + refused.join(u'\n'),
           MsgButtons::OK, MsgIcon::Exclamation);
}

void frmFile::AddFiles(const QStringList& paths) {
    QStringList refused;
    for (const QString& path : paths) {
        addImportFile(path, refused);
        QCoreApplication::processEvents();
    }
    reportRefused(refused);
}

void frmFile::cmdAdd_Click() {
    QStringList refused;
    for (int i = 0; i < file1_->count(); ++i) {
        if (!file1_->item(i)->isSelected())
            continue;
        addImportFile(JoinFolderFile(file1_->Path(), file1_->item(i)->text()), refused);
        QCoreApplication::processEvents();
    }
    reportRefused(refused);
}

void frmFile::cmdDel_Click() {
    // The count is read once and the index runs one past it, so after each removal the entry
    // that moves up is skipped: of neighbouring selected entries every second one stays for
    // the next click. Users know it that way.
    const int n = lstImport_->count();
    for (int i = 0; i <= n; ++i) {
        QListWidgetItem* entry = lstImport_->item(i);
        if (!entry || !entry->isSelected())
            continue;
        delete lstImport_->takeItem(i);
        delete lstHidden_->takeItem(i);
    }
}

void frmFile::cmdClear_Click() {
    lstHidden_->clear();
    lstImport_->clear();
}

void frmFile::lstImport_Click() {
    QListWidgetItem* entry = lstImport_->currentItem();
    if (entry)
        txtName_->setText(entry->text());
}

void frmFile::txtName_Change() {
    if (QListWidgetItem* entry = lstImport_->currentItem())
        entry->setText(txtName_->text());
}

void frmFile::cmdColor_Click(bool value) {
    if (value) {
        main_.FadeInEffect(cmdColor_, picColor_, 20);
        picColor_->show();
    } else {
        main_.FadeInEffect(picColor_, cmdColor_, 20);
        picColor_->hide();
    }
}

void frmFile::cmdPlay_Click() {
    QString file;
    if (previewSource_ == NoPreview)
        return;
    if (previewSource_ == ImportList) {
        const int row = lstImport_->currentRow();
        if (row >= 0 && row < lstHidden_->count())
            file = lstHidden_->item(row)->text();
    } else {
        file = file1_->Path() + QDir::separator() + file1_->FileName();
    }
    // Listening just plays, each offered format with its own device type.
    const QString alias = QString::fromUtf16(kPreviewAlias);
    modMCI& mci = main_.mci();
    mci.MciStop(alias);
    mci.MciClose(alias);
    mci.MciOpen(file, alias, previewDeviceType(file));
    mci.MciPlay(alias);
}

void frmFile::cmdOK_Click() {
    if (importing_)
        return;
    const QString packageFolder = main_.PackageFolder;
    const QString indexFile = main_.IndexFilePath;
    // The colour chosen in the panel goes with every imported sound, as the properties store it.
    std::optional<std::int32_t> color;
    for (qsizetype i = 0; i < optColor_.size(); ++i) {
        if (optColor_[i]->isChecked())
            color = ChooseColor(static_cast<int>(i)).stored;
    }
    QList<ImportEntry> entries;
    for (int i = 0; i < lstImport_->count() && i < lstHidden_->count(); ++i)
        entries.append({lstHidden_->item(i)->text(), lstImport_->item(i)->text()});

    // The status window belongs to the main window; the dialog hands over to the main
    // window's own status once the reload starts.
    std::unique_ptr<frmStatus> status(new frmStatus(&main_));
    LocaliseWindow(status.get(), main_.language());
    status->ShowStatus(main_.language().GetLangString(28));
    ImportProgress progress;
    QPointer<frmStatus> statusWindow(status.get());
    progress.beforeCopy = [statusWindow](const QString& name) {
        if (statusWindow)
            statusWindow->ShowSecondLine(name);
    };
    progress.afterEntry = [] { QCoreApplication::processEvents(); };

    // Events run between the files: no second run may start and the dialog may not go away.
    importing_ = true;
    setEnabled(false);
    try {
        // All or nothing, index file included; a failure leaves the package as it was. Changes
        // another program made to the package are shown before the index is written over.
        const bool written = main_.WriteGuarded([&] {
            const QStringList keys = ImportSoundFiles(entries, packageFolder, main_.PackageIndex,
                                                      indexFile, progress, main_.HeldKeys(), color);
            QStringList names{QFileInfo(indexFile).fileName()};
            for (qsizetype i = 0; i < keys.size(); ++i)
                names << keys[i] + u'.' + ImportExtension(entries[i].Source);
            return names;
        });
        if (!written) {
            importing_ = false;
            setEnabled(true);
            return;
        }
    } catch (...) {
        importing_ = false;
        setEnabled(true);
        throw;
    }
    importing_ = false;
    setEnabled(true);
    status.reset();
    accept();

    main_.UnloadAudioFiles();
    main_.lsvPack()->ClearItems();
    main_.LoadPackage();
}

void frmFile::reject() {
    if (importing_)
        return;
    QDialog::reject();
}

bool frmFile::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        if (watched == file1_)
            previewSource_ = BrowseList;
        else if (watched == lstImport_)
            previewSource_ = ImportList;
    } else if (event->type() == QEvent::MouseButtonRelease &&
               optColor_.contains(qobject_cast<QRadioButton*>(watched))) {
        cmdColor_->setChecked(false);
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tavik
