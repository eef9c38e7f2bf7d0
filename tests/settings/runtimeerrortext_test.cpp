#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/runtimeerrortext.h"
#include "support/buildpaths.h"
#include "util/runtimeerror.h"

#include <QSet>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

Language languageOf(const char* file) {
    Language language;
    language.LanguageFile = tavik::test::CheckoutPath(QStringLiteral("/res/lang/")) + file;
    return language;
}

} // namespace

TEST(RuntimeErrorText, EnglishShowsTheRuntimesEnglishMessage) {
    const Language english = languageOf("English.lng");
    EXPECT_EQ(RuntimeErrorMessage(english, RuntimeError(rt::SubscriptOutOfRange)),
              QStringLiteral("Run-time error '9':\n\nSubscript out of range"));
    EXPECT_EQ(RuntimeErrorMessage(english, RuntimeError(61)),
              QStringLiteral("Run-time error '61':\n\nDisk full"));
    EXPECT_EQ(RuntimeErrorMessage(english, RuntimeError(1234)),
              QStringLiteral("Run-time error '1234':\n\nApplication-defined or object-defined "
                             "error"));
}

TEST(RuntimeErrorText, GermanIsTheRuntimesOwnMessageForEveryError) {
    const Language german = languageOf("Deutsch.lng");
    for (const int number : TranslatedRuntimeErrors())
        EXPECT_EQ(RuntimeErrorMessage(german, RuntimeError(number)), RuntimeError(number).message())
            << number;
    EXPECT_EQ(RuntimeErrorMessage(german, RuntimeError(1234)), RuntimeError(1234).message());
}

TEST(RuntimeErrorText, EveryErrorHasItsOwnTextInBothLanguages) {
    for (const char* file : {"English.lng", "Deutsch.lng"}) {
        const Language language = languageOf(file);
        QSet<QString> texts;
        for (const int number : TranslatedRuntimeErrors()) {
            const QString message = RuntimeErrorMessage(language, RuntimeError(number));
            EXPECT_FALSE(message.endsWith(u'\n')) << file << " " << number;
            texts.insert(message.section(u'\n', 2));
        }
        EXPECT_EQ(texts.size(), TranslatedRuntimeErrors().size()) << file;
    }
}

TEST(RuntimeErrorText, AnErrorsOwnTextIsKeptAndNoLanguageGivesTheRuntimesMessage) {
    const Language english = languageOf("English.lng");
    const RuntimeError busy(70, QStringLiteral("Zugriff verweigert: held by tavik (process 1)"));
    EXPECT_EQ(
        RuntimeErrorMessage(english, busy),
        QStringLiteral("Run-time error '70':\n\nZugriff verweigert: held by tavik (process 1)"));
    const Language none;
    EXPECT_EQ(RuntimeErrorMessage(none, RuntimeError(9)), RuntimeError(9).message());
}
