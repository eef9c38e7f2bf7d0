#include "tool.h"

#include "audio/loudnessmeter.h"
#include "audio/mcipackagesounds.h"
#include "audio/modmci.h"
#include "audio/systembackend.h"
#include "service/servicecheck.h"
#include "settings/useformat.h"
#include "util/runtimeerror.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace tavik::cli {

namespace {

QJsonObject findingToJson(const Finding& f) {
    QJsonObject json{{"severity", severityName(f.severity)},
                     {"kind", findingKindName(f.kind)},
                     {"file", f.file},
                     {"detail", f.detail},
                     {"message", findingMessage(f)}};
    if (f.position > 0)
        json.insert(QStringLiteral("position"), f.position);
    if (!f.key.isEmpty())
        json.insert(QStringLiteral("key"), f.key);
    if (!f.sentence.isEmpty())
        json.insert(QStringLiteral("sentence"), f.sentence);
    if (f.entry > 0)
        json.insert(QStringLiteral("entry"), f.entry);
    return json;
}

// "error: Package.io: INDEX 3 / 0007: the entry has no "~" ..."
QString findingLine(const Finding& f) {
    const QString place = findingPlace(f);
    return severityName(f.severity) + QStringLiteral(": ") + f.file +
           (place.isEmpty() ? QString() : QStringLiteral(": ") + place) + QStringLiteral(": ") +
           findingMessage(f);
}

// Two decimals are more than a meter's precision; rounding keeps the JSON readable.
double rounded(double value) {
    return std::round(value * 100.0) / 100.0;
}

QJsonObject loudnessToJson(const LoudnessCheck& check) {
    QJsonArray announcements;
    for (const AnnouncementLoudness& a : check.announcements) {
        const Loudness& l = a.loudness;
        announcements.append(QJsonObject{
            {"key", a.key},
            {"position", a.position},
            {"file", a.file},
            {"integratedLufs", l.integratedLufs ? QJsonValue(rounded(*l.integratedLufs))
                                                : QJsonValue(QJsonValue::Null)},
            {"truePeakDbtp", l.truePeakDbtp > -200.0 ? QJsonValue(rounded(l.truePeakDbtp))
                                                     : QJsonValue(QJsonValue::Null)}});
    }
    return QJsonObject{{"medianLufs", check.medianLufs ? QJsonValue(rounded(*check.medianLufs))
                                                       : QJsonValue(QJsonValue::Null)},
                       {"announcements", announcements}};
}

} // namespace

int checkCommand(const QStringList& args, QTextStream& out, QTextStream& err) {
    QStringList rest = args;
    const bool json = rest.removeAll(QStringLiteral("--json")) > 0;
    const bool loudness = rest.removeAll(QStringLiteral("--no-loudness")) == 0;
    if (rest.size() != 1) {
        err << "usage: tavik check PACKAGE [--json] [--no-loudness]\n";
        return 2;
    }
    const QString& folder = rest[0];
    // Sounds are only opened and measured: no output device is started.
    const std::unique_ptr<MciBackend> backend = createSystemMciBackend(false);
    modMCI mci(*backend, [](const QString&) {});
    // Sounds open as the editor opens them, with its own "UseFormat" setting; a value that is
    // no Boolean leaves the default, as it does in the editor.
    mci.UseFormat = ReadUseFormat();
    // Nothing waits for events in the tool: an open need not let them through.
    mci.YieldOnOpen = false;
    PackageCheck check;
    try {
        MciPackageSounds sounds(mci);
        LoudnessCache cache;
        CachedLoudnessMeter meter(cache);
        check = CheckPackage(folder, sounds, loudness ? &meter : nullptr);
    } catch (const RuntimeError& e) {
        return failRuntime(err, folder, e);
    }

    if (json) {
        QJsonArray findings;
        for (const Finding& f : check.findings)
            findings.append(findingToJson(f));
        QJsonObject report{
            {"package", folder}, {"readable", check.readable}, {"findings", findings}};
        if (check.loudness)
            report.insert(QStringLiteral("loudness"), loudnessToJson(*check.loudness));
        out << QJsonDocument(report).toJson(QJsonDocument::Indented);
    } else {
        for (const Finding& f : check.findings)
            out << findingLine(f) << '\n';
        if (check.findings.isEmpty())
            out << "no findings\n";
    }
    out.flush();
    if (!check.readable) {
        const Finding& first = check.findings.front();
        return fail(err, folder, first.file + QStringLiteral(": ") + findingMessage(first));
    }
    return check.findings.isEmpty() ? 0 : 1;
}

} // namespace tavik::cli
