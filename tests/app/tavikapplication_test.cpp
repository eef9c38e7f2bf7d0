#include "app/tavikapplication.h"
#include "util/runtimeerror.h"

#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;

TEST(TavikApplication, AnUnhandledRuntimeErrorShowsTheRuntimeMessageAndTheProgramGoesOn) {
    auto* app = static_cast<TavikApplication*>(QApplication::instance());
    QStringList shown;
    app->setErrorReporter([&](const QString& text) { shown << text; });

    QPushButton button(QStringLiteral("Fehler"));
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] {
        if (++clicks == 1)
            throw RuntimeError(rt::SubscriptOutOfRange);
    });
    button.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0],
              QStringLiteral("Laufzeitfehler '9':\n\nIndex außerhalb des gültigen Bereichs"));

    // The window still works after the error.
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(shown.size(), 1);
    app->setErrorReporter({});
}
