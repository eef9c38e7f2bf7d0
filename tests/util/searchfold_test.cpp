// Folding for the search box: case and accents do not count, other letters stay.
#include "util/searchfold.h"

#include <gtest/gtest.h>

using tavik::FoldForSearch;

TEST(FoldForSearch, IgnoresCase) {
    EXPECT_EQ(FoldForSearch(QStringLiteral("Gleis 7")), FoldForSearch(QStringLiteral("gleis 7")));
    EXPECT_EQ(FoldForSearch(QStringLiteral("GLEIS")), QStringLiteral("gleis"));
}

TEST(FoldForSearch, IgnoresAccents) {
    EXPECT_EQ(FoldForSearch(QStringLiteral("Zürich Hbf")), QStringLiteral("zurich hbf"));
    EXPECT_EQ(FoldForSearch(QStringLiteral("Gare de l'Est, Orléans")),
              QStringLiteral("gare de l'est, orleans"));
    // A letter written as base and combining mark folds like the precomposed one.
    EXPECT_EQ(FoldForSearch(QStringLiteral("Zu\u0308rich")),
              FoldForSearch(QStringLiteral("Zürich")));
}

TEST(FoldForSearch, KeepsLettersThatDoNotDecompose) {
    EXPECT_TRUE(FoldForSearch(QStringLiteral("Straße")).contains(QStringLiteral("stra")));
    EXPECT_NE(FoldForSearch(QStringLiteral("Łódź")), FoldForSearch(QStringLiteral("Lodz")));
    EXPECT_EQ(FoldForSearch(QStringLiteral("Łódź")), FoldForSearch(QStringLiteral("łodz")));
}

TEST(FoldForSearch, DigitsAndSignsStay) {
    EXPECT_EQ(FoldForSearch(QStringLiteral("0007 ~ Gleis 7!")), QStringLiteral("0007 ~ gleis 7!"));
    EXPECT_EQ(FoldForSearch(QString()), QString());
}
