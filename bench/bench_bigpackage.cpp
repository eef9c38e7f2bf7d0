// Big packages against a bare reader, in one run: packages of 1,000, 10,000 and 30,000
// announcements (short WAV and MP3 sounds, settings on every third) are loaded by the editor
// (the click on "Öffnen" in the open dialog to an idle window), saved (write and reload),
// sorted, and saved sorted; a bare program that only reads Package.io, opens each sound's
// header with libsndfile and fills a QTreeWidget is timed beside it. Each measurement runs
// in a process of its own, so its peak memory is its own. Then the headless tool on the
// largest package, and hostile packages loaded by the editor.
//
// Run it on a real X server with a window manager (see README):
//     xvfb-run -a tests/screen/run_with_openbox.sh build/bench/bench_bigpackage
// Without a display it falls back to the offscreen platform and says so.
#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "audio/modmci.h"
#include "audio/systembackend.h"
#include "benchsound.h"
#include "dialogs/frmopen.h"
#include "log/eventlog.h"
#include "package/packagefolder.h"
#include "package/zeldbformat.h"
#include "settings/language.h"
#include "util/apppath.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>
#include <cstdio>
#include <map>
#include <unistd.h>

using namespace tavik;

namespace {

using Figures = std::map<QString, double>;

// --- measuring ---

double peakMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    }
    return 0;
}

// Until every posted event, paint included, has been handled.
void idle() {
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    QEventLoop loop;
    QTimer::singleShot(0, &loop, &QEventLoop::quit);
    loop.exec();
}

void printFigures(const Figures& figures) {
    for (const auto& [name, value] : figures)
        std::printf("%s=%.3f\n", qPrintable(name), value);
    std::fflush(stdout);
}

// --- making packages ---

ZeldbItem item(const QString& name, Variant value) {
    ZeldbItem i;
    i.InUse = -1;
    i.Name = name;
    i.Value = std::move(value);
    return i;
}

ZeldbKey key(const QString& name, const QList<ZeldbItem>& items) {
    ZeldbKey k;
    k.InUse = -1;
    k.Name = name;
    k.ItemCount = static_cast<std::int16_t>(std::min<qsizetype>(items.size(), 32767));
    if (!items.isEmpty()) {
        k.Items.redimPreserve(items.size() - 1);
        for (qsizetype i = 0; i < items.size(); ++i)
            k.Items.ref(i) = items[i];
    }
    return k;
}

// The file bytes of a store holding `keys`, written as a store saved from scratch.
QByteArray indexBytes(const QList<ZeldbKey>& keys, std::int16_t keyCount) {
    ByteWriter out;
    out.raw(QByteArray(zeldb::kMagic, zeldb::kMagicSize));
    ZeldbHeader header;
    header.KeyCount = keyCount;
    zeldb::writeHeader(out, header);
    for (const ZeldbKey& k : keys)
        zeldb::writeKey(out, k);
    return out.data();
}

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// A hard link where the file system allows it: a real file of the package, and cheap.
void placeSound(const QString& source, const QString& target) {
    if (::link(QFile::encodeName(source).constData(), QFile::encodeName(target).constData()) != 0)
        QFile::copy(source, target);
}

void makePackage(const QString& folder, int count, const QString& wav, const QString& mp3) {
    QDir().mkpath(folder);
    QList<ZeldbItem> index;
    QList<ZeldbKey> keys;
    keys.append(key(QStringLiteral("INFO"),
                    {item(QStringLiteral("Name"), Variant::fromString(QDir(folder).dirName())),
                     item(QStringLiteral("Autor"), Variant::fromString(QStringLiteral("Bench")))}));
    for (int i = 0; i < count; ++i) {
        const QString k = FormatKey(i);
        const bool isMp3 = i % 4 == 3;
        placeSound(isMp3 ? mp3 : wav,
                   folder + QLatin1Char('/') + k +
                       (isMp3 ? QStringLiteral(".mp3") : QStringLiteral(".wav")));
        index.append(item(
            QString::number(i + 1),
            Variant::fromString(JoinIndexEntry(
                k, QStringLiteral("Ansage %1 Gleis %2").arg((i * 7919) % count).arg(i % 12)))));
        if (i % 3 == 0)
            keys.append(key(k, {item(QStringLiteral("Color"), Variant::fromLong(i % 9 ? 0 : 255)),
                                item(QStringLiteral("NameVisible"), Variant::fromBoolean(i % 2)),
                                item(QStringLiteral("AutoPlace"), Variant::fromLong(-1))}));
    }
    index.append(item(QStringLiteral("Count"), Variant::fromLong(count)));
    keys.insert(1, key(QStringLiteral("INDEX"), index));
    writeFile(folder + QStringLiteral("/Package.io"),
              indexBytes(keys, static_cast<std::int16_t>(keys.size())));
}

