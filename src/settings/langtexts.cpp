#include "settings/langtexts.h"

namespace tavik {

namespace {

using namespace LangText;

constexpr LangTextUse kTexts[] = {
    {DiscardListQuestion, 0},
    {DiscardListTitle, 0},
    {IndexFileUnreadable, 0},
    {LoadingStatusLine, 0},
    {SoundFileMissing, 2},
    {SoundAlreadyOpen, 0},
    {DeleteServiceQuestion, 0},
    {ServiceFileMissing, 0},
    {DriveUnavailable, 0},
    {TitleOrAuthorMissing, 0},
    {FolderNameMissing, 0},
    {PackageAlreadyThere, 0},
    {FolderNotCreated, 0},
    {OptionStored, 0},
    {RemoveAnnouncementQuestion, 0},
    {AlreadyRunning, 0},
    {ClosingSoundsStatusLine, 0},
    {StatusLoading, 0},
    {StatusReady, 0},
    {ImportingStatusLine, 0},
    {ColumnKey, 0},
    {ColumnTitle, 0},
    {ColumnFormat, 0},
    {ColumnPlayTime, 0},
    {StatusHint, 0},
    {SearchTitle, 0},
    {SearchPrompt, 0},
    {ServiceIdRefused, 0},
    {CheckCaption, 0},
    {CheckError, 0},
    {CheckWarning, 0},
    {CheckNote, 0},
    {CheckColumnSeverity, 0},
    {CheckColumnFile, 0},
    {CheckColumnPlace, 0},
    {CheckColumnProblem, 0},
    {CheckClean, 0},
    {CheckFirstFinding + 0, 1},
    {CheckFirstFinding + 1, 1},
    {CheckFirstFinding + 2, 1},
    {CheckFirstFinding + 3, 1},
    {CheckFirstFinding + 4, 1},
    {CheckFirstFinding + 5, 1},
    {CheckFirstFinding + 6, 1},
    {CheckFirstFinding + 7, 1},
    {CheckFirstFinding + 8, 1},
    {CheckFirstFinding + 9, 1},
    {CheckFirstFinding + 10, 1},
    {CheckFirstFinding + 11, 1},
    {CheckFirstFinding + 12, 1},
    {CheckFirstFinding + 13, 1},
    {CheckFirstFinding + 14, 1},
    {CheckFirstFinding + 15, 1},
    {CheckFirstFinding + 16, 1},
    {CheckFirstFinding + 17, 1},
    {CheckFirstFinding + 18, 1},
    {CheckFirstFinding + 19, 1},
    {CheckFirstFinding + 20, 1},
};

constexpr std::int16_t kFiles[] = {LangFile::ProductPicture, LangFile::EditorPicture,
                                   LangFile::AboutText, LangFile::Readme};

} // namespace

std::span<const LangTextUse> UsedLangTexts() {
    return kTexts;
}

std::span<const std::int16_t> UsedLangFiles() {
    return kFiles;
}

} // namespace tavik
