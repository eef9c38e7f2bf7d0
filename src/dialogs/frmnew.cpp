#include "frmnew.h"

#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "dialogs/filebrowsing.h"
#include "dialogs/newpackage.h"
#include "package/packagefolder.h"
#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/apppath.h"
#include "util/codepageguard.h"
#include "util/conversions.h"
#include "util/filedialog.h"
#include "util/fileops.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/windowplacement.h"
#include "util/zelcmd.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavik {

namespace {

constexpr char16_t kPictureTitle[] = u"Bild laden";
constexpr std::int32_t kAllPictures = 506;
constexpr char16_t kPictureFilter[] = u"JPEG Bild [*.jpg]|*.jpg|Bitmap Bild [*.bmp]|*.bmp|"
                                      u"Icon [*.ico]|*.ico|Alle Dateien [*.*]|*.*";

template <typename T> T* named(T* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QString filePath(const QString& folder, const char16_t* name) {
    return NativePath(folder + QString::fromUtf16(name));
}

} // namespace

frmNew::frmNew(frmMain& main)
    : QDialog(&main), main_(main),
      fraDir_(
          named(new QGroupBox(QStringLiteral("Kurzbezeichnung für Ordnernamen"), this), "fraDir")),
      fraInfo_(named(new QGroupBox(QStringLiteral("Paketinfos:"), this), "fraInfo")),
      txtDir_(named(new QLineEdit(fraDir_), "txtDir")),
      txtTitel_(named(new QLineEdit(fraInfo_), "txtTitel")),
      txtAutor_(named(new QLineEdit(fraInfo_), "txtAutor")),
      txtComment_(named(new QPlainTextEdit(fraInfo_), "txtComment")),
      txtPic_(named(new QLineEdit(fraInfo_), "txtPic")),
      lblTitel_(named(new QLabel(QStringLiteral("Titel:"), fraInfo_), "lblTitel")),
      lblAutor_(named(new QLabel(QStringLiteral("Autor:"), fraInfo_), "lblAutor")),
      lblComment_(named(new QLabel(QStringLiteral("Beschreibung:"), fraInfo_), "lblComment")),
      lblPic_(named(new QLabel(QStringLiteral("Logo (Bitmap, Jpeg, Icon):"), fraInfo_), "lblPic")),
      cmdPic_(named(new QPushButton(QStringLiteral("..."), fraInfo_), "cmdPic")),
      cmdClear_(named(new QPushButton(QStringLiteral("X"), fraInfo_), "cmdClear")),
      cmdOK_(named(new QPushButton(QStringLiteral("&OK"), this), "cmdOK")),
      cmdCancel_(named(new QPushButton(QStringLiteral("&Abbrechen"), this), "cmdCancel")) {
    setObjectName(QStringLiteral("frmNew"));
    setWindowTitle(QStringLiteral("Neues Ansagepaket"));
    buildControls();

    const std::pair<QPushButton*, void (frmNew::*)()> handlers[] = {
        {cmdPic_, &frmNew::cmdPic_Click},
        {cmdClear_, &frmNew::cmdClear_Click},
        {cmdOK_, &frmNew::cmdOK_Click},
        {cmdCancel_, &frmNew::cmdCancel_Click},
    };
    for (const auto& [button, handler] : handlers)
        connect(button, &QPushButton::clicked, this,
                [this, handler] { RunHandler([this, handler] { (this->*handler)(); }); });

    FormLoad();
    PlaceOnOwner(this, &main_);
}

void frmNew::buildControls() {
    auto* dirLayout = new QVBoxLayout(fraDir_);
    dirLayout->addWidget(txtDir_);

    auto* info = new QGridLayout(fraInfo_);
    info->addWidget(lblTitel_, 0, 0);
    info->addWidget(txtTitel_, 0, 1, 1, 3);
    info->addWidget(lblAutor_, 1, 0);
    info->addWidget(txtAutor_, 1, 1, 1, 3);
    info->addWidget(lblComment_, 2, 0, Qt::AlignTop);
    info->addWidget(txtComment_, 2, 1, 1, 3);
    info->addWidget(lblPic_, 3, 0, 1, 4);
    info->addWidget(txtPic_, 4, 0, 1, 2);
    info->addWidget(cmdPic_, 4, 2);
    info->addWidget(cmdClear_, 4, 3);
    lblTitel_->setBuddy(txtTitel_);
    lblAutor_->setBuddy(txtAutor_);
    lblComment_->setBuddy(txtComment_);
    lblPic_->setBuddy(txtPic_);
    cmdPic_->setToolTip(QStringLiteral("Bild auswählen"));
    cmdClear_->setToolTip(QStringLiteral("Bild entfernen"));
    for (QPushButton* small : {cmdPic_, cmdClear_})
        small->setMaximumWidth(small->fontMetrics().horizontalAdvance(QStringLiteral("MMM")) * 2);
    txtComment_->setTabChangesFocus(true);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cmdCancel_);
    cmdOK_->setDefault(true);

