#pragma once

#include <QString>

namespace tavik {

// The locale whose translations Qt's own texts (standard buttons, file dialogs, context menus)
// take in a language file: "QtLocale" of section "_Language", such as "de". Empty or "en"
// means Qt's built-in English.
QString QtLocaleOf(const QString& languageFile);

// Puts Qt's translation for `locale` in place of the one before ("qtbase_<locale>.qm" from
// Qt's translations folder); "" or "en" removes it. False when no catalogue for the locale
// could be loaded: Qt's texts are then English.
bool UseQtTranslation(const QString& locale);

// The locale of the Qt translation in use, "" when Qt speaks its built-in English.
QString QtTranslationInUse();

} // namespace tavik
