#pragma once

#include "package/clszeldb.h"
#include "service/servicebytes.h"
#include "support/links.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/variant.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

namespace tavik::test {

// Packages as they arrive from other users' machines: index entries whose keys are no
// numbers, files that only look like sounds, links to files outside the package, a folder
// named "_", and service files that are cut, broken or whose ID leads out of the package.
// Everything is written below an installation root laid out as root/bin, root/Data/<package>,
// with a neighbouring package and a folder root/outside that must never change. Texts in
// service files are cp1252 bytes, as the editor writes them.

// The index entries of the hostile package, in list order. Only 0000, 0001 and 10000 have
// sound files of their own; every other key must find none.
inline QStringList hostileIndexEntries() {
    return {
        QStringLiteral("0000~Gong"),
        QStringLiteral("~Ohne Schlüssel"),
        QStringLiteral("Package.i~Index"),
        QStringLiteral("Package.io~Indexdatei"),
        QStringLiteral("0000.wav~Dateiname"),
        QStringLiteral("../Nachbar/0000~Nachbarpaket"),
        QStringLiteral("..\\Nachbar\\0000~Nachbarpaket rückwärts"),
        QStringLiteral("../../outside/secret~Draußen"),
        QStringLiteral("0003~Verweis nach draußen"),
        QStringLiteral("000~Zu kurz"),
        QStringLiteral("1000~Vorsilbe von 10000"),
        QStringLiteral("all~Alle Geräte"),
        QStringLiteral("0*~Stern"),
        QStringLiteral("_~Unterstrich"),
        QStringLiteral(" 0001~Mit Blank"),
        QStringLiteral("0001~Achtung"),
        QStringLiteral("10000~Zehntausend"),
    };
}

// The keys above that have a sound file.
inline QStringList keysWithSound() {
    return {QStringLiteral("0000"), QStringLiteral("0001"), QStringLiteral("10000")};
}

inline void writeIndex(const QString& path, const QStringList& entries) {
    clsZELDB store;
    store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Name"),
                      Variant::fromString(QStringLiteral("Feindlich")));
    for (int i = 0; i < entries.size(); ++i)
        store.SaveSetting(QStringLiteral("INDEX"), QString::number(i + 1),
                          Variant::fromString(entries[i]));
    store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"),
                      Variant::fromLong(static_cast<std::int32_t>(entries.size())));
    store.SaveIOFile(path);
}

// A short, valid service file.
inline QByteArray plainService(const QByteArray& title, const QByteArray& id) {
    return ServiceBytes()
        .header(title, "Tavik", "Werktags", id)
        .count(1)
        .sentence("4711", "Gong ", {{"0000", 0}});
}

// What lies around the package: a neighbouring package and the folder root/outside.
inline void writeSurroundings(const QString& root) {
    QDir().mkpath(root + QStringLiteral("/outside"));
    writeTone(root + QStringLiteral("/outside/secret.wav"), 400, 8000);
    QFile notes(root + QStringLiteral("/outside/notes.txt"));
    if (notes.open(QIODevice::WriteOnly))
        notes.write("nicht anfassen\n");
    QFile service(root + QStringLiteral("/outside/_8._"));
    if (service.open(QIODevice::WriteOnly))
        service.write(plainService("Fremder Dienst", "8"));
    const QString neighbour = root + QStringLiteral("/Data/Nachbar");
    QDir().mkpath(neighbour);
    writeTone(neighbour + QStringLiteral("/0000.wav"), 400, 8000);
    writeIndex(neighbour + QStringLiteral("/Package.io"), {QStringLiteral("0000~Nachbar")});
}

// The hostile package in `folder` (below root/Data), with its surroundings written first.
inline void writeHostilePackage(const QString& root, const QString& folder) {
    writeSurroundings(root);
    QDir().mkpath(folder);
    writeIndex(folder + QStringLiteral("/Package.io"), hostileIndexEntries());
    for (const QString& key : keysWithSound())
        writeTone(folder + u'/' + key + QStringLiteral(".wav"), 480, 8000);
    QFile text(folder + QStringLiteral("/Package.txt"));
    if (text.open(QIODevice::WriteOnly))
        text.write("Ein Paket von draußen\r\n");
    QFile picture(folder + QStringLiteral("/Package.img"));
    if (picture.open(QIODevice::WriteOnly))
        picture.write(QByteArray(64, '\x42'));
    // A folder named "_" lets a service ID beginning with "/.." climb out of the package.
    QDir().mkpath(folder + QStringLiteral("/_"));
    // Links named like a sound and like a service, pointing outside.
    test::MakeLink(root + QStringLiteral("/outside/secret.wav"),
                   folder + QStringLiteral("/0003.wav"));
    test::MakeLink(root + QStringLiteral("/outside/_8._"), folder + QStringLiteral("/_8._"));
}

