#pragma once

#include "app/frmmain.h"
#include "support/buildpaths.h"
#include "support/editorfixture.h"

#include <QDir>
#include <QFile>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace tavik::test {

// The editor's main window shown on the X server, framed and placed by the window manager,
// with the delivered pictures in its installation and the demo-sized package open.
class ScreenFixture : public EditorFixture {
public:
    ScreenFixture() {
        QDir(root.path()).mkpath(QStringLiteral("res/img"));
        for (const QString& name :
             QDir(tavik::test::CheckoutPath(QStringLiteral("/res/img"))).entryList(QDir::Files))
            QFile::copy(tavik::test::CheckoutPath(QStringLiteral("/res/img/")) + name,
                        root.file(QStringLiteral("res/img/") + name));
    }

    // Start-up, the window on screen at `place` (its frame's top-left) and a package open.
    void start(const QPoint& place = QPoint(200, 120)) {
        ASSERT_TRUE(main->FormLoad());
        main->show();
        ASSERT_TRUE(placed(main.get()));
        moveMain(place);
        std::vector<Entry> entries;
        for (int i = 0; i < 5; ++i)
            entries.push_back(
                {QStringLiteral("000%1").arg(i), QStringLiteral("Ansage %1").arg(i), 200});
        open(writePackage(QStringLiteral("Paket"), QStringLiteral("Paket"), entries));
        ASSERT_EQ(main->lsvPack()->Count(), 5);
    }

    void moveMain(const QPoint& place) {
        main->move(place);
        settle();
    }

    QRect available() const { return main->screen()->availableGeometry(); }

    // Lets the X server and the window manager answer what is pending.
    static void settle() { QTest::qWait(150); }

    // Waits until `window` is on screen and, unless it is frameless, framed by the window
    // manager; false when that never happens.
    static bool placed(QWidget* window) {
        if (!QTest::qWaitForWindowExposed(window))
            return false;
        const bool frameless = window->windowType() == Qt::SplashScreen ||
                               window->windowFlags().testFlag(Qt::FramelessWindowHint);
        if (!frameless &&
            !QTest::qWaitFor([window] { return window->frameGeometry() != window->geometry(); }))
            return false;
        settle();
        return true;
    }
};

// Within a pixel or two: frames are whole pixels and odd sizes halve unevenly.
inline void expectCentredOn(const QRect& window, const QRect& owner, const char* what) {
    EXPECT_LE(std::abs(window.center().x() - owner.center().x()), 2)
        << what << " at " << window.x() << "," << window.y() << " " << window.width() << "x"
        << window.height() << " over " << owner.x() << "," << owner.y() << " " << owner.width()
        << "x" << owner.height();
    EXPECT_LE(std::abs(window.center().y() - owner.center().y()), 2)
        << what << " at " << window.x() << "," << window.y() << " " << window.width() << "x"
        << window.height() << " over " << owner.x() << "," << owner.y() << " " << owner.width()
        << "x" << owner.height();
}

// Within a pixel: under Wine the frame Wine reports for a window the manager placed may sit a
// pixel off the place it was given.
inline void expectOnScreen(const QRect& window, const QRect& area, const char* what) {
    EXPECT_TRUE(area.adjusted(-1, -1, 1, 1).contains(window))
        << what << " at " << window.x() << "," << window.y() << " " << window.width() << "x"
        << window.height() << " outside " << area.width() << "x" << area.height();
}

} // namespace tavik::test
