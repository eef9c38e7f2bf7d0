// The search box above the package list: Ctrl+F finds it, and the moves rest while it hides
// rows, since a row moved among hidden ones would land where the user cannot see it.
#include "app/frmmain.h"
#include "app/listfilterbar.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QKeySequence>
#include <QLineEdit>

namespace tavik {

QWidget* frmMain::buildFilter(QWidget* parent) {
    filterBar_ = new ListFilterBar(lsvPack_, parent);
    auto* find = new QAction(this);
    find->setObjectName(QStringLiteral("mnuFind"));
    find->setShortcut(QKeySequence::Find);
    find->setShortcutContext(Qt::WindowShortcut);
    addAction(find);
    connect(find, &QAction::triggered, filterBar_, &ListFilterBar::focusBox);
    connect(filterBar_, &ListFilterBar::hidingChanged, this, [this] { applyMoveLock(); });
    setTabOrder(filterBar_->box(), lsvPack_);
    return filterBar_;
}

void frmMain::applyFilterTexts() {
    if (!filterBar_)
        return;
    filterBar_->setTexts(
        LangTextOr(language_, LangText::FilterHint,
                   QStringLiteral("Nach Schlüssel oder Titel filtern (Strg+F)")),
        [this](const QString& shown, const QString& all) {
            const QString text = language_.GetLangString(LangText::FilterCount, shown, all);
            return text.isEmpty() ? shown + QStringLiteral(" / ") + all : text;
        },
        LangTextOr(language_, LangText::FilterName, QStringLiteral("Filter")));
    applyMoveLock();
}

bool frmMain::filterHidesRows() const {
    return filterBar_ && filterBar_->hidesRows();
}

void frmMain::applyMoveLock() {
    const bool locked = filterHidesRows();
    // Enabled again only where the list itself allows moves (a package is loaded).
    const bool movable = cmdSort_ && cmdSort_->isEnabled();
    const QString why =
        locked ? LangTextOr(language_, LangText::FilterLocksMoves,
                            QStringLiteral("Verschieben ist aus, solange der Filter Zeilen "
                                           "verbirgt: Esc im Suchfeld leert ihn."))
               : QString();
    for (zelcmd* button : {cmdUp_, cmdDown_, cmdFUp_, cmdFDown_}) {
        if (!button)
            continue;
        button->setEnabled(movable && !locked);
        // A tip that is not the one set here was set since (a language change): it is the
        // button's own.
        if (button->toolTip() != button->property("filterTip").toString())
            button->setProperty("ownTip", button->toolTip());
        const QString tip = locked ? why : button->property("ownTip").toString();
        button->setToolTip(tip);
        button->setProperty("filterTip", tip);
    }
}

} // namespace tavik
