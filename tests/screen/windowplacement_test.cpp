#include "app/fadeineffect.h"
#include "app/frmcheck.h"
#include "app/frmstatus.h"
#include "dialogs/frmfile.h"
#include "dialogs/frmnew.h"
#include "dialogs/frmopen.h"
#include "dialogs/frmsetting.h"
#include "log/frmdebug.h"
#include "screen/screenfixture.h"
#include "settings/frmlanguage.h"
#include "settings/frmoptions.h"
#include "shell/clicklabel.h"
#include "shell/frmabout.h"
#include "shell/frmsplash.h"
#include "support/buildpaths.h"
#include "support/dialogtesting.h"
#include "util/zelcmd.h"

#include <QApplication>
#include <QPushButton>
#include <QWindow>

using namespace tavik;
using namespace tavik::test;

namespace {

// Clicks `button`, and when the modal window of type W has been placed, records its frame
// and the main window's frame at that moment, then rejects it.
template <typename W> struct ModalFrame {
    QRect frame;
    QRect owner;
};

template <typename W>
ModalFrame<W> openModal(
    ScreenFixture& f, QWidget* button,
    const std::function<void(W&)>& close = [](W& w) { w.reject(); }) {
    ModalFrame<W> seen;
    whenShown<W>([&](W& window) {
        if (ScreenFixture::placed(&window)) {
            seen.frame = window.frameGeometry();
            seen.owner = f.main->frameGeometry();
        }
        close(window);
    });
    QTest::mouseClick(button, Qt::LeftButton);
    return seen;
}

template <typename W>
void expectCentredAndOnScreen(ScreenFixture& f, const ModalFrame<W>& seen, const char* what) {
    ASSERT_TRUE(seen.frame.isValid()) << what << " was never placed";
    expectCentredOn(seen.frame, seen.owner, what);
    expectOnScreen(seen.frame, f.available(), what);
}

void expand(ScreenFixture& f) {
    QTest::mouseClick(f.main->cmdExpand(), Qt::LeftButton);
    ScreenFixture::settle();
    ASSERT_TRUE(f.main->picExpand()->isVisible());
}

} // namespace

TEST(ScreenPlacement, PackageDialogsOpenCentredOnTheMainWindow) {
    ScreenFixture f;
    f.start();

    expectCentredAndOnScreen(f, openModal<frmOpen>(f, f.main->cmdOpen()), "open dialog");
    expectCentredAndOnScreen(f, openModal<frmFile>(f, f.main->cmdAdd()), "import dialog");
    expectCentredAndOnScreen(f, openModal<frmNew>(f, f.main->cmdEdit()), "package information");

    ModalFrame<frmSetting> properties;
    whenShown<frmSetting>([&](frmSetting& window) {
        if (ScreenFixture::placed(&window)) {
            properties.frame = window.frameGeometry();
            properties.owner = f.main->frameGeometry();
        }
        window.reject();
    });
    ReportList* list = f.main->lsvPack();
    const QRect row = list->visualItemRect(list->ListItems(2));
    const QPoint at = list->viewport()->mapTo(f.main.get(), row.topLeft() + QPoint(8, 4));
    QTest::mouseDClick(f.main->windowHandle(), Qt::LeftButton, {}, at);
    expectCentredAndOnScreen(f, properties, "properties dialog");

    // Last: a new package empties the list.
    expectCentredAndOnScreen(f, openModal<frmNew>(f, f.main->cmdNew()), "new package dialog");
}

TEST(ScreenPlacement, WindowsOfTheExtendedPanelOpenCentredOnTheMainWindow) {
    ScreenFixture f;
    f.start();
    expand(f);

    expectCentredAndOnScreen(f, openModal<frmOptions>(f, f.main->cmdDelete()), "options");
    expectCentredAndOnScreen(f,
                             openModal<frmLanguage>(f, f.main->cmdLanguage(),
                                                    [](frmLanguage& w) { w.cmdCancel()->click(); }),
                             "language dialog");
    expectCentredAndOnScreen(f, openModal<frmAbout>(f, f.main->cmdInfo()), "about window");

    QTest::mouseClick(f.main->cmdDebug(), Qt::LeftButton);
    frmDebug* viewer = f.log.viewer();
    ASSERT_TRUE(ScreenFixture::placed(viewer));
    expectCentredOn(viewer->frameGeometry(), f.main->frameGeometry(), "event log");
    expectOnScreen(viewer->frameGeometry(), f.available(), "event log");
    viewer->close();

    QTest::mouseClick(f.main->cmdDienst(), Qt::LeftButton);
    QWidget* editor = f.main->serviceEditor();
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(ScreenFixture::placed(editor));
    expectCentredOn(editor->frameGeometry(), f.main->frameGeometry(), "service editor");
    expectOnScreen(editor->frameGeometry(), f.available(), "service editor");
    editor->close();

    QTest::mouseClick(f.main->cmdCheck(), Qt::LeftButton);
    QWidget* check = f.main->checkWindow();
    ASSERT_NE(check, nullptr);
    ASSERT_TRUE(ScreenFixture::placed(check));
    expectCentredOn(check->frameGeometry(), f.main->frameGeometry(), "check window");
    expectOnScreen(check->frameGeometry(), f.available(), "check window");
    check->close();
}