// --- the bare reader ---

int numberOf(const Variant& v) {
    switch (v.type()) {
    case VarType::String:
        return v.stringValue().toInt();
    case VarType::Integer:
    case VarType::Boolean:
        return v.int16Bits();
    default:
        return v.int32Bits();
    }
}

// What the editor's load needs and nothing more: the index file read and parsed once, each
// shown entry's settings and sound found by hash, each sound's header opened for its length,
// and a QTreeWidget filled with the rows.
Figures runBare(const QString& folder) {
    int argc = 1;
    char name[] = "bare";
    char* argv[] = {name, nullptr};
    QApplication app(argc, argv);
    QTreeWidget tree;
    tree.setColumnCount(4);
    tree.resize(640, 480);
    tree.show();
    idle();
    const double idleMiB = peakMiB();

    QElapsedTimer t;
    t.start();
    QFile file(folder + QStringLiteral("/Package.io"));
    file.open(QIODevice::ReadOnly);
    const QByteArray bytes = file.readAll();
    ByteReader in(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size());
    in.bytes(zeldb::kMagicSize);
    ZeldbHeader header;
    zeldb::readHeader(in, header);
    std::vector<ZeldbKey> keys(static_cast<std::size_t>(std::max<int>(header.KeyCount, 0)));
    QHash<QString, const ZeldbKey*> byName;
    for (ZeldbKey& k : keys) {
        zeldb::readKey(in, k);
        if (k.InUse && !byName.contains(k.Name))
            byName.insert(k.Name, &k);
    }
    auto setting = [&](const QString& k, const QString& i) -> const Variant* {
        const ZeldbKey* record = byName.value(k);
        if (!record)
            return nullptr;
        for (qint64 n = 0; n < record->ItemCount; ++n)
            if (record->Items.get(n).InUse && record->Items.get(n).Name == i)
                return &record->Items.get(n).Value;
        return nullptr;
    };
    QHash<QString, const Variant*> entries;
    if (const ZeldbKey* index = byName.value(QStringLiteral("INDEX")))
        for (qint64 n = 0; n < index->ItemCount; ++n)
            if (index->Items.get(n).InUse && !entries.contains(index->Items.get(n).Name))
                entries.insert(index->Items.get(n).Name, &index->Items.get(n).Value);
    QHash<QString, QString> soundOf;
    for (const QString& n : QDir(folder).entryList(QDir::Files, QDir::Name)) {
        const QString k = n.section(QLatin1Char('.'), 0, 0);
        if (!soundOf.contains(k))
            soundOf.insert(k, n);
    }
    const Variant* countValue = entries.value(QStringLiteral("Count"));
    const int count = countValue ? numberOf(*countValue) : 0;
    QList<QTreeWidgetItem*> rows;
    rows.reserve(count);
    for (int i = 1; i <= count; ++i) {
        const Variant* entry = entries.value(QString::number(i));
        if (!entry)
            continue;
        const QString text = entry->stringValue();
        const qsizetype tilde = text.indexOf(QLatin1Char('~'));
        const QString k = text.left(tilde);
        const QString title = text.mid(tilde + 1).section(QLatin1Char('~'), 0, 0);
        if (title.isEmpty())
            continue;
        const Variant* color = setting(k, QStringLiteral("Color"));
        setting(k, QStringLiteral("NameVisible"));
        setting(k, QStringLiteral("AutoPlace"));
        const QString sound = soundOf.value(k);
        QString length;
        SF_INFO info{};
        if (SNDFILE* sf = sf_open(QFile::encodeName(folder + QLatin1Char('/') + sound).constData(),
                                  SFM_READ, &info)) {
            length =
                QString::number(info.frames * 1000 / std::max(info.samplerate, 1) / 1000.0, 'f', 2);
            sf_close(sf);
        }
        auto* row = new QTreeWidgetItem({k, title, sound.section(QLatin1Char('.'), -1), length});
        if (color && numberOf(*color) > 0) {
            row->setForeground(0, QColor(Qt::red));
            QFont f = row->font(0);
            f.setBold(true);
            row->setFont(0, f);
        }
        rows.append(row);
    }
    tree.addTopLevelItems(rows);
    idle();
    Figures f;
    f[QStringLiteral("load")] = t.nsecsElapsed() / 1e6;
    f[QStringLiteral("rows")] = tree.topLevelItemCount();
    t.start();
    tree.sortItems(1, Qt::AscendingOrder);
    idle();
    f[QStringLiteral("sort")] = t.nsecsElapsed() / 1e6;
    f[QStringLiteral("peak")] = peakMiB();
    f[QStringLiteral("idle")] = idleMiB;
    return f;
}

