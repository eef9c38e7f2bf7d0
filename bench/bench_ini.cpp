// Times the profile-file reader: 10,000 ReadINI calls on a 200-line settings file, every one
// going to the file as the editor's reads do. Prints its figures; run by hand from the build
// folder.
#include "settings/modini.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

using namespace tavik;

namespace {

// 200 lines: 10 sections of a header, 17 keys, a comment and a blank line.
QByteArray settingsFile() {
    QByteArray bytes;
    for (int s = 0; s < 10; ++s) {
        bytes += "[Section" + QByteArray::number(s) + "]\r\n";
        for (int k = 0; k < 17; ++k)
            bytes += "Key" + QByteArray::number(k) + " = value of key " + QByteArray::number(k) +
                     " in section " + QByteArray::number(s) + "\r\n";
        bytes += "; end of section\r\n\r\n";
    }
    return bytes;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath("Tavik.ini");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(settingsFile()) < 0)
        return 1;
    file.close();

    const int calls = 10000;
    QElapsedTimer timer;
    timer.start();
    qsizetype total = 0;
    for (int i = 0; i < calls; ++i) {
        // keys spread over the file, a tenth of them missing
        const QString section = QStringLiteral("SECTION%1").arg(i % 10);
        const QString key = QStringLiteral("key%1").arg(i % 19);
        total += ReadINI(path, section, key, Variant::fromInteger(0)).stringValue().size();
    }
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    std::printf("%d ReadINI calls on a 200-line file          %8.3f s  (%.1f us a call, %lld "
                "characters read)  target < 0.5 s: %s\n",
                calls, seconds, seconds * 1e6 / calls, static_cast<long long>(total),
                seconds < 0.5 ? "met" : "MISSED");
    return 0;
}
