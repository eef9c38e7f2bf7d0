#include "settings/applylanguage.h"

#include "support/tempdir.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

namespace {

// Stands for the custom push-button control: a push button of its own class.
class CustomButton : public QPushButton {
public:
    using QPushButton::QPushButton;
};

template <typename T> T* add(QWidget* parent, const char* name, const QString& text = {}) {
    auto* w = new T(parent);
    w->setObjectName(QString::fromLatin1(name));
    if constexpr (requires { w->setText(text); })
        w->setText(text);
    if (parent->layout())
        parent->layout()->addWidget(w);
    return w;
}

// A window with one control of every kind, named as a window's designed controls are.
struct TestForm {
    QWidget form;
    QLabel* label;
    QPushButton* cmdOK;
    CustomButton* cmdCustom;
    QCheckBox* chkVisible;
    QRadioButton* opt0;
    QRadioButton* opt1;
    QGroupBox* frame;
    QLabel* labelInFrame;
    QLineEdit* txtName;
    QListWidget* lstFile;
    QTabBar* ridTabs;
    QLabel* picLogo;
    QTimer* tmrName;
    QMenuBar* bar;
    QMenu* mnuHlp;
    QAction* mnuReadme;

    TestForm() {
        form.setObjectName("frmTest");
        form.setWindowTitle("Designed");
        new QVBoxLayout(&form);
        label = add<QLabel>(&form, "Label1", "Name:");
        cmdOK = add<QPushButton>(&form, "cmdOK", "OK");
        cmdOK->setToolTip("designed tip");
        cmdCustom = add<CustomButton>(&form, "cmdCustom", "Custom");
        chkVisible = add<QCheckBox>(&form, "chkVisible", "Visible");
        opt0 = add<QRadioButton>(&form, "optColor", "0");
        opt1 = add<QRadioButton>(&form, "optColor", "1");
        frame = add<QGroupBox>(&form, "Frame1");
        frame->setTitle("Frame");
        new QVBoxLayout(frame);
        labelInFrame = add<QLabel>(frame, "Label2", "inside");
        txtName = add<QLineEdit>(&form, "txtName", "typed");
        lstFile = add<QListWidget>(&form, "lstFile");
        lstFile->addItem("entry");
        ridTabs = add<QTabBar>(&form, "ridTabs");
        ridTabs->addTab("Eigenschaften");
        picLogo = add<QLabel>(&form, "picLogo");
        QPixmap pixmap(4, 4);
        pixmap.fill(Qt::red);
        picLogo->setPixmap(pixmap);
        tmrName = new QTimer(&form);
        tmrName->setObjectName("tmrName");
        bar = new QMenuBar(&form);
        mnuHlp = bar->addMenu("Help");
        mnuHlp->setObjectName("mnuHlp");
        mnuReadme = mnuHlp->addAction("Readme");
        mnuReadme->setObjectName("mnuReadme");
    }
};

QString languageFile(const TempDir& dir, const QByteArray& section) {
    return dir.write("Test.lng", "[_Language]\r\nName=Test\r\n\r\n[frmTest]\r\n" + section);
}

} // namespace

TEST(ApplyLanguage, CaptionAndToolTipFromValue) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest", languageFile(dir, "cmdOK=&OK|Confirms the choice\r\n"));
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("&OK"));
    EXPECT_EQ(f.cmdOK->toolTip(), QStringLiteral("Confirms the choice"));
}

TEST(ApplyLanguage, TrailingBarSetsEmptyToolTip) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest", languageFile(dir, "cmdOK=&OK|\r\n"));
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("&OK"));
    EXPECT_EQ(f.cmdOK->toolTip(), QString());
}

TEST(ApplyLanguage, LeadingBarSetsEmptyCaption) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest", languageFile(dir, "cmdOK=|x\r\n"));
    EXPECT_EQ(f.cmdOK->text(), QString());
    EXPECT_EQ(f.cmdOK->toolTip(), QStringLiteral("x"));
}

TEST(ApplyLanguage, ValueWithoutBarKeepsDesignedToolTip) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest", languageFile(dir, "cmdOK=Weiter\r\n"));
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("Weiter"));
    EXPECT_EQ(f.cmdOK->toolTip(), QStringLiteral("designed tip"));
}

TEST(ApplyLanguage, WindowTitleFromCaption) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest", languageFile(dir, "Caption=Sprachauswahl\r\n"));
    EXPECT_EQ(f.form.windowTitle(), QStringLiteral("Sprachauswahl"));
}

TEST(ApplyLanguage, SectionNameAndKeysMatchWithoutRegardToCase) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "FRMTEST", languageFile(dir, "CMDOK=Ja\r\ncaption=Titel\r\n"));
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("Ja"));
    EXPECT_EQ(f.form.windowTitle(), QStringLiteral("Titel"));
}

