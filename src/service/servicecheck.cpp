#include "servicecheck.h"

#include "package/findingdetail.h"
#include "service/servicefile.h"
#include "service/servicefiles.h"
#include "util/apppath.h"
#include "util/fileops.h"
#include "util/platformnames.h"

#include <QFileInfo>
#include <QHash>

namespace tavik {

namespace {

Finding serviceFinding(Severity severity, FindingKind kind, const QString& file,
                       const QString& detail, const QString& sentence = {}, int entry = 0,
                       const QString& key = {}) {
    Finding f;
    f.severity = severity;
    f.kind = kind;
    f.file = file;
    f.sentence = sentence;
    f.entry = entry;
    f.key = key;
    f.detail = detail;
    return f;
}

void checkText(QList<Finding>& out, const QString& file, const QString& text,
               const QString& sentence = {}) {
    const QString problem = CodePageProblem(text);
    if (!problem.isEmpty())
        out << serviceFinding(Severity::Warning, FindingKind::NotCodePage, file, problem, sentence);
}

void checkSentence(QList<Finding>& out, const QString& file, const SatzRecord& satz,
                   const QHash<QString, const CheckedAnnouncement*>& byKey) {
    checkText(out, file, satz.Text, satz.Key);
    if (satz.Targets.isEmpty()) {
        // Playing walks entries 0 to LastTarget: a bound of 0 or more reads an entry that is
        // not there.
        if (satz.LastTarget >= 0)
            out << serviceFinding(
                Severity::Error, FindingKind::SentenceWithoutEntry, file,
                detailText(DetailText::LastEntryWithoutEntries, {QString::number(satz.LastTarget)}),
                satz.Key);
        else
            out << serviceFinding(Severity::Warning, FindingKind::SentenceWithoutEntry, file,
                                  detailText(DetailText::PlaysNothing), satz.Key);
        return;
    }
    // Playing walks entries 0 to LastTarget, whatever the file holds.
    const qsizetype held = satz.Targets.size();
    if (satz.LastTarget >= held)
        out << serviceFinding(
            Severity::Error, FindingKind::SentenceBound, file,
            detailText(DetailText::LastEntryPastEntries,
                       {QString::number(satz.LastTarget + 1), QString::number(held)}),
            satz.Key);
    else if (satz.LastTarget < held - 1)
        out << serviceFinding(
            Severity::Warning, FindingKind::SentenceBound, file,
            detailText(DetailText::LastEntryShortOfEntries,
                       {QString::number(satz.LastTarget + 1), QString::number(held)}),
            satz.Key);
    for (qsizetype j = 0; j < satz.Targets.size(); ++j) {
        const SatzTarget& target = satz.Targets[j];
        const int entry = static_cast<int>(j) + 1;
        const CheckedAnnouncement* announcement = byKey.value(target.AnnouncementKey);
        if (!announcement) {
            out << serviceFinding(Severity::Error, FindingKind::SentenceUnknownKey, file,
                                  QStringLiteral("\"%1\"").arg(target.AnnouncementKey), satz.Key,
                                  entry, target.AnnouncementKey);
            continue;
        }
        const qint64 wait = qint64(announcement->Length) + target.TimeOffset;
        if (announcement->Measured && wait < 0)
            out << serviceFinding(Severity::Warning, FindingKind::NegativeWait, file,
                                  QStringLiteral("%1 ms %2 ms = %3 ms")
                                      .arg(announcement->Length)
                                      .arg(target.TimeOffset)
                                      .arg(wait),
                                  satz.Key, entry, target.AnnouncementKey);
    }
}

} // namespace

QList<Finding> CheckServiceFile(const QString& path, const QList<CheckedAnnouncement>& table) {
    QList<Finding> out;
    const QString file = QFileInfo(path).fileName();
    // Only looks: an empty file stays where it is.
    const ServiceReadResult read = ReadServiceFile(path, false);
    using Status = ServiceReadResult::Status;
    if (read.status == Status::Missing) {
        out << serviceFinding(Severity::Warning, FindingKind::ServiceUnreadable, file,
                              detailText(DetailText::EmptyServiceDeleted));
        return out;
    }
    if (!read.ok()) {
        out << serviceFinding(
            Severity::Error, FindingKind::ServiceUnreadable, file,
            detailText(DetailText::Joined,
                       {read.problem, detailText(DetailText::RuntimeError,
                                                 {QString::number(read.runtimeError)})}));
        return out;
    }
    if (read.header.Title.isEmpty())
        out << serviceFinding(Severity::Warning, FindingKind::ServiceWithoutTitle, file,
                              QStringLiteral("ID \"%1\"").arg(read.header.Id));
    // Saving writes "_" & ID & "._": another name leaves this file behind as a second copy,
    // and an ID that leads out of the package is refused.
    if (!IsServiceId(read.header.Id))
        out << serviceFinding(Severity::Error, FindingKind::ServiceId, file,
                              detailText(DetailText::IdLeavesPackage, {read.header.Id}));
    else if (QFileInfo(ServiceFilePath(QFileInfo(path).absolutePath(), read.header.Id))
                 .fileName()
                 .compare(file, FileNameCase()) != 0)
        out << serviceFinding(Severity::Note, FindingKind::ServiceId, file,
                              detailText(DetailText::IdNamesOtherFile, {read.header.Id}));
    for (const QString& text :
         {read.header.Title, read.header.Author, read.header.Description, read.header.Id})
        checkText(out, file, text);

    QHash<QString, const CheckedAnnouncement*> byKey;
    for (const CheckedAnnouncement& a : table)
        byKey.insert(a.Key, &a);
    QHash<QString, int> firstAt; // sentence key -> its first position, from 1
    for (qsizetype i = 0; i < read.sentences.size(); ++i) {
        const SatzRecord& satz = read.sentences[i];
        const int position = static_cast<int>(i) + 1;
        if (const auto it = firstAt.constFind(satz.Key); it != firstAt.cend())
            out << serviceFinding(
                Severity::Error, FindingKind::DuplicateSentenceKey, file,
                detailText(DetailText::SentenceKeyTwice,
                           {satz.Key, QString::number(it.value()), QString::number(position)}),
                satz.Key);
        else
            firstAt.insert(satz.Key, position);
        checkSentence(out, file, satz, byKey);
    }
    return out;
}

PackageCheck CheckPackage(const QString& packageFolder, PackageSounds& sounds,
                          LoudnessMeter* meter) {
    const IndexCheck index = CheckPackageIndex(packageFolder, sounds);
    PackageCheck result;
    result.readable = index.readable;
    result.findings = index.findings;
    result.announcements = index.announcements;
    if (!index.opened)
        return result;
    const QString folder = NativePath(packageFolder);
    for (const QString& name : index.files) {
        if (WildcardMatch(QStringLiteral("*._"), name))
            result.findings << CheckServiceFile(NativePath(folder + QStringLiteral("\\") + name),
                                                index.announcements);
    }
    if (meter) {
        result.loudness = CheckLoudness(index.announcements, *meter);
        result.findings << result.loudness->findings;
    }
    return result;
}

} // namespace tavik
