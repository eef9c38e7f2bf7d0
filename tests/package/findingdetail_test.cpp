#include "package/findingdetail.h"
#include "settings/language.h"
#include "support/buildpaths.h"

#include <gtest/gtest.h>

using namespace tavik;

namespace {

Language languageOf(const char* file) {
    Language language;
    language.LanguageFile = tavik::test::CheckoutPath(QStringLiteral("/res/lang/")) + file;
    return language;
}

NumberedText textsOf(const Language& language) {
    return [language](int number, const QStringList& args) {
        return language.GetLangString(number, args.value(0), args.value(1), args.value(2));
    };
}

QString english(DetailText id, const QStringList& args = {}) {
    return detailText(id, args);
}

} // namespace

TEST(FindingDetail, EveryDetailReadsInGermanWithItsValuesInPlace) {
    const NumberedText german = textsOf(languageOf("Deutsch.lng"));
    const NumberedText inEnglish = textsOf(languageOf("English.lng"));
    const QStringList values = {QStringLiteral("-71"), QStringLiteral("82"), QStringLiteral("93")};
    for (int i = 0; i < kTranslatedDetailCount; ++i) {
        const QString written = detailText(static_cast<DetailText>(i), values);
        const QString local = localDetail(written, german);
        const QString expected =
            german(detailTextNumber(i), values.mid(0, written.count(QStringLiteral("-71")) +
                                                          written.count(QStringLiteral("82")) +
                                                          written.count(QStringLiteral("93"))));
        ASSERT_FALSE(expected.isEmpty()) << i;
        EXPECT_NE(local, written) << i << ": " << written.toStdString();
        for (const QString& value : values)
            EXPECT_EQ(local.count(value), written.count(value)) << local.toStdString();
        EXPECT_EQ(localDetail(written, inEnglish), written) << i;
    }
}

TEST(FindingDetail, ADetailWithinADetailIsTranslatedToo) {
    const NumberedText german = textsOf(languageOf("Deutsch.lng"));
    const QString written = english(
        DetailText::Joined,
        {english(DetailText::InSentence,
                 {QStringLiteral("3"),
                  english(DetailText::EntryArrayEntries,
                          {QStringLiteral("-5"), QStringLiteral("0"), QStringLiteral("40")})}),
         english(DetailText::RuntimeError, {QStringLiteral("9")})});
    EXPECT_EQ(written,
              QStringLiteral("sentence 3: entry array of -5 entries from 0 at byte 40, runtime "
                             "error 9"));
    EXPECT_EQ(localDetail(written, german).toStdString(),
              "Satz 3: Zielfeld mit -5 Zielen ab 0 bei Byte 40, Laufzeitfehler 9");
    EXPECT_EQ(localDetail(english(DetailText::LoadingStops,
                                  {QStringLiteral("Color"),
                                   english(DetailText::RuntimeError, {QStringLiteral("13")})}),
                          german),
              QStringLiteral("Color: das Laden bricht ab mit Laufzeitfehler 13"));
}

TEST(FindingDetail, ATitleOrPathIsShownAsItIsEvenWhereItReadsLikeADetail) {
    const NumberedText german = textsOf(languageOf("Deutsch.lng"));
    // A title is data: quoted, or as the value of a detail, it stays in its own words.
    EXPECT_EQ(localDetail(QStringLiteral("\"Gleis: 3, bitte\""), german),
              QStringLiteral("\"Gleis: 3, bitte\""));
    EXPECT_EQ(localDetail(english(DetailText::TitleShownAs, {QStringLiteral("0001~plays nothing~x"),
                                                             QStringLiteral("plays nothing")}),
                          german),
              QStringLiteral("\"0001~plays nothing~x\" erscheint als \"plays nothing\""));
    EXPECT_EQ(localDetail(QStringLiteral("1200 ms"), german), QStringLiteral("1200 ms"));
    // A value that repeats must be the same value to be read as the detail.
    EXPECT_EQ(localDetail(QStringLiteral("Count 4, but no entry at 5"), german),
              QStringLiteral("Count 4, but no entry at 5"));
    EXPECT_EQ(localDetail(english(DetailText::CountWithoutEntry, {QStringLiteral("4")}), german),
              QStringLiteral("Count 4, aber kein Eintrag an Stelle 4"));
}

TEST(FindingDetail, AMissingTranslationLeavesTheEnglishDetail) {
    const NumberedText none = [](int, const QStringList&) { return QString(); };
    const QString written = english(DetailText::NegativeKeyCount, {QStringLiteral("-1")});
    EXPECT_EQ(written, QStringLiteral("negative key count -1"));
    EXPECT_EQ(localDetail(written, none), written);
}
