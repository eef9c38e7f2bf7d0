#pragma once

#include "service/satzrecord.h"
#include "service/servicesentences.h"
#include "util/modrandom.h"

#include <QMainWindow>
#include <QStringList>
#include <array>
#include <cstdint>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QTabBar;
class QTimer;
class QUndoStack;

namespace tavik {

enum class MsgResult;
class PackageFileWatch;
class SentenceTimeline;
class CodePageGuard;
class ReportList;
class frmMain;
class zelcmd;

// Everything of a service that its file keeps: what one step of undo brings back.
struct ServiceEditState {
    QStringList header; // title, author, description, ID
    QStringList rowKeys;
    QStringList rowTexts;
    QList<SatzRecord> saetze;
    std::int16_t satzCount = 0;
    bool operator==(const ServiceEditState&) const = default;
};

// The service editor: builds the sentences of a service from the announcements of the package
// the main window holds, orders them, plays them, and opens, saves and deletes the package's
// service files. It reads and changes the main window's state directly; the main window stays
// disabled while the editor is open.
//
// Handlers (the *_Click members) raise runtime errors to their caller; when they run from a
// control, the error is shown by the application and the editor stays usable.
class frmDienst : public QMainWindow {
    Q_OBJECT
public:
    explicit frmDienst(frmMain& main);
    ~frmDienst() override;

    // --- the service in memory ---
    ServiceSentences sentences; // Saetze and SatzCount
    std::int16_t CurrentSatz = 0;
    bool NewSatzPending = false;
    bool IsPlaying = false;
    // The paths behind the entries of lstOpen, by index. Never cleared: each listing appends.
    QStringList File1;
    // Draws the keys of new sentences; tests may seed it.
    RandomGenerator generator;

    QList<SatzRecord>& Saetze() { return sentences.Saetze; }
    std::int16_t SatzCount() const { return sentences.SatzCount; }

    // --- operations ---
    void ShowPage(int page);
    // The page shown, 0 to 3.
    int CurrentPage() const;
    void LoadItemToList();
    void RefreshList();
    void AutoPlace();
    // Copies the target list into the sentence at CurrentSatz and rebuilds its text.
    void SaveIntoArray();
    // Writes the header texts and the sentences of the service list, in list order.
    void SaveToFile(const QString& path);
    void FindFiles();
    // Reads a whole service into the lists and text boxes. A missing or empty file gives
    // message 13 and changes nothing; a broken one raises the runtime error after the
    // sentences read so far are listed.
    void OpenServiceFile(const QString& path);
    // Where the save command writes: the package folder & "\_" & txtID & "._".
    QString ServicePath() const;

    // --- unsaved changes ---
    // Every change to the service since it was opened or begun; clean is the saved service.
    QUndoStack* undoStack() const { return undoStack_; }
    // Saves the service after the checks that keep a useless or foreign file from being
    // written; false when nothing was written (a message says why).
    bool SaveService();
    // Asks Save / Discard / Cancel when the service has unsaved changes; true to go on.
    bool MaySaveOrDiscard();
    // The file the service was opened from or last saved to; "" for a new one.
    QString OpenedPath() const { return openedPath_; }
    ServiceEditState CaptureState() const;
    void RestoreState(const ServiceEditState& state);
    // Follows the opened service file on disk, for changes by other programs.
    PackageFileWatch* serviceWatch() const { return serviceWatch_; }
    // The selected sentence as a line of time.
    SentenceTimeline* timeline() const { return timeline_; }
    void refreshTimeline();
    // While a sentence plays: the timeline shows it, and its cursor follows the output.
    void followPlay(const SatzRecord& playing);
    void notePlayStep(const QString& logLine);
    void endPlayCursor();
    QAction* mnuUndo() const { return mnuUndo_; }
    QAction* mnuRedo() const { return mnuRedo_; }

