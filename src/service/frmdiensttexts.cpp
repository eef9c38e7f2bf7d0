// The service's texts as its file keeps them: what code page 1252 cannot hold, the ID that
// names the file, a changed ID's rename, and the name box that the file does not keep.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "service/servicerename.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/codepageguard.h"
#include "util/msgbox.h"
#include "util/runtimeerror.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QValidator>

namespace tavik {

namespace {

// Refuses, as typed, what cannot stand in a service file's name or in its text.
class ServiceIdValidator : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& input, int& /*pos*/) const override {
        return ServiceIdTypable(input) ? Acceptable : Invalid;
    }
};

QString shownPath(const QString& path) {
    return QDir::toNativeSeparators(QDir::cleanPath(path));
}

} // namespace

void frmDienst::buildTextGuards() {
    QWidget* page = picTab_[0];
    textGuard_ = new CodePageGuard(this, main_.language());
    const std::pair<QLineEdit*, const char*> boxes[] = {{txtTitle_, "lblTitle"},
                                                        {txtAutor_, "lblAutor"},
                                                        {txtComment_, "lblComment"},
                                                        {txtID_, "lblID"}};
    for (const auto& [box, caption] : boxes)
        textGuard_->watchBox(box, page->findChild<QLabel*>(QString::fromLatin1(caption)));
    connect(textGuard_, &CodePageGuard::holdsChanged, cmdSv_, &QWidget::setEnabled);
    if (auto* grid = qobject_cast<QGridLayout*>(page->layout())) {
        grid->addWidget(textGuard_->note(), 4, 0, 1, 3, Qt::AlignTop);
        if (auto* buttons = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(5, 0)->layout()))
            buttons->insertWidget(0, textGuard_->closestButton());
    }
    txtID_->setValidator(new ServiceIdValidator(txtID_));

    // The typed name shows in the list only: the file keeps the text built from the entries.
    FollowLanguage(this, main_.language(), [this] {
        const Language& language = main_.language();
        txtText_->setPlaceholderText(language.GetLangString(LangText::DisplayNamePlaceholder));
        txtText_->setToolTip(language.GetLangString(LangText::DisplayNameToolTip));
    });
}

bool frmDienst::textsHold() {
    textGuard_->refresh();
    if (textGuard_->holds())
        return true;
    MsgBox(
        this,
        main_.language().GetLangString(LangText::CodePageServiceNotSaved, textGuard_->problems()),
        MsgButtons::OK, MsgIcon::Exclamation);
    return false;
}

bool frmDienst::writeServiceFile(const QString& path) {
    const bool idChanged =
        !openedPath_.isEmpty() && QFileInfo::exists(openedPath_) &&
        QFileInfo(openedPath_).absoluteFilePath() != QFileInfo(path).absoluteFilePath();
    if (!idChanged) {
        SaveToFile(path);
        return true;
    }
    // The opened service's file would stay beside the new one, listed twice: the user says
    // whether this is a rename or a copy.
    const Language& language = main_.language();
    QString oldTitle, author, description, oldId;
    GetFileInfo(openedPath_, oldTitle, author, description);
    oldId = QFileInfo(openedPath_).fileName().mid(1).chopped(2);
    const MsgResult answer =
        MsgBox(this,
               language.GetLangString(LangText::RenameServiceQuestion, oldId, txtID_->text(),
                                      shownPath(openedPath_), shownPath(path)),
               MsgButtons::YesNo, MsgIcon::Question, {}, MsgResult::No);
    if (answer != MsgResult::Yes) {
        SaveToFile(path);
        return true;
    }
    // A rename removes the opened file: not over a change of another program's unseen.
    if (!mayWriteOver(openedPath_))
        return false;
    try {
        RenameServiceFile(openedPath_, path, [this](const QString& to) { SaveToFile(to); });
    } catch (const RuntimeError& error) {
        MsgBox(this, language.GetLangString(LangText::RenameServiceFailed, ErrorText(error)),
               MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    FindFiles();
    return true;
}

} // namespace tavik

namespace tavik {

void frmDienst::refuseTimeShift(const QString& typed) {
    MsgBox(this, main_.language().GetLangString(LangText::TimeShiftOutOfRange, typed),
           MsgButtons::OK, MsgIcon::Exclamation);
}

} // namespace tavik
