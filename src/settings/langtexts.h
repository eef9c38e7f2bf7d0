#pragma once

#include <QString>
#include <cstdint>
#include <span>

namespace tavik {

class Language;

// The numbered texts of section "_String" that the editor shows, named by purpose. Every
// delivered language file holds each of them; `arguments` says how many of %1, %2 ... the
// caller fills in, so the text must name exactly those.
namespace LangText {
inline constexpr std::int32_t DiscardListQuestion = 6; // before a package replaces the list
inline constexpr std::int32_t DiscardListTitle = 7;    // title of that question
inline constexpr std::int32_t IndexFileUnreadable = 8; // the package index cannot be opened
inline constexpr std::int32_t LoadingStatusLine = 9;   // status window while loading
inline constexpr std::int32_t SoundFileMissing = 10;   // %1 key, %2 title
inline constexpr std::int32_t SoundAlreadyOpen = 11;   // media alias already open, reopened
inline constexpr std::int32_t DeleteServiceQuestion = 12;
inline constexpr std::int32_t ServiceFileMissing = 13; // service file missing or empty
inline constexpr std::int32_t DriveUnavailable = 17;   // import dialog, drive cannot be read
inline constexpr std::int32_t TitleOrAuthorMissing = 18;
inline constexpr std::int32_t FolderNameMissing = 19;
inline constexpr std::int32_t PackageAlreadyThere = 20;
inline constexpr std::int32_t FolderNotCreated = 21;
inline constexpr std::int32_t OptionStored = 22;
inline constexpr std::int32_t RemoveAnnouncementQuestion = 23;
inline constexpr std::int32_t AlreadyRunning = 24; // a second instance refuses to start
inline constexpr std::int32_t ClosingSoundsStatusLine = 25;
inline constexpr std::int32_t StatusLoading = 26; // status bar, panel 1
inline constexpr std::int32_t StatusReady = 27;   // status bar, panel 1
inline constexpr std::int32_t ImportingStatusLine = 28;
inline constexpr std::int32_t ColumnKey = 29; // package list column captions
inline constexpr std::int32_t ColumnTitle = 30;
inline constexpr std::int32_t ColumnFormat = 31;
inline constexpr std::int32_t ColumnPlayTime = 32;
inline constexpr std::int32_t StatusHint = 33;  // status bar, panel 6
inline constexpr std::int32_t SearchTitle = 58; // service editor's search box
inline constexpr std::int32_t SearchPrompt = 59;
inline constexpr std::int32_t ServiceIdRefused = 110; // an ID that would leave the package
// Unsaved changes, undo and the guards before work is lost.
inline constexpr std::int32_t UnsavedListQuestion = 111; // %1 the package's folder
inline constexpr std::int32_t UnsavedChangesTitle = 112;
inline constexpr std::int32_t RemoveNamedQuestion = 113;    // %1 key, %2 title, %3 file
inline constexpr std::int32_t PackageNotSaved = 114;        // %1 file, %2 the error
inline constexpr std::int32_t UnsavedServiceQuestion = 115; // %1 the service's title
inline constexpr std::int32_t ServiceIdTaken = 116;         // %1 file, %2 its title
inline constexpr std::int32_t ServiceWithoutTitle = 117;
inline constexpr std::int32_t ServiceWithoutSentence = 118;
inline constexpr std::int32_t DuplicateSentenceKeys = 119; // %1 file, %2 the keys
inline constexpr std::int32_t MenuEdit = 120;
inline constexpr std::int32_t MenuUndo = 121;
inline constexpr std::int32_t MenuRedo = 122;
inline constexpr std::int32_t UndoMove = 123;
inline constexpr std::int32_t UndoSort = 124;
inline constexpr std::int32_t UndoProperties = 125;
inline constexpr std::int32_t UndoImport = 126;
inline constexpr std::int32_t UndoRemove = 127;
inline constexpr std::int32_t UndoServiceChange = 128;
inline constexpr std::int32_t UndoPackageDetails = 240;
inline constexpr std::int32_t ServiceNotSaved = 129; // %1 file, %2 the error
// The package check window: caption, severities, column captions, the clean result, then one
// text per kind of finding (%1 the finding's detail), in the order of FindingKind.
inline constexpr std::int32_t CheckCaption = 190;
inline constexpr std::int32_t CheckError = 191;
inline constexpr std::int32_t CheckWarning = 192;
inline constexpr std::int32_t CheckNote = 193;
inline constexpr std::int32_t CheckColumnSeverity = 194;
inline constexpr std::int32_t CheckColumnFile = 195;
inline constexpr std::int32_t CheckColumnPlace = 196;
inline constexpr std::int32_t CheckColumnProblem = 197;
inline constexpr std::int32_t CheckClean = 198;
inline constexpr std::int32_t CheckFirstFinding = 199; // to 224
// Service editor: the tab strip and the captions of its lists' columns.
inline constexpr std::int32_t TabProperties = 130;
inline constexpr std::int32_t TabService = 131;
inline constexpr std::int32_t TabSentence = 132;
inline constexpr std::int32_t ColumnTimeShift = 133;
inline constexpr std::int32_t ColumnTargetTitle = 134;
inline constexpr std::int32_t ColumnSourceName = 135;
inline constexpr std::int32_t ColumnServiceKey = 136;
inline constexpr std::int32_t ColumnServiceText = 137;
// File dialogs: titles and filters ("name [pattern]|pattern|..."), and the fixed entries of
// the import dialog's format list.
inline constexpr std::int32_t FindIndexFileTitle = 138;
inline constexpr std::int32_t IndexFileFilter = 139;
inline constexpr std::int32_t LoadPictureTitle = 140;
inline constexpr std::int32_t PictureFilter = 141;
inline constexpr std::int32_t FormatAllFiles = 142;
inline constexpr std::int32_t FormatAllMedia = 143;
// Names assistive technology announces for controls that show no caption of their own.
inline constexpr std::int32_t NameAnnouncementList = 144;
inline constexpr std::int32_t NameLanguageFiles = 145;
inline constexpr std::int32_t NamePackageList = 146;
inline constexpr std::int32_t NameSentenceList = 147;
inline constexpr std::int32_t NameServiceList = 148;
inline constexpr std::int32_t NameTitleList = 149;
inline constexpr std::int32_t NameDrive = 150;
inline constexpr std::int32_t NameFolder = 151;
inline constexpr std::int32_t NameFiles = 152;
inline constexpr std::int32_t NameFileType = 153;
inline constexpr std::int32_t NameImportTitle = 154;
inline constexpr std::int32_t NameFirstColor = 155; // 155 to 163, the nine highlight colours
inline constexpr std::int32_t NamePackageComment = 164;
inline constexpr std::int32_t NameLog = 165;
inline constexpr std::int32_t NameAboutText = 166;
// The import refuses files that are no whole sound: the heading, then one line per file
// (%1 the file) saying why.
inline constexpr std::int32_t ImportRefused = 400;
inline constexpr std::int32_t ImportRefusedEmpty = 401;
inline constexpr std::int32_t ImportRefusedNotSound = 402;
inline constexpr std::int32_t ImportRefusedNoSound = 403;
inline constexpr std::int32_t ImportRefusedCut = 404;
inline constexpr std::int32_t ImportRefusedNotAFile = 405;
// The properties dialog's place box holds a place outside the list (%1 the list's length).
inline constexpr std::int32_t PlaceOutsideList = 406;
// The name assistive technology announces for the check window's findings list.
inline constexpr std::int32_t NameFindingList = 407;
// The runtime's messages: the heading word ("Laufzeitfehler"), the texts of the runtime errors
// listed by TranslatedRuntimeErrors in their order, and the text of any other error.
inline constexpr std::int32_t RuntimeErrorHeading = 410;
inline constexpr std::int32_t RuntimeErrorFirst = 411; // to 426
inline constexpr std::int32_t RuntimeErrorOther = 427;
// The title of the package dialog when it edits the open package's details.
inline constexpr std::int32_t PackageDetailsTitle = 428;
// "Pack" finds no packer (%1 where it is looked for).
inline constexpr std::int32_t PackerMissing = 429;
// The service editor and the service file another program changed or removed (%1 the file).
inline constexpr std::int32_t ServiceChangedOnDisk = 650;
inline constexpr std::int32_t ServiceReloaded = 651;
inline constexpr std::int32_t ServiceRemovedOnDisk = 652;
// The search box above the package list: its hint, "%1 of %2" rows shown, its name, and why
// the moves rest while it hides rows.
inline constexpr std::int32_t FilterHint = 660;
inline constexpr std::int32_t FilterCount = 661;
inline constexpr std::int32_t FilterName = 662;
inline constexpr std::int32_t FilterLocksMoves = 663;
// The service editor's line of time: its name, the hint without a selected sentence, and a
// sentence that names an announcement the package no longer has.
inline constexpr std::int32_t TimelineName = 664;
inline constexpr std::int32_t TimelineNoSentence = 665;
inline constexpr std::int32_t TimelineBroken = 666;
// What exactly a check found, in the order of DetailText (see package/findingdetail.h).
inline constexpr std::int32_t CheckFirstDetail = 530; // to 568, then on from CheckLaterDetail
inline constexpr std::int32_t CheckLaterDetail = 670; // to 672
// The check window while it measures loudness (%1 done, %2 all) and its loudness summary
// (%1 the median in LUFS, %2 how many sounds).
inline constexpr std::int32_t CheckMeasuringLoudness = 673;
inline constexpr std::int32_t CheckLoudnessSummary = 674;
// The main window's View menu, its loudness column entry, the column's header and a cell's
// tool tip (%1 loudness in LUFS, %2 true peak in dBTP).
inline constexpr std::int32_t MenuView = 675;
inline constexpr std::int32_t MenuLoudnessColumn = 676;
inline constexpr std::int32_t LoudnessColumn = 677;
inline constexpr std::int32_t LoudnessCellTip = 678;
// The runtime's text of error 91, which came after the others.
inline constexpr std::int32_t RuntimeErrorObjectNotSet = 569;
// Texts the files cannot hold (code page 1252): the note's heading, one character (%1 the
// character, %2 its number U+..., %3 its place), the button that replaces them, and the
// service editor's refusal to save (%1 the characters).
inline constexpr std::int32_t CodePageNote = 600;
inline constexpr std::int32_t CodePageCharacter = 601;
inline constexpr std::int32_t ClosestLetters = 602;
inline constexpr std::int32_t CodePageServiceNotSaved = 603;
// Removing an announcement that services use: the heading (%1 the uses) and one use (%1 the
// service's title, %2 its file, %3 the sentence's key, %4 its text).
inline constexpr std::int32_t RemoveUsedBy = 604;
inline constexpr std::int32_t RemoveUsedByLine = 605;
// A sentence names an announcement the package lacks (%1 key, %2 text of the sentence,
// %3 the announcement's key).
inline constexpr std::int32_t SentenceAnnouncementMissing = 606;
// A time shift outside the 16-bit range (%1 as typed).
inline constexpr std::int32_t TimeShiftOutOfRange = 607;
// The ID of an opened service changed (%1 old ID, %2 new ID, %3 old file, %4 new file), and
// a rename that failed (%1 the error).
inline constexpr std::int32_t RenameServiceQuestion = 608;
inline constexpr std::int32_t RenameServiceFailed = 609;
// The service list's name box: placeholder and tool tip.
inline constexpr std::int32_t DisplayNamePlaceholder = 610;
inline constexpr std::int32_t DisplayNameToolTip = 611;
// "Readme" finds no readme file (%1 where it is looked for).
inline constexpr std::int32_t ReadmeMissing = 612;
} // namespace LangText

struct LangTextUse {
    std::int32_t number;
    int arguments;
};

// Every numbered text the editor uses.
std::span<const LangTextUse> UsedLangTexts();

// Numbered text `number` of `language`, or `designed` when the file has none: for texts the
// design gives that a language file may translate.
QString LangTextOr(const Language& language, std::int32_t number, const QString& designed);

// The numbered files of section "_Files", paths below the installation root.
namespace LangFile {
inline constexpr std::int16_t ProductPicture = 2; // splash and about picture of other products
inline constexpr std::int16_t EditorPicture = 3;  // the same for the product "Tavik Editor"
inline constexpr std::int16_t AboutText = 4;      // information text of the about window
inline constexpr std::int16_t Readme = 6;         // opened from the main window's help menu
} // namespace LangFile

std::span<const std::int16_t> UsedLangFiles();

} // namespace tavik
