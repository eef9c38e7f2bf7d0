#pragma once

#include "package/announcementrecord.h"
#include "package/clszeldb.h"

#include <QMainWindow>
#include <QPointer>
#include <QRect>
#include <QSet>
#include <cstdint>
#include <functional>
#include <memory>

class QLabel;
class QLockFile;
class QMenu;
class QProgressBar;
class QStatusBar;
class QTimer;
class QUndoStack;
class QWidget;

namespace tavik {

// The list's width with all four columns at their designed widths.
inline constexpr int kListWidth = 620;

class EventLog;
class Language;
class ListFilterBar;
class LoudnessJob;
struct LoudnessCheck;
class ReportList;
class frmCheck;
class frmStatus;
class PackageWatch;
struct ListSortState;
class modMCI;
class SetAsideFiles;
class zelcmd;
enum class MsgResult;

// The main window: the announcement list of the current package and the buttons that open
// every other window. It owns the program-wide state the dialogs and the service editor read
// and change directly before they call its operations.
class frmMain : public QMainWindow {
    Q_OBJECT
public:
    frmMain(Language& language, modMCI& mci, EventLog& eventLog, QWidget* parent = nullptr);
    ~frmMain() override;

    // Start-up in the designed order, up to a window ready to be shown. False when the
    // program is to end (no language chosen, or a second instance).
    bool FormLoad();

    // --- program-wide state ---
    QString PackageFolder; // no trailing separator
    QString IndexFilePath;
    clsZELDB PackageIndex;
    AnnouncementTable table; // Announcements and AnnouncementCount
    bool newPackageMode = false;
    bool PackageChosen = false; // set by the open and new dialogs
    // Start-up shows the splash window; tests and benchmarks switch it off.
    bool ShowSplash = true;

    Language& language() const { return language_; }
    modMCI& mci() const { return mci_; }
    EventLog& eventLog() const { return eventLog_; }
    bool UseFormat() const;
    void SetUseFormat(bool useFormat);

    // --- operations the other windows call ---
    void LoadPackage();
    void UnloadAudioFiles();
    void EnableServicButtons(bool enabled);
    // The zoom trail from `source` to `target`, each a widget on screen or about to be.
    void FadeInEffect(QWidget* source, QWidget* target, int steps);
    // The first file of the package folder whose name starts with `key`, "" when none.
    QString GetFileName(const QString& key) const;

    // --- other programs on the same package (frmmain_watch.cpp) ---
    // Keys the list and the table hold: a new sound must not get one of them.
    QSet<QString> HeldKeys() const;
    // Runs one of the editor's writes of package files under the package's write lock. With
    // `askFirst`, changes other programs made since the load are shown first (reload and lose
    // mine, save mine over theirs, cancel); false when nothing was written. `write` returns
    // the names of the files it wrote, which then no longer count as changed by others.
    bool WriteGuarded(const std::function<QStringList()>& write, bool askFirst = true);
    // Whether the list differs from what was loaded or the window is marked modified.
    bool HasUnsavedChanges() const;
    // The watch on the open package's files, null before the first load.
    PackageWatch* packageWatch() const { return watch_; }

