// Times the service file: save and reopen of a service of 500 sentences with 10 entries each,
// and the list of services over 200 service files. Prints its figures; run by hand from the
// build folder. bench_serviceeditor times the same through the editor window.
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "service/servicesentences.h"

#include "benchutil.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tavik;
using tavik::bench::report;
using tavik::bench::timeMs;

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const int runs = 25;

    ServiceSentences state;
    RandomGenerator generator;
    QStringList rows;
    for (int i = 0; i < 500; ++i) {
        SatzRecord& satz = state.Saetze[state.CreateItem(generator)];
        satz.TargetsDimensioned = true;
        for (int j = 0; j < 10; ++j)
            satz.Targets.append({QStringLiteral("%1").arg(j, 4, 10, QChar('0')),
                                 static_cast<std::int16_t>(j * 10)});
        satz.LastTarget = 9;
        satz.Text = QStringLiteral("Gong Achtung an Gleis 1 ");
        rows.append(satz.Key);
    }
    const ServiceHeader header{"Benchmark", "Tavik", "500 Saetze", "000000"};
    const QString path = ServiceFilePath(dir.path(), header.Id);

    std::vector<double> save, open;
    for (int r = 0; r < runs; ++r)
        save.push_back(timeMs([&] { SaveToFile(path, header, state, rows); }));
    for (int r = 0; r < runs; ++r) {
        open.push_back(timeMs([&] {
            const ServiceReadResult read = ReadServiceFile(path);
            if (!read.ok() || read.sentences.size() != 500)
                std::printf("reopen failed: %s\n", qPrintable(read.problem));
        }));
    }
    report("save service, 500 sentences x 10 entries", runs, save, 200);
    report("reopen service, 500 sentences x 10 entries", runs, open, 200);

    QTemporaryDir folder;
    for (int i = 0; i < 200; ++i) {
        ServiceHeader h{QStringLiteral("Dienst %1").arg(i), "Tavik", "", QString::number(i)};
        WriteServiceFile(ServiceFilePath(folder.path(), h.Id),
                         ServiceFileBytes(h, {{"0001", "", {{"0000", 0}}, 0}}));
    }
    std::vector<double> list;
    for (int r = 0; r < runs; ++r) {
        QStringList lstOpen, File1;
        list.push_back(timeMs([&] { FindFiles(folder.path(), lstOpen, File1); }));
        if (lstOpen.size() != 200)
            std::printf("listing found %lld services\n", static_cast<long long>(lstOpen.size()));
    }
    report("FindFiles over 200 service files", runs, list, 200);
    return 0;
}
