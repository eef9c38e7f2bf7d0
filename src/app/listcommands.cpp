#include "app/listcommands.h"

#include "app/frmmain.h"
#include "app/setasidefiles.h"
#include "audio/mcipackagesounds.h"
#include "audio/modmci.h"
#include "package/clszeldb.h"
#include "package/packageannouncements.h"
#include "package/packagefolder.h"
#include "util/apppath.h"
#include "util/fileops.h"
#include "util/reportlist.h"

#include <QFile>
#include <QFileInfo>
#include <QUndoStack>
#include <algorithm>

namespace tavik {

namespace {

ReportListItem* rowOf(const ReportList* list, const QString& key) {
    for (int i = 1; i <= list->Count(); ++i) {
        ReportListItem* row = list->ListItems(i);
        if (row->Text() == key)
            return row;
    }
    return nullptr;
}

// The record of `key` among the records in use, -1 when there is none (the table keeps a
// removed announcement's record only until the next load).
qsizetype recordOf(const AnnouncementTable& table, const QString& key) {
    for (qsizetype i = 0; i < table.AnnouncementCount && i < table.Announcements.size(); ++i) {
        if (table.Announcements[i].Key == key)
            return i;
    }
    return -1;
}

void select(ReportList* list, ReportListItem* row) {
    list->setCurrentItem(row, 0, QItemSelectionModel::NoUpdate);
    row->SetSelected(true);
}

// By neighbour swaps, as the arrow buttons move a row; the row stays selected.
void moveBySwaps(ReportList* list, int from, int to) {
    if (from < 1 || from > list->Count() || to < 1 || to > list->Count())
        return;
    select(list, list->ListItems(from));
    for (int i = from; i > to; --i)
        MoveRowUp(list);
    for (int i = from; i < to; ++i)
        MoveRowDown(list);
}

void placeAt(ReportList* list, ReportListItem* row, int place) {
    const int from = list->indexOfTopLevelItem(row);
    if (from < 0)
        return;
    const bool selected = row->isSelected();
    list->takeTopLevelItem(from);
    list->insertTopLevelItem(std::clamp(place - 1, 0, list->Count()), row);
    if (selected)
        select(list, row);
}

void reorder(ReportList* list, const QStringList& keys) {
    QList<QTreeWidgetItem*> selected = list->selectedItems();
    QList<QTreeWidgetItem*> rows = list->invisibleRootItem()->takeChildren();
    QList<QTreeWidgetItem*> ordered;
    ordered.reserve(rows.size());
    for (const QString& key : keys) {
        const auto it = std::find_if(rows.begin(), rows.end(), [&key](QTreeWidgetItem* row) {
            return static_cast<ReportListItem*>(row)->Text() == key;
        });
        if (it != rows.end()) {
            ordered << *it;
            rows.erase(it);
        }
    }
    ordered << rows; // rows the order does not know keep their order behind
    list->addTopLevelItems(ordered);
    for (QTreeWidgetItem* row : selected)
        row->setSelected(true);
}

void reopenSound(modMCI& mci, AnnouncementRecord& record) {
    if (!record.Opened || record.FilePath.isEmpty())
        return;
    QString path = record.FilePath;
    record.Opened = mci.MciOpen(path, record.Key, IndentifyFormat(GetExtension(path))) == -1;
}

} // namespace

ListSortState SortStateOf(const ReportList* list) {
    return {list->Sorted(), list->SortKey(), list->SortOrder(), list->SortType()};
}

void ApplySortState(ReportList* list, const ListSortState& state) {
    list->SetSorted(false);
    list->SetSortKey(state.column);
    list->SetSortOrder(state.order);
    list->SetSortType(state.type);
    list->SetSorted(state.sorted);
}

QStringList RowKeys(const ReportList* list) {
    QStringList keys;
    keys.reserve(list->Count());
    for (int i = 1; i <= list->Count(); ++i)
        keys << list->ListItems(i)->Text();
    return keys;
}

MoveRowCommand::MoveRowCommand(frmMain& main, int from, int to, const QString& text)
    : QUndoCommand(text), main_(main), from_(from), to_(to), before_(SortStateOf(main.lsvPack())) {}

void MoveRowCommand::redo() {
    main_.lsvPack()->SetSorted(false);
    moveBySwaps(main_.lsvPack(), from_, to_);
}

void MoveRowCommand::undo() {
    moveBySwaps(main_.lsvPack(), to_, from_);
    // The order before the move was the sorted one, so this moves no row.
    ApplySortState(main_.lsvPack(), before_);
}

SortCommand::SortCommand(frmMain& main, const ListSortState& after, const QString& text)
    : QUndoCommand(text), main_(main), before_(SortStateOf(main.lsvPack())), after_(after),
      order_(RowKeys(main.lsvPack())) {}

void SortCommand::redo() {
    ApplySortState(main_.lsvPack(), after_);
}

void SortCommand::undo() {
    ReportList* list = main_.lsvPack();
    list->SetSorted(false);
    reorder(list, order_);
    ApplySortState(list, before_);
}

AnnouncementLook LookOf(frmMain& main, const QString& key) {
    AnnouncementLook look;
    if (ReportListItem* row = rowOf(main.lsvPack(), key)) {
        look.title = row->SubItems(1);
        look.foreColor = row->ForeColor();
        look.bold = row->Bold();
    }
    const qsizetype index = recordOf(main.table, key);
    if (index >= 0) {
        const AnnouncementRecord& record = main.table.Announcements[index];
        look.nameVisible = record.NameVisible;
        look.autoPlace = record.AutoPlace;
        look.color = record.Color;
    }
    return look;
}

PropertiesCommand::PropertiesCommand(frmMain& main, const QString& key,
                                     const AnnouncementLook& before, const AnnouncementLook& after,
                                     int placeBefore, const QString& text)
    : QUndoCommand(text), main_(main), key_(key), before_(before), after_(after),
      placeBefore_(placeBefore) {}

void PropertiesCommand::apply(const AnnouncementLook& look, int place) {
    ReportList* list = main_.lsvPack();
    ReportListItem* row = rowOf(list, key_);
    if (!row)
        return;
    row->SetSubItems(1, look.title);
    row->SetForeColor(look.foreColor);
    row->SetBold(look.bold);
    const qsizetype index = recordOf(main_.table, key_);
    if (index >= 0) {
        AnnouncementRecord& record = main_.table.Announcements[index];
        record.Title = look.title;
        record.NameVisible = look.nameVisible;
        record.AutoPlace = look.autoPlace;
        record.Color = look.color;
    }
    if (place > 0)
        placeAt(list, row, place);
    else
        list->PlaceSorted(row); // the shown order stays the sorted one
}

void PropertiesCommand::redo() {
    apply(after_, placeAfter_);
    if (ReportListItem* row = rowOf(main_.lsvPack(), key_))
        placeAfter_ = row->Index();
}

void PropertiesCommand::undo() {
    apply(before_, placeBefore_);
}

RowsOutOfList::RowsOutOfList(frmMain& main, QList<int> places) : main_(main) {
    std::sort(places.begin(), places.end());
    for (int place : places)
        rows_ << Row{place, {}, {}, {}, {}};
}

void RowsOutOfList::take() {
    ReportList* list = main_.lsvPack();
    for (auto it = rows_.rbegin(); it != rows_.rend(); ++it) {
        Row& row = *it;
        ReportListItem* item = list->ListItems(row.place);
        row.key = item->Text();
        row.look = ReadListRow(item);
        row.look.Selected = false;
        const qsizetype index = recordOf(main_.table, row.key);
        if (index >= 0)
            row.record = main_.table.Announcements[index];
        row.file = main_.GetFileName(row.key);
        CloseAnnouncementSound(main_.mci(), row.key);
        try {
            // A key that is not a number has no file (""): the runtime's file-not-found error,
            // as for any announcement whose sound is missing, and the row stays.
            main_.WriteGuarded(
                [&] {
                    main_.setAsideFiles().put(row.file);
                    return QStringList{QFileInfo(row.file).fileName()};
                },
                false);
        } catch (...) {
            if (index >= 0)
                reopenSound(main_.mci(), main_.table.Announcements[index]);
            throw;
        }
        list->RemoveItem(row.place);
    }
}

void RowsOutOfList::giveBack() {
    ReportList* list = main_.lsvPack();
    AnnouncementTable& table = main_.table;
    for (Row& row : rows_) {
        if (main_.setAsideFiles().holds(row.file))
            main_.WriteGuarded(
                [&] {
                    main_.setAsideFiles().bringBack(row.file);
                    return QStringList{QFileInfo(row.file).fileName()};
                },
                false);
        ReportListItem* item = list->AddItem(row.key, {}, std::min(row.place, list->Count() + 1));
        WriteListRow(item, row.look);
        qsizetype index = recordOf(table, row.key);
        if (index < 0 && !row.record.Key.isEmpty()) {
            // A save since the removal has loaded the table without it.
            index = table.AnnouncementCount;
            if (table.Announcements.size() <= index)
                table.Announcements.resize(index + 1);
            table.Announcements[index] = row.record;
            table.AnnouncementCount = static_cast<std::int16_t>(index + 1);
            ForgetKeyIndex(table);
        }
        if (index >= 0)
            reopenSound(main_.mci(), table.Announcements[index]);
    }
}

RemoveRowsCommand::RemoveRowsCommand(frmMain& main, int place, const QString& text)
    : QUndoCommand(text), rows_(main, {place}) {}

void RemoveRowsCommand::takeNow() {
    rows_.take();
    done_ = true;
}

void RemoveRowsCommand::redo() {
    if (done_) {
        done_ = false;
        return;
    }
    rows_.take();
}

void RemoveRowsCommand::undo() {
    rows_.giveBack();
}

ImportCommand::ImportCommand(frmMain& main, QList<int> places, const QString& text)
    : QUndoCommand(text), rows_(main, std::move(places)) {}

void ImportCommand::redo() {
    if (first_) {
        first_ = false;
        return;
    }
    rows_.giveBack();
}

void ImportCommand::undo() {
    rows_.take();
}

namespace {

std::array<QString, 3> detailPaths(const QString& indexFile, const QString& folder) {
    return {indexFile, NativePath(folder + QString::fromUtf16(kCommentFileName)),
            NativePath(folder + QString::fromUtf16(kPictureFileName))};
}

} // namespace

std::optional<PackageDetailFiles> ReadPackageDetailFiles(const QString& indexFile,
                                                         const QString& folder) {
    PackageDetailFiles files;
    const auto paths = detailPaths(indexFile, folder);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        QFile file(paths[i]);
        if (!file.exists())
            continue;
        if (!OpenToRead(file))
            return std::nullopt;
        files[i] = file.readAll();
        if (file.error() != QFileDevice::NoError)
            return std::nullopt;
    }
    return files;
}