// --- the editor ---

struct Editor {
    Language language;
    EventLog log{AppPath(), &language};
    std::unique_ptr<MciBackend> backend = createSystemMciBackend();
    modMCI mci{*backend, [this](const QString& line) { log.WriteLog(line); }};
    frmMain window{language, mci, log};
    int messages = 0;
    QString firstMessage;

    Editor() {
        SetMessageHandler([this](const MessageRequest& r) {
            if (messages++ == 0)
                firstMessage = r.text;
            return MsgResult::OK;
        });
        window.ShowSplash = false;
        window.FormLoad();
        window.show();
        idle();
    }
};

// The click on "Öffnen" in the open dialog with the package chosen, to an idle window.
double clickOpen(Editor& editor, const QString& folder) {
    QElapsedTimer t;
    bool clicked = false;
    std::function<void()> choose = [&] {
        auto* dialog = qobject_cast<frmOpen*>(QApplication::activeModalWidget());
        if (!dialog) {
            QTimer::singleShot(5, choose);
            return;
        }
        int row = -1;
        for (int i = 0; i < dialog->packageFolders().size(); ++i)
            if (QFileInfo(dialog->packageFolders()[i]).canonicalFilePath() ==
                QFileInfo(folder).canonicalFilePath())
                row = i;
        if (row < 0) {
            std::fprintf(stderr, "the open dialog does not list %s\n", qPrintable(folder));
            dialog->reject();
            return;
        }
        dialog->lstFile()->setCurrentRow(row);
        QCoreApplication::processEvents();
        clicked = true;
        t.start();
        QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
    };
    QTimer::singleShot(0, choose);
    QTest::mouseClick(editor.window.cmdOpen(), Qt::LeftButton);
    idle();
    return clicked ? t.nsecsElapsed() / 1e6 : -1;
}

double timed(const std::function<void()>& f) {
    QElapsedTimer t;
    t.start();
    f();
    idle();
    return t.nsecsElapsed() / 1e6;
}

Figures runEditor(const QString& folder) {
    int argc = 1;
    char name[] = "editor";
    char* argv[] = {name, nullptr};
    TavikApplication app(argc, argv);
    Editor editor;
    Figures f;
    f[QStringLiteral("idle")] = peakMiB();
    f[QStringLiteral("load")] = clickOpen(editor, folder);
    f[QStringLiteral("rows")] = editor.window.lsvPack()->Count();
    f[QStringLiteral("peak")] = peakMiB();
    // BENCH_LOAD_ONLY=1 ends after the load, so that a heap profiler's peak is the load's.
    if (!qEnvironmentVariableIsEmpty("BENCH_LOAD_ONLY"))
        return f;
    f[QStringLiteral("save")] =
        timed([&] { QTest::mouseClick(editor.window.cmdSave(), Qt::LeftButton); });
    f[QStringLiteral("sort")] = timed([&] { editor.window.mnuTitel()->trigger(); });
    f[QStringLiteral("savesorted")] =
        timed([&] { QTest::mouseClick(editor.window.cmdSave(), Qt::LeftButton); });
    // A click on the play time header: the times sorted by their numbers.
    f[QStringLiteral("sortnumbers")] = timed([&] { editor.window.SortByHeader(3); });
    f[QStringLiteral("messages")] = editor.messages;
    return f;
}

