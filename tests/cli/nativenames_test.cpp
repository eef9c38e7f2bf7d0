// Names as the system has them: a folder or file name that is not valid UTF-8 is refused
// before anything is written, and long paths are written whole or not at all.
#include "package/clszeldb.h"
#include "package/packagesettings.h"
#include "support/buildpaths.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"
#include "support/treesnapshot.h"
#include "util/conversions.h"
#include "util/fileops.h"

#include <QDir>
#include <QProcess>
#include <dirent.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::TempDir;
using tavik::test::tool;

namespace {

// The names in a folder as raw bytes.
QList<QByteArray> rawNames(const QByteArray& folder) {
    QList<QByteArray> names;
    if (DIR* dir = ::opendir(folder.constData())) {
        while (const dirent* entry = ::readdir(dir)) {
            const QByteArray name(entry->d_name);
            if (name != "." && name != "..")
                names << name;
        }
        ::closedir(dir);
    }
    std::sort(names.begin(), names.end());
    return names;
}

QByteArray readRaw(const QByteArray& path) {
    std::ifstream in(path.constData(), std::ios::binary);
    return QByteArray::fromStdString(
        std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
}

struct ByteNamedPackage {
    TempDir dir;
    QByteArray folder;

    ByteNamedPackage() {
        folder = QFile::encodeName(dir.path()) + "/Paket\xff";
        EXPECT_EQ(::mkdir(folder.constData(), 0700), 0);
        clsZELDB store;
        store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Autor"),
                          Variant::fromString(QStringLiteral("Alt")));
        std::ofstream(folder.constData() + std::string("/Package.io"), std::ios::binary)
            << store.toBytes().toStdString();
    }
    // Qt cannot name what it cannot decode: those entries go by their bytes.
    ~ByteNamedPackage() { removeRaw(QFile::encodeName(dir.path()), false); }
    static void removeRaw(const QByteArray& folder, bool all) {
        for (const QByteArray& name : rawNames(folder)) {
            const QByteArray path = folder + '/' + name;
            const bool remove = all || !IsFaithfulName(name);
            struct stat st {};
            if (::lstat(path.constData(), &st) == 0 && S_ISDIR(st.st_mode)) {
                removeRaw(path, remove);
                if (remove)
                    ::rmdir(path.constData());
            } else if (remove) {
                ::unlink(path.constData());
            }
        }
    }
    // Runs the tool through the shell, which hands the bytes over as they are.
    int run(const QString& arguments, QString* err = nullptr) const {
        QProcess shell;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("TAVIK"), tavik::test::ToolPath());
        env.insert(QStringLiteral("DIR"), dir.path());
        shell.setProcessEnvironment(env);
        shell.start(QStringLiteral("/bin/sh"),
                    {QStringLiteral("-c"), QStringLiteral("\"$TAVIK\" ") + arguments});
        EXPECT_TRUE(shell.waitForFinished(60000));
        if (err)
            *err = QString::fromLocal8Bit(shell.readAllStandardError());
        return shell.exitCode();
    }
};

const QString kPackage = QStringLiteral("\"$(printf \"$DIR/Paket\\377\")\"");

} // namespace

TEST(ByteNames, SetOnAFolderNamedWithByteFFIsRefusedAndNothingIsWritten) {
    ByteNamedPackage p;
    const QByteArray index = readRaw(p.folder + "/Package.io");
    const auto before = rawNames(QFile::encodeName(p.dir.path()));
    QString err;
    EXPECT_EQ(p.run(QStringLiteral("set %1 INFO Autor Neu").arg(kPackage), &err), 2);
    EXPECT_TRUE(err.contains(QStringLiteral("not valid"))) << err.toStdString();
    EXPECT_EQ(rawNames(QFile::encodeName(p.dir.path())), before);
    EXPECT_EQ(rawNames(p.folder), QList<QByteArray>{"Package.io"});
    EXPECT_EQ(readRaw(p.folder + "/Package.io"), index);
}

TEST(ByteNames, DeleteWriteImportAndNewWithByteFFNamesWriteNothing) {
    ByteNamedPackage p;
    const QString sound = p.dir.file(QStringLiteral("a.wav"));
    ASSERT_TRUE(tavik::test::writeTone(sound, 400, 8000));
    const QString good = p.dir.write(QStringLiteral("gut.io"), readRaw(p.folder + "/Package.io"));
    const QString json =
        p.dir.write(QStringLiteral("dump.json"), tool({"dump", good}).out.toUtf8());
    const auto before = rawNames(QFile::encodeName(p.dir.path()));
    const QByteArray index = readRaw(p.folder + "/Package.io");
    EXPECT_EQ(p.run(QStringLiteral("delete %1 INFO Autor").arg(kPackage)), 2);
    EXPECT_EQ(p.run(QStringLiteral("write \"%1\" %2").arg(json, kPackage)), 2);
    EXPECT_EQ(p.run(QStringLiteral("import %1 \"%2\"").arg(kPackage, sound)), 2);
    EXPECT_EQ(p.run(QStringLiteral("new \"$DIR\" \"$(printf 'Neu\\377')\" --title T --author A")),
              2);
    EXPECT_EQ(rawNames(QFile::encodeName(p.dir.path())), before);
    EXPECT_EQ(rawNames(p.folder), QList<QByteArray>{"Package.io"});
    EXPECT_EQ(readRaw(p.folder + "/Package.io"), index);
}

