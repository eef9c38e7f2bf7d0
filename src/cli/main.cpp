#include "cli/tool.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int code = tavik::cli::runTool(app.arguments().mid(1), out, err);
    out.flush();
    err.flush();
    return code;
}
