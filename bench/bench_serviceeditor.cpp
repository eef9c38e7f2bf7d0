// Times the service editor window on its files: opening a service of 500 sentences with 10
// entries each through the open page (a list row per sentence, with the event loop turning
// after each), saving it again through the properties page, refilling the list of services
// over 200 files, and reversing the 500 rows. Prints its figures; run by hand from the build
// folder (offscreen unless a platform is named).
#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "app/tavikapplication.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "log/eventlog.h"
#include "service/frmdienst.h"
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "settings/language.h"
#include "util/apppath.h"
#include "util/reportlist.h"

#include "benchutil.h"

#include <QDir>
#include <QListWidget>
#include <QTemporaryDir>
#include <cstdio>
#include <vector>

using namespace tavik;
using tavik::bench::report;
using tavik::bench::timeMs;

namespace {

QList<SatzRecord> sentences(int count, int entries) {
    QList<SatzRecord> list;
    for (int i = 0; i < count; ++i) {
        SatzRecord satz{QStringLiteral("%1").arg(i, 4, 10, QChar(u'0')),
                        QStringLiteral("Gong Achtung an Gleis 1 "),
                        {},
                        static_cast<std::int16_t>(entries - 1)};
        for (int j = 0; j < entries; ++j)
            satz.Targets.append({QStringLiteral("%1").arg(j, 4, 10, QChar(u'0')),
                                 static_cast<std::int16_t>(j * 10)});
        list.append(satz);
    }
    return list;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TAVIK_AUDIO", "null");
    TavikApplication app(argc, argv);
    QTemporaryDir root;
    QDir(root.path()).mkpath(QStringLiteral("bin"));
    QDir(root.path()).mkpath(QStringLiteral("Data/Linie"));
    qputenv("TAVIK_HOME", root.path().toLocal8Bit());

    Language language;
    EventLog log(AppPath(), &language);
    EmulatorBackend backend;
    modMCI mci(backend, {});
    frmMain main(language, mci, log);
    main.PackageFolder = NativePath(AppPath() + QStringLiteral("\\..\\Data\\\\Linie"));
    const QString path = ServiceFilePath(main.PackageFolder, QStringLiteral("000000"));
    WriteServiceFile(path,
                     ServiceFileBytes({QStringLiteral("Benchmark"), QStringLiteral("Tavik"),
                                       QStringLiteral("500 Saetze"), QStringLiteral("000000")},
                                      sentences(500, 10)));

    const int runs = 15;
    std::vector<double> open, save;
    for (int r = 0; r < runs; ++r) {
        frmDienst editor(main);
        editor.mnuOpen_Click();
        editor.lstOpen()->setCurrentRow(0);
        open.push_back(timeMs([&] { editor.cmdOpen_Click(); }));
        if (editor.lsvDienst()->Count() != 500)
            std::printf("reopen listed %d sentences\n", editor.lsvDienst()->Count());
        editor.mnuSave_Click();
        save.push_back(timeMs([&] { editor.cmdSv_Click(); }));
    }
    report("editor: open service, 500 sentences x 10 entries", runs, open, 200);
    report("editor: save service, 500 sentences x 10 entries", runs, save, 200);

    for (int i = 1; i <= 200; ++i) {
        const QString id = QString::number(i);
        WriteServiceFile(
            ServiceFilePath(main.PackageFolder, id),
            ServiceFileBytes({QStringLiteral("Dienst ") + id, QStringLiteral("Tavik"), {}, id},
                             sentences(1, 1)));
    }
    std::vector<double> list;
    {
        frmDienst editor(main);
        editor.mnuOpen_Click();
        for (int r = 0; r < runs; ++r) {
            list.push_back(timeMs([&] { editor.cmdRefresh_Click(); }));
            if (editor.lstOpen()->count() != 201)
                std::printf("listing found %d services\n", editor.lstOpen()->count());
        }
    }
    report("editor: list 201 service files (refresh)", runs, list, 200);

    // Reversing moves rows by neighbour swaps, as designed: quadratic in the row count.
    std::vector<double> reverse;
    {
        frmDienst editor(main);
        // The list is sorted by name: _000000._ comes first.
        editor.lstOpen()->setCurrentRow(0);
        editor.cmdOpen_Click();
        for (int r = 0; r < 3; ++r)
            reverse.push_back(timeMs([&] { editor.cmdTausch_Click(); }));
    }
    report("editor: reverse 500 service rows", 3, reverse, 0);
    qunsetenv("TAVIK_HOME");
    return 0;
}
