#pragma once

#include "package/clszeldb.h"

#include <QDialog>
#include <QStringList>
#include <cstdint>

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace tavik {

class frmMain;

// The open dialog: the packages of the data folder by name, with picture, author and comment
// of the highlighted one, and a search for an index file anywhere. The choice goes straight
// into the main window's state; the main window loads it.
class frmOpen : public QDialog {
    Q_OBJECT
public:
    explicit frmOpen(frmMain& main);
    ~frmOpen() override;

    // Shows the picture at `path`; a missing, unreadable or oversized picture is ignored and
    // leaves the image as it was.
    void LoadPic(const QString& path);

    QString dataFolder() const { return dataFolder_; }
    // One folder per entry of lstFile, at the same index.
    const QStringList& packageFolders() const { return packageFolders_; }
    std::int16_t packageCount() const { return packageCount_; }

    QListWidget* lstFile() const { return lstFile_; }
    QLabel* imgTitle() const { return imgTitle_; }
    QLabel* lblAutor() const { return lblAutor_; }
    QPlainTextEdit* txtComment() const { return txtComment_; }
    QPushButton* cmdOK() const { return cmdOK_; }
    QPushButton* cmdSearch() const { return cmdSearch_; }
    QPushButton* cmdCancel() const { return cmdCancel_; }

public Q_SLOTS:
    void done(int result) override;

private:
    void lstFile_Click();
    void cmdOK_Click();
    void cmdSearch_Click();

    frmMain& main_;
    // The main window's index as it was before the scan read other packages into it.
    clsZELDB indexBefore_;
    bool chosen_ = false;
    QString dataFolder_;
    QStringList packageFolders_;
    std::int16_t packageCount_ = 0;

    QListWidget* lstFile_;
    QLabel* imgTitle_;
    QLabel* lblAutor_;
    QPlainTextEdit* txtComment_;
    QPushButton* cmdOK_;
    QPushButton* cmdSearch_;
    QPushButton* cmdCancel_;
};

} // namespace tavik