    // --- controls ---
    QTabBar* ridDienst() const { return ridDienst_; }
    QWidget* picTab(int page) const { return picTab_[page]; }
    QTimer* Timer1() const { return timer1_; }
    QAction* mnuNew() const { return mnuNew_; }
    QAction* mnuOpen() const { return mnuOpen_; }
    QAction* mnuSave() const { return mnuSave_; }
    QAction* mnuClose() const { return mnuClose_; }
    QAction* mnuExport() const { return mnuExport_; }
    // page 0
    QLineEdit* txtTitle() const { return txtTitle_; }
    QLineEdit* txtAutor() const { return txtAutor_; }
    QLineEdit* txtComment() const { return txtComment_; }
    QLineEdit* txtID() const { return txtID_; }
    zelcmd* cmdSv() const { return cmdSv_; }
    zelcmd* cmdEsc() const { return cmdEsc_; }
    // page 1
    ReportList* lsvDienst() const { return lsvDienst_; }
    QLineEdit* txtText() const { return txtText_; }
    zelcmd* cmdAdd() const { return cmdAdd_; }
    zelcmd* cmdRem() const { return cmdRem_; }
    zelcmd* cmdEdit() const { return cmdEdit_; }
    zelcmd* cmdUp() const { return cmdUp_; }
    zelcmd* cmdDown() const { return cmdDown_; }
    zelcmd* cmdPlay() const { return cmdPlay_; }
    zelcmd* cmdTausch() const { return cmdTausch_; }
    // page 2
    QGroupBox* fraSource() const { return fraSource_; }
    QGroupBox* fraTarget() const { return fraTarget_; }
    ReportList* lsvSource() const { return lsvSource_; }
    ReportList* lsvTarget() const { return lsvTarget_; }
    QListWidget* List1() const { return list1_; }
    zelcmd* cmdHinzu() const { return cmdHinzu_; }
    zelcmd* cmdEntf() const { return cmdEntf_; }
    zelcmd* cmdAuf() const { return cmdAuf_; }
    zelcmd* cmdAb() const { return cmdAb_; }
    zelcmd* cmdSearch() const { return cmdSearch_; }
    zelcmd* cmdAbsp() const { return cmdAbsp_; }
    zelcmd* cmdSave() const { return cmdSave_; }
    zelcmd* cmdCancel() const { return cmdCancel_; }
    // page 3
    QListWidget* lstOpen() const { return lstOpen_; }
    QLineEdit* txtInfo(int index) const { return txtInfo_[index]; }
    zelcmd* cmdOpen() const { return cmdOpen_; }
    zelcmd* cmdAbbr() const { return cmdAbbr_; }
    zelcmd* cmdKill() const { return cmdKill_; }
    zelcmd* cmdRefresh() const { return cmdRefresh_; }

public Q_SLOTS:
    // page 1
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdRem_Click();
    void cmdUp_Click();
    void cmdDown_Click();
    void cmdTausch_Click();
    void cmdPlay_Click();
    void lsvDienst_ItemClick();
    void lsvDienst_ColumnClick(int column);
    void txtText_Change();
    // page 2
    void cmdHinzu_Click();
    void cmdEntf_Click();
    void cmdAuf_Click();
    void cmdAb_Click();
    void cmdSearch_Click();
    void cmdAbsp_Click();
    void cmdSave_Click();
    void cmdCancel_Click();
    // page 0 and 3, menus
    void cmdSv_Click();
    void cmdEsc_Click();
    void lstOpen_Click();
    void lstOpen_KeyPress(int keyAscii);
    void cmdRefresh_Click();
    void cmdOpen_Click();
    void cmdAbbr_Click();
    void cmdKill_Click();
    void mnuNew_Click();
    void mnuOpen_Click();
    void mnuSave_Click();
    void mnuClose_Click();
    // Saves the sentence selected in the service list as a WAVE file.
    void mnuExport_Click();
    void Timer1_Timer();

Q_SIGNALS:
    // The window is closing; the main window enables itself again.
    void Unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildPropertiesPage();
    void buildServicePage();
    void buildSentencePage();
    void buildOpenPage();
    void buildMenus();
    void buildExport();
    void connectHandlers();
    void FormLoad();
    // Runs a handler from a control: a runtime error is reported and the editor goes on.
    void guarded(void (frmDienst::*handler)());
    void onClick(zelcmd* button, void (frmDienst::*handler)());

