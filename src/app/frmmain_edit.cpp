#include "app/frmmain.h"

#include "app/listcommands.h"
#include "app/setasidefiles.h"
#include "app/tavikapplication.h"
#include "app/undomenu.h"
#include "dialogs/frmsetting.h"
#include "dialogs/packagecommands.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "service/serviceuses.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/apppath.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"
#include "util/savequestion.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QSet>
#include <QUndoStack>

// The main window's undoable edits of the list, Save, and the questions before unsaved
// changes would be lost.

namespace tavik {

namespace {

// The keys the index file on disk lists; none when it cannot be read.
QSet<QString> keysOnDisk(const QString& indexFile) {
    QSet<QString> keys;
    if (indexFile.isEmpty())
        return keys;
    try {
        clsZELDB store;
        if (!store.OpenIOFile(indexFile))
            return keys;
        for (const IndexEntry& entry : ReadShownEntries(store))
            keys.insert(entry.Key);
    } catch (const RuntimeError&) {
    }
    return keys;
}

} // namespace

void frmMain::buildEditMenu() {
    undoStack_ = new QUndoStack(this);
    setAside_ = std::make_unique<SetAsideFiles>();
    const UndoMenu edit = AddUndoMenu(*this, *undoStack_);
    mnuEdit_ = edit.menu;
    mnuUndo_ = edit.undo;
    mnuRedo_ = edit.redo;
    // The menu names the step it undoes or redoes.
    connect(undoStack_, &QUndoStack::undoTextChanged, this, [this] { ApplyEditTexts(); });
    connect(undoStack_, &QUndoStack::redoTextChanged, this, [this] { ApplyEditTexts(); });
    // The language file's caption replaces the title: the mark's place comes back with it.
    connect(this, &QWidget::windowTitleChanged, this, [this] { ApplyEditTexts(); });
    ApplyEditTexts();
}

void frmMain::ApplyEditTexts() {
    const auto text = [this](std::int32_t number, const QString& designed) {
        return LangTextOr(language_, number, designed);
    };
    mnuEdit_->setTitle(text(LangText::MenuEdit, QStringLiteral("Bea&rbeiten")));
    const auto label = [](const QString& caption, const QString& what) {
        return what.isEmpty() ? caption : caption + u' ' + what;
    };
    mnuUndo_->setText(
        label(text(LangText::MenuUndo, QStringLiteral("&Rückgängig")), undoStack_->undoText()));
    mnuRedo_->setText(label(text(LangText::MenuRedo, QStringLiteral("&Wiederherstellen")),
                            undoStack_->redoText()));
    applyFilterTexts();
    if (!windowTitle().contains(QStringLiteral("[*]")))
        setWindowTitle(windowTitle() + QStringLiteral("[*]"));
}

void frmMain::noteLoadedPackage() {
    ++loads_;
    if (IndexFilePath == listIndexPath_)
        return;
    closeEditedPackage();
    listIndexPath_ = IndexFilePath;
}

void frmMain::closeEditedPackage() {
    if (setAside_ && !setAside_->paths().isEmpty()) {
        // A removal the package on disk still lists was never saved: its file goes back.
        const QSet<QString> listed = keysOnDisk(listIndexPath_);
        setAside_->settle([&listed](const QString& path) {
            return listed.contains(QFileInfo(path).fileName().section(u'.', 0, 0));
        });
    }
    if (undoStack_)
        undoStack_->clear();
}

bool frmMain::MaySaveOrDiscard() {
    if (undoStack_->isClean())
        return true;
    const QString name = QFileInfo(QDir::fromNativeSeparators(PackageFolder)).fileName();
    return SaveOrDiscard(this, language_.GetLangString(LangText::UnsavedListQuestion, name),
                         language_.GetLangString(LangText::UnsavedChangesTitle),
                         [this] { return SavePackage(); });
}

bool frmMain::SavePackage() {
    const QString target = IndexFilePath;
    // The list belongs to the package it was loaded from (or made with): never another one.
    if (target.isEmpty() || target != listIndexPath_) {
        MsgBox(this,
               language_.GetLangString(LangText::PackageNotSaved,
                                       QDir::toNativeSeparators(QDir::cleanPath(target)),
                                       ErrorText(RuntimeError(rt::PathNotFound))),
               MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    try {
        SavePackageList();
        // Under the package's lock; changes other programs made since the load are shown
        // first, and a reload or Cancel there writes nothing.
        if (!WriteGuarded([&] {
                PackageIndex.SaveIOFile(target);
                return QStringList{QFileInfo(target).fileName()};
            }))
            return false;
    } catch (const RuntimeError& error) {
        MsgBox(this,
               language_.GetLangString(LangText::PackageNotSaved,
                                       QDir::toNativeSeparators(QDir::cleanPath(target)),
                                       ErrorText(error)),
               MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    UnloadAudioFiles();
    lsvPack_->ClearItems();
    LoadPackage();
    undoStack_->setClean();
    return true;
}

void frmMain::cmdSave_Click() {
    SavePackage();
}

void frmMain::cmdRemove_Click() {
    ReportListItem* row = lsvPack_->SelectedItem();
    if (!row)
        return;
    const QString key = row->Text();
    const QString file = QFileInfo(GetFileName(key)).fileName();
    if (MsgBox(this,
               language_.GetLangString(LangText::RemoveNamedQuestion, key, row->SubItems(1),
                                       file.isEmpty() ? QStringLiteral("-") : file) +
                   ServiceUsesParagraph(language_, FindServiceUses(PackageFolder, key)),
               MsgButtons::YesNo, MsgIcon::Question, {}, MsgResult::No) == MsgResult::No)
        return;
    auto command = std::make_unique<RemoveRowsCommand>(
        *this, row->Index(),
        LangTextOr(language_, LangText::UndoRemove, QStringLiteral("Entfernen")));
    command->takeNow();
    undoStack_->push(command.release());
}

void frmMain::moveSelectedRow(int to) {
    const ReportListItem* row = lsvPack_->SelectedItem();
    // A move among hidden rows would land where the user cannot see it.
    if (!row || filterHidesRows())
        return;
    const int from = row->Index();
    to = std::clamp(to, 1, lsvPack_->Count());
    if (from == to)
        return;
    undoStack_->push(new MoveRowCommand(
        *this, from, to, LangTextOr(language_, LangText::UndoMove, QStringLiteral("Verschieben"))));
}

void frmMain::cmdUp_Click() {
    if (const ReportListItem* row = lsvPack_->SelectedItem())
        moveSelectedRow(row->Index() - 1);
}

void frmMain::cmdDown_Click() {
    if (const ReportListItem* row = lsvPack_->SelectedItem())
        moveSelectedRow(row->Index() + 1);
}

void frmMain::cmdFUp_Click() {
    moveSelectedRow(1);
}

void frmMain::cmdFDown_Click() {
    moveSelectedRow(lsvPack_->Count());
}

void frmMain::lsvPack_DblClick() {
    ReportListItem* row = lsvPack_->SelectedItem();
    if (!row)
        return;
    RunHandler([this, row] {
        const QString key = row->Text();
        const int place = row->Index();
        AnnouncementLook before = LookOf(*this, key);
        int result = QDialog::Rejected;
        {
            frmSetting dialog(*this);
            dialog.txtTitle()->setText(row->SubItems(1));
            result = dialog.exec();
        }
        if (result != QDialog::Accepted)
            return;
        const AnnouncementLook after = LookOf(*this, key);
        if (after == before)
            return;
        undoStack_->push(new PropertiesCommand(
            *this, key, before, after, place,
            LangTextOr(language_, LangText::UndoProperties, QStringLiteral("Eigenschaften"))));
    });
}

void frmMain::cmdAdd_Click() {
    ImportSounds();
}

void frmMain::ImportSounds(const QStringList& files) {
    const QStringList before = RowKeys(lsvPack_);
    const int loadsBefore = loads_;
    // The import saves the index: with it goes the list as shown, so that the reload shows
    // it again with the new sounds behind. A saved list is what the index holds already, and
    // the file stays the one the tool's import makes.
    const clsZELDB stored = PackageIndex;
    const bool ownPackage = !IndexFilePath.isEmpty() && IndexFilePath == listIndexPath_;
    if (ownPackage && !undoStack_->isClean())
        SavePackageList();
    const auto settle = [&] {
        if (loads_ == loadsBefore) {
            PackageIndex = stored; // nothing was written
            return;
        }
        const QStringList after = RowKeys(lsvPack_);
        QList<int> places;
        for (int i = 0; i < after.size(); ++i) {
            if (!before.contains(after[i]))
                places << i + 1;
        }
        if (!places.isEmpty())
            undoStack_->push(new ImportCommand(
                *this, places,
                LangTextOr(language_, LangText::UndoImport, QStringLiteral("Importieren"))));
    };
    try {
        ShowImportDialog(*this, files);
    } catch (...) {
        settle();
        throw;
    }
    settle();
    if (loads_ != loadsBefore && ownPackage)
        undoStack_->setClean();
}

} // namespace tavik
