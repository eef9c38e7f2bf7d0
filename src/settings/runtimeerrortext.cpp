#include "runtimeerrortext.h"

#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/runtimeerror.h"

#include <array>

namespace tavik {

namespace {

// The runtime errors with texts of their own in the language files: the first 16 in the order
// of their numbered texts from LangText::RuntimeErrorFirst on, then error 91.
constexpr std::array<int, 17> kTranslatedErrors = {5,  6,  7,  9,  11, 13, 52, 53, 55,
                                                   57, 58, 61, 62, 70, 75, 76, 91};

std::int32_t textOf(std::size_t i) {
    return i < 16 ? LangText::RuntimeErrorFirst + static_cast<std::int32_t>(i)
                  : LangText::RuntimeErrorObjectNotSet;
}

} // namespace

std::span<const int> TranslatedRuntimeErrors() {
    return kTranslatedErrors;
}

QString RuntimeErrorMessage(const Language& language, const RuntimeError& error) {
    const QString heading = language.GetLangString(LangText::RuntimeErrorHeading);
    if (heading.isEmpty())
        return error.message();
    QString description = error.description();
    if (description == RuntimeError::defaultDescription(error.number())) {
        std::int32_t number = LangText::RuntimeErrorOther;
        for (std::size_t i = 0; i < kTranslatedErrors.size(); ++i) {
            if (kTranslatedErrors[i] == error.number())
                number = textOf(i);
        }
        const bool listControl = error.number() == 35600 || error.number() == 35602;
        const QString translated = language.GetLangString(number);
        if (!listControl && !translated.isEmpty())
            description = translated;
    }
    return QStringLiteral("%1 '%2':\n\n%3").arg(heading).arg(error.number()).arg(description);
}

} // namespace tavik
