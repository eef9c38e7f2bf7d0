#include "app/frmstatus.h"

#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;

TEST(FrmStatus, ShowsModelessOwnedByItsOpener) {
    QWidget owner;
    owner.show();
    auto* status = new frmStatus(&owner);
    status->ShowStatus("Paket wird geladen ...");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(status));
    EXPECT_TRUE(status->isWindow());
    EXPECT_EQ(status->parentWidget(), &owner);
    EXPECT_FALSE(status->isModal());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(status->objectName(), "frmStatus");
    EXPECT_EQ(status->lblStatus()->objectName(), "lblStatus");
    EXPECT_EQ(status->lblStatus()->text(), "Paket wird geladen ...");
    EXPECT_TRUE(status->lblFile()->text().isEmpty());
    // Owned: it goes with its opener.
    QPointer<frmStatus> alive(status);
    owner.close();
    delete alive.data();
    EXPECT_TRUE(alive.isNull());
}

TEST(FrmStatus, SecondLineShowsTheItemAtHand) {
    QWidget owner;
    frmStatus status(&owner);
    status.ShowStatus("Laden");
    status.ShowSecondLine("Bitte einsteigen");
    EXPECT_EQ(status.lblFile()->text(), "Bitte einsteigen");
    EXPECT_EQ(status.lblFile()->objectName(), "lblFile");
    status.ShowStatus("Schliessen");
    EXPECT_TRUE(status.lblFile()->text().isEmpty());
}

TEST(FrmStatus, ASecondLineLongerThanTheWindowIsCutToWhatCanShow) {
    QWidget owner;
    frmStatus status(&owner);
    status.ShowStatus("Laden");
    const QString title = QString(65535, QLatin1Char('T'));
    status.ShowSecondLine(title);
    EXPECT_EQ(status.lblFile()->text(), title.left(status.width()));
    status.ShowSecondLine(QString(status.width(), QLatin1Char('x')));
    EXPECT_EQ(status.lblFile()->text(), QString(status.width(), QLatin1Char('x')));
}

TEST(FrmStatus, DeletedWithItsOwner) {
    auto* owner = new QWidget;
    QPointer<frmStatus> status(new frmStatus(owner));
    status->ShowStatus("x");
    delete owner;
    EXPECT_TRUE(status.isNull());
}