TEST(ApplyLanguage, LabelsEveryHandledKindOfControl) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest",
                  languageFile(dir, "Label1=Name neu|Label-Tipp\r\n"
                                    "cmdCustom=Eigene|Eigener Tipp\r\n"
                                    "chkVisible=Sichtbar|Kasten\r\n"
                                    "Frame1=Rahmen|Rahmen-Tipp\r\n"
                                    "Label2=innen\r\n"
                                    "mnuHlp=Hilfe\r\n"
                                    "mnuReadme=Liesmich\r\n"));
    EXPECT_EQ(f.label->text(), QStringLiteral("Name neu"));
    EXPECT_EQ(f.label->toolTip(), QStringLiteral("Label-Tipp"));
    EXPECT_EQ(f.cmdCustom->text(), QStringLiteral("Eigene"));
    EXPECT_EQ(f.cmdCustom->toolTip(), QStringLiteral("Eigener Tipp"));
    EXPECT_EQ(f.chkVisible->text(), QStringLiteral("Sichtbar"));
    EXPECT_EQ(f.chkVisible->toolTip(), QStringLiteral("Kasten"));
    EXPECT_EQ(f.frame->title(), QStringLiteral("Rahmen"));
    EXPECT_EQ(f.frame->toolTip(), QStringLiteral("Rahmen-Tipp"));
    EXPECT_EQ(f.labelInFrame->text(), QStringLiteral("innen"));
    EXPECT_EQ(f.mnuHlp->title(), QStringLiteral("Hilfe"));
    EXPECT_EQ(f.mnuHlp->menuAction()->text(), QStringLiteral("Hilfe"));
    EXPECT_EQ(f.mnuReadme->text(), QStringLiteral("Liesmich"));
}

TEST(ApplyLanguage, EveryMemberOfAControlArrayGetsTheText) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest", languageFile(dir, "optColor=Farbe|Tipp\r\n"));
    for (QRadioButton* opt : {f.opt0, f.opt1}) {
        EXPECT_EQ(opt->text(), QStringLiteral("Farbe"));
        EXPECT_EQ(opt->toolTip(), QStringLiteral("Tipp"));
    }
}

TEST(ApplyLanguage, TextBoxNamedInTheFileKeepsItsText) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest",
                  languageFile(dir, "txtName=Falsch|Tipp\r\nlstFile=Falsch\r\nridTabs=Falsch\r\n"
                                    "picLogo=Falsch|Tipp\r\ntmrName=Falsch\r\n"));
    EXPECT_EQ(f.txtName->text(), QStringLiteral("typed"));
    EXPECT_EQ(f.txtName->toolTip(), QString());
    EXPECT_EQ(f.lstFile->count(), 1);
    EXPECT_EQ(f.lstFile->item(0)->text(), QStringLiteral("entry"));
    EXPECT_EQ(f.lstFile->toolTip(), QString());
    EXPECT_EQ(f.ridTabs->tabText(0), QStringLiteral("Eigenschaften"));
    EXPECT_EQ(f.picLogo->text(), QString());
    EXPECT_EQ(f.picLogo->toolTip(), QString());
    EXPECT_FALSE(f.picLogo->pixmap().isNull());
}

TEST(ApplyLanguage, MenuToolTipIsIgnored) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest",
                  languageFile(dir, "mnuHlp=Hilfe|Tipp\r\nmnuReadme=Liesmich|Tipp\r\n"));
    EXPECT_EQ(f.mnuHlp->title(), QStringLiteral("Hilfe"));
    EXPECT_EQ(f.mnuHlp->toolTip(), QString());
    EXPECT_EQ(f.mnuReadme->text(), QStringLiteral("Liesmich"));
    EXPECT_EQ(f.mnuReadme->toolTip(), QStringLiteral("Liesmich")); // Qt's default: the text
}

TEST(ApplyLanguage, EmptyOrMissingValueLeavesControlAsDesigned) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest", languageFile(dir, "Caption=\r\ncmdOK=\r\nLabel1=   \r\n"));
    EXPECT_EQ(f.form.windowTitle(), QStringLiteral("Designed"));
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("OK"));
    EXPECT_EQ(f.cmdOK->toolTip(), QStringLiteral("designed tip"));
    EXPECT_EQ(f.label->text(), QStringLiteral("Name:"));
    EXPECT_EQ(f.chkVisible->text(), QStringLiteral("Visible"));
}

TEST(ApplyLanguage, MissingFileOrSectionChangesNothing) {
    TempDir dir;
    TestForm f;
    ApplyLanguage(&f.form, "frmTest", dir.file("Missing.lng"));
    ApplyLanguage(&f.form, "frmOther", languageFile(dir, "cmdOK=Ja\r\nCaption=X\r\n"));
    EXPECT_EQ(f.form.windowTitle(), QStringLiteral("Designed"));
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("OK"));
}

TEST(ApplyLanguage, OwnedWindowKeepsItsOwnTexts) {
    TempDir dir;
    TestForm f;
    auto* status = new QDialog(&f.form);
    auto* button = add<QPushButton>(status, "cmdOK", "OK");
    ApplyLanguage(&f.form, "frmTest", languageFile(dir, "cmdOK=Ja\r\n"));
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("Ja"));
    EXPECT_EQ(button->text(), QStringLiteral("OK"));
}

TEST(ApplyLanguage, AppliedAgainSwitchesToTheOtherLanguage) {
    TempDir dir;
    TestForm f;
    const QString de = dir.write("Deutsch.lng", "[frmTest]\r\ncmdOK=&Abbruch|Schließt\r\n");
    const QString en = dir.write("English.lng", "[frmTest]\r\ncmdOK=&Cancel|Closes\r\n");
    ApplyLanguage(&f.form, "frmTest", de);
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("&Abbruch"));
    ApplyLanguage(&f.form, "frmTest", en);
    EXPECT_EQ(f.cmdOK->text(), QStringLiteral("&Cancel"));
    EXPECT_EQ(f.cmdOK->toolTip(), QStringLiteral("Closes"));
}
