#include "app/listfilterbar.h"

#include "util/reportlist.h"
#include "util/searchfold.h"

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

namespace tavik {

ListFilterBar::ListFilterBar(ReportList* list, QWidget* parent)
    : QWidget(parent), list_(list), box_(new QLineEdit(this)), count_(new QLabel(this)),
      again_(new QTimer(this)) {
    setObjectName(QStringLiteral("picFilter"));
    box_->setObjectName(QStringLiteral("txtFilter"));
    box_->setClearButtonEnabled(true);
    count_->setObjectName(QStringLiteral("lblFilterCount"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(box_, 1);
    layout->addWidget(count_);
    box_->installEventFilter(this);
    connect(box_, &QLineEdit::textChanged, this, [this] { apply(); });
    // Rows that come, go or change while a filter is typed are filtered once the list is
    // still, not once per row of a load.
    again_->setSingleShot(true);
    again_->setInterval(0);
    connect(again_, &QTimer::timeout, this, [this] { apply(); });
    QAbstractItemModel* model = list_->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, [this] { scheduleApply(); });
    connect(model, &QAbstractItemModel::rowsRemoved, this, [this] { scheduleApply(); });
    connect(model, &QAbstractItemModel::dataChanged, this, [this] { scheduleApply(); });
    connect(model, &QAbstractItemModel::modelReset, this, [this] { scheduleApply(); });
    showCount();
}

int ListFilterBar::shownCount() const {
    return list_->Count() - hidden_;
}

void ListFilterBar::focusBox() {
    box_->setFocus(Qt::ShortcutFocusReason);
    box_->selectAll();
}

void ListFilterBar::setTexts(const QString& placeholder, CountText countText, const QString& name) {
    box_->setPlaceholderText(placeholder);
    box_->setToolTip(placeholder);
    box_->setAccessibleName(name);
    count_->setAccessibleName(name);
    countText_ = std::move(countText);
    showCount();
}

void ListFilterBar::scheduleApply() {
    if (!box_->text().isEmpty() || hidden_ > 0)
        again_->start();
}

void ListFilterBar::apply() {
    again_->stop();
    const QString needle = FoldForSearch(box_->text().trimmed());
    const bool hidBefore = hidden_ > 0;
    const int rows = list_->Count();
    int hidden = 0;
    QHash<const QTreeWidgetItem*, Folded> kept;
    if (!needle.isEmpty())
        kept.reserve(rows);
    for (int r = 0; r < rows; ++r) {
        QTreeWidgetItem* row = list_->topLevelItem(r);
        bool match = true;
        if (!needle.isEmpty()) {
            // Key and title, the two columns a user names an announcement by.
            QString source = row->text(0);
            source += u'\n';
            source += row->text(1);
            auto found = folded_.constFind(row);
            Folded entry = found != folded_.cend() && found->source == source
                               ? *found
                               : Folded{source, FoldForSearch(source)};
            match = entry.folded.contains(needle);
            kept.insert(row, std::move(entry));
        }
        if (row->isHidden() == match)
            row->setHidden(!match);
        // A hidden row is never the one that Play, Remove or Details act on.
        if (!match && row->isSelected())
            row->setSelected(false);
        hidden += match ? 0 : 1;
    }
    folded_ = std::move(kept);
    hidden_ = hidden;
    showCount();
    if (hidBefore != (hidden_ > 0))
        Q_EMIT hidingChanged(hidden_ > 0);
}

void ListFilterBar::showCount() {
    if (box_->text().trimmed().isEmpty()) {
        count_->clear();
        return;
    }
    const QString shown = QString::number(shownCount());
    const QString all = QString::number(list_->Count());
    count_->setText(countText_ ? countText_(shown, all) : shown + u'/' + all);
}

bool ListFilterBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == box_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && !box_->text().isEmpty()) {
        box_->clear();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tavik
