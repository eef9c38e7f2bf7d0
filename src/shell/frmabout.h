#pragma once

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace tavik {

class ClickLabel;
class Language;

// The about window: picture, version line, the information text the language file names, and
// links to the home page and to the author.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(const Language& language, QWidget* parent = nullptr);

    QLabel* picture() const { return picture_; }
    QLabel* lblVersion() const { return lblVersion_; }
    QPlainTextEdit* txtInfo() const { return txtInfo_; }
    QPushButton* cmdOK() const { return cmdOK_; }
    ClickLabel* homePageLink() const { return label2_; }
    ClickLabel* lblURL() const { return lblURL_; }

private:
    QLabel* picture_;
    QLabel* lblVersion_;
    QPlainTextEdit* txtInfo_;
    QPushButton* cmdOK_;
    ClickLabel* label2_;
    ClickLabel* lblURL_;
};

} // namespace tavik