TEST(ScreenPlacement, TheStatusWindowOpensCentredOnTheMainWindow) {
    ScreenFixture f;
    f.start();
    frmStatus status(f.main.get());
    status.ShowStatus(QStringLiteral("Paket wird geladen"));
    ASSERT_TRUE(ScreenFixture::placed(&status));
    expectCentredOn(status.frameGeometry(), f.main->frameGeometry(), "status window");
    expectOnScreen(status.frameGeometry(), f.available(), "status window");
}

TEST(ScreenPlacement, WindowsOfAMainWindowHangingOffTheBottomLeftStayOnScreen) {
    ScreenFixture f;
    f.start();
    // The main window half off the screen, past its left and bottom edge.
    f.moveMain(QPoint(f.available().left() - 300, f.available().bottom() - 250));
    ASSERT_FALSE(f.available().contains(f.main->frameGeometry()));
    expand(f);

    QTest::mouseClick(f.main->cmdDienst(), Qt::LeftButton);
    QWidget* editor = f.main->serviceEditor();
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(ScreenFixture::placed(editor));
    expectOnScreen(editor->frameGeometry(), f.available(), "service editor");
    editor->close();
    ScreenFixture::settle();

    QTest::mouseClick(f.main->cmdDebug(), Qt::LeftButton);
    ASSERT_TRUE(ScreenFixture::placed(f.log.viewer()));
    expectOnScreen(f.log.viewer()->frameGeometry(), f.available(), "event log");
    f.log.viewer()->close();

    const auto about = openModal<frmAbout>(f, f.main->cmdInfo());
    ASSERT_TRUE(about.frame.isValid());
    expectOnScreen(about.frame, f.available(), "about window");

    QTest::mouseClick(f.main->cmdCheck(), Qt::LeftButton);
    ASSERT_NE(f.main->checkWindow(), nullptr);
    ASSERT_TRUE(ScreenFixture::placed(f.main->checkWindow()));
    expectOnScreen(f.main->checkWindow()->frameGeometry(), f.available(), "check window");
    f.main->checkWindow()->close();
}

TEST(ScreenPlacement, TheSplashIsCentredOnTheScreen) {
    ScreenFixture f;
    ASSERT_TRUE(f.main->FormLoad());
    QRect frame;
    bool pictured = false;
    whenShown<frmSplash>([&](frmSplash& splash) {
        if (ScreenFixture::placed(&splash))
            frame = splash.frameGeometry();
        pictured = !splash.picture()->pixmap().isNull();
        QTest::mouseClick(splash.lblClick(), Qt::LeftButton);
    });
    frmSplash splash(f.language, f.main.get());
    splash.ShowModal();
    ASSERT_TRUE(frame.isValid());
    expectCentredOn(frame, f.available(), "splash");
    EXPECT_TRUE(pictured) << "the splash shows no product picture";
}

TEST(ZoomTrail, EndsWhereTheOpenDialogAppears) {
    ScreenFixture f;
    f.start();
    QList<QRect> targets;
    const ZoomObserver previous =
        SetZoomObserver([&](const QRect&, const QRect& to) { targets << to; });
    const auto seen = openModal<frmOpen>(f, f.main->cmdOpen());
    SetZoomObserver(previous);
    ASSERT_EQ(targets.size(), 1);
    ASSERT_TRUE(seen.frame.isValid());
    EXPECT_EQ(targets.first(), seen.frame);
}

TEST(ZoomTrail, EndsWhereTheServiceEditorAppears) {
    ScreenFixture f;
    f.start();
    expand(f);
    QList<QRect> targets;
    const ZoomObserver previous =
        SetZoomObserver([&](const QRect&, const QRect& to) { targets << to; });
    QTest::mouseClick(f.main->cmdDienst(), Qt::LeftButton);
    SetZoomObserver(previous);
    QWidget* editor = f.main->serviceEditor();
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(ScreenFixture::placed(editor));
    ASSERT_EQ(targets.size(), 1);
    EXPECT_EQ(targets.first(), editor->frameGeometry());
    editor->close();
}

TEST(ProgramPictures, TheWindowsCarryTheProgramIconAndTheAboutWindowThePicture) {
    ScreenFixture f;
    f.start();
    EXPECT_FALSE(f.main->windowIcon().pixmap(32, 32).isNull());
    frmAbout about(f.language, f.main.get());
    EXPECT_FALSE(about.windowIcon().pixmap(32, 32).isNull());
    EXPECT_FALSE(f.log.viewer()->windowIcon().pixmap(32, 32).isNull());
    // The delivered picture, not a stand-in.
    const QPixmap picture = about.picture()->pixmap();
    const QImage delivered(tavik::test::CheckoutPath(QStringLiteral("/res/img/editor.png")));
    ASSERT_FALSE(delivered.isNull());
    EXPECT_EQ(picture.size(), delivered.size());
}
