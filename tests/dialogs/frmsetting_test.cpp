#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "dialogs/announcementcolors.h"
#include "dialogs/frmsetting.h"
#include "package/clszeldb.h"
#include "settings/langtexts.h"
#include "settings/windowtexts.h"
#include "support/editorfixture.h"
#include "support/errorcatcher.h"
#include "support/errorof.h"
#include "util/conversions.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QApplication>
#include <QCheckBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <memory>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ErrorCatcher;
using Entry = EditorFixture::Entry;

namespace {

// A package of five announcements in different looks, loaded in the main window.
struct LoadedPackage {
    explicit LoadedPackage(const QString& languageFile = QStringLiteral("Deutsch.lng"))
        : editor(languageFile) {
        EXPECT_TRUE(editor.main->FormLoad());
        folder = editor.writePackage(
            QStringLiteral("Linie1"), QStringLiteral("Linie 1"),
            {
                {QStringLiteral("0000"), QStringLiteral("Gong"), 100, 0, true, -1},
                {QStringLiteral("0001"), QStringLiteral("Gleis 1"), 100, 255, true, 0},
                {QStringLiteral("0002"), QStringLiteral("Zug nach Bern"), 100, 0x123456, false, 3},
                {QStringLiteral("0003"), QStringLiteral("Bitte einsteigen"), 100, 16711680, true,
                 -1},
                {QStringLiteral("0004"), QStringLiteral("Achtung"), 100, 8421504, false, 2},
            });
        editor.open(folder);
    }

    ReportListItem* row(int index) const { return editor.main->lsvPack()->ListItems(index); }
    const AnnouncementRecord& record(int index) const {
        return editor.main->table.Announcements[index];
    }

    // The properties of row `index`, opened as the main window opens them.
    std::unique_ptr<frmSetting> properties(int index) {
        row(index)->SetSelected(true);
        auto dialog = std::make_unique<frmSetting>(*editor.main);
        dialog->txtTitle()->setText(row(index)->SubItems(1));
        dialog->show();
        return dialog;
    }

    std::vector<int> checkedOptions(const frmSetting& dialog) const {
        std::vector<int> checked;
        for (std::size_t i = 0; i < dialog.optColor().size(); ++i)
            if (dialog.optColor()[i]->isChecked())
                checked.push_back(static_cast<int>(i));
        return checked;
    }

    EditorFixture editor;
    QString folder;
};

QString setting(clsZELDB& store, const QString& key, const QString& item) {
    return CStr(store.GetSetting(key, item, QStringLiteral("<none>")));
}

} // namespace

TEST(frmSetting, HasNineColourOptionsUnderOneNameEachBesideItsSwatch) {
    LoadedPackage package;
    auto dialog = package.properties(1);
    ASSERT_EQ(dialog->optColor().size(), 9u);
    ASSERT_EQ(dialog->shpColor().size(), 9u);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(dialog->optColor()[i]->objectName(), QStringLiteral("optColor"));
        EXPECT_EQ(dialog->shpColor()[i]->objectName(), QStringLiteral("shpColor"));
        const QColor swatch = dialog->shpColor()[i]->palette().color(QPalette::Window);
        const auto value =
            static_cast<std::int32_t>(swatch.red() + 256 * swatch.green() + 65536 * swatch.blue());
        EXPECT_EQ(value, kAnnouncementColors[i]) << i;
    }
    EXPECT_EQ(dialog->findChildren<QRadioButton*>(QStringLiteral("optColor")).size(), 9);
}

TEST(frmSetting, IsLabelledFromTheLanguageFile) {
    LoadedPackage package(QStringLiteral("English.lng"));
    auto dialog = package.properties(1);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Properties"));
    EXPECT_EQ(dialog->chkVisible()->text(), QStringLiteral("Use name in announcement sentences"));
    EXPECT_EQ(dialog->cmdOK()->text(), QStringLiteral("&OK"));
    EXPECT_EQ(dialog->txtTitle()->text(), QStringLiteral("Gong"));
}

TEST(frmSetting, OpensWithTheOptionOfTheEntrysColourAndItsFlags) {
    LoadedPackage package;
    auto dialog = package.properties(2);
    EXPECT_EQ(package.checkedOptions(*dialog), std::vector<int>{2});
    EXPECT_TRUE(dialog->chkVisible()->isChecked());

    auto grey = package.properties(5);
    EXPECT_EQ(package.checkedOptions(*grey), std::vector<int>{0});
    EXPECT_FALSE(grey->chkVisible()->isChecked());
}

TEST(frmSetting, AnEntryInAColourNoneOfTheNineOpensWithNoOptionAndConfirmingStoresZero) {
    LoadedPackage package;
    ASSERT_EQ(package.row(3)->ForeColor(), 0x123456u);
    auto dialog = package.properties(3);
    EXPECT_TRUE(package.checkedOptions(*dialog).empty());

    dialog->cmdOK()->click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(package.record(2).Color, 0);
    EXPECT_EQ(package.row(3)->ForeColor(), 0x123456u);
    EXPECT_TRUE(package.row(3)->Bold());
}