TEST(ByteNames, ASoundFileNamedWithByteFFIsRefusedForImport) {
    ByteNamedPackage p;
    const QString package = p.dir.file(QStringLiteral("Gut"));
    ASSERT_EQ(tool({"new", p.dir.path(), "Gut", "--title", "T", "--author", "A"}).code, 0);
    const QByteArray raw = QFile::encodeName(p.dir.path()) + "/Ton\xff.wav";
    ASSERT_TRUE(tavik::test::writeTone(p.dir.file(QStringLiteral("x.wav")), 400, 8000));
    ASSERT_EQ(::rename(QFile::encodeName(p.dir.file(QStringLiteral("x.wav"))).constData(),
                       raw.constData()),
              0);
    const QByteArray index = readAll(package + QStringLiteral("/Package.io"));
    EXPECT_EQ(p.run(QStringLiteral("import \"$DIR/Gut\" \"$(printf \"$DIR/Ton\\377.wav\")\"")), 2);
    EXPECT_EQ(tavik::test::namesIn(package), QStringList{"Package.io"});
    EXPECT_EQ(readAll(package + QStringLiteral("/Package.io")), index);
}

namespace {

// A folder whose full path is `length` characters long, made of nested folders.
QString deepFolder(const TempDir& dir, int length) {
    QString path = dir.path();
    while (path.size() < length) {
        const int left = length - int(path.size()) - 1;
        path += u'/' + QString(std::min(left, 200), u'd');
    }
    EXPECT_TRUE(QDir().mkpath(path));
    return path;
}

// The package as it is on disk: every name and every byte.
QMap<QString, QByteArray> contents(const QString& folder) {
    QMap<QString, QByteArray> files;
    for (const QString& name : tavik::test::namesIn(folder))
        files.insert(name, readAll(folder + u'/' + name));
    return files;
}

void importIsAllOrNothing(int length) {
    TempDir dir;
    const QString data = deepFolder(dir, length - 6);
    const QString package = data + QStringLiteral("/Paket");
    const QString sound = dir.file(QStringLiteral("a.wav"));
    ASSERT_TRUE(tavik::test::writeTone(sound, 400, 8000));
    ASSERT_EQ(QDir().mkdir(package), true);
    clsZELDB store;
    store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Name"), Variant::fromString("P"));
    store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"), Variant::fromLong(0));
    WriteFileAtomically(package + QStringLiteral("/Package.io"), store.toBytes());
    const auto before = contents(package);
    const tavik::test::ToolRun run = tool({"import", package, sound, "--title", "Neu"});
    if (run.code == 0) {
        clsZELDB saved;
        ASSERT_TRUE(saved.OpenIOFile(package + QStringLiteral("/Package.io")));
        EXPECT_EQ(ReadIndexCount(saved), 1);
        EXPECT_EQ(readAll(package + QStringLiteral("/0000.wav")), readAll(sound));
        EXPECT_EQ(tavik::test::namesIn(package), (QStringList{"0000.wav", "Package.io"}));
    } else {
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(contents(package), before) << run.err.toStdString();
    }
}

} // namespace

TEST(LongPaths, ImportIntoAPackageAt4000CharactersIsAllOrNothing) {
    importIsAllOrNothing(4000);
}

TEST(LongPaths, ImportIntoAPackageAt4080CharactersIsAllOrNothing) {
    importIsAllOrNothing(4080);
}

TEST(LongPaths, SetAndNewAt4080CharactersAreAllOrNothing) {
    TempDir dir;
    const QString data = deepFolder(dir, 4074);
    const tavik::test::ToolRun made = tool({"new", data, "Paket", "--title", "T", "--author", "A"});
    const QString package = data + QStringLiteral("/Paket");
    if (made.code == 0) {
        EXPECT_TRUE(FileCheck(package + QStringLiteral("/Package.io")));
    } else {
        EXPECT_EQ(made.code, 2);
        EXPECT_FALSE(QFileInfo::exists(package)) << made.err.toStdString();
        ASSERT_TRUE(QDir().mkdir(package));
    }
    const auto before = contents(package);
    const tavik::test::ToolRun set = tool({"set", package, "INFO", "Autor", "Neu"});
    if (set.code == 0) {
        clsZELDB saved;
        saved.OpenIOFile(package + QStringLiteral("/Package.io"));
        EXPECT_EQ(CStr(saved.GetSetting("INFO", "Autor", "")), QStringLiteral("Neu"));
    } else {
        EXPECT_EQ(set.code, 2);
        EXPECT_EQ(contents(package), before) << set.err.toStdString();
    }
}
