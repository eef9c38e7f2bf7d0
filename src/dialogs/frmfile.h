#pragma once

#include <QDialog>
#include <QList>

class QComboBox;
class QFrame;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace tavik {

class FileList;
class FolderList;
class frmMain;
class zelcmd;

// The import dialog: sound files gathered from anywhere into an import list, named, listened
// to, and copied into the open package in one go.
class frmFile : public QDialog {
    Q_OBJECT
public:
    explicit frmFile(frmMain& main);
    ~frmFile() override;

    // Where the preview takes its file from.
    enum PreviewSource { NoPreview = 0, ImportList = 1, BrowseList = 2 };

    // The name part of `path`; with `stripExtension` only the part before its first ".".
    static QString GetFileName(const QString& path, bool stripExtension);

    // Adds every file that exists and is not empty to the import list, named after its file.
    void AddFiles(const QStringList& paths);

    int previewSource() const { return previewSource_; }

    QComboBox* Drive1() const { return drive1_; }
    FolderList* Dir1() const { return dir1_; }
    FileList* File1() const { return file1_; }
    QComboBox* cboFormat() const { return cboFormat_; }
    QListWidget* lstImport() const { return lstImport_; }
    QListWidget* lstHidden() const { return lstHidden_; }
    QLineEdit* txtName() const { return txtName_; }
    zelcmd* cmdAdd() const { return cmdAdd_; }
    zelcmd* cmdDel() const { return cmdDel_; }
    zelcmd* cmdClear() const { return cmdClear_; }
    zelcmd* cmdRefresh() const { return cmdRefresh_; }
    zelcmd* cmdPlay() const { return cmdPlay_; }
    zelcmd* cmdColor() const { return cmdColor_; }
    zelcmd* cmdOK() const { return cmdOK_; }
    zelcmd* cmdCancel() const { return cmdCancel_; }
    QFrame* picColor() const { return picColor_; }
    const QList<QRadioButton*>& optColor() const { return optColor_; }
    const QList<QFrame*>& shpColor() const { return shpColor_; }

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void fillDrives();
    void Drive1_Change();
    void Dir1_Change();
    void cboFormat_Click();
    void cmdRefresh_Click();
    void cmdAdd_Click();
    void cmdDel_Click();
    void cmdClear_Click();
    void lstImport_Click();
    void txtName_Change();
    void cmdColor_Click(bool value);
    void cmdPlay_Click();
    void cmdOK_Click();
    void addImportFile(const QString& path, QStringList& refused);
    void reportRefused(const QStringList& refused);

    frmMain& main_;
    int previewSource_ = NoPreview;
    bool importing_ = false;

    QGroupBox* fraSelect_;
    QGroupBox* fraImport_;
    QComboBox* drive1_;
    FolderList* dir1_;
    FileList* file1_;
    QComboBox* cboFormat_;
    QListWidget* lstImport_;
    QListWidget* lstHidden_;
    QLineEdit* txtName_;
    zelcmd* cmdAdd_;
    zelcmd* cmdDel_;
    zelcmd* cmdClear_;
    zelcmd* cmdRefresh_;
    zelcmd* cmdPlay_;
    zelcmd* cmdColor_;
    zelcmd* cmdOK_;
    zelcmd* cmdCancel_;
    QFrame* picColor_;
    QList<QRadioButton*> optColor_;
    QList<QFrame*> shpColor_;
};

} // namespace tavik
