#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace tavik {

// The texts that say what exactly a package check or a read of a package file found. The code
// that finds something writes the English text (the tool shows it as it is); the editor shows
// it in its language through numbered text detailTextNumber(the value). A text that begins and
// ends with a quote is quoted once more in the language file, which takes one pair off.
enum class DetailText {
    MissingOrEmpty,
    CannotBeRead,
    ChangedOnEveryRead,
    NotAnIndexFile,
    NegativeKeyCount,    // %1 count
    TruncatedAt,         // %1 byte
    UnknownValueType,    // %1 type, %2 byte
    ItemArrayDimensions, // %1 dimensions, %2 byte
    ItemArraySlots,      // %1 slots, %2 lower bound, %3 byte
    EntryArrayDimensions,
    EntryArrayEntries,
    EndsInsideField, // %1 byte
    HeaderTextLength,
    SentenceCount,
    InSentence, // %1 sentence, %2 a detail
    NoPackageFolder,
    KeyCountNotOpened,
    RuntimeError, // %1 number
    NoEntryHere,
    NoEntriesAt,   // %1 to %2
    TitleShownAs,  // %1 raw entry, %2 title
    AlsoAtIndex,   // %1 position
    SettingStored, // %1 item, %2 stored type, %3 expected type
    LoadingStops,  // %1 item, %2 a detail
    Bytes,
    MediaError,
    CountBelowEntries,
    CountNegative,
    CountWithoutEntry,
    NoCodePageCharacter,
    Utf8ShownAs,
    LastEntryWithoutEntries,
    LastEntryPastEntries,
    LastEntryShortOfEntries,
    EmptyServiceDeleted,
    IdLeavesPackage,
    IdNamesOtherFile,
    SentenceKeyTwice,
    PlaysNothing,
    LouderThanMedian,  // %1 loudness, %2 distance, %3 median
    QuieterThanMedian, // %1 loudness, %2 distance, %3 median
    TruePeak,          // %1 peak
    // Joins of two details that read the same in every language.
    Labelled, // "%1: %2"
    Joined,   // "%1, %2"
};
// The details with a numbered text of their own; the joins come after them. The first ones
// are numbered from kFirstDetailText; the numbers after those were taken, so later ones go on
// from kLaterDetailText.
inline constexpr int kTranslatedDetailCount = 42;
inline constexpr int kFirstDetailText = 530;
inline constexpr int kEarlyDetailCount = 39;
inline constexpr int kLaterDetailText = 670;

// The numbered language text of detail `index` (below kTranslatedDetailCount).
constexpr int detailTextNumber(int index) {
    return index < kEarlyDetailCount ? kFirstDetailText + index
                                     : kLaterDetailText + index - kEarlyDetailCount;
}

// The English detail with %1, %2 ... replaced in one pass.
QString detailText(DetailText id, const QStringList& args = {});

// A numbered text of the editor's language with its arguments filled in.
using NumberedText = std::function<QString(int number, const QStringList& args)>;

// `english`, a detail as detailText wrote it (joins and details within details included), in
// the language `numbered` reads from. A text that is no detail (a title, a path, a value) and
// a detail whose translation is missing stay as they are.
QString localDetail(const QString& english, const NumberedText& numbered);

} // namespace tavik
