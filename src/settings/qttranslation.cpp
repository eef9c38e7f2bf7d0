#include "settings/qttranslation.h"

#include "settings/language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <QVariant>

namespace tavik {

namespace {

// The application owns the one translator this program installs; it is found again by name,
// so nothing else has to keep it.
const QString kTranslatorName = QStringLiteral("QtTranslation");

QTranslator* installedTranslator() {
    QCoreApplication* app = QCoreApplication::instance();
    return app ? app->findChild<QTranslator*>(kTranslatorName, Qt::FindDirectChildrenOnly)
               : nullptr;
}

constexpr const char* kLocaleProperty = "tavikLocale";

bool isBuiltIn(const QString& locale) {
    return locale.isEmpty() || locale.compare(QStringLiteral("en"), Qt::CaseInsensitive) == 0;
}

} // namespace

QString QtLocaleOf(const QString& languageFile) {
    return ReadLanguageValue(languageFile, QStringLiteral("_Language"), QStringLiteral("QtLocale"))
        .trimmed();
}

bool UseQtTranslation(const QString& locale) {
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return false;
    QTranslator* old = installedTranslator();
    if (old && old->property(kLocaleProperty).toString() == locale)
        return true;
    if (old) {
        QCoreApplication::removeTranslator(old);
        delete old;
    }
    if (isBuiltIn(locale))
        return true;
    auto* translator = new QTranslator(app);
    translator->setObjectName(kTranslatorName);
    translator->setProperty(kLocaleProperty, locale);
    if (!translator->load(QStringLiteral("qtbase_") + locale,
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    QCoreApplication::installTranslator(translator);
    return true;
}

QString QtTranslationInUse() {
    const QTranslator* translator = installedTranslator();
    return translator ? translator->property(kLocaleProperty).toString() : QString();
}

} // namespace tavik
