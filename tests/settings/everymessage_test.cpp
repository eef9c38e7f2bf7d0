// Every window, menu and message in either language holds no word that only the other
// language file has: the windows and menus of the whole editor, every numbered text, every
// runtime error message, and every finding the check window shows with its detail.
#include "settings/everywindow.h"

#include "hostile/hostilecorpus.h"
#include "package/findingdetail.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/runtimeerrortext.h"
#include "util/cp1252.h"
#include "util/runtimeerror.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSet>
#include <QTabBar>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

namespace {

// The words of a text, in lower case. Quoted parts, paths, file names and anything with a
// digit are names and values, not words of a language.
QStringList wordsOf(QString text) {
    text.remove(QRegularExpression(QStringLiteral("\"[^\"]*\"")));
    QStringList words;
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    static const QRegularExpression letters(QStringLiteral("\\p{L}+"));
    for (const QString& token : text.split(blanks, Qt::SkipEmptyParts)) {
        if (token.contains(QRegularExpression(QStringLiteral("[/\\\\0-9_%~]|\\p{L}\\.\\p{L}"))))
            continue;
        for (auto it = letters.globalMatch(token); it.hasNext();)
            words << it.next().captured().toLower();
    }
    return words;
}

// Every word a language file can put on screen: its numbered texts and its window sections.
QSet<QString> wordsOfFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QSet<QString> words;
    QString section;
    for (const QString& line :
         fromCp1252(file.readAll()).split(QRegularExpression(QStringLiteral("\r?\n")))) {
        if (line.startsWith(u'[')) {
            section = line.mid(1, line.indexOf(u']') - 1);
            continue;
        }
        const qsizetype eq = line.indexOf(u'=');
        if (eq < 0 || line.startsWith(u';') || section == QStringLiteral("_Language") ||
            section == QStringLiteral("_Files"))
            continue;
        for (const QString& word : wordsOf(line.mid(eq + 1)))
            words.insert(word);
    }
    return words;
}

// The words of the other language: those only its file has.
class ForeignWords {
public:
    explicit ForeignWords(const QString& languageFile) {
        const QString other = languageFile.endsWith(QStringLiteral("English.lng"))
                                  ? QStringLiteral("Deutsch.lng")
                                  : QStringLiteral("English.lng");
        const QString folder = CheckoutPath(QStringLiteral("/res/lang/"));
        const QString own = languageFile.section(u'/', -1);
        words_ = wordsOfFile(folder + other) - wordsOfFile(folder + own);
    }
    qsizetype size() const { return words_.size(); }
    // The foreign words in `text`, "" when none.
    QString in(const QString& text) const {
        QStringList found;
        for (const QString& word : wordsOf(text))
            if (words_.contains(word))
                found << word;
        return found.join(u' ');
    }

private:
    QSet<QString> words_;
};

class EveryMessageIn : public ::testing::TestWithParam<const char*> {
protected:
    QString languageFile() const { return QString::fromLatin1(GetParam()); }

    // Counts a text and fails it when it holds a foreign word.
    void expectOwnLanguage(const ForeignWords& foreign, const QString& where, const QString& text) {
        ++checked;
        const QString found = foreign.in(text);
        EXPECT_TRUE(found.isEmpty())
            << languageFile().toStdString() << ": " << where.toStdString() << ": \""
            << text.toStdString() << "\" holds \"" << found.toStdString() << "\"";
        if (!found.isEmpty())
            wrong << text;
    }
    int checked = 0;
    QSet<QString> wrong;
};

// Every text a window shows: title, captions, tool tips, accessible names, tabs, column
// headers, list rows, drop-down entries and menus.
QStringList textsShownBy(QWidget* window) {
    QStringList texts = {window->windowTitle()};
    QList<QWidget*> widgets = window->findChildren<QWidget*>();
    widgets.prepend(window);
    for (QWidget* w : widgets) {
        texts << w->toolTip() << w->accessibleName() << w->accessibleDescription();
        if (auto* label = qobject_cast<QLabel*>(w))
            texts << label->text();
        else if (auto* button = qobject_cast<QAbstractButton*>(w))
            texts << button->text();
        else if (auto* frame = qobject_cast<QGroupBox*>(w))
            texts << frame->title();
        else if (auto* tabs = qobject_cast<QTabBar*>(w)) {
            for (int i = 0; i < tabs->count(); ++i)
                texts << tabs->tabText(i) << tabs->tabToolTip(i);
        } else if (auto* list = qobject_cast<QTreeWidget*>(w)) {
            for (int c = 0; c < list->columnCount(); ++c)
                texts << list->headerItem()->text(c);
        } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
            for (int i = 0; i < combo->count(); ++i)
                texts << combo->itemText(i);
        } else if (auto* menu = qobject_cast<QMenu*>(w)) {
            texts << menu->title();
            for (const QAction* action : menu->actions())
                texts << action->text() << action->toolTip();
        } else if (auto* bar = qobject_cast<QMenuBar*>(w)) {
            for (const QAction* action : bar->actions())
                texts << action->text();
        }
    }
    texts.removeAll(QString());
    return texts;
}

