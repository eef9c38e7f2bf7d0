#include "tool.h"

#include "cli/commandhelp.h"
#include "package/packagefolder.h"
#include "service/servicefiles.h"
#include "util/apppath.h"
#include "util/runtimeerror.h"

#include <QFileInfo>

namespace tavik::cli {

int fail(QTextStream& err, const QString& file, const QString& problem) {
    QString line = problem;
    line.replace(u'\n', u' ');
    err << "tavik: " << file << ": " << line.simplified() << Qt::endl;
    return 2;
}

int failRuntime(QTextStream& err, const QString& file, const RuntimeError& error) {
    return fail(
        err, file,
        QStringLiteral("runtime error %1 (%2)").arg(error.number()).arg(error.description()));
}

int failBusy(QTextStream& err, const QString& file, const RuntimeError& busy) {
    fail(err, file, busy.description() + QStringLiteral("; not changed"));
    return 3;
}

QString packageFolderOf(const QString& path) {
    const QFileInfo info(path);
    return info.isDir() ? path : info.absolutePath();
}

QString indexFilePath(const QString& path) {
    if (QFileInfo(path).isDir())
        return NativePath(path + QString::fromUtf16(kIndexFileName));
    return path;
}

QString serviceFileOf(const QString& package, const QString& service) {
    if (QFileInfo(service).isFile() || !IsServiceId(service))
        return service;
    const QString byId = ServiceFilePath(packageFolderOf(package), service);
    return QFileInfo(byId).isFile() ? byId : service;
}

int runTool(const QStringList& args, QTextStream& out, QTextStream& err) {
    const QString verb = args.value(0);
    const QStringList rest = args.mid(1);
    if (verb == u"--version") {
        out << ToolVersionLine() << '\n';
        return 0;
    }
    if (verb == u"--help" || verb == u"-h" || (verb == u"help" && rest.isEmpty())) {
        PrintOverview(out);
        return 0;
    }
    if (verb == u"help") {
        const CommandHelp* help = FindCommandHelp(rest[0]);
        if (help == nullptr || rest.size() > 1) {
            PrintOverview(err);
            return 2;
        }
        PrintCommandHelp(out, *help);
        return 0;
    }
    // "--help" anywhere after a command asks for that command's help and runs nothing.
    if (const CommandHelp* help = FindCommandHelp(verb);
        help != nullptr && (rest.contains(u"--help") || rest.contains(u"-h"))) {
        PrintCommandHelp(out, *help);
        return 0;
    }
    if (verb == u"dump")
        return dumpCommand(rest, out, err);
    if (verb == u"set")
        return setCommand(rest, out, err);
    if (verb == u"delete")
        return deleteCommand(rest, out, err);
    if (verb == u"ini")
        return iniCommand(rest, out, err);
    if (verb == u"measure")
        return measureCommand(rest, out, err);
    if (verb == u"play")
        return playCommand(rest, out, err);
    if (verb == u"check")
        return checkCommand(rest, out, err);
    if (verb == u"write")
        return writeCommand(rest, out, err);
    if (verb == u"new")
        return newCommand(rest, out, err);
    if (verb == u"import")
        return importCommand(rest, out, err);
    if (verb == u"render")
        return renderCommand(rest, out, err);
    PrintOverview(err);
    return 2;
}

} // namespace tavik::cli
