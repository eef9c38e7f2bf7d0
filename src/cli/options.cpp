#include "options.h"

namespace tavik::cli {

Options parseOptions(const QStringList& args, const QStringList& known) {
    Options options;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (!arg.startsWith(QStringLiteral("--"))) {
            options.plain << arg;
            continue;
        }
        if (!known.contains(arg)) {
            options.problem = QStringLiteral("unknown option %1").arg(arg);
            return options;
        }
        if (i + 1 >= args.size()) {
            options.problem = QStringLiteral("%1 needs a value").arg(arg);
            return options;
        }
        options.values[arg] << args[++i];
    }
    return options;
}

} // namespace tavik::cli
