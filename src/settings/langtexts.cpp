#include "settings/langtexts.h"

#include "settings/language.h"

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
    {CheckFirstFinding + 21, 1},
    {CheckFirstFinding + 22, 1},
    {TabProperties, 0},
    {TabService, 0},
    {TabSentence, 0},
    {ColumnTimeShift, 0},
    {ColumnTargetTitle, 0},
    {ColumnSourceName, 0},
    {ColumnServiceKey, 0},
    {ColumnServiceText, 0},
    {FindIndexFileTitle, 0},
    {IndexFileFilter, 0},
    {LoadPictureTitle, 0},
    {PictureFilter, 0},
    {FormatAllFiles, 0},
    {FormatAllMedia, 0},
    {NameAnnouncementList, 0},
    {NameLanguageFiles, 0},
    {NamePackageList, 0},
    {NameSentenceList, 0},
    {NameServiceList, 0},
    {NameTitleList, 0},
    {NameDrive, 0},
    {NameFolder, 0},
    {NameFiles, 0},
    {NameFileType, 0},
    {NameImportTitle, 0},
    {NameFirstColor, 0},
    {NameFirstColor + 1, 0},
    {NameFirstColor + 2, 0},
    {NameFirstColor + 3, 0},
    {NameFirstColor + 4, 0},
    {NameFirstColor + 5, 0},
    {NameFirstColor + 6, 0},
    {NameFirstColor + 7, 0},
    {NameFirstColor + 8, 0},
    {NamePackageComment, 0},
    {NameLog, 0},
    {NameAboutText, 0},
    {ImportRefused, 0},
    {ImportRefusedEmpty, 1},
    {ImportRefusedNotSound, 1},
    {ImportRefusedNoSound, 1},
    {ImportRefusedCut, 1},
    {ImportRefusedNotAFile, 1},
    {PlaceOutsideList, 1},
    {NameFindingList, 0},
    {RuntimeErrorHeading, 0},
    {RuntimeErrorFirst + 0, 0},
    {RuntimeErrorFirst + 1, 0},
    {RuntimeErrorFirst + 2, 0},
    {RuntimeErrorFirst + 3, 0},
    {RuntimeErrorFirst + 4, 0},
    {RuntimeErrorFirst + 5, 0},
    {RuntimeErrorFirst + 6, 0},
    {RuntimeErrorFirst + 7, 0},
    {RuntimeErrorFirst + 8, 0},
    {RuntimeErrorFirst + 9, 0},
    {RuntimeErrorFirst + 10, 0},
    {RuntimeErrorFirst + 11, 0},
    {RuntimeErrorFirst + 12, 0},
    {RuntimeErrorFirst + 13, 0},
    {RuntimeErrorFirst + 14, 0},
    {RuntimeErrorFirst + 15, 0},
    {RuntimeErrorOther, 0},
    {PackageDetailsTitle, 0},
    {PackerMissing, 1},
};

constexpr std::int16_t kFiles[] = {LangFile::ProductPicture, LangFile::EditorPicture,
                                   LangFile::AboutText, LangFile::Readme};

} // namespace

std::span<const LangTextUse> UsedLangTexts() {
    return kTexts;
}

QString LangTextOr(const Language& language, std::int32_t number, const QString& designed) {
    const QString v = language.GetLangString(number);
    return v.isEmpty() ? designed : v;
}

std::span<const std::int16_t> UsedLangFiles() {
    return kFiles;
}

} // namespace tavik