    // --- unsaved changes ---
    // Every change to the list since it was loaded; its clean state is the saved package.
    QUndoStack* undoStack() const { return undoStack_; }
    // Sound files of removed (or un-imported) announcements, kept until the package closes.
    SetAsideFiles& setAsideFiles() const { return *setAside_; }
    // Writes the list into the package it was loaded from and loads it again; false, with a
    // message naming the file, when nothing could be written: the list then stays as it is.
    bool SavePackage();
    // Asks Save / Discard / Cancel when the list has unsaved changes; true to go on.
    bool MaySaveOrDiscard();
    // The import dialog for the open package, `files` already in its list; what the import
    // saves is the list as shown with the new sounds behind.
    void ImportSounds(const QStringList& files = {});
    // Relabels the edit menu and puts the modified mark into the title (language changes).
    void ApplyEditTexts();
    // Puts the texts the code gives the menus (sort directions, the file menu, the edit menu's
    // list commands) into the program's language.
    void ApplyMenuTexts();
    QMenu* mnuEdit() const { return mnuEdit_; }
    QMenu* mnuFile() const { return mnuFile_; }
    // The keyboard's commands; each presses its button.
    QAction* mnuNew() const { return mnuNew_; }
    QAction* mnuOpen() const { return mnuOpen_; }
    QAction* mnuSave() const { return mnuSave_; }
    QAction* mnuQuit() const { return mnuQuit_; }
    QAction* mnuRemove() const { return mnuRemove_; }
    QAction* mnuProperties() const { return mnuProperties_; }
    QAction* mnuPlay() const { return mnuPlay_; }
    QAction* mnuMoveUp() const { return mnuMoveUp_; }
    QAction* mnuMoveDown() const { return mnuMoveDown_; }
    QAction* mnuUndo() const { return mnuUndo_; }
    QAction* mnuRedo() const { return mnuRedo_; }

    // --- controls ---
    ReportList* lsvPack() const { return lsvPack_; }
    ListFilterBar* filterBar() const { return filterBar_; }
    zelcmd* cmdNew() const { return cmdNew_; }
    zelcmd* cmdOpen() const { return cmdOpen_; }
    zelcmd* cmdSave() const { return cmdSave_; }
    zelcmd* cmdAdd() const { return cmdAdd_; }
    zelcmd* cmdRemove() const { return cmdRemove_; }
    zelcmd* cmdEdit() const { return cmdEdit_; }
    zelcmd* cmdPlay() const { return cmdPlay_; }
    zelcmd* cmdUp() const { return cmdUp_; }
    zelcmd* cmdDown() const { return cmdDown_; }
    zelcmd* cmdFUp() const { return cmdFUp_; }
    zelcmd* cmdFDown() const { return cmdFDown_; }
    zelcmd* cmdSort() const { return cmdSort_; }
    zelcmd* cmdExpand() const { return cmdExpand_; }
    zelcmd* cmdUnexpand() const { return cmdUnexpand_; }
    zelcmd* cmdDienst() const { return cmdDienst_; }
    zelcmd* cmdCheck() const { return cmdCheck_; }
    zelcmd* cmdCompress() const { return cmdCompress_; }
    zelcmd* cmdDelete() const { return cmdDelete_; }
    zelcmd* cmdLanguage() const { return cmdLanguage_; }
    zelcmd* cmdDebug() const { return cmdDebug_; }
    zelcmd* cmdHelp() const { return cmdHelp_; }
    zelcmd* cmdInfo() const { return cmdInfo_; }
    zelcmd* cmdExit() const { return cmdExit_; }
    QWidget* picExpand() const { return picExpand_; }
    QMenu* mnuSort() const { return mnuSort_; }
    QMenu* mnuView() const { return mnuView_; }
    QAction* mnuLoudness() const { return mnuLoudness_; }
    // The list's optional loudness column: shown or not, and whether it is being measured.
    void ShowLoudnessColumn(bool shown);
    bool LoudnessColumnShown() const;
    bool MeasuringListLoudness() const;
    QMenu* mnuHlp() const { return mnuHlp_; }
    QAction* mnuIndex() const { return mnuIndex_; }
    QAction* mnuTitel() const { return mnuTitel_; }
    QAction* mnuFormat() const { return mnuFormat_; }
    QAction* mnuLenght() const { return mnuLenght_; }
    // The sort direction, checked while the list is sorted.
    QAction* mnuAscending() const { return mnuAscending_; }
    QAction* mnuDescending() const { return mnuDescending_; }
    QAction* mnuHP() const { return mnuHP_; }
    QAction* mnuSupport() const { return mnuSupport_; }
    QAction* mnuReadme() const { return mnuReadme_; }
    QStatusBar* barStatus() const;
    // Status panels 1 to 6; panel 4 has the key "Title".
    QLabel* Panel(int index) const;
    QProgressBar* prgStatus() const { return prgStatus_; }
    QTimer* tmrName() const { return tmrName_; }
    // The status window while a load or an unload runs, else null.
    frmStatus* statusWindow() const;
    // The findings of the last package check while that window is open, else null.
    frmCheck* checkWindow() const;