    // Title and author go into the index, the description into Package.txt: all code page
    // 1252, so what it cannot hold is shown while typing and OK waits until it is replaced.
    auto* guard = new CodePageGuard(this, main_.language());
    guard->watchBox(txtTitel_, lblTitel_);
    guard->watchBox(txtAutor_, lblAutor_);
    guard->watchBox(txtComment_, lblComment_);
    connect(guard, &CodePageGuard::holdsChanged, cmdOK_, &QPushButton::setEnabled);
    buttons->insertWidget(0, guard->closestButton());

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraDir_);
    layout->addWidget(fraInfo_);
    layout->addWidget(guard->note());
    layout->addLayout(buttons);
}

void frmNew::FormLoad() {
    ApplyLanguage(this, objectName(), main_.language().LanguageFile);
    // Editing the open package's details is no new package: the title says so.
    const bool details = !main_.newPackageMode;
    FollowLanguage(this, main_.language(), [this, details] {
        if (details)
            setWindowTitle(main_.language().GetLangString(LangText::PackageDetailsTitle));
    });
    setWindowIcon(main_.windowIcon());
    if (main_.newPackageMode)
        return;

    // Package information: the folder is shown, read-only in look as well.
    txtDir_->setEnabled(false);
    txtDir_->setText(GetFolderName());
    QPalette look = txtDir_->palette();
    look.setColor(QPalette::Base, palette().color(QPalette::Window));
    txtDir_->setPalette(look);
    txtTitel_->setText(CStr(main_.PackageIndex.GetSetting(
        QString::fromUtf16(pkg::Info), QString::fromUtf16(pkg::Name), QString())));
    txtAutor_->setText(CStr(main_.PackageIndex.GetSetting(
        QString::fromUtf16(pkg::Info), QString::fromUtf16(pkg::Author), QString())));
    txtComment_->setPlainText(ReadDescription(filePath(main_.PackageFolder, kCommentFileName)));
    shownDescription_ = txtComment_->toPlainText();
}

void frmNew::SaveTextToFile(const QString& text, const QString& path) {
    tavik::SaveTextToFile(text, path);
}

bool frmNew::CreateDir(const QString& path) {
    return tavik::CreateDir(path, [this] {
        MsgBox(this, main_.language().GetLangString(21), MsgButtons::OK, MsgIcon::Exclamation);
    });
}

QString frmNew::GetFolderName() const {
    return tavik::GetFolderName(main_.PackageFolder);
}

void frmNew::cmdPic_Click() {
    // A package still to be made has no folder yet; the open one's may hold its picture.
    const QString path = ShowOpenDialog(
        this, PackageDialogFolder(main_.newPackageMode ? QString() : main_.PackageFolder),
        LangTextOr(main_.language(), LangText::LoadPictureTitle, QString::fromUtf16(kPictureTitle)),
        PictureFilter(LangTextOr(main_.language(), kAllPictures, QStringLiteral("Alle Bilder")),
                      LangTextOr(main_.language(), LangText::PictureFilter,
                                 QString::fromUtf16(kPictureFilter)),
                      QImageReader::supportedImageFormats()));
    if (!path.isEmpty())
        txtPic_->setText(path);
}

void frmNew::cmdClear_Click() {
    txtPic_->clear();
}

void frmNew::cmdOK_Click() {
    const QString title = txtTitel_->text();
    const QString author = txtAutor_->text();
    const QString boxText = txtComment_->toPlainText();
    const QString picture = txtPic_->text();
    QString folder = NewPackageFolder(txtDir_->text());

    if (title.isEmpty() || author.isEmpty()) {
        MsgBox(this, main_.language().GetLangString(18), MsgButtons::OK, MsgIcon::Exclamation);
        return;
    }
    // The folder always starts with the program folder, so this never complains; an empty
    // folder name names the data folder itself, which then cannot be made.
    if (folder.isEmpty()) {
        MsgBox(this, main_.language().GetLangString(19), MsgButtons::OK, MsgIcon::Exclamation);
        return;
    }
    if (main_.newPackageMode && !createPackage(folder))
        return;

    // The box may show less than the file holds (a NUL ends it, a long file is read in part):
    // an unedited description is not written back.
    const QString description = WritesDescription(main_.newPackageMode, boxText, shownDescription_)
                                    ? DescriptionForFile(boxText)
                                    : QString();
    WritePackageInfo(main_.PackageIndex, main_.IndexFilePath, main_.PackageFolder,
                     {title, author, description, picture});

    main_.PackageChosen = true;
    main_.cmdSave()->setEnabled(true);
    accept();
}

bool frmNew::createPackage(const QString& folder) {
    switch (MakeNewPackageFolder(txtDir_->text(), folder)) {
    case NewPackageRefusal::None:
        break;
    case NewPackageRefusal::PackageThere:
        MsgBox(this, main_.language().GetLangString(20), MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    case NewPackageRefusal::FolderName:
    case NewPackageRefusal::FolderNotMade:
        MsgBox(this, main_.language().GetLangString(21), MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }

    main_.PackageFolder = folder;
    main_.IndexFilePath = filePath(main_.PackageFolder, kIndexFileName);
    // The new package starts from an empty index: what the store last read (an earlier
    // package, or one the open dialog listed) is no part of it.
    main_.PackageIndex = clsZELDB();
    main_.UnloadAudioFiles();
    main_.lsvPack()->ClearItems();
    main_.EnableServicButtons(true);
    return true;
}

void frmNew::cmdCancel_Click() {
    reject();
}

} // namespace tavik
