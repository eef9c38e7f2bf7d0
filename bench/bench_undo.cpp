// The main window's undo history on a large package: the heap the history holds after
// 10,000 moves in a package of 10,000 announcements (goal: under 10 MB), against the heap the
// loaded list itself takes, and the time of the moves and of undoing them all. Offscreen, on
// the null sound output; the announcements have no sound files, which the history does not
// look at. Prints its figures.
#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "benchinstall.h"
#include "benchutil.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "util/reportlist.h"

#include <QDir>
#include <QUndoStack>
#include <cstdio>
#include <malloc.h>
#include <random>

using namespace tavik;

namespace {

constexpr int kAnnouncements = 10000;
constexpr int kMoves = 10000;

QString makePackage(const QTemporaryDir& root) {
    const QString folder = root.filePath(QStringLiteral("Data/Gross"));
    QDir().mkpath(folder);
    clsZELDB store;
    for (int i = 0; i < kAnnouncements; ++i) {
        const QString key = FormatKey(i);
        store.SaveSetting(
            QStringLiteral("INDEX"), QString::number(i + 1),
            Variant::fromString(JoinIndexEntry(key, QStringLiteral("Ansage %1").arg(i))));
        WriteAnnouncementSettings(store, key, {0, true, -1});
    }
    store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"),
                      Variant::fromLong(kAnnouncements));
    store.SaveIOFile(folder + QStringLiteral("/Package.io"));
    return folder;
}

double heapMb() {
    return static_cast<double>(mallinfo2().uordblks) / (1024.0 * 1024.0);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TAVIK_AUDIO", "null");
    TavikApplication app(argc, argv);
    bench::BenchInstallation install;
    const QString folder = makePackage(install.root);
    frmMain window(install.language, install.mci, install.log);
    window.ShowSplash = false;
    window.FormLoad();
    window.PackageFolder = folder;
    window.IndexFilePath = folder + QStringLiteral("/Package.io");

    const double beforeLoad = heapMb();
    window.UnloadAudioFiles();
    window.LoadPackage();
    const double listMb = heapMb() - beforeLoad;
    ReportList* list = window.lsvPack();
    if (list->Count() != kAnnouncements) {
        std::fprintf(stderr, "the list holds %d rows, not %d\n", list->Count(), kAnnouncements);
        return 1;
    }

    std::mt19937 random(7);
    std::uniform_int_distribution<int> row(2, kAnnouncements - 1);
    const double beforeMoves = heapMb();
    const double movesMs = bench::timeMs([&] {
        for (int i = 0; i < kMoves; ++i) {
            ReportListItem* item = list->ListItems(row(random));
            list->setCurrentItem(item);
            item->SetSelected(true);
            if (i % 2 == 0)
                window.cmdUp_Click();
            else
                window.cmdDown_Click();
        }
    });
    const double afterMoves = heapMb();
    const int steps = window.undoStack()->count();
    const double undoMs = bench::timeMs([&] { window.undoStack()->setIndex(0); });
    // What the history itself holds: the heap it gives back when it is dropped. The rest of
    // the growth during the moves belongs to the list's rows.
    const double beforeClear = heapMb();
    window.undoStack()->clear();
    const double historyMb = beforeClear - heapMb();

    std::printf("%-48s %8d\n", "announcements in the package", kAnnouncements);
    std::printf("%-48s %8d\n", "moves (steps in the history)", steps);
    std::printf("%-48s %8.2f MB (goal: under 10 MB)\n", "heap held by the history", historyMb);
    std::printf("%-48s %8.2f MB\n", "heap growth during the moves, list included",
                afterMoves - beforeMoves);
    std::printf("%-48s %8.2f MB\n", "heap held by the loaded list (reference)", listMb);
    std::printf("%-48s %8.3f\n", "history / list", historyMb / listMb);
    std::printf("%-48s %8.2f ms\n", "10,000 moves", movesMs);
    std::printf("%-48s %8.2f ms\n", "undoing all of them", undoMs);
    window.close();
    return historyMb < 10.0 ? 0 : 1;
}
