#include "tool.h"

#include "package/clszeldb.h"
#include "package/zeldbformat.h"
#include "package/zeldbjson.h"
#include "service/servicefile.h"
#include "service/servicejson.h"
#include "util/fileops.h"

#include <QFile>
#include <QFileInfo>

namespace tavik::cli {

namespace {

// A service file is named "_*._"; a file of another name is one when it is no package index
// and reads whole as a service.
bool isServiceFile(const QString& path) {
    const QFileInfo info(path);
    if (info.isDir())
        return false;
    if (WildcardMatch(QStringLiteral("_*._"), info.fileName()))
        return true;
    QFile file(path);
    if (!OpenToRead(file))
        return false;
    if (file.peek(zeldb::kMagicSize) == QByteArray(zeldb::kMagic, zeldb::kMagicSize))
        return false;
    return ReadServiceFile(path, false).ok();
}

// Bytes a file holds behind what its reader took (a longer older file's tail), printed so a
// write of the dump gives the file back whole.
QByteArray tailOf(const QString& path, qint64 end) {
    QFile file(path);
    if (OpenToRead(file) && file.size() > end && file.seek(end))
        return file.readAll();
    return {};
}

// The JSON goes straight to the output's device when it has one, so a big index is never
// held whole as text.
template <class Write> void print(QTextStream& out, Write write) {
    out.flush();
    if (QIODevice* device = out.device()) {
        JsonTextWriter json(device);
        write(json);
        json.flush();
    } else {
        JsonTextWriter json;
        write(json);
        out << QString::fromUtf8(json.text());
    }
    out.flush();
}

int dumpService(const QString& path, QTextStream& out, QTextStream& err) {
    if (!FileCheck(path))
        return fail(err, path,
                    QFileInfo::exists(path) ? QStringLiteral("empty file")
                                            : QStringLiteral("no such file"));
    const ServiceReadResult read = ReadServiceFile(path, false);
    using Status = ServiceReadResult::Status;
    if (read.status == Status::Missing)
        return fail(err, path, read.problem);
    if (read.status == Status::Truncated) {
        // What was read is printed even when the file turned out cut.
        print(out,
              [&](JsonTextWriter& json) { writeServiceJson(json, read.header, read.sentences); });
    }
    if (!read.ok())
        return fail(
            err, path,
            QStringLiteral("%1 (runtime error %2)").arg(read.problem).arg(read.runtimeError));
    const QByteArray tail = tailOf(path, read.endOffset);
    print(out,
          [&](JsonTextWriter& json) { writeServiceJson(json, read.header, read.sentences, tail); });
    return 0;
}

} // namespace

int dumpCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.size() != 1) {
        err << "usage: tavik dump PATH\n";
        return 2;
    }
    if (isServiceFile(args[0]))
        return dumpService(args[0], out, err);
    const QString path = indexFilePath(args[0]);
    clsZELDB store;
    store.OpenIOFile(path);
    const ZeldbReadReport& report = store.lastRead();
    using Status = ZeldbReadReport::Status;
    if (report.status == Status::Missing || report.status == Status::WrongMagic)
        return fail(err, path, report.problem);

    // What was read is printed even when the file turned out cut or broken.
    const QByteArray tail =
        report.status == Status::Complete ? tailOf(path, report.offset) : QByteArray();
    print(out, [&](JsonTextWriter& json) { writeZeldbJson(json, store, tail); });
    if (report.status != Status::Complete)
        return fail(err, path, report.problem);
    return 0;
}

} // namespace tavik::cli