PackageDetailsCommand::PackageDetailsCommand(frmMain& main, const QString& indexFile,
                                             const QString& folder, PackageDetailFiles before,
                                             PackageDetailFiles after, const QString& text)
    : QUndoCommand(text), main_(main), indexFile_(indexFile), folder_(folder),
      before_(std::move(before)), after_(std::move(after)) {}

void PackageDetailsCommand::redo() {
    if (first_) {
        first_ = false;
        // The dialog has written already; the push itself moves off the saved state.
        if (main_.undoStack()->isClean())
            put(nullptr, true);
        return;
    }
    put(&after_, main_.undoStack()->isClean());
}

void PackageDetailsCommand::undo() {
    put(&before_, main_.undoStack()->isClean());
}

void PackageDetailsCommand::put(const PackageDetailFiles* files, bool staysSaved) {
    if (files) {
        const auto paths = detailPaths(indexFile_, folder_);
        main_.WriteGuarded(
            [&] {
                QStringList written;
                for (std::size_t i = 0; i < paths.size(); ++i) {
                    const std::optional<QByteArray>& bytes = (*files)[i];
                    if (bytes)
                        WriteFileAtomically(paths[i], *bytes);
                    else if (QFileInfo::exists(paths[i]))
                        Kill(paths[i]);
                    else
                        continue;
                    written << QFileInfo(paths[i]).fileName();
                }
                return written;
            },
            false);
        // A later Save writes the index from memory: it must hold what the file holds now.
        clsZELDB store;
        if (store.OpenIOFile(indexFile_))
            main_.PackageIndex = store;
    }
    if (staysSaved) {
        // The files are written as the step moves: the state it leads to is on disk. The stack
        // moves its index after this returns, so the mark follows then.
        QUndoStack* stack = main_.undoStack();
        QObject::connect(
            stack, &QUndoStack::indexChanged, stack, [stack] { stack->setClean(); },
            Qt::SingleShotConnection);
    }
}

} // namespace tavik
