// Qt's own texts follow the locale a language file names.
#include "settings/language.h"
#include "settings/qttranslation.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

QString qtYes() {
    return QCoreApplication::translate("QPlatformTheme", "&Yes");
}

struct BuiltInEnglishAfterwards : ::testing::Test {
    ~BuiltInEnglishAfterwards() override { UseQtTranslation(QString()); }
};

} // namespace

TEST_F(BuiltInEnglishAfterwards, GermanLoadsQtsGermanCatalogue) {
    ASSERT_TRUE(UseQtTranslation(QStringLiteral("de")));
    EXPECT_EQ(QtTranslationInUse(), QStringLiteral("de"));
    EXPECT_EQ(qtYes(), QStringLiteral("&Ja"));
}

TEST_F(BuiltInEnglishAfterwards, EnglishOrNoLocaleRemovesTheCatalogue) {
    ASSERT_TRUE(UseQtTranslation(QStringLiteral("de")));
    EXPECT_TRUE(UseQtTranslation(QStringLiteral("en")));
    EXPECT_EQ(QtTranslationInUse(), QString());
    EXPECT_EQ(qtYes(), QStringLiteral("&Yes"));
    ASSERT_TRUE(UseQtTranslation(QStringLiteral("de")));
    EXPECT_TRUE(UseQtTranslation(QString()));
    EXPECT_EQ(qtYes(), QStringLiteral("&Yes"));
}

TEST_F(BuiltInEnglishAfterwards, AnUnknownLocaleFallsBackToEnglish) {
    ASSERT_TRUE(UseQtTranslation(QStringLiteral("de")));
    EXPECT_FALSE(UseQtTranslation(QStringLiteral("xx-no-such")));
    EXPECT_EQ(QtTranslationInUse(), QString());
    EXPECT_EQ(qtYes(), QStringLiteral("&Yes"));
}

TEST(QtLocaleOf, TheDeliveredFilesNameTheirQtLocale) {
    EXPECT_EQ(QtLocaleOf(LanguageFolder() + QStringLiteral("Deutsch.lng")), QStringLiteral("de"));
    EXPECT_EQ(QtLocaleOf(LanguageFolder() + QStringLiteral("English.lng")), QStringLiteral("en"));
    EXPECT_EQ(QtLocaleOf(QString()), QString());
}