    void buildEditMenu();
    // The texts the file keeps: the code page guard, the ID box's rule and the name box's note.
    void buildTextGuards();
    // Whether the service's texts hold in the code page; a message says what does not.
    bool textsHold();
    // Writes the service to `path`; when the opened service's ID changed, asks whether to
    // rename it (its old file goes, all or nothing) or to save a copy. False when nothing was
    // written (a message says why).
    bool writeServiceFile(const QString& path);
    // A time shift typed outside the 16-bit range: the message; the row kept its shift.
    void refuseTimeShift(const QString& typed);
    // Raises the runtime's subscript error, naming the sentence and `key`, when the package
    // has no announcement of that key.
    void requireAnnouncement(const SatzRecord& satz, const QString& key) const;
    // Records what the last handler changed as one step of undo; steps with the same
    // `mergeId` (typing in one box) become one.
    void noteChange(int mergeId = -1);
    // A service opened or begun: no history, and nothing unsaved.
    void startHistory();
    void setServiceColumnWidth();
    SentenceTimeline* buildTimeline(QWidget* parent);
    // The service file the window shows from now on ("" for a new service), followed on disk.
    void setOpenedPath(const QString& path);
    // Before a save to `path`: false when another program changed the opened file and the
    // user chose not to write over it.
    bool mayWriteOver(const QString& path);
    MsgResult askAboutServiceChange();
    // Reads the opened file again; what was unsaved is gone.
    void reloadService();
    void onServiceChangedOnDisk();
    void addTargetRowFromSelectedSource();
    void playSentence(const SatzRecord& satz);
    void setMenusEnabled(bool enabled);
    void zoom(QWidget* from, QWidget* to);

    frmMain& main_;
    QUndoStack* undoStack_ = nullptr;
    QAction* mnuUndo_ = nullptr;
    QAction* mnuRedo_ = nullptr;
    ServiceEditState lastState_;
    QString openedPath_;
    PackageFileWatch* serviceWatch_ = nullptr;
    bool overwriteConfirmed_ = false;
    bool askingAboutChange_ = false;
    bool restoring_ = false;
    CodePageGuard* textGuard_ = nullptr;

    QTabBar* ridDienst_ = nullptr;
    std::array<QWidget*, 4> picTab_{};
    QTimer* timer1_ = nullptr;
    QAction* mnuNew_ = nullptr;
    QAction* mnuOpen_ = nullptr;
    QAction* mnuSave_ = nullptr;
    QAction* mnuClose_ = nullptr;
    QAction* mnuExport_ = nullptr;

    QLineEdit* txtTitle_ = nullptr;
    QLineEdit* txtAutor_ = nullptr;
    QLineEdit* txtComment_ = nullptr;
    QLineEdit* txtID_ = nullptr;
    zelcmd* cmdSv_ = nullptr;
    zelcmd* cmdEsc_ = nullptr;

    ReportList* lsvDienst_ = nullptr;
    SentenceTimeline* timeline_ = nullptr;
    QTimer* cursorTimer_ = nullptr;
    int playingEntry_ = -1;
    void moveCursor(bool entryStarts = false);
    void markPlayingRow(int entry);
    void setDraggedShift(int entry, std::int16_t shift);
    QLineEdit* txtText_ = nullptr;
    zelcmd* cmdAdd_ = nullptr;
    zelcmd* cmdRem_ = nullptr;
    zelcmd* cmdEdit_ = nullptr;
    zelcmd* cmdUp_ = nullptr;
    zelcmd* cmdDown_ = nullptr;
    zelcmd* cmdPlay_ = nullptr;
    zelcmd* cmdTausch_ = nullptr;

    QGroupBox* fraSource_ = nullptr;
    QGroupBox* fraTarget_ = nullptr;
    ReportList* lsvSource_ = nullptr;
    ReportList* lsvTarget_ = nullptr;
    QListWidget* list1_ = nullptr;
    zelcmd* cmdHinzu_ = nullptr;
    zelcmd* cmdEntf_ = nullptr;
    zelcmd* cmdAuf_ = nullptr;
    zelcmd* cmdAb_ = nullptr;
    zelcmd* cmdSearch_ = nullptr;
    zelcmd* cmdAbsp_ = nullptr;
    zelcmd* cmdSave_ = nullptr;
    zelcmd* cmdCancel_ = nullptr;

    QListWidget* lstOpen_ = nullptr;
    std::array<QLineEdit*, 2> txtInfo_{};
    zelcmd* cmdOpen_ = nullptr;
    zelcmd* cmdAbbr_ = nullptr;
    zelcmd* cmdKill_ = nullptr;
    zelcmd* cmdRefresh_ = nullptr;
};

} // namespace tavik