    // The service editor while it is open, else null.
    QWidget* serviceEditor() const { return serviceEditor_; }

    int MinHeight() const { return minHeight_; }
    int MinWidth() const { return minWidth_; }

    // Where the packer is looked for: the program folder's "tavikpm" executable.
    static QString PackerPath();

public Q_SLOTS:
    void cmdNew_Click();
    void cmdOpen_Click();
    void cmdSave_Click();
    void cmdAdd_Click();
    void cmdRemove_Click();
    void cmdEdit_Click();
    void cmdPlay_Click();
    void cmdUp_Click();
    void cmdDown_Click();
    void cmdFUp_Click();
    void cmdFDown_Click();
    void cmdSort_Click();
    void cmdExpand_Click();
    void cmdUnexpand_Click();
    void cmdDienst_Click();
    void cmdCheck_Click();
    void cmdCompress_Click();
    void cmdDelete_Click();
    void cmdLanguage_Click();
    void cmdDebug_Click();
    void cmdHelp_Click();
    void cmdInfo_Click();
    void lsvPack_DblClick();
    // The sort menu's column entries: the list sorted by the column's text.
    void SortByColumn(int column);
    // A click on a column header: keys and play times sorted by their numbers.
    void SortByHeader(int column);
    // The sort menu's direction entries: the sort column the other way round.
    void SortInOrder(int order);
    void tmrName_Timer();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // The language dialog at start-up; false when the program is to end.
    bool chooseLanguage();
    // Writes the list order and every listed announcement's settings into PackageIndex.
    void SavePackageList();
    void buildControls();
    void buildStatusBar();
    void buildMenus();
    void buildEditMenu();
    void buildSortMenu();
    void buildLoudnessColumn();
    void applyLoudnessTexts();
    QString loudnessColumnTitle() const;
    void measureListLoudness();
    // The title column, given its width, makes room for a shown loudness column.
    void fitLoudnessColumn();
    void applyListLoudness(const LoudnessCheck& result);
    void buildKeys();
    void applySortTexts();
    // Checks the sort menu's entries of the list's sort.
    void syncSortMenu();
    void pushSort(const ListSortState& after);
    // LoadPackage calls it: a load of another package closes the one the list showed.
    void noteLoadedPackage();
    // The package the list showed goes: its set-aside files are settled and its undo history
    // dropped.
    void closeEditedPackage();
    void moveSelectedRow(int to);
    // The search box above the list, Ctrl+F, and the moves it locks while it hides rows.
    QWidget* buildFilter(QWidget* parent);
    void applyFilterTexts();
    void applyMoveLock();
    bool filterHidesRows() const;
    void showReadyState();
    void closeStatusWindow();
    void onServiceEditorClosed();
    // Makes the window wide enough for the extended panel beside the full list, as far as the
    // screen allows; where it does not, the list gives way. Puts the hidden panel where it
    // will appear.
    void makeRoomForPanel();
    // Gives back what makeRoomForPanel took, unless the user has moved or sized the window.
    void giveBackPanelRoom();
    // The start and the end of a load: the files as they are now, and the list as loaded.
    void followPackage();
    void packageLoaded();
    QByteArray listFingerprint() const;
    MsgResult askAboutOutsideChange(const QStringList& names);
    void reloadFromDisk(const QStringList& names);
    void onChangedOnDisk(const QStringList& names);

    Language& language_;
    modMCI& mci_;
    EventLog& eventLog_;
    std::unique_ptr<QLockFile> instanceLock_;