TEST(frmSetting, AnEntryWithoutHighlightIsInTheListsOwnColourAndOpensWithNoOption) {
    LoadedPackage package;
    auto dialog = package.properties(1);
    EXPECT_TRUE(package.checkedOptions(*dialog).empty());
}

TEST(frmSetting, PlaceZeroOpensWithThePlaceTickedAndShown) {
    LoadedPackage package;
    auto dialog = package.properties(2);
    EXPECT_TRUE(dialog->chkPlace()->isChecked());
    EXPECT_TRUE(dialog->txtPlace()->isEnabled());
    EXPECT_TRUE(dialog->vscPlace()->isEnabled());
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("0"));
}

TEST(frmSetting, PlaceMinusOneOpensClearedWithBothPlaceControlsDisabled) {
    LoadedPackage package;
    auto dialog = package.properties(1);
    EXPECT_FALSE(dialog->chkPlace()->isChecked());
    EXPECT_FALSE(dialog->txtPlace()->isEnabled());
    EXPECT_FALSE(dialog->vscPlace()->isEnabled());
    EXPECT_EQ(dialog->txtPlace()->text(), QString());
}

TEST(frmSetting, TheScrollBarStandsAtThePlaceAndItsUpperArrowMakesItLarger) {
    LoadedPackage package;
    auto dialog = package.properties(3);
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("3"));
    // The upper arrow of a vertical scroll bar steps its value down.
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("4"));
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("2"));
}

TEST(frmSetting, ATypedPlaceIsWhereTheNextStepStartsAndTheStepsStayInTheList) {
    LoadedPackage package;
    auto dialog = package.properties(1);
    dialog->chkPlace()->click();
    QLineEdit* box = dialog->txtPlace();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("4"));
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_EQ(box->text(), QStringLiteral("5"));
    // Five rows: no step leads past the last place.
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_EQ(box->text(), QStringLiteral("5"));
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("2"));
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(box->text(), QStringLiteral("1"));
}

TEST(frmSetting, APlaceOutsideTheListIsMarkedAndStillStored) {
    LoadedPackage package;
    ErrorCatcher errors;
    {
        // Place 0 is no position of the list.
        auto dialog = package.properties(2);
        EXPECT_TRUE(dialog->txtPlace()->property("outsideList").toBool());
    }
    auto dialog = package.properties(1);
    dialog->chkPlace()->click();
    QLineEdit* box = dialog->txtPlace();
    EXPECT_FALSE(box->property("outsideList").toBool());
    EXPECT_TRUE(box->toolTip().isEmpty());
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("999999999"));
    EXPECT_TRUE(box->property("outsideList").toBool());
    EXPECT_EQ(box->toolTip(),
              package.editor.language.GetLangString(LangText::PlaceOutsideList, "5"));
    EXPECT_EQ(box->palette().color(QPalette::Text), QColor(Qt::red));
    // The next step starts from the nearest place of the list.
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(box->text(), QStringLiteral("4"));
    EXPECT_FALSE(box->property("outsideList").toBool());
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("999999999"));
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
    EXPECT_TRUE(errors.shown.isEmpty()) << errors.shown.join(u'|').toStdString();
    EXPECT_EQ(package.record(0).AutoPlace, 999999999);
}

TEST(frmSetting, TickingThePlaceEnablesBothPlaceControlsAndClearingDisablesThem) {
    LoadedPackage package;
    auto dialog = package.properties(1);
    QTest::mouseClick(dialog->chkPlace(), Qt::LeftButton, {},
                      QPoint(4, dialog->chkPlace()->height() / 2));
    EXPECT_TRUE(dialog->chkPlace()->isChecked());
    EXPECT_TRUE(dialog->txtPlace()->isEnabled());
    EXPECT_TRUE(dialog->vscPlace()->isEnabled());
    dialog->chkPlace()->click();
    EXPECT_FALSE(dialog->txtPlace()->isEnabled());
    EXPECT_FALSE(dialog->vscPlace()->isEnabled());
}

TEST(frmSetting, MovingTheScrollBarWritesItsValueIntoThePlaceBox) {
    LoadedPackage package;
    auto dialog = package.properties(1);
    dialog->chkPlace()->click();
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("1"));
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("3"));
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("2"));
}

TEST(frmSetting, TheTimerSelectsTheWholeTitleOnceAndStops) {
    LoadedPackage package;
    auto dialog = package.properties(4);
    EXPECT_TRUE(dialog->Timer1()->isActive());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog->Timer1()->isActive(); }, 3000));
    EXPECT_EQ(dialog->txtTitle()->selectedText(), QStringLiteral("Bitte einsteigen"));
}

