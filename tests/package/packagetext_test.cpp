#include "package/packagetext.h"
#include "support/errorof.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::TempDir;

TEST(ReadPackageText, ReturnsTheWholeFileAsAnsiText) {
    TempDir dir;
    const QString path = dir.write("Package.txt", "Linie 1\r\nf\xfcr Gleis 2");
    EXPECT_EQ(ReadPackageText(path), QStringLiteral("Linie 1\r\nfür Gleis 2"));
}

TEST(ReadPackageText, AMissingFileIsTheFileNotFoundError) {
    TempDir dir;
    EXPECT_EQ(errorOf([&] { ReadPackageText(dir.file("Package.txt")); }), 53);
    EXPECT_EQ(errorOf([&] { ReadPackageText(dir.path()); }), 53);
}

TEST(ReadPackageText, AHugeFileIsCut) {
    TempDir dir;
    const QString path = dir.write("Package.txt", QByteArray(kMaxPackageText * 4, 'x'));
    EXPECT_EQ(ReadPackageText(path).size(), kMaxPackageText);
    EXPECT_EQ(ReadPackageText(dir.write("e.txt", "")), QString());
}
