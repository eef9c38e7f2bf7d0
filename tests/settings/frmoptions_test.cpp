#include "settings/frmoptions.h"

#include "settings/language.h"
#include "settings/languageinstall.h"
#include "settings/windowtexts.h"
#include "support/errorof.h"

#include <QCheckBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>
#include <optional>

using namespace tavik;
using tavik::test::LanguageInstall;
using tavik::test::MessageRecorder;

namespace {

const QByteArray kTexts = "[_String]\r\n22=Gespeichert.&_Gilt ab jetzt.\r\n"
                          "[frmOptions]\r\nCaption=Options\r\nFrame1=Troubleshooting\r\n"
                          "Label1=If sounds do not play:\r\nchkMedia=Use media types\r\n"
                          "cmdOK=&OK\r\ncmdCancel=&Cancel\r\n";

// An installation with a chosen language and, unless `stored` is empty, a settings file
// holding "SOUND"/"UseFormat".
struct OptionsInstall {
    LanguageInstall install;
    Language language;
    std::optional<bool> flag; // what the dialog handed to the program

    explicit OptionsInstall(const QByteArray& stored = {}) {
        language.LanguageFile =
            install.addLanguage(QStringLiteral("English.lng"), "English", "1.0", "Team", kTexts);
        if (!stored.isNull())
            install.dir.write(QStringLiteral("bin/Tavik.ini"),
                              "[SOUND]\r\nUseFormat=" + stored + "\r\n");
    }
    std::function<void(bool)> setter() {
        return [this](bool useFormat) { flag = useFormat; };
    }
    QByteArray settings() const { return test::readAll(install.settingsFile()); }
};

} // namespace

TEST(frmOptions, TheCheckBoxShowsTheStoredValue) {
    {
        OptionsInstall options("1");
        frmOptions dialog(options.language, options.setter());
        EXPECT_EQ(dialog.chkMedia()->checkState(), Qt::Checked);
    }
    {
        OptionsInstall options("0");
        frmOptions dialog(options.language, options.setter());
        EXPECT_EQ(dialog.chkMedia()->checkState(), Qt::Unchecked);
    }
    {
        OptionsInstall options;
        frmOptions dialog(options.language, options.setter());
        EXPECT_EQ(dialog.chkMedia()->checkState(), Qt::Unchecked);
        EXPECT_FALSE(QFile::exists(options.install.settingsFile()));
    }
}

TEST(frmOptions, OKStoresOneAndSetsTheFlag) {
    OptionsInstall options;
    MessageRecorder messages;
    frmOptions dialog(options.language, options.setter());
    dialog.show();
    QTest::mouseClick(dialog.chkMedia(), Qt::LeftButton);
    ASSERT_TRUE(dialog.chkMedia()->isChecked());
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);

    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(options.flag, std::optional<bool>(true));
    EXPECT_EQ(options.settings(), "[SOUND]\r\nUseFormat=1\r\n");
    ASSERT_EQ(messages.seen.size(), 1);
    EXPECT_EQ(messages.seen[0].text, QStringLiteral("Gespeichert.\r\nGilt ab jetzt."));
    EXPECT_EQ(messages.seen[0].icon, MsgIcon::Information);
    EXPECT_EQ(messages.seen[0].buttons, MsgButtons::OK);
}

TEST(frmOptions, OKStoresZeroAndClearsTheFlag) {
    OptionsInstall options("1");
    MessageRecorder messages;
    frmOptions dialog(options.language, options.setter());
    dialog.show();
    QTest::mouseClick(dialog.chkMedia(), Qt::LeftButton);
    ASSERT_FALSE(dialog.chkMedia()->isChecked());
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);

    EXPECT_EQ(options.flag, std::optional<bool>(false));
    EXPECT_EQ(options.settings(), "[SOUND]\r\nUseFormat=0\r\n");
    EXPECT_EQ(messages.seen.size(), 1);
}

TEST(frmOptions, OKKeepsTheRestOfTheSettingsFile) {
    OptionsInstall options;
    options.install.dir.write(QStringLiteral("bin/Tavik.ini"),
                              "[Settings]\r\nLanguage=x.lng\r\n\r\n[SOUND]\r\nUseFormat=0\r\n");
    MessageRecorder messages;
    frmOptions dialog(options.language, options.setter());
    dialog.show();
    QTest::mouseClick(dialog.chkMedia(), Qt::LeftButton);
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(options.settings(), "[Settings]\r\nLanguage=x.lng\r\n\r\n[SOUND]\r\nUseFormat=1\r\n");
}

TEST(frmOptions, CancelStoresNothing) {
    OptionsInstall options("0");
    MessageRecorder messages;
    frmOptions dialog(options.language, options.setter());
    dialog.show();
    QTest::mouseClick(dialog.chkMedia(), Qt::LeftButton);
    QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);

    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_FALSE(options.flag.has_value());
    EXPECT_EQ(options.settings(), "[SOUND]\r\nUseFormat=0\r\n");
    EXPECT_TRUE(messages.seen.isEmpty());
}

TEST(frmOptions, LabelsItselfFromTheLanguageFile) {
    OptionsInstall options;
    frmOptions dialog(options.language, options.setter());
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Options"));
    EXPECT_EQ(dialog.Frame1()->title(), QStringLiteral("Troubleshooting"));
    EXPECT_EQ(dialog.Label1()->text(), QStringLiteral("If sounds do not play:"));
    EXPECT_EQ(dialog.chkMedia()->text(), QStringLiteral("Use media types"));
    EXPECT_EQ(dialog.cmdCancel()->text(), QStringLiteral("&Cancel"));
}

TEST(frmOptions, AGrayedValueIsShownAndStoredAsItIs) {
    OptionsInstall options("2");
    MessageRecorder messages;
    frmOptions dialog(options.language, options.setter());
    EXPECT_EQ(dialog.chkMedia()->checkState(), Qt::PartiallyChecked);
    dialog.show();
    QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
    EXPECT_EQ(options.flag, std::optional<bool>(true));
    EXPECT_EQ(options.settings(), "[SOUND]\r\nUseFormat=2\r\n");
}

TEST(frmOptions, AValueNoCheckBoxCanHoldIsARuntimeError) {
    {
        OptionsInstall options("7");
        EXPECT_EQ(test::errorOf([&] { frmOptions dialog(options.language, options.setter()); }),
                  380);
    }
    {
        OptionsInstall options("-1");
        EXPECT_EQ(test::errorOf([&] { frmOptions dialog(options.language, options.setter()); }),
                  380);
    }
    {
        OptionsInstall options("yes");
        EXPECT_EQ(test::errorOf([&] { frmOptions dialog(options.language, options.setter()); }),
                  13);
    }
}

TEST(frmOptions, ControlsCarryTheNamesTheLanguageFilesUse) {
    OptionsInstall options;
    frmOptions dialog(options.language, options.setter());
    for (const WindowTexts& window : LocalisedWindows()) {
        if (QString::fromLatin1(window.window) != dialog.objectName())
            continue;
        for (const char* control : window.controls)
            EXPECT_NE(dialog.findChild<QWidget*>(QString::fromLatin1(control)), nullptr) << control;
        return;
    }
    ADD_FAILURE() << "frmOptions is not among the localised windows";
}
