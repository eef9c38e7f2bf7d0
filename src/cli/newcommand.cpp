#include "tool.h"

#include "cli/lossytext.h"
#include "cli/options.h"
#include "dialogs/newpackage.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "util/apppath.h"
#include "util/fileops.h"
#include "util/packagelock.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tavik::cli {

namespace {

// A package that could not be written whole goes again: the folder was made by this run, and
// only the files this run writes are taken out of it, so a file someone else put there stays.
void removeUnfinishedPackage(const QString& folder) {
    for (const char16_t* name : {kIndexFileName, kCommentFileName, kPictureFileName})
        QFile::remove(NativePath(folder + QString::fromUtf16(name)));
    QDir().rmdir(folder);
}

int makePackage(const QString& name, const QString& folder, const PackageInfo& info,
                QTextStream& out, QTextStream& err) {
    switch (MakeNewPackageFolder(name, folder)) {
    case NewPackageRefusal::None:
        break;
    case NewPackageRefusal::FolderName:
        return fail(err, name,
                    QStringLiteral("not a plain folder name (no separator, \"..\", \":\", "
                                   "device name such as CON, or trailing dot or blank)"));
    case NewPackageRefusal::PackageThere:
        return fail(err, folder, QStringLiteral("already holds a package"));
    case NewPackageRefusal::FolderNotMade:
        return fail(err, folder, QStringLiteral("the folder cannot be made"));
    }
    if (!info.Picture.isEmpty() && !FileCheck(info.Picture))
        out << "picture " << info.Picture << " is missing or empty: not copied\n";
    // A new package starts from an empty store, saved once.
    clsZELDB store;
    try {
        WritePackageInfo(store, NativePath(folder + QString::fromUtf16(kIndexFileName)), folder,
                         info);
    } catch (const RuntimeError& e) {
        removeUnfinishedPackage(folder);
        return failRuntime(err, folder, e);
    }
    return 0;
}

} // namespace

int newCommand(const QStringList& given, QTextStream& out, QTextStream& err) {
    QStringList args = given;
    const bool lossy = takeLossy(args);
    const Options options = parseOptions(args, {"--title", "--author", "--comment", "--picture"});
    if (!options.problem.isEmpty() || options.plain.size() != 2) {
        if (!options.problem.isEmpty())
            err << "tavik: " << options.problem << '\n';
        err << "usage: tavik new DATA NAME [--title T] [--author A] [--comment C] [--picture P] "
               "[--lossy]\n";
        return 2;
    }
    const QString& data = options.plain[0];
    const QString& name = options.plain[1];
    const auto last = [&](const char* option) {
        return options.values.value(QLatin1String(option)).value(0);
    };
    PackageInfo info;
    info.Title = last("--title");
    info.Author = last("--author");
    info.Description = DescriptionForFile(last("--comment"));
    info.Picture = last("--picture");

    // The dialog asks for both before it makes anything.
    if (info.Title.isEmpty() || info.Author.isEmpty())
        return fail(err, name, QStringLiteral("a package needs --title and --author"));
    // What the files cannot hold would be lost without a word.
    for (const char* field : {"--title", "--author", "--comment"}) {
        if (lossy)
            break;
        if (const int code = refuseUnheld(err, name, QString::fromLatin1(field), last(field)))
            return code;
    }
    // A fresh installation may have no data folder yet: it is made, and taken away again
    // (when still empty) if the package is not made in it.
    const bool dataMade = !QFileInfo::exists(data);
    if (dataMade && !QDir().mkpath(data))
        return fail(err, data, QStringLiteral("the data folder cannot be made"));
    if (!QFileInfo(data).isDir())
        return fail(err, data, QStringLiteral("not a folder"));
    const QString folder = NewPackageFolder(name, data);
    int code = 0;
    try {
        const PackageWriteLock lock(folder);
        code = makePackage(name, folder, info, out, err);
    } catch (const PackageBusy& e) {
        code = failBusy(err, folder, e);
    }
    if (code != 0) {
        if (dataMade)
            QDir().rmdir(data);
        return code;
    }
    out << folder << '\n';
    out.flush();
    return 0;
}

} // namespace tavik::cli
