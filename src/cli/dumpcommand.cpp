#include "tool.h"

#include "package/clszeldb.h"
#include "package/zeldbjson.h"

#include <QJsonDocument>

namespace tavik::cli {

int dumpCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.size() != 1) {
        err << "usage: tavik dump PATH\n";
        return 2;
    }
    const QString path = indexFilePath(args[0]);
    clsZELDB store;
    store.OpenIOFile(path);
    const ZeldbReadReport& report = store.lastRead();
    using Status = ZeldbReadReport::Status;
    if (report.status == Status::Missing || report.status == Status::WrongMagic)
        return fail(err, path, report.problem);

    // What was read is printed even when the file turned out cut or broken.
    out << QJsonDocument(zeldbToJson(store)).toJson(QJsonDocument::Indented);
    out.flush();
    if (report.status != Status::Complete)
        return fail(err, path, report.problem);
    return 0;
}

} // namespace tavik::cli
