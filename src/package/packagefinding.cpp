#include "packagefinding.h"

#include <array>

namespace tavik {

namespace {

struct KindText {
    const char* name;
    const char* message; // %1: the detail
};

constexpr std::array<KindText, kFindingKindCount> kKinds = {{
    {"index-unreadable", "the package index cannot be read whole: %1"},
    {"entry-without-tilde", "the entry has no \"~\": loading stops with runtime error 9 (%1)"},
    {"empty-title", "the title is empty: the entry is skipped when the package loads (%1)"},
    {"key-not-number", "the key is not a number and names no sound file (%1)"},
    {"sound-missing", "no sound file begins with the key (%1)"},
    {"sound-empty", "the sound file is empty and counts as missing (%1)"},
    {"sound-unreadable", "the sound cannot be opened (%1)"},
    {"sound-format-unlisted", "Formats.ini lists no device for this extension (%1)"},
    {"sound-silent", "the sound measures 0 ms (%1)"},
    {"duplicate-key", "the key is listed more than once: loading warns that it is open (%1)"},
    {"count-mismatch", "\"Count\" does not match the entries (%1)"},
    {"unused-file", "no entry names this file (%1)"},
    {"setting-type", "a setting has the wrong type (%1)"},
    {"tilde-in-title", "the title holds a \"~\" and is cut there when the package loads (%1)"},
    {"not-code-page", "a text is not code page 1252 as the editor reads it (%1)"},
    {"service-unreadable", "the service file cannot be read whole (%1)"},
    {"service-without-title", "the service has no title and is never listed (%1)"},
    {"sentence-unknown-key",
     "the sentence names an announcement the package does not hold: runtime error 9 when it "
     "is edited, saved or played (%1)"},
    {"sentence-without-entry", "the sentence has no entries (%1)"},
    {"negative-wait", "the time shift makes the wait after the announcement negative (%1)"},
    {"link-in-package",
     "a symbolic link is never followed and does not travel with the package (%1)"},
    {"sentence-bound", "the sentence's last entry to play does not match its entries (%1)"},
    {"service-id", "the service is saved under its ID, which does not name this file (%1)"},
    {"duplicate-sentence-key",
     "two sentences have the same key: editing, saving and playing find only the first (%1)"},
    {"loudness-off-median",
     "the loudness lies more than 3 LU from the package's median: listeners hear a jump (%1)"},
    {"true-peak-high", "the true peak lies above -1 dBTP: the sound may clip when played (%1)"},
}};

const KindText& kindText(FindingKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

} // namespace

QString severityName(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return QStringLiteral("error");
    case Severity::Warning:
        return QStringLiteral("warning");
    case Severity::Note:
        return QStringLiteral("note");
    }
    return {};
}

QString findingKindName(FindingKind kind) {
    return QString::fromLatin1(kindText(kind).name);
}

QString findingPlace(const Finding& finding) {
    QStringList parts;
    if (finding.position > 0)
        parts << QStringLiteral("INDEX %1").arg(finding.position);
    if (!finding.sentence.isEmpty())
        parts << finding.sentence;
    if (finding.entry > 0)
        parts << QString::number(finding.entry);
    if (!finding.key.isEmpty())
        parts << finding.key;
    return parts.join(QStringLiteral(" / "));
}

QString findingMessage(const Finding& finding) {
    return QString::fromLatin1(kindText(finding.kind).message).arg(finding.detail);
}

} // namespace tavik
