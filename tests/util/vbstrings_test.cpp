#include "util/runtimeerror.h"
#include "util/vbstrings.h"

#include <gtest/gtest.h>

using namespace tavik;

TEST(Split, AnEmptyTextHasNoParts) {
    EXPECT_TRUE(Split(QString(), QStringLiteral("~")).isEmpty());
}

TEST(Split, KeepsEmptyParts) {
    EXPECT_EQ(Split(QStringLiteral("a~~b~"), QStringLiteral("~")), (QStringList{"a", "", "b", ""}));
    EXPECT_EQ(Split(QStringLiteral("abc"), QStringLiteral("~")), QStringList{"abc"});
}

TEST(PartAt, RaisesSubscriptErrorForAMissingPart) {
    const QStringList parts{"a"};
    EXPECT_EQ(PartAt(parts, 0), QStringLiteral("a"));
    try {
        PartAt(parts, 1);
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), rt::SubscriptOutOfRange);
    }
}
