#include "settings/modini.h"
#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::TempDir;

namespace {

QString read(const QString& file, const QString& section, const QString& key,
             const Variant& def = Variant::fromString(QString())) {
    return ReadINI(file, section, key, def).stringValue();
}

} // namespace

TEST(ReadINI, MissingSettingsFileGivesFalseForABooleanDefaultAndZeroForAnInteger) {
    TempDir dir;
    const QString file = dir.file("Tavik.ini");
    const Variant asFlag = ReadINI(file, "SOUND", "UseFormat", Variant::fromBoolean(false));
    EXPECT_EQ(asFlag.type(), VarType::String);
    EXPECT_EQ(asFlag.stringValue(), QStringLiteral("False"));
    const Variant asNumber = ReadINI(file, "SOUND", "UseFormat", Variant::fromInteger(0));
    EXPECT_EQ(asNumber.type(), VarType::String);
    EXPECT_EQ(asNumber.stringValue(), QStringLiteral("0"));
    EXPECT_EQ(read(file, "Settings", "Language"), QString());
    EXPECT_FALSE(QFile::exists(file)) << "a read never creates the file";
}

TEST(ReadINI, ValueOf1023CharactersReadsBackWhole) {
    TempDir dir;
    const QString file = dir.file("t.ini");
    const QString value(1023, u'x');
    WriteINI(file, "S", "K", value);
    EXPECT_EQ(read(file, "S", "K"), value);
}

TEST(ReadINI, ValueOf1024OrMoreCharactersIsCutTo1023) {
    TempDir dir;
    const QString file = dir.file("t.ini");
    WriteINI(file, "S", "K", QString(1024, u'y'));
    EXPECT_EQ(read(file, "S", "K"), QString(1023, u'y'));
    WriteINI(file, "S", "K", QString(5000, u'z'));
    EXPECT_EQ(read(file, "S", "K"), QString(1023, u'z'));
    // the whole value is on disk; only the read is cut
    EXPECT_TRUE(readAll(file).contains("K=" + QByteArray(5000, 'z') + "\r\n"));
}

TEST(ReadINI, LongDefaultIsCutTo1023AsWell) {
    TempDir dir;
    EXPECT_EQ(read(dir.file("none.ini"), "S", "K", Variant::fromString(QString(2000, u'd'))),
              QString(1023, u'd'));
}

TEST(WriteINI, ValueWithANulIsCutAtIt) {
    TempDir dir;
    const QString file = dir.file("t.ini");
    WriteINI(file, "S", "K", QStringLiteral("abc") + QChar(u'\0') + QStringLiteral("def"));
    EXPECT_EQ(readAll(file), QByteArray("[S]\r\nK=abc\r\n"));
    EXPECT_EQ(read(file, "S", "K"), QStringLiteral("abc"));
}

TEST(ReadINI, NulByteInTheFileEndsTheValue) {
    TempDir dir;
    const QString file = dir.write("t.ini", QByteArray("[S]\r\nK=ab\0cd\r\n", 14));
    EXPECT_EQ(read(file, "S", "K"), QStringLiteral("ab"));
}

TEST(DeleteINI, SectionInSquareBracketsDeletesFromThatSection) {
    TempDir dir;
    const QString file =
        dir.write("Tavik.ini", "[SOUND]\r\nUseFormat=1\r\nOther=2\r\n[Settings]\r\nLanguage=x\r\n");
    QStringList messages;
    const auto rc =
        DeleteINI(file, "[SOUND]", "UseFormat", [&](const QString& m) { messages << m; });
    EXPECT_NE(rc, 0);
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(readAll(file), QByteArray("[SOUND]\r\nOther=2\r\n[Settings]\r\nLanguage=x\r\n"));
    EXPECT_EQ(read(file, "SOUND", "UseFormat", Variant::fromInteger(0)), QStringLiteral("0"));
}

TEST(DeleteINI, FailureReportsTheErrorCodeWithoutABlankAndReturnsZero) {
    TempDir dir;
    QStringList messages;
    const auto rc = DeleteINI(dir.file("no/such/folder/x.ini"), "INDEX", "1",
                              [&](const QString& m) { messages << m; });
    EXPECT_EQ(rc, 0);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0], QStringLiteral("Error code is :3"));
}

TEST(DeleteINI, FolderInPlaceOfTheFileReportsAccessDenied) {
    TempDir dir;
    QDir(dir.path()).mkdir("folder.ini");
    QStringList messages;
    EXPECT_EQ(
        DeleteINI(dir.file("folder.ini"), "INDEX", "1", [&](const QString& m) { messages << m; }),
        0);
    EXPECT_EQ(messages, QStringList{QStringLiteral("Error code is :5")});
}

