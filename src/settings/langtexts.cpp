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
