#include "package/packagetext.h"
#include "support/errorof.h"
#include "support/namedpipe.h"
#include "support/tempdir.h"

#include <QFile>
#include <QFileInfo>
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

TEST(ReadPackageDescription, AMissingCommentFileIsTheEmptyDescription) {
    TempDir dir;
    EXPECT_EQ(ReadPackageDescription(dir.file("Package.txt")), QString());
    EXPECT_EQ(ReadPackageDescription(dir.write("Package.txt", "Linie 1")),
              QStringLiteral("Linie 1"));
}

TEST(ReadPackageDescription, ACommentThatCannotBeReadIsStillTheReadersError) {
    TempDir dir;
    const QString path = dir.write("Package.txt", "geheim");
    QFile::setPermissions(path, QFileDevice::WriteOwner);
    if (QFile file(path); file.open(QIODevice::ReadOnly))
        GTEST_SKIP() << "running with rights that ignore file permissions";
    EXPECT_EQ(errorOf([&] { ReadPackageDescription(path); }), 75);
}

TEST(ReadPackageText, APipeNamedLikeTheCommentIsAnAccessErrorNotAWait) {
    TempDir dir;
    const tavik::test::NamedPipe pipe(dir.file("Package.txt"));
    ASSERT_TRUE(pipe.made());
    // Where the system shows nothing by that name (Wine shows the host's pipes so), it is no
    // file: not found for the text, no description; elsewhere it is there and refused.
    const bool seen = QFileInfo::exists(dir.file("Package.txt"));
    EXPECT_EQ(errorOf([&] { ReadPackageText(dir.file("Package.txt")); }), seen ? 75 : 53);
    EXPECT_EQ(errorOf([&] { ReadPackageDescription(dir.file("Package.txt")); }), seen ? 75 : 0);
    EXPECT_FALSE(pipe.hadToFreeAReader());
}
