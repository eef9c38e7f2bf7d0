#pragma once

#include <QDialog>

class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace tavik {

class frmMain;

// Creates a package under the data folder, or, with the main window's newPackageMode clear,
// edits the title, author, description and picture of the package open there. Works on the
// main window's state directly; nothing is handed back.
class frmNew : public QDialog {
    Q_OBJECT
public:
    explicit frmNew(frmMain& main);

    // Writes the text and a line break as the file's whole content.
    void SaveTextToFile(const QString& text, const QString& path);
    // Makes the folder; on failure complains with message 21 and reports false.
    bool CreateDir(const QString& path);
    // The last part of the main window's package folder.
    QString GetFolderName() const;

    QGroupBox* fraDir() const { return fraDir_; }
    QGroupBox* fraInfo() const { return fraInfo_; }
    QLineEdit* txtDir() const { return txtDir_; }
    QLineEdit* txtTitel() const { return txtTitel_; }
    QLineEdit* txtAutor() const { return txtAutor_; }
    QPlainTextEdit* txtComment() const { return txtComment_; }
    QLineEdit* txtPic() const { return txtPic_; }
    QLabel* lblTitel() const { return lblTitel_; }
    QLabel* lblAutor() const { return lblAutor_; }
    QLabel* lblComment() const { return lblComment_; }
    QLabel* lblPic() const { return lblPic_; }
    QPushButton* cmdPic() const { return cmdPic_; }
    QPushButton* cmdClear() const { return cmdClear_; }
    QPushButton* cmdOK() const { return cmdOK_; }
    QPushButton* cmdCancel() const { return cmdCancel_; }

public Q_SLOTS:
    void cmdPic_Click();
    void cmdClear_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

private:
    void buildControls();
    void FormLoad();
    // The new-package steps of confirming; false when the dialog stays open.
    bool createPackage(const QString& folder);

    frmMain& main_;
    QGroupBox* fraDir_;
    QGroupBox* fraInfo_;
    QLineEdit* txtDir_;
    QLineEdit* txtTitel_;
    QLineEdit* txtAutor_;
    QPlainTextEdit* txtComment_;
    QLineEdit* txtPic_;
    QLabel* lblTitel_;
    QLabel* lblAutor_;
    QLabel* lblComment_;
    QLabel* lblPic_;
    QPushButton* cmdPic_;
    QPushButton* cmdClear_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
    // What the description box showed after loading, to tell an edit from none.
    QString shownDescription_;
};

} // namespace tavik
