// Times the main window on a scratch installation, offscreen, on the null sound output:
// loading a package of 1,000 announcements, saving it with the reload that follows, and
// start-up to a shown window (without the splash window's timer). Prints its figures.
#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
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

// bin/ with the formats file and a language, Data/Gross with 1,000 short WAV announcements.
QString makeInstallation(const QTemporaryDir& root) {
    QDir(root.path()).mkpath(QStringLiteral("bin"));
    QDir(root.path()).mkpath(QStringLiteral("res/lang"));
    const QString folder = root.filePath(QStringLiteral("Data/Gross"));
    QDir().mkpath(folder);
    QFile::copy(QStringLiteral(TAVIK_SOURCE_ROOT "/bin/Formats.ini"),
                root.filePath(QStringLiteral("bin/Formats.ini")));
    const QString language = root.filePath(QStringLiteral("res/lang/Deutsch.lng"));
    QFile::copy(QStringLiteral(TAVIK_SOURCE_ROOT "/res/lang/Deutsch.lng"), language);
    QFile ini(root.filePath(QStringLiteral("bin/Tavik.ini")));
    if (ini.open(QIODevice::WriteOnly))
        ini.write("[Settings]\r\nLanguage=" + language.toLocal8Bit() + "\r\n");
    ini.close();

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
    TavikApplication app(argc, argv);
    QTemporaryDir root;
    qputenv("TAVIK_HOME", root.path().toLocal8Bit());
    const QString folder = makeInstallation(root);
    SetMessageHandler([](const MessageRequest&) { return MsgResult::OK; });

    Language language;
    EventLog log(root.filePath(QStringLiteral("bin")), &language);
    EmulatorBackend backend;
    modMCI mci(backend, [&log](const QString& line) { log.WriteLog(line); });

    std::vector<double> startUp, load, save;
    for (int run = 0; run < kRuns; ++run) {
        auto window = std::make_unique<frmMain>(language, mci, log);
        startUp.push_back(bench::timeMs([&] {
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
    bench::report("LoadPackage, 1,000 announcements", kRuns, load, 1500);
    bench::report("save with reload, 1,000 announcements", kRuns, save, 2000);
    return 0;
}