TEST(frmSetting, TheTitleBoxSelectsItsWholeTextWhenItGetsTheFocus) {
    LoadedPackage package;
    auto dialog = package.properties(4);
    dialog->Timer1()->stop();
    dialog->cmdOK()->setFocus();
    dialog->txtTitle()->deselect();
    QFocusEvent focusIn(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(dialog->txtTitle(), &focusIn);
    EXPECT_EQ(dialog->txtTitle()->selectedText(), QStringLiteral("Bitte einsteigen"));
}

TEST(frmSetting, ConfirmingWithThePlaceClearedStoresMinusOneWhateverThePlaceBoxHolds) {
    LoadedPackage package;
    auto dialog = package.properties(3);
    dialog->chkPlace()->click();
    dialog->txtPlace()->setText(QStringLiteral("42"));
    dialog->cmdOK()->click();
    EXPECT_EQ(package.record(2).AutoPlace, -1);
}

TEST(frmSetting, ConfirmingWritesRecordAndEntryAndTheSaveStoresThem) {
    LoadedPackage package;
    auto dialog = package.properties(1);
    dialog->txtTitle()->setText(QStringLiteral("Gong lang"));
    dialog->optColor()[7]->click();
    dialog->chkVisible()->click();
    dialog->chkPlace()->click();
    dialog->txtPlace()->setText(QStringLiteral("4"));
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
    EXPECT_FALSE(dialog->isVisible());

    const AnnouncementRecord& record = package.record(0);
    EXPECT_EQ(record.Title, QStringLiteral("Gong lang"));
    EXPECT_EQ(record.Color, 16711680);
    EXPECT_FALSE(record.NameVisible);
    EXPECT_EQ(record.AutoPlace, 4);
    EXPECT_EQ(package.row(1)->SubItems(1), QStringLiteral("Gong lang"));
    EXPECT_EQ(package.row(1)->ForeColor(), 16711680u);
    EXPECT_TRUE(package.row(1)->Bold());

    package.editor.main->cmdSave()->click();
    clsZELDB store;
    ASSERT_TRUE(store.OpenIOFile(package.folder + QStringLiteral("/Package.io")));
    EXPECT_EQ(setting(store, QStringLiteral("INDEX"), QStringLiteral("1")),
              QStringLiteral("0000~Gong lang"));
    EXPECT_EQ(CLng(store.GetSetting(QStringLiteral("0000"), QStringLiteral("Color"), {})),
              16711680);
    EXPECT_FALSE(
        CBool(store.GetSetting(QStringLiteral("0000"), QStringLiteral("NameVisible"), {})));
    EXPECT_EQ(CLng(store.GetSetting(QStringLiteral("0000"), QStringLiteral("AutoPlace"), {})), 4);
}

TEST(frmSetting, BlackDrawsTheEntryInBlackWithoutBoldAndStoresZero) {
    LoadedPackage package;
    auto dialog = package.properties(2);
    dialog->optColor()[kNoHighlightOption]->click();
    dialog->cmdOK()->click();
    EXPECT_EQ(package.row(2)->ForeColor(), 0u);
    EXPECT_FALSE(package.row(2)->Bold());
    EXPECT_EQ(package.record(1).Color, 0);

    // Black is one of the nine: the entry now opens with it.
    auto again = package.properties(2);
    EXPECT_EQ(package.checkedOptions(*again), std::vector<int>{kNoHighlightOption});
}

TEST(frmSetting, AnEmptyTitleIsTakenAsItIs) {
    LoadedPackage package;
    auto dialog = package.properties(5);
    dialog->txtTitle()->clear();
    dialog->cmdOK()->click();
    EXPECT_EQ(package.record(4).Title, QString());
    EXPECT_EQ(package.row(5)->SubItems(1), QString());
}

TEST(frmSetting, ThePlaceBoxTakesOnlyDigitsWithinThe32BitRange) {
    LoadedPackage package;
    ErrorCatcher errors;
    auto dialog = package.properties(1);
    dialog->chkPlace()->click();
    QLineEdit* box = dialog->txtPlace();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("zwei"));
    EXPECT_EQ(box->text(), QStringLiteral("1"));
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Backspace);
    QTest::keyClicks(box, QStringLiteral("-+ 1x,2.&H"));
    EXPECT_EQ(box->text(), QStringLiteral("12"));
    QTest::keyClicks(box, QStringLiteral("3456789012"));
    EXPECT_EQ(box->text(), QStringLiteral("1234567890")); // one more digit would overflow
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("2147483647"));
    EXPECT_EQ(box->text(), QStringLiteral("2147483647"));
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("2147483648"));
    EXPECT_EQ(box->text(), QStringLiteral("214748364"));
    QTest::keyClick(box, Qt::Key_9);
    EXPECT_EQ(box->text(), QStringLiteral("214748364"));
    QTest::keyClick(box, Qt::Key_7);
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
    EXPECT_TRUE(errors.shown.isEmpty()) << errors.shown.join(u'|').toStdString();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(package.record(0).AutoPlace, 2147483647);
}

