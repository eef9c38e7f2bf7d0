// Times the package index store: save and open of a 1,000-announcement package, and of a key
// with 32,767 items. Prints its figures; run by hand from the build folder.
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"

#include "benchutil.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tavik;
using tavik::bench::median;
using tavik::bench::report;
using tavik::bench::timeMs;

namespace {

void buildPackage(clsZELDB& store, int announcements) {
    store.SaveSetting("INFO", "Name", Variant::fromString("Benchmark"));
    store.SaveSetting("INFO", "Autor", Variant::fromString("Tavik"));
    for (int i = 0; i < announcements; ++i) {
        const QString key = FormatKey(i);
        store.SaveSetting("INDEX", QString::number(i + 1),
                          Variant::fromString(JoinIndexEntry(key, "Ansage " + key)));
        WriteAnnouncementSettings(store, key, {255, true, -1});
    }
    store.SaveSetting("INDEX", "Count", Variant::fromLong(announcements));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath("Package.io");
    const int runs = 25;

    clsZELDB built;
    const double buildMs = timeMs([&] { buildPackage(built, 1000); });
    std::printf("build 1,000-announcement store in memory       %8.2f ms\n", buildMs);

    std::vector<double> save, open, resave;
    for (int r = 0; r < runs; ++r)
        save.push_back(timeMs([&] { built.SaveIOFile(path); }));
    for (int r = 0; r < runs; ++r) {
        clsZELDB store;
        open.push_back(timeMs([&] { store.OpenIOFile(path); }));
        resave.push_back(timeMs([&] { store.SaveIOFile(dir.filePath("again.io")); }));
    }
    std::printf("file size %lld bytes\n", static_cast<long long>(QFileInfo(path).size()));
    report("save 1,000-announcement store", runs, save, 20.0);
    report("open 1,000-announcement store", runs, open, 20.0);
    report("save it again after the open", runs, resave, 20.0);

    clsZELDB big;
    const double bigBuild = timeMs([&] {
        for (int i = 0; i < 32767; ++i)
            big.SaveSetting("BIG", QString::number(i), Variant::fromLong(i));
    });
    std::printf("build one key with 32,767 items                %8.2f ms\n", bigBuild);
    const QString bigPath = dir.filePath("big.io");
    std::vector<double> bigSave, bigOpen;
    for (int r = 0; r < 5; ++r) {
        bigSave.push_back(timeMs([&] { big.SaveIOFile(bigPath); }));
        clsZELDB store;
        bigOpen.push_back(timeMs([&] { store.OpenIOFile(bigPath); }));
    }
    report("save one key with 32,767 items", 5, bigSave, 0);
    report("open one key with 32,767 items", 5, bigOpen, 0);
    return 0;
}
