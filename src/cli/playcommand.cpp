#include "tool.h"

#include "audio/mcipackagesounds.h"
#include "audio/modmci.h"
#include "audio/sequenceplayer.h"
#include "audio/systembackend.h"
#include "package/clszeldb.h"
#include "service/servicefile.h"
#include "settings/useformat.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/runtimeerror.h"

namespace tavik::cli {

int playCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.size() < 2 || args.size() > 3) {
        err << "usage: tavik play PACKAGE SERVICE [SENTENCE]\n";
        return 2;
    }
    const QString indexPath = indexFilePath(args[0]);
    const QString servicePath = serviceFileOf(args[0], args[1]);

    const ServiceReadResult service = ReadServiceFile(servicePath, false);
    if (!service.ok()) {
        if (service.runtimeError == 0)
            return fail(err, servicePath, service.problem);
        return fail(
            err, servicePath,
            QStringLiteral("%1 (runtime error %2)").arg(service.problem).arg(service.runtimeError));
    }
    QList<SatzRecord> sentences = service.sentences;
    if (args.size() == 3) {
        sentences.removeIf([&](const SatzRecord& s) { return s.Key != args[2]; });
        if (sentences.isEmpty())
            return fail(err, servicePath, QStringLiteral("no sentence with the key ") + args[2]);
        sentences = {sentences.first()};
    }

    clsZELDB store;
    if (!store.OpenIOFile(indexPath))
        return fail(err, indexPath, store.lastRead().problem);

    const std::unique_ptr<MciBackend> backend = createSystemMciBackend();
    auto writeLog = [&](const QString& line) {
        out << line << '\n';
        out.flush();
    };
    modMCI mci(*backend, writeLog);
    // A value that is no Boolean leaves the default, as it does in the editor.
    mci.UseFormat = ReadUseFormat();
    AnnouncementTable table;
    std::int16_t busy = 0;
    int result = 0;
    try {
        loadToolAnnouncements(store, indexPath, mci, table, err);
        for (const SatzRecord& satz : sentences)
            PlayAnnouncementSequence(mci, table, satz, busy, writeLog);
    } catch (const RuntimeError& error) {
        out.flush();
        result = failRuntime(err, servicePath, error);
    }
    // The last sound is heard to its stop before the program ends.
    backend->drain();
    UnloadAnnouncementSounds(mci, table);
    out.flush();
    return result;
}

} // namespace tavik::cli
