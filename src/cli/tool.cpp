#include "tool.h"

#include "package/packagefolder.h"
#include "util/apppath.h"
#include "util/runtimeerror.h"

#include <QFileInfo>

namespace tavik::cli {

namespace {

const char* const kUsage =
    "usage: tavik dump PATH\n"
    "       tavik set PATH KEY ITEM VALUE [--type string|integer|long|boolean]\n"
    "       tavik delete PATH KEY ITEM\n"
    "       tavik ini FILE SECTION KEY [--default TEXT | --set VALUE | --delete]\n"
    "       tavik measure FILE...\n"
    "       tavik play PACKAGE SERVICE [SENTENCE]\n"
    "       tavik check PACKAGE [--json]\n"
    "       tavik write JSON PATH\n"
    "       tavik new DATA NAME [--title T] [--author A] [--comment C] [--picture P]\n"
    "       tavik import PACKAGE FILE... [--title T]...\n"
    "       tavik render PACKAGE SERVICE SENTENCE -o OUT.wav [--rate HZ] [--channels 1|2]\n";

} // namespace

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

int runTool(const QStringList& args, QTextStream& out, QTextStream& err) {
    const QString verb = args.value(0);
    const QStringList rest = args.mid(1);
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
    if (verb == u"--help" || verb == u"-h" || verb == u"help") {
        out << kUsage;
        return 0;
    }
    err << kUsage;
    return 2;
}

} // namespace tavik::cli
