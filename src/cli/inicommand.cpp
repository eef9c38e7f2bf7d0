#include "tool.h"

#include "settings/modini.h"
#include "settings/profilefile.h"

namespace tavik::cli {

namespace {

const char* const kIniUsage =
    "usage: tavik ini FILE SECTION KEY [--default TEXT | --set VALUE | --delete]\n";

// The system's error code with what it means, for the codes a profile write ends with.
QString systemErrorText(std::uint32_t code) {
    switch (code) {
    case profile::error::PathNotFound:
        return QStringLiteral("system error %1: the folder does not exist").arg(code);
    case profile::error::AccessDenied:
        return QStringLiteral("system error %1: access denied").arg(code);
    case profile::error::DiskFull:
        return QStringLiteral("system error %1: the disk is full").arg(code);
    default:
        return QStringLiteral("system error %1").arg(code);
    }
}

int usage(QTextStream& err) {
    err << kIniUsage;
    return 2;
}

} // namespace

int iniCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    QStringList positional;
    QString defaultText;
    std::optional<QString> setValue;
    bool remove = false;
    int modes = 0;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (arg == u"--default" || arg == u"--set") {
            if (i + 1 >= args.size())
                return usage(err);
            ++modes;
            if (arg == u"--default")
                defaultText = args[++i];
            else
                setValue = args[++i];
        } else if (arg == u"--delete") {
            ++modes;
            remove = true;
        } else if (arg.startsWith(QStringLiteral("--"))) {
            return usage(err);
        } else {
            positional << arg;
        }
    }
    if (positional.size() != 3 || modes > 1)
        return usage(err);
    const QString& file = positional[0];
    const QString& section = positional[1];
    const QString& key = positional[2];

    if (setValue) {
        // The editor's write reports nothing; the tool says when it did not happen.
        const std::uint32_t failure = profile::writeProfileString(file, section, key, setValue);
        if (failure != profile::error::None)
            return fail(err, file,
                        QStringLiteral("not written (%1)").arg(systemErrorText(failure)));
        return 0;
    }
    if (remove) {
        QString message;
        if (DeleteINI(file, section, key, [&](const QString& m) { message = m; }) == 0)
            return fail(err, file, message);
        return 0;
    }
    out << ReadINI(file, section, key, Variant::fromString(defaultText)).stringValue() << '\n';
    return 0;
}

} // namespace tavik::cli
