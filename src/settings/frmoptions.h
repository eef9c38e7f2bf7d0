#pragma once

#include <QDialog>
#include <functional>

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace tavik {

class Language;

// The troubleshooting option: whether sounds are opened with their media type named. It is
// stored in the settings file and handed to the program through `setUseFormat`, so the choice
// applies to every sound loaded from then on.
class frmOptions : public QDialog {
    Q_OBJECT
public:
    frmOptions(const Language& language, std::function<void(bool)> setUseFormat,
               QWidget* parent = nullptr);

    QGroupBox* Frame1() const { return Frame1_; }
    QLabel* Label1() const { return Label1_; }
    QCheckBox* chkMedia() const { return chkMedia_; }
    QPushButton* cmdOK() const { return cmdOK_; }
    QPushButton* cmdCancel() const { return cmdCancel_; }

public Q_SLOTS:
    void cmdOK_Click();
    void cmdCancel_Click();

private:
    const Language& language_;
    std::function<void(bool)> setUseFormat_;
    QGroupBox* Frame1_;
    QLabel* Label1_;
    QCheckBox* chkMedia_;
    QPushButton* cmdOK_;
    QPushButton* cmdCancel_;
};

} // namespace tavik
