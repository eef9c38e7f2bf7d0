#include "tool.h"

#include "cli/lossytext.h"
#include "package/zeldbfromjson.h"
#include "service/servicefromjson.h"
#include "util/fileops.h"
#include "util/jsonfields.h"
#include "util/jsontree.h"
#include "util/packagelock.h"
#include "util/runtimeerror.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>

namespace tavik::cli {

namespace {

// A dump is no bigger than the files it describes, written as text.
constexpr qint64 kMaxJsonBytes = 256LL * 1024 * 1024;

// Writes the file's new bytes under the package's write lock.
int writeIndexFile(QTextStream& err, const QByteArray& bytes, const QString& target) {
    try {
        const PackageWriteLock lock(packageFolderOf(target));
        WriteFileAtomically(target, bytes);
    } catch (const PackageBusy& e) {
        return failBusy(err, target, e);
    } catch (const RuntimeError& e) {
        return failRuntime(err, target, e);
    }
    return 0;
}

} // namespace

int writeCommand(const QStringList& given, QTextStream& out, QTextStream& err) {
    QStringList args = given;
    Q_UNUSED(out);
    const bool lossy = takeLossy(args);
    if (args.size() != 2) {
        err << "usage: tavik write JSON PATH [--lossy]\n";
        return 2;
    }
    const QString& jsonPath = args[0];
    QFile file(jsonPath);
    if (!OpenToRead(file))
        return fail(err, jsonPath, QStringLiteral("cannot be read as a file"));
    if (file.size() > kMaxJsonBytes)
        return fail(err, jsonPath, QStringLiteral("larger than any dump"));
    const QByteArray text = file.readAll();
    // A package dump as the tool writes it goes straight to the file's bytes; any other text
    // is read whole as always.
    if (!lossy) {
        if (std::optional<QByteArray> plain = zeldbBytesFromDumpText(text))
            return writeIndexFile(err, *plain, indexFilePath(args[1]));
    }
    // The own reader is quick on big dumps; what it leaves, Qt reads and words as always.
    JsonTree tree;
    if (!JsonTree::read(text, tree)) {
        QJsonParseError parseError;
        const QJsonDocument doc = QJsonDocument::fromJson(text, &parseError);
        if (doc.isNull())
            return fail(err, jsonPath,
                        QStringLiteral("not JSON: %1 at byte %2")
                            .arg(parseError.errorString())
                            .arg(parseError.offset));
        if (!doc.isObject())
            return fail(err, jsonPath, QStringLiteral("not a JSON object"));
        tree = JsonTree::fromQt(doc.object());
    }

    // With --lossy, the texts become what the files hold, read as Qt reads them (a rare path).
    if (lossy)
        tree = JsonTree::fromQt(lossyTexts(QJsonDocument::fromJson(text).object()));
    const JsonValue json = tree.root();
    const QString format = json.value(QStringLiteral("format")).toString();
    QByteArray bytes;
    QString target = args[1];
    try {
        if (format == u"package-index") {
            bytes = zeldbBytesFromJson(json);
            target = indexFilePath(target);
        } else if (format == u"service") {
            bytes = serviceBytesFromJson(json);
        } else {
            throw JsonFieldError(QStringLiteral("format"),
                                 QStringLiteral("not \"package-index\" or \"service\""));
        }
    } catch (const JsonFieldError& e) {
        return fail(err, jsonPath, e.field() + QStringLiteral(": ") + e.problem());
    } catch (const RuntimeError& e) {
        return failRuntime(err, jsonPath, e);
    }
    return writeIndexFile(err, bytes, target);
}

} // namespace tavik::cli
