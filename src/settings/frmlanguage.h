#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTimer;

namespace tavik {

class Language;

// Chooses the language file. At start-up its load handler makes sure a language is set before
// any other window shows a text: it takes the stored choice, or the only file there is, or
// waits for the user; with no file at all the program cannot start.
class frmLanguage : public QDialog {
    Q_OBJECT
public:
    explicit frmLanguage(Language& language, QWidget* parent = nullptr);

    // Set by an opener that lets the user change the language: the dialog then stays open even
    // when a language is already set, and Cancel only closes it.
    bool KeepOpen = false;

    // The load handler: disables the close button and runs the start-up check. It may already
    // unload the dialog (a single file, or the program has to end) or start the timer that
    // unloads it unseen.
    void FormLoad();
    // Loads the dialog and waits until it is unloaded, modal; it shows only when the user has
    // something to choose.
    void ShowModal();

    // True once the dialog has decided that the program cannot go on; the opener ends it.
    bool EndProgram() const { return endProgram_; }
    bool IsLoaded() const { return loaded_; }
    bool IsUnloaded() const { return unloaded_; }
    // Whether the dialog has ever been on screen.
    bool WasShown() const { return wasShown_; }

    // Takes the close box off a window's caption; the window then ignores every request to
    // close that does not come from its own code (the close box, Alt+F4).
    static void DisableCloseButton(QWidget* window);

    QListWidget* File1() const { return File1_; }
    // The line of the list that stands for a language file, or nullptr.
    QListWidgetItem* itemOfFile(const QString& fileName) const;
    QLineEdit* txtName() const { return txtName_; }
    QLineEdit* txtVersion() const { return txtVersion_; }
    QLineEdit* txtAutor() const { return txtAutor_; }
    QLabel* Label1() const { return Label1_; }
    QLabel* Label2() const { return Label2_; }
    QLabel* Label3() const { return Label3_; }
    QPushButton* cmdOK() const { return cmdOK_; }
    QPushButton* cmdCancel() const { return cmdCancel_; }
    QTimer* Timer1() const { return Timer1_; }

public Q_SLOTS:
    void File1_Click();
    void cmdOK_Click();
    void cmdCancel_Click();
    void Timer1_Timer();
    // Escape is the cancel button, as in any dialog.
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refreshFileList();
    void centreOnScreen();
    void unload(int result);
    QString selectedFilePath() const;

    Language& language_;
    QListWidget* File1_;
    QLineEdit* txtName_;
    QLineEdit* txtVersion_;
    QLineEdit* txtAutor_;
    QLabel* Label1_;
    QLabel* Label2_;
    QLabel* Label3_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
    QTimer* Timer1_;
    bool loaded_ = false;
    bool unloaded_ = false;
    bool endProgram_ = false;
    bool wasShown_ = false;
};

} // namespace tavik
