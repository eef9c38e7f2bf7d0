#include "frmabout.h"

#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "shell/clicklabel.h"
#include "shell/frmsplash.h"
#include "shell/productinfo.h"
#include "util/cp1252.h"
#include "util/fileops.h"
#include "util/windowplacement.h"

#include <QDesktopServices>
#include <QFile>
#include <QGridLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>

namespace tavik {

namespace {

// The information text, read whole; any error leaves it empty. Huge files are cut: the box
// shows a short text.
QString readInfoText(const QString& path) {
    constexpr qint64 kMaxInfo = 1 << 20;
    QFile file(path);
    if (path.isEmpty() || !OpenToRead(file))
        return {};
    return fromCp1252(file.read(kMaxInfo));
}

} // namespace

frmAbout::frmAbout(const Language& language, QWidget* parent)
    : QDialog(parent), picture_(new QLabel(this)), lblVersion_(new QLabel(this)),
      txtInfo_(new QPlainTextEdit(this)), cmdOK_(new QPushButton(QStringLiteral("OK"), this)),
      label2_(new ClickLabel(QStringLiteral("Homepage"), this)),
      lblURL_(new ClickLabel(QStringLiteral("E-Mail an den Autor"), this)) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("Info"));
    picture_->setObjectName(QStringLiteral("picLogo"));
    lblVersion_->setObjectName(QStringLiteral("lblVersion"));
    txtInfo_->setObjectName(QStringLiteral("txtInfo"));
    txtInfo_->setReadOnly(true);
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    label2_->setObjectName(QStringLiteral("Label2"));
    lblURL_->setObjectName(QStringLiteral("lblURL"));
    for (QLabel* link : {static_cast<QLabel*>(label2_), static_cast<QLabel*>(lblURL_)})
        link->setCursor(Qt::PointingHandCursor);

    auto* layout = new QGridLayout(this);
    layout->addWidget(picture_, 0, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(lblVersion_, 0, 1);
    layout->addWidget(txtInfo_, 1, 1);
    auto* links = new QHBoxLayout;
    links->addWidget(label2_);
    links->addWidget(lblURL_);
    links->addStretch();
    links->addWidget(cmdOK_);
    layout->addLayout(links, 2, 1);

    ApplyLanguage(this, objectName(), language.LanguageFile);
    FollowLanguage(this, language, [this, &language] {
        txtInfo_->setAccessibleName(language.GetLangString(LangText::NameAboutText));
    });
    picture_->setPixmap(ProductPicture(language));
    lblVersion_->setText(ProgramVersionLine());
    txtInfo_->setPlainText(readInfoText(language.GetLangFile(4)));

    connect(cmdOK_, &QPushButton::clicked, this, &QDialog::accept);
    const QString readme = language.GetLangFile(6);
    connect(label2_, &ClickLabel::clicked, this,
            [readme] { QDesktopServices::openUrl(QUrl::fromLocalFile(readme)); });
    connect(lblURL_, &ClickLabel::clicked, this,
            [] { QDesktopServices::openUrl(QUrl(MailLink(QString::fromUtf16(kAuthorMail)))); });
    PlaceOnOwner(this, parent);
}

} // namespace tavik
