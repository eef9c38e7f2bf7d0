#include "tool.h"

#include "audio/emulatorbackend.h"
#include "audio/mcipackagesounds.h"
#include "audio/modmci.h"
#include "audio/sentencerender.h"
#include "package/clszeldb.h"
#include "service/servicefile.h"
#include "settings/useformat.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <algorithm>

namespace tavik::cli {

namespace {

const char* const kRenderUsage =
    "usage: tavik render PACKAGE SERVICE SENTENCE -o OUT.wav [--rate HZ] [--channels 1|2]\n";

} // namespace

int renderCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    QStringList positional;
    QString outPath;
    OutputFormat format; // 44,100 Hz stereo unless asked otherwise
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if ((arg == u"-o" || arg == u"--rate" || arg == u"--channels") && i + 1 < args.size()) {
            const QString value = args[++i];
            bool ok = true;
            if (arg == u"-o") {
                outPath = value;
            } else if (arg == u"--rate") {
                format.sampleRate = value.toInt(&ok);
                ok = ok && format.sampleRate >= 1000 && format.sampleRate <= 384000;
            } else {
                format.channels = value.toInt(&ok);
                ok = ok && (format.channels == 1 || format.channels == 2);
            }
            if (!ok)
                return fail(err, value, QStringLiteral("is not a valid value for ") + arg);
        } else {
            positional << arg;
        }
    }
    if (positional.size() != 3 || outPath.isEmpty()) {
        err << kRenderUsage;
        return 2;
    }
    const QString indexPath = indexFilePath(positional[0]);
    const QString servicePath = serviceFileOf(positional[0], positional[1]);

    const ServiceReadResult service = ReadServiceFile(servicePath, false);
    if (!service.ok())
        return fail(err, servicePath, service.problem);
    const auto sentence = std::find_if(service.sentences.cbegin(), service.sentences.cend(),
                                       [&](const SatzRecord& s) { return s.Key == positional[2]; });
    if (sentence == service.sentences.cend())
        return fail(err, servicePath, QStringLiteral("no sentence with the key ") + positional[2]);

    clsZELDB store;
    if (!store.OpenIOFile(indexPath))
        return fail(err, indexPath, store.lastRead().problem);

    // The lengths come from the sounds opened as the editor opens them; nothing is played.
    EmulatorBackend backend({}, std::make_shared<NullSoundOutput>());
    modMCI mci(backend, {});
    // A value that is no Boolean leaves the default, as it does in the editor.
    mci.UseFormat = ReadUseFormat();
    AnnouncementTable table;
    try {
        loadToolAnnouncements(store, indexPath, mci, table, err);
        const bool fits = RenderSentenceToFile(table, *sentence, format, outPath);
        UnloadAnnouncementSounds(mci, table);
        if (!fits)
            return fail(err, outPath,
                        QStringLiteral("the sentence is longer than a WAVE file can hold"));
    } catch (const RuntimeError& error) {
        UnloadAnnouncementSounds(mci, table);
        return failRuntime(err, outPath, error);
    }
    out.flush();
    return 0;
}

} // namespace tavik::cli