// Packages that give the check window findings of every sort: a hostile index with its
// services, cut and broken service files, and index files that cannot be opened.
QStringList packagesWithFindings(const QString& root) {
    const QString hostile = root + QStringLiteral("/Data/Feindlich");
    writeHostilePackage(root, hostile);
    for (const auto& services : {escapingServices(), brokenServices()})
        for (const HostileService& service : services) {
            QFile file(hostile + u'/' + service.fileName);
            if (file.open(QIODevice::WriteOnly))
                file.write(service.bytes);
        }
    QFile entries(hostile + QStringLiteral("/_30._"));
    if (entries.open(QIODevice::WriteOnly))
        entries.write(serviceWithHostileEntries());
    QFile empty(hostile + QStringLiteral("/_31._"));
    empty.open(QIODevice::WriteOnly);

    const QString cut = root + QStringLiteral("/Data/Abgeschnitten");
    QDir().mkpath(cut);
    writeIndex(cut + QStringLiteral("/Package.io"), hostileIndexEntries());
    QFile index(cut + QStringLiteral("/Package.io"));
    index.resize(index.size() / 2);

    const QString other = root + QStringLiteral("/Data/Fremd");
    QDir().mkpath(other);
    QFile text(other + QStringLiteral("/Package.io"));
    if (text.open(QIODevice::WriteOnly))
        text.write("no index at all");

    // An index whose entries are stored oddly, over sounds that are empty, unlisted or named
    // twice, beside a file no entry names.
    const QString odd = root + QStringLiteral("/Data/Eigenartig");
    QDir().mkpath(odd);
    clsZELDB store;
    const auto entry = [&store](int position, const QString& value) {
        store.SaveSetting(QStringLiteral("INDEX"), QString::number(position),
                          Variant::fromString(value));
    };
    entry(1, QStringLiteral("0010~Leer"));
    entry(2, QStringLiteral("0011~"));
    entry(3, QStringLiteral("0012~Titel~mit Tilde"));
    entry(4, QStringLiteral("0012~Nochmal"));
    entry(5, QStringLiteral("0013~") + fromCp1252("f\xc3\xa4hrt"));
    entry(6, QStringLiteral("0014~Endung"));
    entry(8, QStringLiteral("0013~Nie geladen"));
    store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"), Variant::fromLong(7));
    store.SaveSetting(QStringLiteral("0013"), QStringLiteral("Color"),
                      Variant::fromString(QStringLiteral("rot")));
    store.SaveSetting(QStringLiteral("0012"), QStringLiteral("Color"), Variant::fromInteger(3));
    store.SaveIOFile(odd + QStringLiteral("/Package.io"));
    QFile(odd + QStringLiteral("/0010.wav")).open(QIODevice::WriteOnly);
    for (const char* name : {"/0012.wav", "/0013.wav", "/0014.xyz", "/extra.wav"})
        writeTone(odd + QString::fromLatin1(name), 480, 8000);

    return {hostile, cut, other, odd, root + QStringLiteral("/Data/Fehlt")};
}

} // namespace

TEST_P(EveryMessageIn, EveryWindowAndMenuHoldsNoWordOfTheOtherLanguage) {
    const ForeignWords foreign(languageFile());
    ASSERT_GT(foreign.size(), 100) << "the language files were not read";
    EveryWindow all(languageFile());
    ASSERT_TRUE(all.started);
    for (QWidget* window : all.windows()) {
        ASSERT_NE(window, nullptr);
        for (const QString& text : textsShownBy(window))
            if (!all.dataTexts.contains(text))
                expectOwnLanguage(foreign, window->objectName(), text);
    }
    EXPECT_GT(checked, 300);
}