    ReportList* lsvPack_ = nullptr;
    ListFilterBar* filterBar_ = nullptr;
    zelcmd* cmdNew_ = nullptr;
    zelcmd* cmdOpen_ = nullptr;
    zelcmd* cmdSave_ = nullptr;
    zelcmd* cmdAdd_ = nullptr;
    zelcmd* cmdRemove_ = nullptr;
    zelcmd* cmdEdit_ = nullptr;
    zelcmd* cmdPlay_ = nullptr;
    zelcmd* cmdUp_ = nullptr;
    zelcmd* cmdDown_ = nullptr;
    zelcmd* cmdFUp_ = nullptr;
    zelcmd* cmdFDown_ = nullptr;
    zelcmd* cmdSort_ = nullptr;
    zelcmd* cmdExpand_ = nullptr;
    zelcmd* cmdUnexpand_ = nullptr;
    zelcmd* cmdDienst_ = nullptr;
    zelcmd* cmdCheck_ = nullptr;
    QPointer<frmCheck> checkWindow_;
    zelcmd* cmdCompress_ = nullptr;
    zelcmd* cmdDelete_ = nullptr;
    zelcmd* cmdLanguage_ = nullptr;
    zelcmd* cmdDebug_ = nullptr;
    zelcmd* cmdHelp_ = nullptr;
    zelcmd* cmdInfo_ = nullptr;
    zelcmd* cmdExit_ = nullptr;
    QWidget* picExpand_ = nullptr;
    QMenu* mnuSort_ = nullptr;
    QMenu* mnuView_ = nullptr;
    QAction* mnuLoudness_ = nullptr;
    LoudnessJob* loudnessJob_ = nullptr;
    QTimer* tmrLoudness_ = nullptr;
    int loudnessRoom_ = 0; // what the title column gave the loudness column
    QMenu* mnuHlp_ = nullptr;
    QAction* mnuIndex_ = nullptr;
    QAction* mnuTitel_ = nullptr;
    QAction* mnuFormat_ = nullptr;
    QAction* mnuLenght_ = nullptr;
    QAction* mnuAscending_ = nullptr;
    QAction* mnuDescending_ = nullptr;
    QMenu* mnuFile_ = nullptr;
    QAction* mnuNew_ = nullptr;
    QAction* mnuOpen_ = nullptr;
    QAction* mnuSave_ = nullptr;
    QAction* mnuQuit_ = nullptr;
    QAction* mnuRemove_ = nullptr;
    QAction* mnuProperties_ = nullptr;
    QAction* mnuPlay_ = nullptr;
    QAction* mnuMoveUp_ = nullptr;
    QAction* mnuMoveDown_ = nullptr;
    QAction* mnuHP_ = nullptr;
    QAction* mnuSupport_ = nullptr;
    QAction* mnuReadme_ = nullptr;
    QList<QLabel*> panels_;
    QProgressBar* prgStatus_ = nullptr;
    QTimer* tmrName_ = nullptr;
    QPointer<frmStatus> status_;
    QPointer<QWidget> serviceEditor_;
    QUndoStack* undoStack_ = nullptr;
    std::unique_ptr<SetAsideFiles> setAside_;
    QMenu* mnuEdit_ = nullptr;
    QAction* mnuUndo_ = nullptr;
    QAction* mnuRedo_ = nullptr;
    // The index file the list was loaded from; Save writes nowhere else.
    QString listIndexPath_;
    int loads_ = 0;
    int minHeight_ = 0;
    int minWidth_ = 0;
    QRect frameBeforePanel_; // empty when the panel did not change the window
    QSize sizeBeforePanel_;
    QSize sizeWithPanel_;
    PackageWatch* watch_ = nullptr;
    QByteArray loadedList_;
    bool askingAboutChange_ = false;
    bool overwriteConfirmed_ = false;
    // A load, an unload or a save is going through the list (their depth), and whether the
    // window was closed meanwhile: no load fills it after that.
    int listWork_ = 0;
    bool closedDuringListWork_ = false;
};

} // namespace tavik
