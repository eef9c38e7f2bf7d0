#include "cli/tool.h"
#include "util/runtimeerror.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments().mid(1);
    int code = 2;
    try {
        code = tavik::cli::runTool(args, out, err);
    } catch (const tavik::RuntimeError& error) {
        // A verb that does not handle an error itself still ends with one line, never a crash.
        code = tavik::cli::failRuntime(err, args.value(1), error);
    }
    out.flush();
    err.flush();
    return code;
}
