#include "app/frmmain.h"

#include "app/listcommands.h"
#include "app/tavikapplication.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QActionGroup>
#include <QHeaderView>
#include <QMenu>
#include <QUndoStack>

// How the list is sorted: the sort menu sorts every column as text, as designed; a click on a
// column header sorts keys and play times by their numbers. Both show the sort they made: the
// menu with its checks, the header with its indicator.

namespace tavik {

namespace {

constexpr std::int32_t kSortAscending = 500;
constexpr std::int32_t kSortDescending = 501;

// The columns whose cells are numbers: the key and the play time.
int headerSortType(int column) {
    return column == 0 || column == 3 ? lvw::NumberSort : lvw::TextSort;
}

QAction* makeCheckable(const char* name, const QString& caption, QMenu* menu, QActionGroup* group) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(QString::fromLatin1(name));
    action->setCheckable(true);
    group->addAction(action);
    return action;
}

} // namespace

void frmMain::buildSortMenu() {
    mnuSort_ = new QMenu(QStringLiteral("Sortieren"), this);
    mnuSort_->setObjectName(QStringLiteral("mnuSort"));
    // Optional: no entry is checked while the list keeps its own order.
    auto* columns = new QActionGroup(mnuSort_);
    columns->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    mnuIndex_ = makeCheckable("mnuIndex", QStringLiteral("nach &Index"), mnuSort_, columns);
    mnuTitel_ = makeCheckable("mnuTitel", QStringLiteral("nach &Titel"), mnuSort_, columns);
    mnuFormat_ = makeCheckable("mnuFormat", QStringLiteral("nach &Format"), mnuSort_, columns);
    mnuLenght_ = makeCheckable("mnuLenght", QStringLiteral("nach &Länge"), mnuSort_, columns);
    mnuSort_->addSeparator();
    auto* orders = new QActionGroup(mnuSort_);
    orders->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    mnuAscending_ = makeCheckable("mnuAscending", QStringLiteral("&Aufsteigend"), mnuSort_, orders);
    mnuDescending_ =
        makeCheckable("mnuDescending", QStringLiteral("A&bsteigend"), mnuSort_, orders);

    const QAction* sortEntries[] = {mnuIndex_, mnuTitel_, mnuFormat_, mnuLenght_};
    for (int column = 0; column < 4; ++column)
        connect(sortEntries[column], &QAction::triggered, this,
                [this, column] { RunHandler([this, column] { SortByColumn(column); }); });
    connect(mnuAscending_, &QAction::triggered, this,
            [this] { RunHandler([this] { SortInOrder(lvw::Ascending); }); });
    connect(mnuDescending_, &QAction::triggered, this,
            [this] { RunHandler([this] { SortInOrder(lvw::Descending); }); });

    lsvPack_->SetHeaderSorting(true);
    connect(lsvPack_->header(), &QHeaderView::sectionClicked, this,
            [this](int column) { RunHandler([this, column] { SortByHeader(column); }); });
    connect(lsvPack_, &ReportList::SortChanged, this, [this] { syncSortMenu(); });
    syncSortMenu();
}

void frmMain::applySortTexts() {
    mnuAscending_->setText(LangTextOr(language_, kSortAscending, QStringLiteral("&Aufsteigend")));
    mnuDescending_->setText(LangTextOr(language_, kSortDescending, QStringLiteral("A&bsteigend")));
}

void frmMain::syncSortMenu() {
    const ListSortState state = SortStateOf(lsvPack_);
    QAction* const columns[] = {mnuIndex_, mnuTitel_, mnuFormat_, mnuLenght_};
    for (int column = 0; column < 4; ++column)
        columns[column]->setChecked(state.sorted && state.column == column);
    mnuAscending_->setChecked(state.sorted && state.order == lvw::Ascending);
    mnuDescending_->setChecked(state.sorted && state.order == lvw::Descending);
    // A direction needs a column to sort.
    mnuAscending_->setEnabled(state.sorted);
    mnuDescending_->setEnabled(state.sorted);
}

void frmMain::pushSort(const ListSortState& after) {
    undoStack_->push(new SortCommand(
        *this, after, LangTextOr(language_, LangText::UndoSort, QStringLiteral("Sortieren"))));
}

void frmMain::SortByColumn(int column) {
    pushSort(NextSortState(SortStateOf(lsvPack_), column, lvw::TextSort));
}

void frmMain::SortByHeader(int column) {
    // Without a package there is nothing to sort; the indicator stays as the list sorts.
    if (!cmdSort_->isEnabled() || column < 0 || column > 3) {
        syncSortMenu();
        lsvPack_->SetSorted(lsvPack_->Sorted());
        return;
    }
    pushSort(NextSortState(SortStateOf(lsvPack_), column, headerSortType(column)));
}

void frmMain::SortInOrder(int order) {
    ListSortState state = SortStateOf(lsvPack_);
    if (!state.sorted || state.order == order) {
        syncSortMenu();
        return;
    }
    state.order = order;
    pushSort(state);
}

} // namespace tavik
