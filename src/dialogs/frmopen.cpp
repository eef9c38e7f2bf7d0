#include "dialogs/frmopen.h"

#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "dialogs/filebrowsing.h"
#include "dialogs/packagescan.h"
#include "package/packagefolder.h"
#include "package/packagetext.h"
#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/lastpackage.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/filedialog.h"
#include "util/windowplacement.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace tavik {

namespace {

// A package picture is a preview: larger files or images are not worth the wait or memory.
constexpr qint64 kMaxPictureBytes = 32 * 1024 * 1024;
constexpr qint64 kMaxPicturePixels = 4096LL * 4096LL;
constexpr QSize kPictureArea(160, 120);

QString packageFile(const QString& folder, const char16_t* fixedName) {
    // The fixed names start with the separator as the program writes it.
    return folder + QDir::separator() + QString::fromUtf16(fixedName).mid(1);
}

} // namespace

frmOpen::frmOpen(frmMain& main)
    : QDialog(&main), main_(main), indexBefore_(main.PackageIndex), lstFile_(new QListWidget(this)),
      imgTitle_(new QLabel(this)), lblAutor_(new QLabel(this)),
      txtComment_(new QPlainTextEdit(this)),
      cmdOK_(new QPushButton(QStringLiteral("&Öffnen"), this)),
      cmdSearch_(new QPushButton(QStringLiteral("&Suchen..."), this)),
      cmdCancel_(new QPushButton(QStringLiteral("&Abbruch"), this)) {
    setObjectName(QStringLiteral("frmOpen"));
    setWindowTitle(QStringLiteral("Ansagepaket öffnen"));
    lstFile_->setObjectName(QStringLiteral("lstFile"));
    imgTitle_->setObjectName(QStringLiteral("imgTitle"));
    imgTitle_->setFixedSize(kPictureArea);
    imgTitle_->setAlignment(Qt::AlignCenter);
    lblAutor_->setObjectName(QStringLiteral("lblAutor"));
    txtComment_->setObjectName(QStringLiteral("txtComment"));
    txtComment_->setReadOnly(true);
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cmdSearch_->setObjectName(QStringLiteral("cmdSearch"));
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    cmdOK_->setEnabled(false);
    cmdOK_->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdSearch_);
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cmdCancel_);
    auto* layout = new QGridLayout(this);
    layout->addWidget(lstFile_, 0, 0, 3, 1);
    layout->addWidget(imgTitle_, 0, 1);
    layout->addWidget(lblAutor_, 1, 1);
    layout->addWidget(txtComment_, 2, 1);
    layout->addLayout(buttons, 3, 0, 1, 2);
    // Tab follows the layout: the list, its description, then the buttons from left to right.
    txtComment_->setTabChangesFocus(true);
    QWidget::setTabOrder(lstFile_, txtComment_);
    QWidget::setTabOrder(txtComment_, cmdSearch_);
    QWidget::setTabOrder(cmdSearch_, cmdOK_);
    QWidget::setTabOrder(cmdOK_, cmdCancel_);

    ApplyLanguage(this, objectName(), main_.language().LanguageFile);
    FollowLanguage(this, main_.language(), [this] {
        const Language& language = main_.language();
        lstFile_->setAccessibleName(language.GetLangString(LangText::NamePackageList));
        txtComment_->setAccessibleName(language.GetLangString(LangText::NamePackageComment));
    });
    setWindowIcon(main_.windowIcon());

    dataFolder_ = DataFolder();
    for (const PackageCandidate& package : ScanPackages(dataFolder_)) {
        lstFile_->addItem(package.Name);
        packageFolders_ << package.Folder;
        ++packageCount_;
    }

    connect(lstFile_, &QListWidget::itemSelectionChanged, this,
            [this] { RunHandler([this] { lstFile_Click(); }); });
    connect(cmdOK_, &QPushButton::clicked, this, [this] { RunHandler([this] { cmdOK_Click(); }); });
    connect(cmdSearch_, &QPushButton::clicked, this,
            [this] { RunHandler([this] { cmdSearch_Click(); }); });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);

    // The open package, else the one opened last, is highlighted: Enter opens it again.
    const int offered = IndexOfFolder(
        packageFolders_, main_.PackageFolder.isEmpty() ? ReadLastPackage() : main_.PackageFolder);
    if (offered >= 0)
        lstFile_->setCurrentRow(offered);
    lstFile_->setFocus();
    PlaceOnOwner(this, &main_);
}

frmOpen::~frmOpen() = default;

void frmOpen::LoadPic(const QString& path) {
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > kMaxPictureBytes)
        return;
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    if (!reader.canRead())
        return;
    const QSize size = reader.size();
    if (size.isValid() && qint64(size.width()) * size.height() > kMaxPicturePixels)
        return;
    if (size.isValid() && reader.supportsOption(QImageIOHandler::ScaledSize) &&
        (size.width() > kPictureArea.width() || size.height() > kPictureArea.height()))
        reader.setScaledSize(size.scaled(kPictureArea, Qt::KeepAspectRatio));
    QImage image;
    if (!reader.read(&image) || image.isNull())
        return;
    if (image.width() > kPictureArea.width() || image.height() > kPictureArea.height())
        image = image.scaled(kPictureArea, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    imgTitle_->setPixmap(QPixmap::fromImage(image));
}

void frmOpen::lstFile_Click() {
    const int row = lstFile_->currentRow();
    if (row < 0 || row >= packageFolders_.size())
        return;
    imgTitle_->clear();
    const QString folder = packageFolders_[row];
    main_.PackageIndex.OpenIOFile(IndexFileOf(folder));
    lblAutor_->setText(CStr(main_.PackageIndex.GetSetting(
        QString::fromUtf16(pkg::Info), QString::fromUtf16(pkg::Author), QString())));
    LoadPic(packageFile(folder, kPictureFileName));
    QString comment = ReadPackageDescription(packageFile(folder, kCommentFileName));
    // A text box ends its text at the first NUL character.
    const qsizetype nul = comment.indexOf(QChar(0));
    if (nul >= 0)
        comment.truncate(nul);
    txtComment_->setPlainText(comment);
    cmdOK_->setEnabled(true);
}

void frmOpen::cmdOK_Click() {
    const int row = lstFile_->currentRow();
    if (row < 0 || row >= packageFolders_.size())
        return;
    chosen_ = true;
    main_.PackageChosen = true;
    main_.PackageFolder = packageFolders_[row];
    main_.IndexFilePath = IndexFileOf(main_.PackageFolder);
    accept();
}

void frmOpen::cmdSearch_Click() {
    const QString path = ShowOpenDialog(this, PackagesDialogFolder(),
                                        LangTextOr(main_.language(), LangText::FindIndexFileTitle,
                                                   QStringLiteral("Indexdatei suchen")),
                                        LangTextOr(main_.language(), LangText::IndexFileFilter,
                                                   QString::fromUtf16(kIndexFileFilter)));
    if (path.isEmpty())
        return;
    chosen_ = true;
    main_.PackageChosen = true;
    main_.PackageFolder = FolderOfChosenFile(path);
    main_.IndexFilePath = QDir::toNativeSeparators(path);
    accept();
}

void frmOpen::done(int result) {
    // Listing and highlighting read other packages into the main window's index; without a
    // choice, the open package's index is put back so nothing of another package is saved
    // into it.
    if (!chosen_)
        main_.PackageIndex = indexBefore_;
    QDialog::done(result);
}

} // namespace tavik
