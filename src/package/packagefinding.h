#pragma once

#include <QList>
#include <QString>

namespace tavik {

// How bad a finding is: an error makes the editor or the add-on fail, a warning loses or
// hides something, a note is worth a look.
enum class Severity { Error, Warning, Note };

// Every kind of problem a package check reports. The order is fixed: the editor shows each
// kind with the numbered language text kFirstFindingText + its value.
enum class FindingKind {
    IndexUnreadable,      // Package.io missing, not an index, cut or damaged
    EntryWithoutTilde,    // an "INDEX" entry without "~" (or missing): the load stops, error 9
    EmptyTitle,           // the entry is skipped when the package loads
    KeyNotNumber,         // the key names no sound file
    SoundMissing,         // no file begins with the key
    SoundEmpty,           // the sound file has no bytes: it counts as missing
    SoundUnreadable,      // the sound cannot be opened
    SoundFormatUnlisted,  // Formats.ini has no device type for the extension
    SoundSilent,          // the sound measures 0 ms
    DuplicateKey,         // the same key at two positions: the second open reports 289
    CountMismatch,        // "Count" does not match the entries
    UnusedFile,           // a file no entry names
    SettingType,          // a per-announcement setting stored with the wrong type
    TildeInTitle,         // the title is cut at its "~" when the package loads
    NotCodePage,          // a text code page 1252 cannot hold as written
    ServiceUnreadable,    // a service file that is empty, cut or damaged
    ServiceWithoutTitle,  // a service whose title is empty is never listed
    SentenceUnknownKey,   // error 9 when the sentence is edited, saved or played
    SentenceWithoutEntry, // a sentence that plays nothing (or fails when it has a bound)
    NegativeWait,         // a time shift longer than the announcement
    LinkInPackage,        // a symbolic link: never followed, lost when the package travels
    SentenceBound,        // the last entry to play lies past the entries, or short of them
    ServiceId,            // the ID names no file in the package, or not this one
    DuplicateSentenceKey, // two sentences of one service share a key: look-ups find the first
    LoudnessOffMedian,    // far louder or quieter than most of the package: listeners hear a jump
    TruePeakHigh,         // peaks near full scale: players and converters may clip it
};
inline constexpr int kFindingKindCount = 26;

struct Finding {
    Severity severity = Severity::Error;
    FindingKind kind = FindingKind::IndexUnreadable;
    QString file;     // name of the file inside the package folder
    int position = 0; // "INDEX" position, from 1; 0 when none
    QString key;      // announcement key; "" when none
    QString sentence; // sentence key inside a service file; "" when none
    int entry = 0;    // entry of that sentence, from 1; 0 when none
    QString detail;   // values that say what exactly was found
};

// Machine names for tools: "error", "entry-without-tilde" ...
QString severityName(Severity severity);
QString findingKindName(FindingKind kind);
// Where in its file a finding is, as "INDEX 3 / 0007" or "0472 / 2 / 0007" (sentence, entry,
// announcement): the parts it has.
QString findingPlace(const Finding& finding);
// The English sentence for a finding, its detail included.
QString findingMessage(const Finding& finding);

} // namespace tavik
