#pragma once

#include <QDialog>
#include <vector>

class QCheckBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QTimer;

namespace tavik {

class CodePageGuard;

class frmMain;

// The properties of the announcement selected in the main window's list: title, whether its
// name is used in sentences, a fixed place and a highlight colour. Works on the main
// window's record and list entry; the package on disk changes only when the main window
// saves. The opener puts the title into txtTitle before showing the dialog.
class frmSetting : public QDialog {
    Q_OBJECT
public:
    // Reads the selected entry's record; raises the runtime's subscript error when the entry
    // has no record.
    explicit frmSetting(frmMain& main);

    QLineEdit* txtTitle() const { return txtTitle_; }
    QCheckBox* chkVisible() const { return chkVisible_; }
    QCheckBox* chkPlace() const { return chkPlace_; }
    QLineEdit* txtPlace() const { return txtPlace_; }
    QScrollBar* vscPlace() const { return vscPlace_; }
    // The colour options and their swatches, indexed as the colour table.
    const std::vector<QRadioButton*>& optColor() const { return optColor_; }
    const std::vector<QFrame*>& shpColor() const { return shpColor_; }
    QTimer* Timer1() const { return timer1_; }
    QPushButton* cmdOK() const { return cmdOK_; }
    QPushButton* cmdCancel() const { return cmdCancel_; }
    QGroupBox* Frame1() const { return frame1_; }
    QLabel* Label1() const { return label1_; }
    QLabel* Label2() const { return label2_; }
    QLabel* Label3() const { return label3_; }
    QLabel* Label4() const { return label4_; }

public Q_SLOTS:
    void cmdOK_Click();
    void cmdCancel_Click();
    void chkPlace_Click();
    void vscPlace_Change();
    void Timer1_Timer();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void FormLoad();
    void selectTitle();
    // OK is offered only while a ticked place holds a number.
    void enableOK();
    void followPlaceBox();
    // The record of the selected entry, as an index into the main window's table.
    qsizetype selectedRecord() const;

    frmMain& main_;
    QGroupBox* frame1_;
    QLabel* label1_;
    QLineEdit* txtTitle_;
    QCheckBox* chkVisible_;
    QCheckBox* chkPlace_;
    QLabel* label4_;
    QLineEdit* txtPlace_;
    QScrollBar* vscPlace_;
    QLabel* label3_;
    QLabel* label2_;
    std::vector<QRadioButton*> optColor_;
    std::vector<QFrame*> shpColor_;
    QTimer* timer1_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
    // The title goes into the index: what code page 1252 cannot hold keeps OK refused.
    CodePageGuard* titleGuard_ = nullptr;
};

} // namespace tavik
