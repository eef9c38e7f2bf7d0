#include "settings/followlanguage.h"

#include "settings/applylanguage.h"
#include "settings/language.h"
#include "settings/qttranslation.h"
#include "util/accessiblenames.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace tavik {

namespace {

// Watches its window for Qt's language-change event, which reaches every window when the
// translation changes or SwitchLanguage asks for it.
class LanguageFollower : public QObject {
public:
    LanguageFollower(QWidget* form, const Language& language, std::function<void()> codeTexts)
        : QObject(form), form_(form), language_(language), codeTexts_(std::move(codeTexts)) {
        form->installEventFilter(this);
    }

    void relabelFromCode() {
        if (codeTexts_)
            codeTexts_();
        NameControlsForAccessibility(form_);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == form_ && event->type() == QEvent::LanguageChange) {
            ApplyLanguage(form_, form_->objectName(), language_.LanguageFile);
            relabelFromCode();
        }
        return false;
    }

private:
    QWidget* form_;
    const Language& language_;
    std::function<void()> codeTexts_;
};

} // namespace

void FollowLanguage(QWidget* form, const Language& language, std::function<void()> codeTexts) {
    auto* follower = new LanguageFollower(form, language, std::move(codeTexts));
    follower->relabelFromCode();
}

void LocaliseWindow(QWidget* form, const Language& language) {
    ApplyLanguage(form, form->objectName(), language.LanguageFile);
    FollowLanguage(form, language);
}

void SwitchLanguage(const Language& language) {
    UseQtTranslation(QtLocaleOf(language.LanguageFile));
    // A new translation posts the change to every window; deliver it now, and send it anyway
    // for a language whose Qt translation is the same as before.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QPointer<QWidget> window : windows) {
        if (!window)
            continue;
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(window, &change);
    }
}

} // namespace tavik
