#include "tool.h"

#include "audio/soundcheck.h"
#include "cli/lossytext.h"
#include "cli/options.h"
#include "dialogs/soundimport.h"
#include "package/clszeldb.h"
#include "util/apppath.h"
#include "util/fileops.h"
#include "util/packagelock.h"
#include "util/runtimeerror.h"

#include <QFileInfo>

namespace tavik::cli {

int importCommand(const QStringList& given, QTextStream& out, QTextStream& err) {
    QStringList args = given;
    const bool lossy = takeLossy(args);
    const Options options = parseOptions(args, {"--title"});
    if (!options.problem.isEmpty() || options.plain.size() < 2) {
        if (!options.problem.isEmpty())
            err << "tavik: " << options.problem << '\n';
        err << "usage: tavik import PACKAGE FILE... [--title T]... [--lossy]\n";
        return 2;
    }
    const QString& package = options.plain[0];
    const QStringList files = options.plain.mid(1);
    const QStringList titles = options.values.value(QStringLiteral("--title"));
    if (titles.size() > files.size())
        return fail(err, package, QStringLiteral("more --title than files"));

    // The import list: a file counts only when it is a whole sound; its display name is its
    // name up to the first "." unless a title is given for it, in file order.
    QList<ImportEntry> entries;
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (const SoundProblem problem = FindSoundProblem(files[i]); problem != SoundProblem::None)
            return fail(err, files[i],
                        SoundProblemText(problem) + QStringLiteral(": nothing imported"));
        entries.append({files[i], i < titles.size() ? titles[i] : PathFileName(files[i], true)});
        // A title the index cannot hold would be lost without a word; one taken from the file
        // name is named by its file.
        const QString field = i < titles.size() ? QStringLiteral("--title %1").arg(i + 1)
                                                : QStringLiteral("title from the file name");
        if (!lossy)
            if (const int code = refuseUnheld(err, files[i], field, entries.last().Title))
                return code;
    }

    if (!QFileInfo(package).isDir())
        return fail(err, package, QStringLiteral("no package folder"));
    const QString folder = NativePath(package);
    const QString indexFile = indexFilePath(folder);
    QStringList keys;
    try {
        // Held from the open to the save, so no writer beside us changes the index between.
        const PackageWriteLock lock(folder);
        // The store as the main window holds it after loading the package.
        clsZELDB store;
        if (!store.OpenIOFile(indexFile))
            return fail(err, indexFile, QStringLiteral("not a package index that opens"));
        keys = ImportSoundFiles(entries, folder, store, indexFile);
    } catch (const PackageBusy& e) {
        return failBusy(err, folder, e);
    } catch (const RuntimeError& e) {
        // All or nothing: the package stays as it was.
        return failRuntime(err, folder, e);
    }
    for (qsizetype i = 0; i < keys.size(); ++i)
        out << keys[i] << '\t' << entries[i].Title << '\n';
    out.flush();
    return 0;
}

} // namespace tavik::cli
