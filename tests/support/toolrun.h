#pragma once

#include "cli/tool.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QTextStream>

namespace tavik::test {

// One run of the headless tool, in process, with what it printed.
struct ToolRun {
    int code = 0;
    QString out;
    QString err;
    QJsonObject json() const { return QJsonDocument::fromJson(out.toUtf8()).object(); }
};

inline ToolRun tool(const QStringList& args) {
    ToolRun r;
    QTextStream out(&r.out);
    QTextStream err(&r.err);
    r.code = cli::runTool(args, out, err);
    out.flush();
    err.flush();
    return r;
}

} // namespace tavik::test
