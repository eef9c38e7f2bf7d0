// Every window in either language: each text it shows comes from the language file, access keys
// are unique, every control has a name for assistive technology, and a change of language
// reaches every open window and Qt's own texts.
#include "settings/everywindow.h"

#include "settings/followlanguage.h"
#include "settings/language.h"
#include "settings/qttranslation.h"
#include "shell/productinfo.h"
#include "util/cp1252.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabBar>
#include <QTreeWidget>
#include <gtest/gtest.h>
#include <map>

using namespace tavik;
using namespace tavik::test;

namespace {

// Every text a language file can put on screen: captions and tool tips of its window sections
// and its numbered texts (those with arguments as patterns). Header and file names are not
// shown as words.
class LanguageWords {
public:
    explicit LanguageWords(const QString& path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return;
        QString section;
        for (QString line :
             fromCp1252(file.readAll()).split(QRegularExpression(QStringLiteral("\r?\n")))) {
            line = line.trimmed();
            if (line.isEmpty() || line.startsWith(QLatin1Char(';')))
                continue;
            if (line.startsWith(QLatin1Char('['))) {
                section = line.mid(1, line.indexOf(QLatin1Char(']')) - 1).trimmed();
                continue;
            }
            const qsizetype eq = line.indexOf(QLatin1Char('='));
            if (eq < 0)
                continue;
            const QString value = line.mid(eq + 1).trimmed();
            if (section == QStringLiteral("_Language") || section == QStringLiteral("_Files"))
                continue;
            if (section == QStringLiteral("_String")) {
                addNumbered(QString(value).replace(QStringLiteral("&_"), QStringLiteral("\r\n")));
                continue;
            }
            const ControlText text = ParseControlText(value);
            words_.insert(text.caption);
            if (text.hasToolTip)
                words_.insert(text.toolTip);
        }
    }

    bool supplies(const QString& text) const {
        if (words_.contains(text))
            return true;
        for (const QRegularExpression& pattern : patterns_)
            if (pattern.match(text).hasMatch())
                return true;
        return false;
    }

    qsizetype size() const { return words_.size() + patterns_.size(); }

private:
    void addNumbered(const QString& text) {
        static const QRegularExpression argument(QStringLiteral("%[1-5]"));
        if (!text.contains(argument)) {
            words_.insert(text);
            return;
        }
        // Each literal part escaped on its own: escaping the whole would escape the "%" too.
        QStringList parts;
        for (const QString& part : text.split(argument))
            parts << QRegularExpression::escape(part);
        const QString pattern = parts.join(QStringLiteral(".*"));
        patterns_ << QRegularExpression(QStringLiteral("\\A") + pattern + QStringLiteral("\\z"),
                                        QRegularExpression::DotMatchesEverythingOption);
    }

    QSet<QString> words_;
    QList<QRegularExpression> patterns_;
};

struct ShownText {
    QString where;
    QString text;
};

QString nameOf(const QObject* o) {
    return o->objectName().isEmpty() ? QString::fromLatin1(o->metaObject()->className())
                                     : o->objectName();
}

// Whether `w` is part of `window`: its own controls, and the pop-up menus it owns.
bool belongsTo(const QWidget* w, const QWidget* window) {
    if (w->window() == window)
        return true;
    return qobject_cast<const QMenu*>(w) && w->parentWidget() &&
           w->parentWidget()->window() == window;
}

QList<QWidget*> controlsOf(QWidget* window) {
    QList<QWidget*> controls;
    for (QWidget* w : window->findChildren<QWidget*>())
        if (belongsTo(w, window))
            controls << w;
    return controls;
}

// A text without a letter (a number, "...", a path sign) is no word of any language.
bool isWord(const QString& text) {
    for (const QChar c : text)
        if (c.isLetter())
            return true;
    return false;
}

// The texts a window shows as words of its own: title, captions, tool tips, tabs, column
// headers, menus and fixed drop-down entries. What the user typed or the package holds (text
// boxes, list rows) is data.
QList<ShownText> wordsShownBy(QWidget* window) {
    QList<ShownText> shown;
    const QString windowName = nameOf(window);
    auto add = [&](const QObject* o, const QString& what, const QString& text) {
        if (isWord(text))
            shown.append(
                {windowName + QStringLiteral("/") + nameOf(o) + QStringLiteral(" ") + what, text});
    };
    // The place of the unsaved-changes mark is not shown: the system shows "*" or nothing.
    add(window, QStringLiteral("title"),
        QString(window->windowTitle()).remove(QStringLiteral("[*]")));
    for (QWidget* w : controlsOf(window)) {
        add(w, QStringLiteral("tool tip"), w->toolTip());
        if (auto* label = qobject_cast<QLabel*>(w))
            add(w, QStringLiteral("caption"), label->text());
        else if (auto* button = qobject_cast<QAbstractButton*>(w))
            add(w, QStringLiteral("caption"), button->text());
        else if (auto* frame = qobject_cast<QGroupBox*>(w))
            add(w, QStringLiteral("caption"), frame->title());
        else if (auto* tabs = qobject_cast<QTabBar*>(w)) {
            for (int i = 0; i < tabs->count(); ++i)
                add(w, QStringLiteral("tab"), tabs->tabText(i));
        } else if (auto* list = qobject_cast<QTreeWidget*>(w)) {
            for (int c = 0; !list->isHeaderHidden() && c < list->columnCount(); ++c)
                if (!list->isColumnHidden(c) && list->columnWidth(c) > 0)
                    add(w, QStringLiteral("column"), list->headerItem()->text(c));
        } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
            for (int i = 0; i < combo->count(); ++i) {
                // File patterns and drives are names of things, not words.
                const QString entry = combo->itemText(i);
                if (!entry.contains(QRegularExpression(QStringLiteral("[*/\\\\:]"))))
                    add(w, QStringLiteral("entry"), entry);
            }
        } else if (auto* menu = qobject_cast<QMenu*>(w)) {
            add(w, QStringLiteral("title"), menu->title());
            for (const QAction* action : menu->actions())
                add(action, QStringLiteral("entry"), action->text());
        } else if (auto* bar = qobject_cast<QMenuBar*>(w)) {
            for (const QAction* action : bar->actions())
                add(action, QStringLiteral("entry"), action->text());
        } else if (auto* box = qobject_cast<QLineEdit*>(w)) {
            add(w, QStringLiteral("placeholder"), box->placeholderText());
        }
    }
    return shown;
}