// A hostile package loaded straight through LoadPackage: how long, how much memory, what it said.
Figures runHostile(const QString& folder) {
    int argc = 1;
    char name[] = "hostile";
    char* argv[] = {name, nullptr};
    TavikApplication app(argc, argv);
    QString error;
    app.setErrorReporter([&](const QString& text) { error = text; });
    Editor editor;
    const double before = peakMiB();
    editor.window.PackageFolder = QDir::toNativeSeparators(folder);
    editor.window.IndexFilePath = QDir::toNativeSeparators(folder + QStringLiteral("/Package.io"));
    Figures f;
    f[QStringLiteral("load")] = timed([&] { RunHandler([&] { editor.window.LoadPackage(); }); });
    f[QStringLiteral("rows")] = editor.window.lsvPack()->Count();
    f[QStringLiteral("peak")] = peakMiB();
    f[QStringLiteral("grown")] = peakMiB() - before;
    f[QStringLiteral("messages")] = editor.messages;
    const QString said = !error.isEmpty() ? error : editor.firstMessage;
    std::printf("said=%s\n", qPrintable(said.left(90).simplified()));
    return f;
}

// --- the parent ---

Figures child(const QString& mode, const QString& folder, QString* said = nullptr) {
    QProcess p;
    p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    p.start(QCoreApplication::applicationFilePath(), {mode, folder});
    p.waitForFinished(-1);
    Figures f;
    for (const QByteArray& line : p.readAllStandardOutput().split('\n')) {
        const qsizetype eq = line.indexOf('=');
        if (eq <= 0)
            continue;
        const QString k = QString::fromUtf8(line.left(eq));
        if (k == QLatin1String("said")) {
            if (said)
                *said = QString::fromUtf8(line.mid(eq + 1));
        } else {
            f[k] = line.mid(eq + 1).toDouble();
        }
    }
    if (p.exitCode() != 0)
        std::printf("  (%s %s ended with %d)\n", qPrintable(mode), qPrintable(folder),
                    p.exitCode());
    return f;
}

// The median of each figure over `runs` children. An editor run saves the package, with every
// row's settings written: each run starts from the package as it was built, the one the bare
// reader read, and the package is left that way for what comes after.
Figures medianOf(const QString& mode, const QString& folder, int runs) {
    QFile index(folder + QStringLiteral("/Package.io"));
    index.open(QIODevice::ReadOnly);
    const QByteArray built = index.readAll();
    index.close();
    std::map<QString, std::vector<double>> all;
    for (int r = 0; r < runs; ++r) {
        for (const auto& [k, v] : child(mode, folder))
            all[k].push_back(v);
        writeFile(index.fileName(), built);
    }
    Figures f;
    for (auto& [k, v] : all) {
        std::sort(v.begin(), v.end());
        f[k] = v[v.size() / 2];
    }
    return f;
}

QString toolPath() {
    return qEnvironmentVariable("TAVIK_TOOL", QStringLiteral(TAVIK_TOOL_PATH));
}

// The wall time of a whole process, start-up included.
double timeProcess(const QString& program, const QStringList& args) {
    QElapsedTimer t;
    t.start();
    QProcess p;
    p.setStandardOutputFile(QProcess::nullDevice());
    p.setStandardErrorFile(QProcess::nullDevice());
    p.start(program, args);
    p.waitForFinished(-1);
    return t.nsecsElapsed() / 1e6;
}