TEST(DeleteINI, FailureWithoutAReporterStillReturnsZero) {
    TempDir dir;
    EXPECT_EQ(DeleteINI(dir.file("missing/x.ini"), "INDEX", "1"), 0);
}

TEST(DeleteINI, MissingKeyOrSectionSucceedsAndLeavesTheFileAlone) {
    TempDir dir;
    const QByteArray bytes = "[INDEX]\r\n1=a\r\n";
    const QString file = dir.write("x.ini", bytes);
    EXPECT_EQ(DeleteINI(file, "INDEX", "2"), 1);
    EXPECT_EQ(DeleteINI(file, "OTHER", "1"), 1);
    EXPECT_EQ(readAll(file), bytes);
}

TEST(DeleteINI, MissingFileIsCreatedEmptyAndTheDeleteSucceeds) {
    TempDir dir;
    const QString file = dir.file("x.ini");
    EXPECT_EQ(DeleteINI(file, "INDEX", "1"), 1);
    ASSERT_TRUE(QFile::exists(file));
    EXPECT_TRUE(readAll(file).isEmpty());
}

TEST(DeleteINI, EmptyKeyIsRefusedAndReported) {
    TempDir dir;
    const QString file = dir.write("x.ini", "[INDEX]\r\n1=a\r\n");
    QStringList messages;
    EXPECT_EQ(DeleteINI(file, "INDEX", "", [&](const QString& m) { messages << m; }), 0);
    EXPECT_EQ(messages, QStringList{QStringLiteral("Error code is :87")});
    EXPECT_EQ(readAll(file), QByteArray("[INDEX]\r\n1=a\r\n"));
}

TEST(StripBrackets, DropsOneLeadingAndOneTrailingBracket) {
    EXPECT_EQ(StripBrackets("[INDEX]"), QStringLiteral("INDEX"));
    EXPECT_EQ(StripBrackets("INDEX"), QStringLiteral("INDEX"));
    EXPECT_EQ(StripBrackets("[INDEX"), QStringLiteral("INDEX"));
    EXPECT_EQ(StripBrackets("INDEX]"), QStringLiteral("INDEX"));
    EXPECT_EQ(StripBrackets("[[A]]"), QStringLiteral("[A]"));
    EXPECT_EQ(StripBrackets("["), QString());
    EXPECT_EQ(StripBrackets("]"), QString());
    EXPECT_EQ(StripBrackets("[]"), QString());
    EXPECT_EQ(StripBrackets(""), QString());
}

TEST(ReadINI, InstalledScanStopsAtTheFirstEmptyKey) {
    TempDir dir;
    const QString file = dir.write(
        "Formats.ini", "[Installed]\r\n1=wav\r\n2=mp3\r\n4=flac\r\n[wav]\r\nFormat=w\r\n");
    QStringList formats;
    for (int i = 1;; ++i) {
        const QString ext = read(file, "Installed", QString::number(i));
        if (ext.isEmpty())
            break;
        formats << QStringLiteral("*.") + ext;
    }
    EXPECT_EQ(formats, (QStringList{"*.wav", "*.mp3"}));
}

TEST(WriteINI, FailedWriteIsSilentAndCreatesNothing) {
    TempDir dir;
    const QString file = dir.file("missing/Tavik.ini");
    WriteINI(file, "SOUND", "UseFormat", "1");
    EXPECT_FALSE(QFile::exists(file));
    QDir(dir.path()).mkdir("folder.ini");
    WriteINI(dir.file("folder.ini"), "SOUND", "UseFormat", "1");
    EXPECT_TRUE(QFileInfo(dir.file("folder.ini")).isDir());
}

TEST(WriteINI, EveryCallGoesToTheFile) {
    TempDir dir;
    const QString file = dir.file("Tavik.ini");
    WriteINI(file, "SOUND", "UseFormat", "1");
    EXPECT_EQ(read(file, "SOUND", "UseFormat"), QStringLiteral("1"));
    dir.write("Tavik.ini", "[SOUND]\r\nUseFormat=0\r\n");
    EXPECT_EQ(read(file, "SOUND", "UseFormat"), QStringLiteral("0"));
    QFile::remove(file);
    EXPECT_EQ(read(file, "SOUND", "UseFormat", Variant::fromBoolean(false)),
              QStringLiteral("False"));
}

TEST(ReadINI, BackslashPathsAsTheProgramBuildsThemWork) {
    TempDir dir;
    dir.write("Tavik.ini", "[Settings]\r\nLanguage=C:\\x\\Deutsch.lng\r\n");
    EXPECT_EQ(read(dir.path() + QStringLiteral("\\Tavik.ini"), "Settings", "Language"),
              QStringLiteral("C:\\x\\Deutsch.lng"));
}
