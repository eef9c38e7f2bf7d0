// Times the main window on a scratch installation, offscreen, on the null sound output:
// loading a package of 1,000 announcements, saving it with the reload that follows, and
// start-up to a shown window (without the splash window's timer). Prints its figures.
#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "benchinstall.h"
#include "benchsound.h"
#include "benchutil.h"
#include "log/eventlog.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "settings/language.h"
#include "util/msgbox.h"
#include "util/reportlist.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

using namespace tavik;

namespace {

constexpr int kAnnouncements = 1000;
constexpr int kRuns = 5;

// Data/Gross with 1,000 short WAV announcements.
QString makePackage(const QTemporaryDir& root) {
    const QString folder = root.filePath(QStringLiteral("Data/Gross"));
    QDir().mkpath(folder);

    const QString tone = root.filePath(QStringLiteral("tone.wav"));
    bench::writeTone(tone, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 4410, 22050);
    clsZELDB store;
    store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Name"),
                      Variant::fromString(QStringLiteral("Gross")));
    for (int i = 0; i < kAnnouncements; ++i) {
        const QString key = FormatKey(i);
        QFile::copy(tone, folder + QStringLiteral("/") + key + QStringLiteral(".wav"));
        store.SaveSetting(
            QStringLiteral("INDEX"), QString::number(i + 1),
            Variant::fromString(JoinIndexEntry(key, QStringLiteral("Ansage %1").arg(i))));
        WriteAnnouncementSettings(store, key, {i % 7 == 0 ? 255 : 0, true, -1});
    }
    store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"),
                      Variant::fromLong(kAnnouncements));
    store.SaveIOFile(folder + QStringLiteral("/Package.io"));
    return folder;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TAVIK_AUDIO", "null");
    std::unique_ptr<TavikApplication> app;
    const double appMs =
        bench::timeMs([&] { app = std::make_unique<TavikApplication>(argc, argv); });
    bench::BenchInstallation install;
    const QString folder = makePackage(install.root);
    Language& language = install.language;
    EventLog& log = install.log;
    modMCI& mci = install.mci;

    std::vector<double> startUp, load, save;
    for (int run = 0; run < kRuns; ++run) {
        std::unique_ptr<frmMain> window;
        startUp.push_back(bench::timeMs([&] {
            window = std::make_unique<frmMain>(language, mci, log);
            window->ShowSplash = false;
            window->FormLoad();
            window->show();
            QCoreApplication::processEvents();
        }));
        window->PackageFolder = folder;
        window->IndexFilePath = folder + QStringLiteral("/Package.io");
        load.push_back(bench::timeMs([&] {
            window->UnloadAudioFiles();
            window->lsvPack()->ClearItems();
            window->LoadPackage();
        }));
        if (window->lsvPack()->Count() != kAnnouncements) {
            std::fprintf(stderr, "the list holds %d rows, not %d\n", window->lsvPack()->Count(),
                         kAnnouncements);
            return 1;
        }
        save.push_back(bench::timeMs([&] { window->cmdSave_Click(); }));
        window->UnloadAudioFiles();
        window->close();
    }
    // Start-up times the window with a language already chosen: what every start after the
    // first one does.
    bench::report("start-up to a shown main window", kRuns, startUp, 1000);
    std::printf("%-48s %8.2f ms (once, before the first start-up)\n", "the application object",
                appMs);
    bench::report("LoadPackage, 1,000 announcements", kRuns, load, 1500);
    bench::report("save with reload, 1,000 announcements", kRuns, save, 2000);
    return 0;
}
