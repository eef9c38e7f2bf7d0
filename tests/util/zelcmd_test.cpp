#include "util/zelcmd.h"

#include "settings/applylanguage.h"
#include "support/tempdir.h"

#include <QEnterEvent>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

TEST(Zelcmd, LanguageRoutineSetsCaptionAndToolTip) {
    TempDir dir;
    QWidget form;
    auto* layout = new QVBoxLayout(&form);
    auto* cmdPlay = new zelcmd(&form);
    cmdPlay->setObjectName("cmdPlay");
    layout->addWidget(cmdPlay);
    const QString file =
        dir.write("Test.lng", "[_Language]\r\nName=Test\r\n\r\n[frmTest]\r\ncmdPlay=&Abspielen|"
                              "Spielt die Ansage\r\n");
    ApplyLanguage(&form, "frmTest", file);
    EXPECT_EQ(cmdPlay->Caption(), "&Abspielen");
    EXPECT_EQ(cmdPlay->toolTip(), "Spielt die Ansage");
}

TEST(Zelcmd, ClickEmitsClicked) {
    zelcmd button;
    button.SetCaption("OK");
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    QSignalSpy clicked(&button, &QPushButton::clicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
}

TEST(Zelcmd, HoverColoursWhileTheMouseIsOver) {
    zelcmd button;
    button.SetForeColor(0x000000FF);      // red
    button.SetHoverForeColor(0x00FF0000); // blue
    button.SetHoverBackColor(0x0000FFFF); // yellow
    const QColor normalFace = button.palette().color(QPalette::Button);
    EXPECT_EQ(button.palette().color(QPalette::ButtonText), QColor(Qt::red));

    QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QCoreApplication::sendEvent(&button, &enter);
    EXPECT_TRUE(button.Hovered());
    EXPECT_EQ(button.palette().color(QPalette::ButtonText), QColor(Qt::blue));
    EXPECT_EQ(button.palette().color(QPalette::Button), QColor(Qt::yellow));

    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&button, &leave);
    EXPECT_FALSE(button.Hovered());
    EXPECT_EQ(button.palette().color(QPalette::ButtonText), QColor(Qt::red));
    EXPECT_EQ(button.palette().color(QPalette::Button), normalFace);
}

TEST(Zelcmd, PictureIsShownAndCanBeRemoved) {
    zelcmd button;
    QPixmap picture(16, 16);
    picture.fill(Qt::green);
    button.SetPicture(picture);
    EXPECT_FALSE(button.icon().isNull());
    EXPECT_EQ(button.Picture().size(), QSize(16, 16));
    button.SetPicture({});
    EXPECT_TRUE(button.icon().isNull());
}