double timeTool(const QStringList& args) {
    return timeProcess(toolPath(), args);
}

// Reading the index file once: its bytes and every record parsed.
double readOnce(const QString& folder) {
    QElapsedTimer t;
    t.start();
    QFile file(folder + QStringLiteral("/Package.io"));
    file.open(QIODevice::ReadOnly);
    const QByteArray bytes = file.readAll();
    ByteReader in(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size());
    in.bytes(zeldb::kMagicSize);
    ZeldbHeader header;
    zeldb::readHeader(in, header);
    std::vector<ZeldbKey> keys(static_cast<std::size_t>(std::max<int>(header.KeyCount, 0)));
    for (ZeldbKey& k : keys)
        zeldb::readKey(in, k);
    return t.nsecsElapsed() / 1e6;
}

// Reading the index once and opening every sound's header: what a check cannot do without.
double readAndMeasure(const QString& folder) {
    QElapsedTimer t;
    t.start();
    readOnce(folder);
    for (const QString& n :
         QDir(folder).entryList({QStringLiteral("*.wav"), QStringLiteral("*.mp3")}, QDir::Files)) {
        SF_INFO info{};
        if (SNDFILE* sf = sf_open(QFile::encodeName(folder + QLatin1Char('/') + n).constData(),
                                  SFM_READ, &info))
            sf_close(sf);
    }
    return t.nsecsElapsed() / 1e6;
}

// Hostile packages: each one file of the kind a bad download or an attack brings.
void makeHostile(const QString& root, const QString& wav, QStringList& names) {
    auto folderOf = [&](const QString& n) {
        names << n;
        const QString folder = root + QLatin1Char('/') + n;
        QDir().mkpath(folder);
        return folder;
    };
    auto info = key(QStringLiteral("INFO"),
                    {item(QStringLiteral("Name"), Variant::fromString(QStringLiteral("Boese")))});
    {
        // An INDEX whose array descriptor claims 2^31 item slots, with three really there.
        const QString folder = folderOf(QStringLiteral("claims-2^31-slots"));
        placeSound(wav, folder + QStringLiteral("/0000.wav"));
        ZeldbKey index =
            key(QStringLiteral("INDEX"),
                {item(QStringLiteral("1"), Variant::fromString(QStringLiteral("0000~A"))),
                 item(QStringLiteral("Count"), Variant::fromLong(1))});
        QByteArray bytes = indexBytes({info, index}, 2);
        // The INDEX record's element count follows its item count and dimensions.
        const QByteArray marker = QByteArray("\x05\x00INDEX", 7);
        const qsizetype at = bytes.indexOf(marker) + marker.size() + 4;
        bytes[at] = '\xff';
        bytes[at + 1] = '\xff';
        bytes[at + 2] = '\xff';
        bytes[at + 3] = '\x7f';
        writeFile(folder + QStringLiteral("/Package.io"), bytes);
    }
    {
        // "Count" says 2^31 - 1 entries.
        const QString folder = folderOf(QStringLiteral("count-2^31"));
        placeSound(wav, folder + QStringLiteral("/0000.wav"));
        writeFile(
            folder + QStringLiteral("/Package.io"),
            indexBytes({info, key(QStringLiteral("INDEX"),
                                  {item(QStringLiteral("1"),
                                        Variant::fromString(QStringLiteral("0000~A"))),
                                   item(QStringLiteral("Count"), Variant::fromLong(2147483647))})},
                       2));
    }
    // INDEX entries that all name one key: 100,000 (more slots than a key can have; Count as
    // high as it reads, 32,767) and 32,766 (as many as a key holds beside "Count").
    for (const int entries : {100000, 32766}) {
        const QString folder = folderOf(QStringLiteral("%1-entries-one-key").arg(entries));
        placeSound(wav, folder + QStringLiteral("/0000.wav"));
        QList<ZeldbItem> items;
        for (int i = 1; i <= entries; ++i)
            items.append(
                item(QString::number(i), Variant::fromString(QStringLiteral("0000~Gong"))));
        items.append(item(QStringLiteral("Count"), Variant::fromLong(std::min(entries, 32767))));
        ZeldbKey index = key(QStringLiteral("INDEX"), items);
        writeFile(folder + QStringLiteral("/Package.io"), indexBytes({info, index}, 2));
    }
    {
        const QString folder = folderOf(QStringLiteral("30000-missing-sounds"));
        QList<ZeldbItem> items;
        for (int i = 1; i <= 30000; ++i)
            items.append(item(QString::number(i), Variant::fromString(JoinIndexEntry(
                                                      FormatKey(i), QStringLiteral("Weg")))));
        items.append(item(QStringLiteral("Count"), Variant::fromLong(30000)));
        writeFile(folder + QStringLiteral("/Package.io"),
                  indexBytes({info, key(QStringLiteral("INDEX"), items)}, 2));
    }
    {
        // Titles as long as a counted string holds, filling a 10 MB file.
        const QString folder = folderOf(QStringLiteral("10MB-of-titles"));
        QList<ZeldbItem> items;
        const int entries = 10 * 1024 * 1024 / 65535 + 1;
        for (int i = 1; i <= entries; ++i) {
            placeSound(wav, folder + QLatin1Char('/') + FormatKey(i) + QStringLiteral(".wav"));
            items.append(item(QString::number(i),
                              Variant::fromString(FormatKey(i) + QLatin1Char('~') +
                                                  QString(65535 - 5, QLatin1Char('T')))));
        }
        items.append(item(QStringLiteral("Count"), Variant::fromLong(entries)));
        writeFile(folder + QStringLiteral("/Package.io"),
                  indexBytes({info, key(QStringLiteral("INDEX"), items)}, 2));
    }
}