class EveryWindowIn : public ::testing::TestWithParam<const char*> {
protected:
    QString languageFile() const { return QString::fromLatin1(GetParam()); }
};

} // namespace

TEST_P(EveryWindowIn, ShowsOnlyTextsTheLanguageFileSupplies) {
    EveryWindow all(languageFile());
    ASSERT_TRUE(all.started);
    const LanguageWords words(all.editor.language.LanguageFile);
    ASSERT_GT(words.size(), 100) << "the language file was not read";
    int checked = 0;
    for (QWidget* window : all.windows()) {
        ASSERT_NE(window, nullptr);
        for (const ShownText& shown : wordsShownBy(window)) {
            ++checked;
            if (all.dataTexts.contains(shown.text) || shown.text == ProgramVersionLine())
                continue;
            EXPECT_TRUE(words.supplies(shown.text))
                << shown.where.toStdString() << " shows \"" << shown.text.toStdString()
                << "\", which " << GetParam() << " does not supply";
        }
    }
    EXPECT_GT(checked, 150);
}

namespace {

// The access key a caption marks, in lower case; none for a caption without one ("&&" is a
// plain "&").
QChar accessKeyOf(const QString& caption) {
    for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != QLatin1Char('&'))
            continue;
        if (caption[i + 1] == QLatin1Char('&')) {
            ++i;
            continue;
        }
        return caption[i + 1].toLower();
    }
    return {};
}

// Access keys of the controls of `window` that are on screen together, with where each is.
std::map<QChar, QStringList> accessKeysShownBy(QWidget* window) {
    std::map<QChar, QStringList> keys;
    auto add = [&](const QObject* o, const QString& caption) {
        if (const QChar key = accessKeyOf(caption); !key.isNull())
            keys[key] << nameOf(o) + QStringLiteral(" \"") + caption + QStringLiteral("\"");
    };
    for (QWidget* w : controlsOf(window)) {
        if (!w->isVisible() || qobject_cast<QMenu*>(w))
            continue;
        if (auto* button = qobject_cast<QAbstractButton*>(w))
            add(w, button->text());
        else if (auto* label = qobject_cast<QLabel*>(w); label && label->buddy())
            add(w, label->text());
        else if (auto* frame = qobject_cast<QGroupBox*>(w))
            add(w, frame->title());
        else if (auto* tabs = qobject_cast<QTabBar*>(w)) {
            for (int i = 0; i < tabs->count(); ++i)
                add(w, tabs->tabText(i));
        } else if (auto* bar = qobject_cast<QMenuBar*>(w)) {
            for (const QAction* action : bar->actions())
                add(action, action->text());
        }
    }
    return keys;
}

void expectUniqueAccessKeys(QWidget* window, const std::string& state) {
    for (const auto& [key, owners] : accessKeysShownBy(window))
        EXPECT_EQ(owners.size(), 1)
            << state << ": Alt+" << QString(key).toStdString() << " belongs to "
            << owners.join(QStringLiteral(", ")).toStdString();
}

} // namespace

