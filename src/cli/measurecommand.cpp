#include "tool.h"

#include "audio/mcierrortext.h"
#include "audio/modmci.h"
#include "audio/systembackend.h"
#include "package/packagefolder.h"
#include "settings/useformat.h"
#include "util/apppath.h"
#include "util/conversions.h"

namespace tavik::cli {

int measureCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.isEmpty()) {
        err << "usage: tavik measure FILE...\n";
        return 2;
    }
    const std::unique_ptr<MciBackend> backend = createSystemMciBackend(false);
    QStringList errorLines;
    modMCI mci(*backend, [&](const QString& line) { errorLines << line; });
    // Opened the way the editor opens sounds, with its own "UseFormat" setting.
    mci.UseFormat = ReadUseFormat();
    const QString alias = QStringLiteral("tavik_measure");
    int result = 0;
    for (const QString& file : args) {
        QString path = file;
        const std::int16_t code = mci.MciOpen(path, alias, IndentifyFormat(GetExtension(file)));
        if (code == -1) {
            out << mci.MciGetLength(alias) << '\t' << file << '\n';
        } else {
            out << "error " << code << '\t' << file << '\n';
            result = fail(err, file, mci::CommandFailure(QStringLiteral("open"), file, code));
        }
        mci.MciClose(alias);
    }
    out.flush();
    return result;
}

} // namespace tavik::cli