TEST_P(EveryMessageIn, EveryNumberedTextAndRuntimeErrorIsInTheLanguage) {
    const ForeignWords foreign(languageFile());
    ASSERT_GT(foreign.size(), 100);
    Language language;
    language.LanguageFile = CheckoutPath(QStringLiteral("/res/lang/")) + languageFile();
    for (const LangTextUse& use : UsedLangTexts()) {
        const QString text = language.GetLangString(use.number, QStringLiteral("1"),
                                                    QStringLiteral("2"), QStringLiteral("3"));
        EXPECT_FALSE(text.isEmpty()) << use.number;
        expectOwnLanguage(foreign, QString::number(use.number), text);
    }
    for (const int number : TranslatedRuntimeErrors())
        expectOwnLanguage(foreign, QStringLiteral("runtime error %1").arg(number),
                          RuntimeErrorMessage(language, RuntimeError(number)));
    expectOwnLanguage(foreign, QStringLiteral("runtime error 1234"),
                      RuntimeErrorMessage(language, RuntimeError(1234)));
    const NumberedText numbered = [&language](int number, const QStringList& args) {
        return language.GetLangString(number, args.value(0), args.value(1), args.value(2));
    };
    for (int i = 0; i < kTranslatedDetailCount; ++i) {
        const QString english =
            detailText(static_cast<DetailText>(i),
                       {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
        expectOwnLanguage(foreign, QStringLiteral("detail ") + english,
                          localDetail(english, numbered));
    }
    EXPECT_EQ(checked, UsedLangTexts().size() + TranslatedRuntimeErrors().size() + 1 +
                           kTranslatedDetailCount);
}

TEST_P(EveryMessageIn, TheCheckWindowNamesEveryFindingInTheLanguage) {
    const ForeignWords foreign(languageFile());
    ASSERT_GT(foreign.size(), 100);
    EditorFixture editor(languageFile());
    ASSERT_TRUE(editor.main->FormLoad());
    frmMain& main = *editor.main;
    main.show();
    QTest::mouseClick(main.cmdExpand(), Qt::LeftButton);
    QSet<int> kinds;
    QSet<QString> details;
    for (const QString& folder : packagesWithFindings(editor.root.path())) {
        main.PackageFolder = QDir::toNativeSeparators(folder);
        QTest::mouseClick(main.cmdCheck(), Qt::LeftButton);
        const auto* list =
            main.checkWindow()->findChild<QTreeWidget*>(QStringLiteral("lsvFindings"));
        ASSERT_NE(list, nullptr);
        ASSERT_GT(list->topLevelItemCount(), 0) << folder.toStdString();
        for (int r = 0; r < list->topLevelItemCount(); ++r) {
            const QTreeWidgetItem* row = list->topLevelItem(r);
            expectOwnLanguage(foreign, QStringLiteral("finding severity"), row->text(0));
            expectOwnLanguage(foreign, QStringLiteral("finding"), row->text(3));
            for (int k = 0; k < kFindingKindCount; ++k) {
                // The kind's text up to where its detail goes.
                const QString text = editor.language.GetLangString(LangText::CheckFirstFinding + k,
                                                                   QStringLiteral("\x01"));
                if (row->text(3).startsWith(text.left(text.indexOf(u'\x01'))))
                    kinds.insert(k);
            }
            details.insert(row->text(3));
        }
        for (const QString& text : textsShownBy(main.checkWindow()))
            expectOwnLanguage(foreign, QStringLiteral("check window"), text);
    }
    // Most kinds of finding, each with its own detail, were shown.
    EXPECT_GE(kinds.size(), 15);
    EXPECT_GE(details.size(), 35);
}

TEST_P(EveryMessageIn, MessagesTheEditorShowsAreInTheLanguage) {
    const ForeignWords foreign(languageFile());
    EditorFixture editor(languageFile());
    ASSERT_TRUE(editor.main->FormLoad());
    const QString folder =
        editor.writePackage(QStringLiteral("walk"), QStringLiteral("Walk package"),
                            {{QStringLiteral("0000"), QStringLiteral("First title"), 200},
                             {QStringLiteral("0001"), QStringLiteral("Second title"), -1}});
    frmMain& main = *editor.main;
    main.show();
    // Pack without its packer, a package whose sound is missing, and removing an entry.
    QTest::mouseClick(main.cmdCompress(), Qt::LeftButton);
    editor.open(folder);
    main.lsvPack()->setCurrentItem(main.lsvPack()->ListItems(1));
    editor.answers.push_back(MsgResult::No);
    QTest::mouseClick(main.cmdRemove(), Qt::LeftButton);
    ASSERT_GE(editor.messages.size(), 3u);
    for (const MessageRequest& message : editor.messages) {
        expectOwnLanguage(foreign, QStringLiteral("message"),
                          QString(message.text).remove(QStringLiteral("First title")));
        if (!message.title.isEmpty())
            expectOwnLanguage(foreign, QStringLiteral("message title"), message.title);
    }
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, EveryMessageIn,
                         ::testing::Values("English.lng", "Deutsch.lng"));