TEST_P(EveryWindowIn, GivesEachAccessKeyToOneControlAtATime) {
    EveryWindow all(languageFile());
    ASSERT_TRUE(all.started);
    for (QWidget* window : all.windows()) {
        const std::string name = nameOf(window).toStdString();
        if (window == all.dienst) {
            for (int page = 0; page < 4; ++page) {
                all.dienst->ShowPage(page);
                expectUniqueAccessKeys(window, name + " page " + std::to_string(page));
            }
            continue;
        }
        expectUniqueAccessKeys(window, name);
        for (QMenu* menu : window->findChildren<QMenu*>()) {
            std::map<QChar, QStringList> keys;
            for (const QAction* action : menu->actions())
                if (const QChar key = accessKeyOf(action->text()); !key.isNull())
                    keys[key] << action->text();
            for (const auto& [key, entries] : keys)
                EXPECT_EQ(entries.size(), 1) << nameOf(menu).toStdString() << ": "
                                             << entries.join(QStringLiteral(", ")).toStdString();
        }
    }
    // The main window without its extended panel.
    QTest::mouseClick(all.editor.main->cmdUnexpand(), Qt::LeftButton);
    expectUniqueAccessKeys(all.editor.main.get(), "frmMain without the extended panel");
}

TEST_P(EveryWindowIn, GivesEveryLabelWithAnAccessKeyItsBuddy) {
    EveryWindow all(languageFile());
    ASSERT_TRUE(all.started);
    int marked = 0;
    for (QWidget* window : all.windows()) {
        for (QWidget* w : controlsOf(window)) {
            auto* label = qobject_cast<QLabel*>(w);
            if (!label || accessKeyOf(label->text()).isNull())
                continue;
            ++marked;
            EXPECT_NE(label->buddy(), nullptr)
                << nameOf(window).toStdString() << "/" << nameOf(label).toStdString() << " \""
                << label->text().toStdString() << "\" would show its \"&\"";
        }
    }
    EXPECT_GT(marked, 0) << "no label carries an access key";
}

namespace {

bool isInteractive(QAccessibleInterface* a) {
    switch (a->role()) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::List:
    case QAccessible::Tree:
    case QAccessible::Table:
    case QAccessible::PageTab:
    case QAccessible::MenuItem:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::Link:
        return true;
    case QAccessible::ScrollBar:
        // A scroll bar of the window's own; those of a list belong to the list.
        return a->object() && !a->object()->objectName().isEmpty();
    default:
        return false;
    }
}

void collectNameless(QAccessibleInterface* a, const QString& path, QStringList& nameless,
                     int& checked, int depth = 0) {
    if (!a || depth > 40 || a->state().invisible)
        return;
    const QString here =
        path + QStringLiteral("/") + (a->object() ? nameOf(a->object()) : QStringLiteral("item"));
    if (isInteractive(a)) {
        ++checked;
        if (a->text(QAccessible::Name).trimmed().isEmpty())
            nameless << here + QStringLiteral(" (role ") + QString::number(a->role()) +
                            QStringLiteral(")");
    }
    // Rows and cells of lists carry their texts; they are checked on their own.
    if (a->role() == QAccessible::List || a->role() == QAccessible::Tree ||
        a->role() == QAccessible::Table)
        return;
    for (int i = 0; i < a->childCount(); ++i)
        collectNameless(a->child(i), here, nameless, checked, depth + 1);
}

} // namespace

TEST_P(EveryWindowIn, NamesEveryControlForAssistiveTechnology) {
    EveryWindow all(languageFile());
    ASSERT_TRUE(all.started);
    QStringList nameless;
    int checked = 0;
    for (QWidget* window : all.windows()) {
        if (window == all.dienst) {
            for (int page = 0; page < 4; ++page) {
                all.dienst->ShowPage(page);
                collectNameless(QAccessible::queryAccessibleInterface(window),
                                QStringLiteral("page ") + QString::number(page), nameless, checked);
            }
            continue;
        }
        collectNameless(QAccessible::queryAccessibleInterface(window), QString(), nameless,
                        checked);
    }
    EXPECT_TRUE(nameless.isEmpty()) << nameless.join(QStringLiteral("\n")).toStdString();
    EXPECT_GT(checked, 60);
}

TEST_P(EveryWindowIn, NamesAPictureButtonAfterItsToolTip) {
    EveryWindow all(languageFile());
    ASSERT_TRUE(all.started);
    for (zelcmd* button : {all.editor.main->cmdUp(), all.editor.main->cmdFDown()}) {
        ASSERT_TRUE(button->text().isEmpty());
        ASSERT_FALSE(button->toolTip().isEmpty());
        EXPECT_EQ(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name),
                  button->toolTip());
    }
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, EveryWindowIn,
                         ::testing::Values("Deutsch.lng", "English.lng"));
