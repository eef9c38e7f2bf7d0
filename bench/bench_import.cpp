// Times one import of 500 sound files through the import dialog's OK, copies, index and the
// reload of the package included, on a scratch installation, offscreen, on the null sound
// output. Prints its figures.
#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "benchinstall.h"
#include "benchsound.h"
#include "benchutil.h"
#include "dialogs/frmfile.h"
#include "log/eventlog.h"
#include "package/clszeldb.h"
#include "settings/language.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

using namespace tavik;

namespace {

constexpr int kFiles = 500;
constexpr int kRuns = 3;

// 500 short WAV files to import.
QStringList makeSources(const QTemporaryDir& root) {
    QDir(root.path()).mkpath(QStringLiteral("Quelle"));
    const QString tone = root.filePath(QStringLiteral("tone.wav"));
    bench::writeTone(tone, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 4410, 22050);
    QStringList files;
    for (int i = 0; i < kFiles; ++i) {
        const QString file =
            root.filePath(QStringLiteral("Quelle/Ansage %1.wav").arg(i, 3, 10, QLatin1Char('0')));
        QFile::copy(tone, file);
        files << file;
    }
    return files;
}

// An empty package, as the new-package dialog leaves it.
QString makePackage(const QTemporaryDir& root, int run) {
    const QString folder = root.filePath(QStringLiteral("Data/Import%1").arg(run));
    QDir().mkpath(folder);
    clsZELDB store;
    store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Name"),
                      Variant::fromString(QStringLiteral("Import")));
    store.SaveIOFile(folder + QStringLiteral("/Package.io"));
    return folder;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TAVIK_AUDIO", "null");
    TavikApplication app(argc, argv);
    bench::BenchInstallation install;
    const QTemporaryDir& root = install.root;
    const QStringList files = makeSources(root);
    Language& language = install.language;
    EventLog& log = install.log;
    modMCI& mci = install.mci;

    std::vector<double> imports;
    for (int run = 0; run < kRuns; ++run) {
        frmMain window(language, mci, log);
        window.ShowSplash = false;
        window.FormLoad();
        window.show();
        const QString folder = makePackage(root, run);
        window.PackageFolder = folder;
        window.IndexFilePath = folder + QStringLiteral("/Package.io");
        window.LoadPackage();

        frmFile dialog(window);
        dialog.AddFiles(files);
        dialog.show();
        QCoreApplication::processEvents();
        imports.push_back(bench::timeMs([&] { dialog.cmdOK()->click(); }));
        if (window.lsvPack()->Count() != kFiles) {
            std::fprintf(stderr, "the list holds %d rows, not %d\n", window.lsvPack()->Count(),
                         kFiles);
            return 1;
        }
        window.UnloadAudioFiles();
        window.close();
    }
    bench::report("import 500 files with one OK, reload included", kRuns, imports, 5000);
    return 0;
}
