#include "app/tavikapplication.h"
#include "settings/language.h"
#include "settings/runtimeerrortext.h"
#include "support/buildpaths.h"
#include "util/runtimeerror.h"

#include <QEvent>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

// A window-less receiver whose event handler raises a runtime error the first time.
class Raiser : public QObject {
public:
    int handled = 0;

protected:
    bool event(QEvent* e) override {
        if (e->type() != QEvent::User)
            return QObject::event(e);
        if (++handled == 1)
            throw RuntimeError(rt::SubscriptOutOfRange);
        return true;
    }
};

} // namespace

TEST(TavikApplication, AnUnhandledRuntimeErrorShowsTheRuntimeMessageAndTheProgramGoesOn) {
    auto* app = static_cast<TavikApplication*>(QApplication::instance());
    QStringList shown;
    app->setErrorReporter([&](const QString& text) { shown << text; });

    Raiser raiser;
    QEvent first(QEvent::User);
    EXPECT_TRUE(QCoreApplication::sendEvent(&raiser, &first));
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0],
              QStringLiteral("Laufzeitfehler '9':\n\nIndex außerhalb des gültigen Bereichs"));

    // Events still reach their handlers after the error.
    QCoreApplication::postEvent(&raiser, new QEvent(QEvent::User));
    QCoreApplication::processEvents();
    EXPECT_EQ(raiser.handled, 2);
    EXPECT_EQ(shown.size(), 1);
    app->setErrorReporter({});
}

TEST(TavikApplication, AnUnhandledRuntimeErrorSpeaksTheChosenLanguage) {
    auto* app = static_cast<TavikApplication*>(QApplication::instance());
    QStringList shown;
    app->setErrorReporter([&](const QString& text) { shown << text; });
    Language language;
    app->setErrorText(
        [&language](const RuntimeError& error) { return RuntimeErrorMessage(language, error); });
    Raiser raiser;
    language.LanguageFile = tavik::test::CheckoutPath(QStringLiteral("/res/lang/English.lng"));
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&raiser, &event);
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0], QStringLiteral("Run-time error '9':\n\nSubscript out of range"));
    app->setErrorText({});
    app->setErrorReporter({});
}
