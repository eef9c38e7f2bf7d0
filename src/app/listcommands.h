#pragma once

#include "package/announcementrecord.h"
#include "util/listrows.h"
#include "util/sortvalue.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUndoCommand>

#include <array>
#include <optional>

namespace tavik {

class ReportList;
class frmMain;

// The undoable edits of the main window's announcement list. A command names rows by their
// announcement key and place, never by the row object: a save loads the list afresh, and the
// commands before it stay valid because the list then shows the same rows in the same order.

ListSortState SortStateOf(const ReportList* list);
// Sets the sort state without moving a row where the list is already in that state's order.
void ApplySortState(ReportList* list, const ListSortState& state);
// The row texts (announcement keys) from the first row to the last.
QStringList RowKeys(const ReportList* list);

// A row moved by neighbour swaps from one place to another (the arrow buttons). A move while
// the list is sorted ends the sort: the list then shows the order a save writes.
class MoveRowCommand : public QUndoCommand {
public:
    MoveRowCommand(frmMain& main, int from, int to, const QString& text);
    void undo() override;
    void redo() override;

private:
    frmMain& main_;
    int from_;
    int to_;
    ListSortState before_;
};

// A sort of the list (the sort menu, a column header): `after` is the sort it switches on.
class SortCommand : public QUndoCommand {
public:
    SortCommand(frmMain& main, const ListSortState& after, const QString& text);
    void undo() override;
    void redo() override;

private:
    frmMain& main_;
    ListSortState before_;
    ListSortState after_;
    QStringList order_;
};

// What the properties dialog changes of one announcement.
struct AnnouncementLook {
    QString title;
    quint32 foreColor = 0;
    bool bold = false;
    bool nameVisible = true;
    std::int32_t autoPlace = -1;
    std::int32_t color = 0;
    bool operator==(const AnnouncementLook&) const = default;
};

AnnouncementLook LookOf(frmMain& main, const QString& key);

// The properties dialog's change of one announcement, already made when pushed. While the
// list is sorted the row takes its sorted place.
class PropertiesCommand : public QUndoCommand {
public:
    PropertiesCommand(frmMain& main, const QString& key, const AnnouncementLook& before,
                      const AnnouncementLook& after, int placeBefore, const QString& text);
    void undo() override;
    void redo() override;

private:
    void apply(const AnnouncementLook& look, int place);

    frmMain& main_;
    QString key_;
    AnnouncementLook before_;
    AnnouncementLook after_;
    int placeBefore_;
    int placeAfter_ = 0;
};

// Rows that leave the list with their sound files (kept aside, so that they can come back)
// and come back at their places with their files, records and sounds.
class RowsOutOfList {
public:
    RowsOutOfList(frmMain& main, QList<int> places);
    // Takes the rows out, last place first. A file that cannot be set aside raises the
    // runtime's error; that row and the ones before it stay.
    void take();
    void giveBack();

private:
    struct Row {
        int place = 0;
        QString key;
        QString file;
        ListRowSnapshot look;
        AnnouncementRecord record;
    };
    frmMain& main_;
    QList<Row> rows_; // by place, ascending
};

// "Entfernen": one row and its file out of the list; the first redo is the removal itself.
class RemoveRowsCommand : public QUndoCommand {
public:
    RemoveRowsCommand(frmMain& main, int place, const QString& text);
    // Takes the row out now; raises the runtime's error when its file cannot be moved, and
    // then nothing has changed.
    void takeNow();
    void undo() override;
    void redo() override;

private:
    RowsOutOfList rows_;
    bool done_ = false;
};

// Sounds the import dialog added (already in the list when pushed): undo takes them out with
// their files, redo brings them back.
class ImportCommand : public QUndoCommand {
public:
    ImportCommand(frmMain& main, QList<int> places, const QString& text);
    void undo() override;
    void redo() override;

private:
    RowsOutOfList rows_;
    bool first_ = true;
};

// The bytes of the package files the details dialog ("Daten") may write: the index, the
// description and the picture, in that order; no value for a file that does not exist.
using PackageDetailFiles = std::array<std::optional<QByteArray>, 3>;

// Nothing when a file exists but cannot be read.
std::optional<PackageDetailFiles> ReadPackageDetailFiles(const QString& indexFile,
                                                         const QString& folder);

// One confirmation of the details dialog, already written when pushed. Undo and redo write
// the files back at once, so the step is saved as it happens: when it starts or ends at the
// saved state, the state it leads to is the saved state too.
class PackageDetailsCommand : public QUndoCommand {
public:
    PackageDetailsCommand(frmMain& main, const QString& indexFile, const QString& folder,
                          PackageDetailFiles before, PackageDetailFiles after, const QString& text);
    void undo() override;
    void redo() override;

private:
    // Writes `files` (none: nothing to write) and, when the step starts from the saved state,
    // keeps the state it leads to marked saved.
    void put(const PackageDetailFiles* files, bool staysSaved);

    frmMain& main_;
    QString indexFile_;
    QString folder_;
    PackageDetailFiles before_;
    PackageDetailFiles after_;
    bool first_ = true;
};

} // namespace tavik
