// The service editor's undo history, the checks before a save and the questions before
// unsaved changes would be lost.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "app/undomenu.h"
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/msgbox.h"
#include "util/packagelock.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"
#include "util/savequestion.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QUndoCommand>
#include <QUndoStack>

namespace tavik {

namespace {

// One change of the service: the whole service before and after. Services are small, and
// a whole copy cannot miss a field.
class ServiceChangeCommand : public QUndoCommand {
public:
    ServiceChangeCommand(frmDienst& editor, ServiceEditState before, ServiceEditState after,
                         int mergeId, const QString& text)
        : QUndoCommand(text), editor_(editor), before_(std::move(before)), after_(std::move(after)),
          mergeId_(mergeId) {}

    int id() const override { return mergeId_; }
    bool mergeWith(const QUndoCommand* other) override {
        if (other->id() != mergeId_)
            return false;
        after_ = static_cast<const ServiceChangeCommand*>(other)->after_;
        return true;
    }
    void undo() override { editor_.RestoreState(before_); }
    void redo() override {
        if (first_) {
            first_ = false;
            return;
        }
        editor_.RestoreState(after_);
    }

private:
    frmDienst& editor_;
    ServiceEditState before_;
    ServiceEditState after_;
    int mergeId_;
    bool first_ = true;
};

bool samePath(const QString& a, const QString& b) {
    return !a.isEmpty() && !b.isEmpty() &&
           QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

} // namespace

void frmDienst::buildEditMenu() {
    undoStack_ = new QUndoStack(this);
    const UndoMenu undoMenu = AddUndoMenu(*this, *undoStack_);
    QMenu* edit = undoMenu.menu;
    mnuUndo_ = undoMenu.undo;
    mnuRedo_ = undoMenu.redo;
    // Typing in one box is one step until another box or command is used.
    int mergeId = 1;
    for (QLineEdit* box : {txtTitle_, txtAutor_, txtComment_, txtID_})
        connect(box, &QLineEdit::textEdited, this, [this, id = mergeId++] { noteChange(id); });
    const auto relabel = [this, edit] {
        const Language& language = main_.language();
        edit->setTitle(LangTextOr(language, LangText::MenuEdit, QStringLiteral("Bea&rbeiten")));
        mnuUndo_->setText(LangTextOr(language, LangText::MenuUndo, QStringLiteral("&Rückgängig")));
        mnuRedo_->setText(
            LangTextOr(language, LangText::MenuRedo, QStringLiteral("&Wiederherstellen")));
        if (!windowTitle().contains(QStringLiteral("[*]")))
            setWindowTitle(windowTitle() + QStringLiteral("[*]"));
    };
    relabel();
    connect(this, &QWidget::windowTitleChanged, this, [relabel] { relabel(); });
}

ServiceEditState frmDienst::CaptureState() const {
    ServiceEditState state;
    state.header = {txtTitle_->text(), txtAutor_->text(), txtComment_->text(), txtID_->text()};
    for (int r = 1; r <= lsvDienst_->Count(); ++r) {
        ReportListItem* row = lsvDienst_->ListItems(r);
        state.rowKeys << row->Text();
        state.rowTexts << row->SubItems(1);
    }
    state.saetze = sentences.Saetze;
    state.satzCount = sentences.SatzCount;
    return state;
}

void frmDienst::RestoreState(const ServiceEditState& state) {
    restoring_ = true;
    QLineEdit* boxes[] = {txtTitle_, txtAutor_, txtComment_, txtID_};
    for (int i = 0; i < 4; ++i)
        boxes[i]->setText(state.header.value(i));
    lsvDienst_->ClearItems();
    for (qsizetype r = 0; r < state.rowKeys.size(); ++r) {
        ReportListItem* row = lsvDienst_->AddItem(state.rowKeys[r]);
        row->SetSubItems(1, state.rowTexts.value(r));
    }
    sentences.Saetze = state.saetze;
    sentences.SatzCount = state.satzCount;
    // A sentence half-edited on its page belongs to the state that is gone.
    if (CurrentPage() == 2) {
        NewSatzPending = false;
        ShowPage(1);
    }
    txtText_->clear();
    setServiceColumnWidth();
    lastState_ = state;
    restoring_ = false;
    refreshTimeline();
}

void frmDienst::noteChange(int mergeId) {
    if (restoring_ || !undoStack_)
        return;
    ServiceEditState now = CaptureState();
    if (now == lastState_)
        return;
    undoStack_->push(
        new ServiceChangeCommand(*this, lastState_, now, mergeId,
                                 LangTextOr(main_.language(), LangText::UndoServiceChange,
                                            QStringLiteral("Dienst ändern"))));
    lastState_ = std::move(now);
    refreshTimeline();
}

void frmDienst::startHistory() {
    undoStack_->clear();
    lastState_ = CaptureState();
    undoStack_->setClean();
}

bool frmDienst::MaySaveOrDiscard() {
    if (undoStack_->isClean())
        return true;
    const Language& language = main_.language();
    return SaveOrDiscard(
        this, language.GetLangString(LangText::UnsavedServiceQuestion, txtTitle_->text()),
        language.GetLangString(LangText::UnsavedChangesTitle), [this] { return SaveService(); });
}

bool frmDienst::SaveService() {
    const Language& language = main_.language();
    if (!textsHold())
        return false;
    // Only what would lead its file out of the package is refused in an ID; an empty ID gives
    // the name "_._".
    if (!IsServiceId(txtID_->text())) {
        MsgBox(this, language.GetLangString(LangText::ServiceIdRefused), MsgButtons::OK,
               MsgIcon::Exclamation);
        return false;
    }
    // A file without a sentence is one no reader takes, a sentence without entries one that
    // plays nothing and fails the check.
    bool everySentenceFilled = lsvDienst_->Count() > 0;
    for (int r = 1; r <= lsvDienst_->Count() && everySentenceFilled; ++r) {
        try {
            const std::int32_t i = sentences.SentenceIndex(lsvDienst_->ListItems(r)->Text());
            everySentenceFilled = !Saetze()[i].Targets.isEmpty();
        } catch (const RuntimeError&) {
            everySentenceFilled = false;
        }
    }
    if (!everySentenceFilled) {
        MsgBox(this, language.GetLangString(LangText::ServiceWithoutSentence), MsgButtons::OK,
               MsgIcon::Exclamation);
        return false;
    }
    if (txtTitle_->text().isEmpty() &&
        MsgBox(this, language.GetLangString(LangText::ServiceWithoutTitle), MsgButtons::YesNo,
               MsgIcon::Exclamation, {}, MsgResult::No) != MsgResult::Yes)
        return false;
    const QString path = ServicePath();
    if (QFileInfo::exists(path) && !samePath(path, openedPath_)) {
        QString title, author, description;
        GetFileInfo(path, title, author, description);
        if (MsgBox(this,
                   language.GetLangString(LangText::ServiceIdTaken,
                                          QDir::toNativeSeparators(QDir::cleanPath(path)), title),
                   MsgButtons::YesNo, MsgIcon::Question, {}, MsgResult::No) != MsgResult::Yes)
            return false;
    }
    try {
        // The check for another program's change and the write are one step to other writers.
        const PackageWriteLock lock(main_.PackageFolder);
        if (!mayWriteOver(path))
            return false;
        if (!writeServiceFile(path))
            return false;
    } catch (const RuntimeError& error) {
        MsgBox(this,
               language.GetLangString(LangText::ServiceNotSaved,
                                      QDir::toNativeSeparators(QDir::cleanPath(path)),
                                      ErrorText(error)),
               MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    setOpenedPath(path);
    undoStack_->setClean();
    return true;
}

} // namespace tavik
