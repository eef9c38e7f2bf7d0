#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

class QLabel;
class QPushButton;
class QWidget;

namespace tavik {

class Language;

// Watches the boxes of a window whose texts go into a package or service file, whose texts
// are code page 1252. While any of them holds a character the code page cannot hold, a red
// note names each such character with its box and place, and the window's confirming
// commands stay refused; a button replaces them by the closest letters on the user's word.
class CodePageGuard : public QObject {
    Q_OBJECT
public:
    // The texts of one watched source: a box, or a list of texts (an import list).
    struct Source {
        std::function<QString()> name; // as the note names it: the box's caption
        std::function<QStringList()> texts;
        std::function<void(const QStringList&)> setTexts;
        // For a list: how the note names the text at an index; empty for a single box.
        std::function<QString(qsizetype)> itemName;
    };

    CodePageGuard(QWidget* window, const Language& language);

    // A text box (QLineEdit or QPlainTextEdit), named in the note by `caption`'s text.
    void watchBox(QWidget* box, QLabel* caption);
    // Any other texts; call refresh() when they change.
    void watch(Source source);

    // The red note ("lblCodePage") and the button ("cmdClosest") for the window's layout;
    // both hidden while every text holds.
    QLabel* note() const { return note_; }
    QPushButton* closestButton() const { return closest_; }

    // Whether every watched text holds in the code page.
    bool holds() const { return holds_; }
    // The note's text: each character the code page cannot hold, by box and place.
    QString problems() const;

public Q_SLOTS:
    void refresh();
    // Replaces every such character of every watched text by its closest letters.
    void replaceWithClosest();

Q_SIGNALS:
    // After every refresh: the window enables or refuses its confirming commands.
    void holdsChanged(bool holds);

private:
    const Language& language_;
    QList<Source> sources_;
    QLabel* note_;
    QPushButton* closest_;
    bool holds_ = true;
};

} // namespace tavik