QString ratio(double a, double b) {
    return b > 0 ? QString::number(a / b, 'f', 2) + QLatin1Char('x') : QStringLiteral("-");
}

int runParent(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    QCoreApplication app(argc, argv);
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        std::printf("No X display: running offscreen. For the real figures run it under\n"
                    "xvfb-run -a tests/screen/run_with_openbox.sh\n");
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("TAVIK_AUDIO", "null");
    QTemporaryDir root;
    // BENCH_KEEP=1 keeps the packages, for a profiler run of one child.
    if (!qEnvironmentVariableIsEmpty("BENCH_KEEP")) {
        root.setAutoRemove(false);
        std::printf("packages kept in %s\n", qPrintable(root.path()));
    }
    qputenv("TAVIK_HOME", root.path().toLocal8Bit());
    for (const char* folder : {"bin", "res/lang", "Data", "Hostile"})
        QDir(root.path()).mkpath(QString::fromLatin1(folder));
    QFile::copy(QStringLiteral(TAVIK_SOURCE_ROOT "/bin/Formats.ini"),
                root.filePath(QStringLiteral("bin/Formats.ini")));
    const QString languageFile = root.filePath(QStringLiteral("res/lang/Deutsch.lng"));
    QFile::copy(QStringLiteral(TAVIK_SOURCE_ROOT "/res/lang/Deutsch.lng"), languageFile);
    writeFile(root.filePath(QStringLiteral("bin/Tavik.ini")),
              "[Settings]\r\nLanguage=" + languageFile.toLocal8Bit() + "\r\n");
    const QString wav = root.filePath(QStringLiteral("tone.wav"));
    const QString mp3 = root.filePath(QStringLiteral("tone.mp3"));
    bench::writeTone(wav, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1600, 16000);
    if (!bench::writeTone(mp3, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 2400, 16000))
        std::printf("libsndfile cannot write MP3 here: the MP3 announcements are WAV files\n");

    // BENCH_SIZES="1000 10000" measures fewer sizes; the tool runs on the largest one.
    QList<int> sizes = {1000, 10000, 30000};
    if (!qEnvironmentVariableIsEmpty("BENCH_SIZES")) {
        sizes.clear();
        for (const QString& n :
             qEnvironmentVariable("BENCH_SIZES").split(QLatin1Char(' '), Qt::SkipEmptyParts))
            sizes << n.toInt();
    }
    // BENCH_TOOL_ONLY=1 times the headless tool alone (on the largest size).
    const bool toolOnly = !qEnvironmentVariableIsEmpty("BENCH_TOOL_ONLY");
    for (int n : sizes)
        makePackage(root.filePath(QStringLiteral("Data/Paket%1").arg(n)), n, wav,
                    QFile::exists(mp3) ? mp3 : wav);

    std::printf(
        "\nTimes in ms (median of the runs), memory as peak resident MiB of the process.\n"
        "Load: click on Open in the open dialog to an idle window; Save: the click on Save\n"
        "(write and reload) to idle; sort: the sort menu's title entry against a plain\n"
        "QTreeWidget::sortItems of the same rows. +load and +bare: what the load added to the\n"
        "peak of each process over its peak with its window up and empty.\n\n");
    std::printf("%7s | %9s %9s %6s | %9s %6s | %9s %6s | %8s %8s %6s | %7s %7s %6s | %7s %7s\n",
                "entries", "load", "bare", "ratio", "save", "ratio", "saveSort", "ratio", "sort",
                "bare", "ratio", "MiB", "bare", "diff", "+load", "+bare");
    std::map<int, Figures> editors;
    for (int n : toolOnly ? QList<int>() : sizes) {
        const QString folder = root.filePath(QStringLiteral("Data/Paket%1").arg(n));
        const int runs = 3;
        const Figures bare = medianOf(QStringLiteral("bare"), folder, runs);
        const Figures ed = medianOf(QStringLiteral("editor"), folder, runs);
        editors[n] = ed;
        auto v = [](const Figures& f, const char* k) {
            return f.count(QLatin1String(k)) ? f.at(QLatin1String(k)) : -1.0;
        };
        std::printf("%7d | %9.1f %9.1f %6s | %9.1f %6s | %9.1f %6s | %8.1f %8.1f %6s | %7.1f %7.1f "
                    "%+6.1f | %7.1f %7.1f%s\n",
                    n, v(ed, "load"), v(bare, "load"),
                    qPrintable(ratio(v(ed, "load"), v(bare, "load"))), v(ed, "save"),
                    qPrintable(ratio(v(ed, "save"), v(bare, "load"))), v(ed, "savesorted"),
                    qPrintable(ratio(v(ed, "savesorted"), v(bare, "load"))), v(ed, "sort"),
                    v(bare, "sort"), qPrintable(ratio(v(ed, "sort"), v(bare, "sort"))),
                    v(ed, "peak"), v(bare, "peak"), v(ed, "peak") - v(bare, "peak"),
                    v(ed, "peak") - v(ed, "idle"), v(bare, "peak") - v(bare, "idle"),
                    v(ed, "rows") == n && v(bare, "rows") == n ? "" : "  ROWS MISSING");
        std::printf("%7s   header click on the play time (by number): %.1f ms, %s of the plain "
                    "sort\n",
                    "", v(ed, "sortnumbers"),
                    qPrintable(ratio(v(ed, "sortnumbers"), v(bare, "sort"))));
    }
    auto at = [&](int n, const char* k) {
        return editors.count(n) ? editors[n][QLatin1String(k)] : -1.0;
    };
    std::printf("\ngrowth 10,000 -> 30,000 (linear is 3.0x): load %s, save %s, saved sorted %s\n",
                qPrintable(ratio(at(30000, "load"), at(10000, "load"))),
                qPrintable(ratio(at(30000, "save"), at(10000, "save"))),
                qPrintable(ratio(at(30000, "savesorted"), at(10000, "savesorted"))));

    // The headless tool on the largest package, against reading its index file once.
    const QString big = root.filePath(QStringLiteral("Data/Paket%1").arg(sizes.last()));
    const QString work = root.filePath(QStringLiteral("Tool"));
    QDir().mkpath(work);
    QFile::copy(big + QStringLiteral("/Package.io"), work + QStringLiteral("/Package.io"));
    const QString json = root.filePath(QStringLiteral("dump.json"));
    {
        QProcess p;
        p.setStandardOutputFile(json);
        p.start(toolPath(), {QStringLiteral("dump"), big});
        p.waitForFinished(-1);
    }
    // The references run as processes of their own too, start-up included, as the tool does.
    std::vector<double> once, measured;
    for (int r = 0; r < 3; ++r) {
        once.push_back(timeProcess(QCoreApplication::applicationFilePath(),
                                   {QStringLiteral("readonce"), big}));
        measured.push_back(timeProcess(QCoreApplication::applicationFilePath(),
                                       {QStringLiteral("readmeasure"), big}));
    }
    std::sort(once.begin(), once.end());
    std::sort(measured.begin(), measured.end());
    const double readRef = once[1];
    const double measureRef = measured[1];
    std::printf("\ntavik on %d entries (whole process), against a process reading Package.io "
                "once (%.1f ms)\nand, for check, one reading it and opening every sound's "
                "header (%.1f ms):\n",
                sizes.last(), readRef, measureRef);
    const struct {
        const char* name;
        QStringList args;
        double reference;
    } tools[] = {
        {"dump", {QStringLiteral("dump"), big}, readRef},
        {"check", {QStringLiteral("check"), big, QStringLiteral("--no-loudness")}, measureRef},
        // The whole check, loudness measured by a run before (from the cache).
        {"check+L", {QStringLiteral("check"), big}, measureRef},
        {"set",
         {QStringLiteral("set"), work, QStringLiteral("0003"), QStringLiteral("Color"),
          QStringLiteral("255"), QStringLiteral("--type"), QStringLiteral("long")},
         readRef},
        {"write", {QStringLiteral("write"), json, work}, readRef},
    };
    // The tool's loudness cache lives with this run, on every system; the first check fills it.
    qputenv("TAVIK_CACHE", root.filePath(QStringLiteral("cache")).toLocal8Bit());
    const double firstLoudness = timeTool({QStringLiteral("check"), big});
    std::printf("  (the first check measuring every sound's loudness took %.1f ms)\n",
                firstLoudness);
    for (const auto& tool : tools) {
        std::vector<double> t;
        for (int r = 0; r < 3; ++r)
            t.push_back(timeTool(tool.args));
        std::sort(t.begin(), t.end());
        std::printf("  tavik %-6s %9.1f ms  ratio %s\n", tool.name, t[1],
                    qPrintable(ratio(t[1], tool.reference)));
    }

    if (toolOnly)
        return 0;
    QStringList hostile;
    makeHostile(root.filePath(QStringLiteral("Hostile")), wav, hostile);
    std::printf("\nHostile packages, loaded by the editor (LoadPackage to idle):\n");
    for (const QString& name : hostile) {
        const QString folder = root.filePath(QStringLiteral("Hostile/") + name);
        QString said;
        const Figures f = child(QStringLiteral("hostile"), folder, &said);
        auto v = [&](const char* k) {
            return f.count(QLatin1String(k)) ? f.at(QLatin1String(k)) : -1.0;
        };
        std::printf("  %-24s file %7.2f MiB  load %8.1f ms  rows %6.0f  messages %6.0f  memory "
                    "+%.1f MiB\n      says: %s\n",
                    qPrintable(name),
                    QFileInfo(folder + QStringLiteral("/Package.io")).size() / 1048576.0, v("load"),
                    v("rows"), v("messages"), v("grown"), qPrintable(said));
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3) {
        const QString mode = QString::fromLocal8Bit(argv[1]);
        const QString folder = QString::fromLocal8Bit(argv[2]);
        if (mode == QLatin1String("bare"))
            printFigures(runBare(folder));
        else if (mode == QLatin1String("editor"))
            printFigures(runEditor(folder));
        else if (mode == QLatin1String("hostile"))
            printFigures(runHostile(folder));
        else if (mode == QLatin1String("readonce"))
            readOnce(folder);
        else if (mode == QLatin1String("readmeasure"))
            readAndMeasure(folder);
        else
            return 2;
        return 0;
    }
    return runParent(argc, argv);
}
