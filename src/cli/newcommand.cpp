#include "tool.h"

#include "cli/options.h"
#include "dialogs/newpackage.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "util/apppath.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QFileInfo>

namespace tavik::cli {

int newCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    const Options options = parseOptions(args, {"--title", "--author", "--comment", "--picture"});
    if (!options.problem.isEmpty() || options.plain.size() != 2) {
        if (!options.problem.isEmpty())
            err << "tavik: " << options.problem << '\n';
        err << "usage: tavik new DATA NAME [--title T] [--author A] [--comment C] [--picture P]\n";
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

    if (!QFileInfo(data).isDir())
        return fail(err, data, QStringLiteral("no data folder"));
    // The dialog asks for both before it makes anything.
    if (info.Title.isEmpty() || info.Author.isEmpty())
        return fail(err, name, QStringLiteral("a package needs --title and --author"));
    const QString folder = NewPackageFolder(name, data);
    switch (MakeNewPackageFolder(name, folder)) {
    case NewPackageRefusal::None:
        break;
    case NewPackageRefusal::FolderName:
        return fail(err, name, QStringLiteral("not a plain folder name"));
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
        return failRuntime(err, folder, e);
    }
    out << folder << '\n';
    out.flush();
    return 0;
}

} // namespace tavik::cli
