#pragma once

#include <QHash>
#include <QString>
#include <QWidget>
#include <functional>

class QLabel;
class QLineEdit;
class QTimer;
class QTreeWidgetItem;

namespace tavik {

class ReportList;

// The search box above a list: rows whose key or title do not hold the typed text (without
// case and accents) are hidden while it is typed, and "n of N" says how many show. It only
// hides rows; the list, its order and everything saved from it stay whole.
class ListFilterBar : public QWidget {
    Q_OBJECT
public:
    ListFilterBar(ReportList* list, QWidget* parent);

    QLineEdit* box() const { return box_; }
    QLabel* countLabel() const { return count_; }
    // Whether the filter hides any row now.
    bool hidesRows() const { return hidden_ > 0; }
    int shownCount() const;
    // Ctrl+F: into the box with its text selected.
    void focusBox();
    // The texts of the program's language: the box's hint, the count of the rows shown of all
    // ("3 of 10"), the box's name.
    using CountText = std::function<QString(const QString& shown, const QString& all)>;
    void setTexts(const QString& placeholder, CountText countText, const QString& name);
    // Filters every row now (the box does it as the user types, the list as rows change).
    void apply();

Q_SIGNALS:
    // Rows became hidden, or all show again.
    void hidingChanged(bool hides);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Folded {
        QString source;
        QString folded;
    };
    void scheduleApply();
    void showCount();

    ReportList* list_;
    QLineEdit* box_;
    QLabel* count_;
    QTimer* again_;
    CountText countText_;
    // Folded key and title per row, kept while the row's texts stay the same.
    QHash<const QTreeWidgetItem*, Folded> folded_;
    int hidden_ = 0;
};

} // namespace tavik
