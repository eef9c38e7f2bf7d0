// Seeded random mixes of sorting, moving, properties, import, removal, undo and redo on the
// real main window, each followed by Save: the list after the save and its reload shows the
// very rows, in the very order, that it showed before, and the index file holds that order.
#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "dialogs/frmsetting.h"
#include "support/dialogtesting.h"
#include "support/editorfixture.h"
#include "support/tempdir.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QUndoStack>
#include <gtest/gtest.h>
#include <iostream>
#include <random>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::TempDir;
using tavik::test::whenShown;

namespace {

// About 20 s in either build, the sanitizer build included.
constexpr int kSequences = 500;
constexpr int kMaxActions = 6;

// Titles that tie on purpose, so that equal rows keep their order through each reload.
const QStringList kTitles{"Gong", "Zug", "Halt", "Gong", "Achtung", "Bahnsteig"};

struct Row {
    QString key;
    QString title;
    bool operator==(const Row&) const = default;
};

QList<Row> shownRows(const ReportList* list) {
    QList<Row> rows;
    for (int i = 1; i <= list->Count(); ++i)
        rows << Row{list->ListItems(i)->Text(), list->ListItems(i)->SubItems(1)};
    return rows;
}

QList<Row> savedRows(const QString& indexFile) {
    clsZELDB store;
    EXPECT_TRUE(store.OpenIOFile(indexFile));
    QList<Row> rows;
    for (const IndexEntry& entry : ReadShownEntries(store))
        rows << Row{entry.Key, entry.Title};
    return rows;
}

std::string describe(const QList<Row>& rows) {
    QStringList parts;
    for (const Row& row : rows)
        parts << row.key + u':' + row.title;
    return parts.join(u' ').toStdString();
}

class RandomSession {
public:
    RandomSession() {
        EXPECT_TRUE(editor_.main->FormLoad());
        std::vector<EditorFixture::Entry> entries;
        for (int i = 0; i < 5; ++i)
            entries.push_back(
                {QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0')), kTitles[i], 20 + 10 * i});
        folder_ = editor_.writePackage(QStringLiteral("p"), QStringLiteral("P"), entries);
        editor_.open(folder_);
        source_ = sources_.file(QStringLiteral("Neu.wav"));
        EXPECT_TRUE(tavik::test::writeTone(source_, 160, 8000));
    }

    frmMain& main() { return *editor_.main; }
    // The texts of the messages shown since the last call.
    std::string takeMessages() {
        QStringList texts;
        for (const MessageRequest& m : editor_.messages)
            texts << m.text;
        editor_.messages.clear();
        return texts.join(u'\n').toStdString();
    }
    ReportList* list() { return editor_.main->lsvPack(); }
    QString indexFile() const { return folder_ + QStringLiteral("/Package.io"); }
    int actions = 0;

    void selectRandomRow(std::mt19937& random) {
        if (list()->Count() == 0)
            return;
        const int row = std::uniform_int_distribution<int>(1, list()->Count())(random);
        list()->setCurrentItem(list()->ListItems(row));
        list()->ListItems(row)->SetSelected(true);
    }

    void act(std::mt19937& random) {
        ++actions;
        const int count = list()->Count();
        // Keeps the package small: imports while it is short, removals while it is long.
        int action = std::uniform_int_distribution<int>(0, 10)(random);
        if (count < 3 && action == 8)
            action = 7;
        if (count > 8 && action == 7)
            action = 8;
        selectRandomRow(random);
        switch (action) {
        case 0:
            QTest::mouseClick(main().cmdUp(), Qt::LeftButton);
            break;
        case 1:
            QTest::mouseClick(main().cmdDown(), Qt::LeftButton);
            break;
        case 2:
            QTest::mouseClick(main().cmdFUp(), Qt::LeftButton);
            break;
        case 3:
            QTest::mouseClick(main().cmdFDown(), Qt::LeftButton);
            break;
        case 4: {
            QAction* entries[] = {main().mnuIndex(), main().mnuTitel(), main().mnuFormat(),
                                  main().mnuLenght()};
            entries[std::uniform_int_distribution<int>(0, 3)(random)]->trigger();
            break;
        }
        case 5: {
            if (count == 0)
                break;
            const QString title = kTitles[std::uniform_int_distribution<int>(
                0, static_cast<int>(kTitles.size()) - 1)(random)];
            whenShown<frmSetting>([title](frmSetting& dialog) {
                dialog.txtTitle()->setText(title);
                dialog.cmdOK()->click();
            });
            main().lsvPack_DblClick();
            break;
        }
        case 6:
            main().mnuUndo()->trigger();
            break;
        case 7:
            whenShown<frmFile>([](frmFile& dialog) { dialog.cmdOK()->click(); });
            main().ImportSounds({source_});
            break;
        case 8:
            if (count > 0)
                QTest::mouseClick(main().cmdRemove(), Qt::LeftButton);
            break;
        default:
            main().mnuRedo()->trigger();
            break;
        }
    }

private:
    EditorFixture editor_;
    TempDir sources_;
    QString folder_;
    QString source_;
};

} // namespace

TEST(MainWindowRandomOrder, EverySeededMixOfEditsSavesAndReloadsTheOrderTheListShowed) {
#ifdef Q_OS_WIN
    // Open problem: under Wine, about one sequence in two hundred takes the editor's own moves
    // of sound files for another program's change and asks before saving, which this run of
    // hundreds of sequences cannot answer as a user would. Left to run on Linux until found.
    GTEST_SKIP() << "the editor takes some of its own moves of sound files for another "
                    "program's change here (an open problem on Windows)";
#endif
    RandomSession session;
    int failures = 0;
    for (int seed = 1; seed <= kSequences && failures < 5; ++seed) {
        std::mt19937 random(static_cast<std::mt19937::result_type>(seed));
        const int steps = std::uniform_int_distribution<int>(1, kMaxActions)(random);
        for (int step = 0; step < steps; ++step)
            session.act(random);
        const QList<Row> before = shownRows(session.list());
        QTest::mouseClick(session.main().cmdSave(), Qt::LeftButton);
        const QList<Row> after = shownRows(session.list());
        const QList<Row> saved = savedRows(session.indexFile());
        const bool same = before == after && after == saved;
        const std::string messages = session.takeMessages();
        EXPECT_TRUE(same) << "seed " << seed << "\n shown " << describe(before) << "\n after "
                          << describe(after) << "\n file  " << describe(saved)
                          << "\n messages: " << messages;
        EXPECT_TRUE(session.main().undoStack()->isClean()) << "seed " << seed;
        if (!same)
            ++failures;
    }
    std::cout << "[ figures  ] " << kSequences << " sequences, " << session.actions
              << " actions, each followed by Save\n";
}
