#include "tool.h"

#include "cli/lossytext.h"
#include "package/clszeldb.h"
#include "util/conversions.h"
#include "util/fileops.h"
#include "util/packagelock.h"
#include "util/runtimeerror.h"

#include <QLocale>

namespace tavik::cli {

namespace {

// Opens the store as the editor does; a missing file starts an empty store. A file that
// is not a whole package index is left alone rather than overwritten with what could be read.
bool openForChange(clsZELDB& store, const QString& path, QTextStream& err) {
    if (!FileCheck(path))
        return true;
    store.OpenIOFile(path);
    const ZeldbReadReport& report = store.lastRead();
    if (report.status == ZeldbReadReport::Status::Complete)
        return true;
    fail(err, path, report.problem + QStringLiteral("; not changed"));
    return false;
}

bool parseValue(const QString& text, const QString& type, Variant& value, QString& problem) {
    try {
        if (type == u"string") {
            value = Variant::fromString(text);
        } else if (type == u"integer") {
            value = Variant::fromInteger(CInt(Variant::fromString(text)));
        } else if (type == u"long") {
            value = Variant::fromLong(CLng(Variant::fromString(text)));
        } else if (type == u"boolean") {
            if (text.compare(u"true", Qt::CaseInsensitive) == 0)
                value = Variant::fromBoolean(true);
            else if (text.compare(u"false", Qt::CaseInsensitive) == 0)
                value = Variant::fromBoolean(false);
            else {
                problem = QStringLiteral("a boolean value is true or false, not \"%1\"").arg(text);
                return false;
            }
        } else {
            problem =
                QStringLiteral("unknown type \"%1\" (string, integer, long or boolean)").arg(type);
            return false;
        }
    } catch (const RuntimeError& e) {
        problem = QStringLiteral("\"%1\" is no %2 value: %3").arg(text, type, e.description());
        return false;
    }
    return true;
}

int save(clsZELDB& store, const QString& path, QTextStream& err) {
    try {
        store.SaveIOFile(path);
    } catch (const RuntimeError& e) {
        return failRuntime(err, path, e);
    }
    return 0;
}

// Open, change and save while holding the package's lock, so a writer beside us loses nothing.
template <typename Change> int changeLocked(const QString& path, QTextStream& err, Change change) {
    try {
        const PackageWriteLock lock(packageFolderOf(path));
        clsZELDB store;
        if (!openForChange(store, path, err))
            return 2;
        try {
            change(store);
        } catch (const RuntimeError& e) {
            return failRuntime(err, path, e);
        }
        return save(store, path, err);
    } catch (const PackageBusy& e) {
        return failBusy(err, path, e);
    }
}

} // namespace

int setCommand(const QStringList& given, QTextStream& out, QTextStream& err) {
    QStringList args = given;
    Q_UNUSED(out);
    const bool lossy = takeLossy(args);
    QStringList positional;
    QString type = QStringLiteral("string");
    for (qsizetype i = 0; i < args.size(); ++i) {
        if (args[i] == u"--type" && i + 1 < args.size())
            type = args[++i];
        else if (args[i].startsWith(QStringLiteral("--type=")))
            type = args[i].mid(7);
        else
            positional << args[i];
    }
    if (positional.size() != 4) {
        err << "usage: tavik set PATH KEY ITEM VALUE [--type string|integer|long|boolean] "
               "[--lossy]\n";
        return 2;
    }
    const QString path = indexFilePath(positional[0]);
    Variant value;
    QString problem;
    if (!parseValue(positional[3], type, value, problem))
        return fail(err, path, problem);
    // Names and texts the index cannot hold would be lost without a word.
    const std::pair<const char*, QString> texts[] = {
        {"KEY", positional[1]},
        {"ITEM", positional[2]},
        {"VALUE", value.type() == VarType::String ? positional[3] : QString()}};
    for (const auto& [field, text] : texts) {
        if (lossy)
            break;
        if (const int code = refuseUnheld(err, path, QString::fromLatin1(field), text))
            return code;
    }

    return changeLocked(path, err, [&](clsZELDB& store) {
        store.SaveSetting(positional[1], positional[2], value);
    });
}

int deleteCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    Q_UNUSED(out);
    if (args.size() != 3) {
        err << "usage: tavik delete PATH KEY ITEM\n";
        return 2;
    }
    const QString path = indexFilePath(args[0]);
    return changeLocked(path, err, [&](clsZELDB& store) { store.DeleteItem(args[1], args[2]); });
}

} // namespace tavik::cli
