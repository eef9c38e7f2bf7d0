#pragma once

#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <utility>
#include <vector>

namespace tavik::test {

// An installation root with a formats file and one package "Linie" whose entries are
// (key, title, sound length in ms or -1 for no file).
struct PackageFixture {
    TempDir root;
    QString folder;
    QString index;

    struct Entry {
        QString key;
        QString title;
        int lengthMs;
        bool nameVisible = true;
    };

    explicit PackageFixture(const std::vector<Entry>& entries) {
        QDir(root.path()).mkpath("bin");
        QDir(root.path()).mkpath("Data/Linie");
        root.write("bin/Formats.ini", "[wav]\r\nFormat=waveaudio\r\n");
        qputenv("TAVIK_HOME", root.path().toLocal8Bit());
        folder = root.file("Data/Linie");
        index = folder + "/Package.io";
        clsZELDB store;
        store.SaveSetting("INFO", "Name", Variant::fromString("Linie"));
        int position = 0;
        for (const Entry& e : entries) {
            store.SaveSetting("INDEX", QString::number(++position),
                              Variant::fromString(JoinIndexEntry(e.key, e.title)));
            WriteAnnouncementSettings(store, e.key, {0, e.nameVisible, -1});
            if (e.lengthMs >= 0)
                writeTone(folder + "/" + e.key + " " + e.title + ".wav",
                          e.lengthMs * 22050LL / 1000);
        }
        store.SaveSetting("INDEX", "Count", Variant::fromLong(position));
        store.SaveIOFile(index);
    }
    ~PackageFixture() { qunsetenv("TAVIK_HOME"); }
};

} // namespace tavik::test
