#include "cli/standardstreams.h"
#include "cli/tool.h"
#include "util/fileops.h"
#include "util/packagelock.h"
#include "util/runtimeerror.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    tavik::cli::UseBinaryStandardStreams();
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments().mid(1);
    // A name the system holds in bytes the locale cannot decode would come back as another
    // name: refused before anything is opened, so nothing is written under another name.
    for (int i = 1; i < argc; ++i) {
        if (!tavik::IsFaithfulName(QByteArray(argv[i]))) {
            tavik::cli::fail(err, args.value(i - 1),
                             QStringLiteral("not valid in this system's encoding of names; "
                                            "nothing done"));
            err.flush();
            return 2;
        }
    }
    int code = 2;
    try {
        code = tavik::cli::runTool(args, out, err);
    } catch (const tavik::PackageBusy& busy) {
        code = tavik::cli::failBusy(err, args.value(1), busy);
    } catch (const tavik::RuntimeError& error) {
        // A verb that does not handle an error itself still ends with one line, never a crash.
        code = tavik::cli::failRuntime(err, args.value(1), error);
    }
    out.flush();
    err.flush();
    return code;
}