// One service file of the corpus: its file name in the package and its bytes.
struct HostileService {
    QString fileName;
    QByteArray bytes;
};

// Service files that open (their header reads whole) but whose ID leads out of the package.
inline std::vector<HostileService> escapingServices() {
    return {
        {QStringLiteral("_1._"), plainService("Schr\xe4gstrich", "/../../../evil")},
        {QStringLiteral("_2._"), plainService("R\xfc"
                                              "ckstrich",
                                              "\\..\\..\\..\\evil")},
        {QStringLiteral("_3._"), plainService("Laufwerk", "C:evil")},
        {QStringLiteral("_4._"), plainService("Punkte", "..")},
        {QStringLiteral("_5._"), plainService("Nullzeichen", QByteArray("ev\0il", 5))},
        {QStringLiteral("_6._"), plainService("Steuerzeichen", "ev\x1bil")},
        {QStringLiteral("_7._"), plainService("Zeilenende", "evil\r\n")},
    };
}

// Service files that are cut or hold fields no editor writes.
inline std::vector<HostileService> brokenServices() {
    const QByteArray fourSentences = ServiceBytes()
                                         .header("Abgeschnitten", "", "", "20")
                                         .count(4)
                                         .sentence("1111", "Gong ", {{"0000", 0}})
                                         .sentence("2222", "Gong ", {{"0000", 0}})
                                         .sentence("3333", "Achtung ", {{"0001", 0}})
                                         .sentence("4444", "Gong ", {{"0000", 0}});
    return {
        // The header claims four sentences; the file ends inside the fourth.
        {QStringLiteral("_20._"), fourSentences.left(fourSentences.size() - 6)},
        // A count far beyond what the file holds.
        {QStringLiteral("_21._"), ServiceBytes()
                                      .header("Zu viele", "", "", "21")
                                      .count(32767)
                                      .sentence("1111", "Gong ", {{"0000", 0}})},
        // No sentence at all.
        {QStringLiteral("_22._"), ServiceBytes().header("Leer", "", "", "22").count(0)},
        // A negative count.
        {QStringLiteral("_23._"), ServiceBytes().header("Negativ", "", "", "23").count(-5)},
        // An entry array of three dimensions.
        {QStringLiteral("_24._"), ServiceBytes()
                                      .header("Dreidimensional", "", "", "24")
                                      .count(1)
                                      .counted("1111")
                                      .counted("")
                                      .u16(3)
                                      .i32(1)
                                      .i32(0)},
        // An entry array that does not start at 0.
        {QStringLiteral("_25._"), ServiceBytes()
                                      .header("Verschoben", "", "", "25")
                                      .count(1)
                                      .counted("1111")
                                      .counted("")
                                      .u16(1)
                                      .i32(1)
                                      .i32(7)},
        // The file ends inside the ID.
        {QStringLiteral("_26._"), ServiceBytes().header("Kopf", "", "", "123456").data().left(30)},
    };
}

// A whole service whose entries name announcements by keys that are no numbers, or by keys of
// no announcement at all, and whose LastTarget claims more entries than it has.
inline QByteArray serviceWithHostileEntries() {
    return ServiceBytes()
        .header("Fremde Schl\xfcssel", "", "", "30")
        .count(4)
        .sentence("1111", "Leer ", {{"", 0}})
        .sentence("2222", "Index ", {{"Package.i", 0}})
        .sentence("3333", "Fehlt ", {{"9999", 0}})
        .counted("4444")
        .counted("Zu lang ")
        .u16(1)
        .i32(1)
        .i32(0)
        .counted("0000")
        .i16(0)
        .i16(5);
}

} // namespace tavik::test