TEST(frmSetting, TickingThePlaceWithAnEmptyBoxFillsItFromTheScrollBar) {
    LoadedPackage package;
    ErrorCatcher errors;
    auto dialog = package.properties(1);
    ASSERT_EQ(dialog->txtPlace()->text(), QString());
    dialog->chkPlace()->click();
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("1"));
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    dialog->vscPlace()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    dialog->chkPlace()->click();
    dialog->txtPlace()->clear();
    dialog->chkPlace()->click();
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("3"));
    // A box that holds a number keeps it.
    dialog->txtPlace()->setText(QStringLiteral("7"));
    dialog->chkPlace()->click();
    dialog->chkPlace()->click();
    EXPECT_EQ(dialog->txtPlace()->text(), QStringLiteral("7"));
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
    EXPECT_TRUE(errors.shown.isEmpty()) << errors.shown.join(u'|').toStdString();
    EXPECT_EQ(package.record(0).AutoPlace, 7);
}

TEST(frmSetting, OKWaitsForAPlaceNumberWhileThePlaceIsTicked) {
    LoadedPackage package;
    ErrorCatcher errors;
    auto dialog = package.properties(1);
    dialog->txtTitle()->setText(QStringLiteral("Neu"));
    dialog->chkPlace()->click();
    QLineEdit* box = dialog->txtPlace();
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Backspace);
    ASSERT_EQ(box->text(), QString());
    EXPECT_FALSE(dialog->cmdOK()->isEnabled());
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(errors.shown.isEmpty()) << errors.shown.join(u'|').toStdString();
    EXPECT_EQ(package.record(0).Title, QStringLiteral("Gong"));
    EXPECT_EQ(package.row(1)->SubItems(1), QStringLiteral("Gong"));

    // Clearing the place needs no number.
    dialog->chkPlace()->click();
    EXPECT_TRUE(dialog->cmdOK()->isEnabled());
    dialog->chkPlace()->click();
    box->clear();
    EXPECT_FALSE(dialog->cmdOK()->isEnabled()); // a tick fills only an empty box it finds
    QTest::keyClick(box, Qt::Key_5);
    EXPECT_TRUE(dialog->cmdOK()->isEnabled());
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(package.record(0).AutoPlace, 5);
    EXPECT_EQ(package.record(0).Title, QStringLiteral("Neu"));
}

TEST(frmSetting, ThePlaceConversionItselfStillRefusesTextThatIsNoNumber) {
    // Only the box guards the conversion: text put there by the program reaches it as designed.
    LoadedPackage package;
    auto dialog = package.properties(1);
    dialog->chkPlace()->click();
    dialog->txtPlace()->setText(QStringLiteral("zwei"));
    EXPECT_FALSE(dialog->cmdOK()->isEnabled());
    dialog->txtTitle()->setText(QStringLiteral("Neu"));
    EXPECT_EQ(test::errorOf([&] { dialog->cmdOK_Click(); }), 13);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(package.record(0).AutoPlace, -1);
    EXPECT_EQ(package.record(0).Title, QStringLiteral("Gong"));
}

TEST(frmSetting, CancelChangesNothing) {
    LoadedPackage package;
    auto dialog = package.properties(2);
    dialog->txtTitle()->setText(QStringLiteral("anders"));
    dialog->optColor()[8]->click();
    dialog->chkPlace()->click();
    dialog->chkVisible()->click();
    dialog->cmdCancel()->click();
    EXPECT_FALSE(dialog->isVisible());
    const AnnouncementRecord& record = package.record(1);
    EXPECT_EQ(record.Title, QStringLiteral("Gleis 1"));
    EXPECT_EQ(record.Color, 255);
    EXPECT_EQ(record.AutoPlace, 0);
    EXPECT_TRUE(record.NameVisible);
    EXPECT_EQ(package.row(2)->ForeColor(), 255u);
    EXPECT_EQ(package.row(2)->SubItems(1), QStringLiteral("Gleis 1"));
}

TEST(frmSetting, EveryControlTheLanguageFilesNameIsOneOfItsControls) {
    LoadedPackage package;
    auto dialog = package.properties(1);
    for (const WindowTexts& window : LocalisedWindows()) {
        if (QLatin1StringView(window.window) != QLatin1StringView("frmSetting"))
            continue;
        for (const char* name : window.controls)
            EXPECT_NE(dialog->findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    }
    EXPECT_EQ(dialog->objectName(), QStringLiteral("frmSetting"));
}
