#pragma once

#include <QStringList>
#include <QWidget>

class QCheckBox;

namespace tavik {

class Language;
class RichTextBox;

// The debug viewer: the event log, coloured so that errors, events and quoted names stand
// out. It is created hidden and lives until the program ends; closing it only hides it.
class frmDebug : public QWidget {
    Q_OBJECT
public:
    // `programFolder` holds the settings file the file-logging switch writes to.
    // The window labels itself from `language` when it loads.
    explicit frmDebug(QString programFolder, const Language* language = nullptr,
                      QWidget* parent = nullptr);

    // Recolours the current contents and shows the text area.
    void Highlight();

    RichTextBox* txtDebug() const { return txtDebug_; }
    QCheckBox* chkLogToFile() const { return chkLogToFile_; }
    const QStringList& errorWords() const { return errorWords_; }
    const QStringList& eventWords() const { return eventWords_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void storeLogToFile(bool on);

private:
    void layoutControls();

    QString programFolder_;
    RichTextBox* txtDebug_;
    QCheckBox* chkLogToFile_;
    QStringList errorWords_;
    QStringList eventWords_;
};

} // namespace tavik
