// The profile-file rules of the system's GetPrivateProfileStringA and
// WritePrivateProfileStringA, checked through the program's routines and on the bytes on disk.
#include "settings/modini.h"
#include "settings/profilefile.h"
#include "support/tempdir.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::TempDir;

namespace {

QString read(const QString& file, const QString& section, const QString& key,
             const QString& def = QString()) {
    return ReadINI(file, section, key, Variant::fromString(def)).stringValue();
}

// Writes `before`, stores `key`=`value` in `section`, and returns the bytes on disk.
QByteArray afterWrite(const QByteArray& before, const QString& section, const QString& key,
                      const QString& value) {
    TempDir dir;
    const QString file = dir.write("t.ini", before);
    WriteINI(file, section, key, value);
    return readAll(file);
}

QByteArray afterDelete(const QByteArray& before, const QString& section, const QString& key) {
    TempDir dir;
    const QString file = dir.write("t.ini", before);
    EXPECT_EQ(DeleteINI(file, section, key), 1);
    return readAll(file);
}

} // namespace

TEST(ProfileRead, SectionAndKeyNamesMatchWithoutRegardToCase) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[Sound]\r\nUseFormat=1\r\n");
    EXPECT_EQ(read(file, "SOUND", "useformat"), QStringLiteral("1"));
    EXPECT_EQ(read(file, "sound", "USEFORMAT"), QStringLiteral("1"));
}

TEST(ProfileRead, NonAsciiNamesMatchWithoutRegardToCase) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[\xC4nderung]\r\n\xFC\x62\x65r=ja\r\n");
    EXPECT_EQ(read(file, QStringLiteral("\u00E4NDERUNG"), QStringLiteral("\u00DCBER")),
              QStringLiteral("ja"));
}

TEST(ProfileRead, FirstOfDuplicateKeysWins) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[S]\r\nk=first\r\nK=second\r\n");
    EXPECT_EQ(read(file, "S", "k"), QStringLiteral("first"));
}

TEST(ProfileRead, OnlyTheFirstOfDuplicateSectionsIsSearched) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[S]\r\na=1\r\n[T]\r\n[s]\r\na=2\r\nb=3\r\n");
    EXPECT_EQ(read(file, "S", "a"), QStringLiteral("1"));
    EXPECT_EQ(read(file, "S", "b", "none"), QStringLiteral("none"));
}

TEST(ProfileRead, BlanksAndTabsAroundNamesAndValuesAreTrimmed) {
    TempDir dir;
    const QString file =
        dir.write("t.ini", "  [S]  \r\n \t key \t = \t some value \t \r\nnext=1\r\n");
    EXPECT_EQ(read(file, "S", "key"), QStringLiteral("some value"));
    EXPECT_EQ(read(file, "  S\t", " key "), QStringLiteral("some value"));
}

TEST(ProfileRead, BlanksInsideTheBracketsAreTrimmedFromTheSectionName) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[ S ]\r\na=1\r\n[\tT \t]\r\nb=2\r\n");
    EXPECT_EQ(read(file, "S", "a", "no"), QStringLiteral("1"));
    EXPECT_EQ(read(file, " S ", "a", "no"), QStringLiteral("1"));
    EXPECT_EQ(read(file, "T", "b", "no"), QStringLiteral("2"));
    EXPECT_EQ(read(file, "S", "b", "no"), QStringLiteral("no"));
}

TEST(ProfileWrite, ASectionWrittenWithBlanksInsideItsBracketsIsFoundAndKeptAsItStands) {
    EXPECT_EQ(afterWrite("[ S ]\r\na=1\r\n", "S", "a", "2"), QByteArray("[ S ]\r\na=2\r\n"));
    EXPECT_EQ(afterWrite("[ S ]\r\na=1\r\n", "S", "b", "2"), QByteArray("[ S ]\r\na=1\r\nb=2\r\n"));
    EXPECT_EQ(afterDelete("[ S ]\r\na=1\r\nb=2\r\n", "S", "a"), QByteArray("[ S ]\r\nb=2\r\n"));
}

TEST(ProfileRead, MatchingQuotesAroundTheValueAreRemoved) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[S]\r\n"
                                            "d=\"two words\"\r\n"
                                            "s='single'\r\n"
                                            "mixed=\"x'\r\n"
                                            "lone=\"\r\n"
                                            "empty=\"\"\r\n"
                                            "inner=a\"b\"c\r\n"
                                            "spaced= \" padded \" \r\n"
                                            "twice=\"\"x\"\"\r\n");
    EXPECT_EQ(read(file, "S", "d"), QStringLiteral("two words"));
    EXPECT_EQ(read(file, "S", "s"), QStringLiteral("single"));
    EXPECT_EQ(read(file, "S", "mixed"), QStringLiteral("\"x'"));
    EXPECT_EQ(read(file, "S", "lone"), QStringLiteral("\""));
    EXPECT_EQ(read(file, "S", "empty", "def"), QString());
    EXPECT_EQ(read(file, "S", "inner"), QStringLiteral("a\"b\"c"));
    EXPECT_EQ(read(file, "S", "spaced"), QStringLiteral(" padded "));
    EXPECT_EQ(read(file, "S", "twice"), QStringLiteral("\"x\""));
}

TEST(ProfileRead, DefaultLosesItsTrailingSpacesOnly) {
    TempDir dir;
    const QString missing = dir.file("none.ini");
    EXPECT_EQ(read(missing, "S", "K", "default  "), QStringLiteral("default"));
    EXPECT_EQ(read(missing, "S", "K", "one two  "), QStringLiteral("one two"));
    EXPECT_EQ(read(missing, "S", "K", "  lead"), QStringLiteral("  lead"));
    EXPECT_EQ(read(missing, "S", "K", "tab\t"), QStringLiteral("tab\t"));
    EXPECT_EQ(read(missing, "S", "K", "\"q\""), QStringLiteral("\"q\""));
}

TEST(ProfileRead, EmptyValueIsReturnedNotTheDefault) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[S]\r\nk=\r\nblank=   \r\n");
    EXPECT_EQ(read(file, "S", "k", "def"), QString());
    EXPECT_EQ(read(file, "S", "blank", "def"), QString());
}

TEST(ProfileRead, LineWithoutEqualsSignGivesTheDefault) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[S]\r\nname3\r\nname4=val4\r\n");
    EXPECT_EQ(read(file, "S", "name3", "def"), QStringLiteral("def"));
    EXPECT_EQ(read(file, "S", "name4"), QStringLiteral("val4"));
}

TEST(ProfileRead, ALineStartingWithASemicolonIsACommentAndNeverAKey) {
    TempDir dir;
    const QString file =
        dir.write("t.ini", "[S]\r\n;k=comment\r\n  \t;j=indented\r\nk=1\r\nx;y=2\r\n");
    EXPECT_EQ(read(file, "S", ";k", "def"), QStringLiteral("def"));
    EXPECT_EQ(read(file, "S", ";j", "def"), QStringLiteral("def"));
    EXPECT_EQ(read(file, "S", "k", "def"), QStringLiteral("1"));
    // Only the first non-blank character makes a comment.
    EXPECT_EQ(read(file, "S", "x;y", "def"), QStringLiteral("2"));
}

TEST(ProfileWrite, WritingAKeyThatOnlyACommentNamesLeavesTheCommentAlone) {
    EXPECT_EQ(afterWrite("[S]\r\n;k=old\r\n", "S", "k", "new"),
              QByteArray("[S]\r\nk=new\r\n;k=old\r\n"));
    EXPECT_EQ(afterDelete("[S]\r\n;k=old\r\nk=1\r\n", "S", "k"), QByteArray("[S]\r\n;k=old\r\n"));
}

TEST(ProfileRead, CommentAndBlankLinesAreSkipped) {
    TempDir dir;
    const QString file =
        dir.write("t.ini", "; top\r\n\r\n[S]\r\n; a=comment\r\n\r\n   \r\na=1\r\n;b=2\r\n");
    EXPECT_EQ(read(file, "S", "a"), QStringLiteral("1"));
    EXPECT_EQ(read(file, "S", "b", "def"), QStringLiteral("def"));
}

TEST(ProfileRead, SectionLineWithoutClosingBracketStartsNoSection) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[A]\r\n[B\r\nk=inA\r\n");
    EXPECT_EQ(read(file, "A", "k"), QStringLiteral("inA"));
    EXPECT_EQ(read(file, "B", "k", "def"), QStringLiteral("def"));
}

TEST(ProfileRead, TextAfterTheClosingBracketIsIgnored) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[A] ; the A section\r\nk=1\r\n[B]x]\r\nk=2\r\n");
    EXPECT_EQ(read(file, "A", "k"), QStringLiteral("1"));
    EXPECT_EQ(read(file, "B]x", "k"), QStringLiteral("2"));
}

TEST(ProfileRead, KeysBeforeTheFirstSectionBelongToNone) {
    TempDir dir;
    const QString file = dir.write("t.ini", "k=outside\r\n[S]\r\nj=1\r\n");
    EXPECT_EQ(read(file, "S", "k", "def"), QStringLiteral("def"));
}

TEST(ProfileRead, EmptySectionOrKeyNameGivesTheDefault) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[]\r\nk=e\r\n[S]\r\n=nokey\r\n");
    EXPECT_EQ(read(file, "", "k", "def"), QStringLiteral("def"));
    EXPECT_EQ(read(file, "S", "", "def"), QStringLiteral("def"));
    EXPECT_EQ(read(file, "  ", "k", "def"), QStringLiteral("def"));
}

TEST(ProfileRead, MissingFileSectionOrKeyGivesTheDefault) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[S]\r\nk=1\r\n");
    EXPECT_EQ(read(dir.file("none.ini"), "S", "k", "d1"), QStringLiteral("d1"));
    EXPECT_EQ(read(file, "T", "k", "d2"), QStringLiteral("d2"));
    EXPECT_EQ(read(file, "S", "j", "d3"), QStringLiteral("d3"));
    EXPECT_EQ(read("", "S", "k", "d4"), QStringLiteral("d4"));
    EXPECT_EQ(read(dir.path(), "S", "k", "d5"), QStringLiteral("d5"));
}

TEST(ProfileRead, LfOnlyAndCrOnlyLineEndsReadLikeCrLf) {
    TempDir dir;
    const QString lf = dir.write("lf.ini", "[S]\na=1\nb=2\n");
    const QString cr = dir.write("cr.ini", "[S]\ra=1\rb=2\r");
    const QString mixed = dir.write("mixed.ini", "[S]\r\na=1\rb=2\n[T]\nc=3");
    for (const QString& file : {lf, cr, mixed}) {
        EXPECT_EQ(read(file, "S", "a"), QStringLiteral("1"));
        EXPECT_EQ(read(file, "S", "b"), QStringLiteral("2"));
    }
    EXPECT_EQ(read(mixed, "T", "c"), QStringLiteral("3"));
}

TEST(ProfileRead, Utf8ByteOrderMarkHidesTheFirstSection) {
    TempDir dir;
    const QString file = dir.write("t.ini", "\xEF\xBB\xBF[S]\r\na=1\r\n[T]\r\nb=2\r\n");
    EXPECT_EQ(read(file, "S", "a", "def"), QStringLiteral("def"));
    EXPECT_EQ(read(file, "T", "b"), QStringLiteral("2"));
}

TEST(ProfileRead, Utf16FileWithByteOrderMarkIsRead) {
    TempDir dir;
    const QString text = QStringLiteral("[S]\r\na=\u00E4\u20AC\u0142\r\n");
    QByteArray bytes("\xFF\xFE", 2);
    for (QChar c : text) {
        bytes.append(static_cast<char>(c.unicode() & 0xFF));
        bytes.append(static_cast<char>(c.unicode() >> 8));
    }
    const QString file = dir.write("t.ini", bytes);
    // the ANSI interface hands out what code page 1252 can hold
    EXPECT_EQ(read(file, "S", "a"), QStringLiteral("\u00E4\u20AC?"));
    WriteINI(file, "S", "b", "x");
    QByteArray added;
    for (char c : QByteArray("b=x\r\n"))
        added.append(c).append('\0');
    EXPECT_EQ(readAll(file), bytes + added);
}

TEST(ProfileRead, Cp1252TextIsReadAndWrittenAsSuch) {
    TempDir dir;
    const QString file = dir.file("t.ini");
    WriteINI(file, QStringLiteral("Gr\u00FC\u00DFe"), "k", QStringLiteral("\u20AC 5 \u0142"));
    EXPECT_EQ(readAll(file), QByteArray("[Gr\xFC\xDF\x65]\r\nk=\x80 5 ?\r\n"));
    EXPECT_EQ(read(file, QStringLiteral("GR\u00DCSSE"), "k", "no"), QStringLiteral("no"));
    EXPECT_EQ(read(file, QStringLiteral("GR\u00DC\u00DFE"), "k"), QStringLiteral("\u20AC 5 ?"));
}

TEST(ProfileRead, ValueIsCutToTheBufferLessOne) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[section1]\r\nname1=val1\r\n");
    EXPECT_EQ(profile::readProfileString(file, "section1", "name1", "default", 4),
              QStringLiteral("val"));
    EXPECT_EQ(profile::readProfileString(file, "section1", "name1", "default", 5),
              QStringLiteral("val1"));
    EXPECT_EQ(profile::readProfileString(file, "section1", "name1", "default", 1), QString());
}

TEST(ProfileWrite, NewFileGetsTheSectionAndTheKeyWithCrLf) {
    TempDir dir;
    const QString file = dir.file("t.ini");
    WriteINI(file, "App", "key", "string");
    EXPECT_EQ(readAll(file), QByteArray("[App]\r\nkey=string\r\n"));
    const QString empty = dir.file("e.ini");
    WriteINI(empty, "App", "key", "");
    EXPECT_EQ(readAll(empty), QByteArray("[App]\r\nkey=\r\n"));
}

TEST(ProfileWrite, BuildsUpAFileSectionBySectionWithoutBlankLines) {
    TempDir dir;
    const QString file = dir.file("t.ini");
    WriteINI(file, "App1", "key1", "string1");
    WriteINI(file, "App1", "key2", "string2");
    WriteINI(file, "App2", "key3", "string3");
    EXPECT_EQ(readAll(file), QByteArray("[App1]\r\nkey1=string1\r\nkey2=string2\r\n"
                                        "[App2]\r\nkey3=string3\r\n"));
}

TEST(ProfileWrite, ChangesOnlyTheKeysOwnLine) {
    const QByteArray before = "; settings\n\n[SOUND]  ; sound\r\n  UseFormat = 0  \n"
                              "other=x\r\r\n[Settings]\nLanguage=a\n";
    EXPECT_EQ(afterWrite(before, "sound", "USEFORMAT", "1"),
              QByteArray("; settings\n\n[SOUND]  ; sound\r\nUseFormat=1\n"
                         "other=x\r\r\n[Settings]\nLanguage=a\n"));
}

TEST(ProfileWrite, ChangesTheFirstOfDuplicateKeys) {
    EXPECT_EQ(afterWrite("[S]\r\nk=1\r\nk=2\r\n", "S", "K", "3"),
              QByteArray("[S]\r\nk=3\r\nk=2\r\n"));
}

TEST(ProfileWrite, KeepsValueBlanksAsGiven) {
    TempDir dir;
    const QString file = dir.file("t.ini");
    WriteINI(file, "S", "k", "  padded  ");
    EXPECT_EQ(readAll(file), QByteArray("[S]\r\nk=  padded  \r\n"));
    EXPECT_EQ(read(file, "S", "k"), QStringLiteral("padded"));
}

TEST(ProfileWrite, TrimsSectionAndKeyNames) {
    TempDir dir;
    const QString file = dir.file("t.ini");
    WriteINI(file, " S ", "\tk ", "v");
    EXPECT_EQ(readAll(file), QByteArray("[S]\r\nk=v\r\n"));
}

TEST(ProfileWrite, MissingKeyGoesAfterTheLastLineOfItsSection) {
    EXPECT_EQ(afterWrite("[A]\r\na=1\r\n\r\n\r\n[B]\r\nb=2\r\n", "A", "c", "3"),
              QByteArray("[A]\r\na=1\r\nc=3\r\n\r\n\r\n[B]\r\nb=2\r\n"));
    EXPECT_EQ(afterWrite("[A]\r\n\r\n[B]\r\n", "A", "c", "3"),
              QByteArray("[A]\r\nc=3\r\n\r\n[B]\r\n"));
    EXPECT_EQ(afterWrite("[A]\na=1\n; note\n\n[B]\n", "a", "c", "3"),
              QByteArray("[A]\na=1\nc=3\r\n; note\n\n[B]\n"));
    EXPECT_EQ(afterWrite("[A]\r\na=1\r\n\r\n", "A", "c", "3"),
              QByteArray("[A]\r\na=1\r\nc=3\r\n\r\n"));
}

TEST(ProfileWrite, ANewKeyGoesBeforeTheCommentsAndBlankLinesAfterTheSectionsLastKey) {
    EXPECT_EQ(afterWrite("[A]\r\na=1\r\n; about B\r\n\r\n;more\r\n[B]\r\nb=2\r\n", "A", "c", "3"),
              QByteArray("[A]\r\na=1\r\nc=3\r\n; about B\r\n\r\n;more\r\n[B]\r\nb=2\r\n"));
    // Comments between keys stay where they are.
    EXPECT_EQ(afterWrite("[A]\r\n;first\r\na=1\r\n;last\r\n", "A", "c", "3"),
              QByteArray("[A]\r\n;first\r\na=1\r\nc=3\r\n;last\r\n"));
    // A section without keys takes it right after its header.
    EXPECT_EQ(afterWrite("[A]\r\n; nothing yet\r\n[B]\r\n", "A", "c", "3"),
              QByteArray("[A]\r\nc=3\r\n; nothing yet\r\n[B]\r\n"));
    // A comment that ends the file without a line end stays last.
    EXPECT_EQ(afterWrite("[A]\na=1\n;c", "A", "c", "3"), QByteArray("[A]\na=1\nc=3\r\n;c"));
}

TEST(ProfileWrite, MissingKeyAfterALastLineWithoutLineEnd) {
    EXPECT_EQ(afterWrite("[A]\r\na=1", "A", "c", "3"), QByteArray("[A]\r\na=1\r\nc=3\r\n"));
    EXPECT_EQ(afterWrite("[A]", "A", "c", "3"), QByteArray("[A]\r\nc=3\r\n"));
}

TEST(ProfileWrite, MissingSectionIsAddedAtTheEnd) {
    EXPECT_EQ(afterWrite("[A]\r\na=1\r\n\r\n", "B", "b", "2"),
              QByteArray("[A]\r\na=1\r\n\r\n[B]\r\nb=2\r\n"));
    EXPECT_EQ(afterWrite("[A]\na=1", "B", "b", "2"), QByteArray("[A]\na=1\r\n[B]\r\nb=2\r\n"));
    EXPECT_EQ(afterWrite("", "B", "b", "2"), QByteArray("[B]\r\nb=2\r\n"));
    EXPECT_EQ(afterWrite("[A\r\n", "A", "a", "1"), QByteArray("[A\r\n[A]\r\na=1\r\n"));
}

TEST(ProfileWrite, KeepsNulBytesAndBinaryDataBeforeTheFirstSection) {
    const QByteArray head("Data \0 before \0 first \0 section", 31);
    EXPECT_EQ(afterWrite(head, "section1", "key1", "string1"),
              head + "\r\n[section1]\r\nkey1=string1\r\n");
    QByteArray garbage;
    for (int i = 0; i < 256; ++i)
        garbage.append(static_cast<char>(i));
    EXPECT_EQ(afterWrite(garbage + "\n[S]\nk=1\n", "S", "k", "2"), garbage + "\n[S]\nk=2\n");
}

TEST(ProfileWrite, SameValueLeavesTheFileUntouched) {
    EXPECT_EQ(afterWrite("[S]\nk=1\n", "S", "k", "1"), QByteArray("[S]\nk=1\n"));
    // a line spelled differently is written afresh
    EXPECT_EQ(afterWrite("[S]\nk = 1\n", "S", "k", "1"), QByteArray("[S]\nk=1\n"));
}

TEST(ProfileDelete, RemovesTheKeysLineWithItsLineEnd) {
    EXPECT_EQ(
        afterDelete("[App1]\r\nkey1=a\r\nkey2=b\r\nkey3=c\r\n[App2]\r\nkey2=d\r\n", "App1", "KEY2"),
        QByteArray("[App1]\r\nkey1=a\r\nkey3=c\r\n[App2]\r\nkey2=d\r\n"));
    EXPECT_EQ(afterDelete("[App3]\r\nkey5=x\r\n", "App3", "key5"), QByteArray("[App3]\r\n"));
    EXPECT_EQ(afterDelete("[A]\na=1\n; c\n\nb=2", "A", "b"), QByteArray("[A]\na=1\n; c\n\n"));
    EXPECT_EQ(afterDelete("[A]\nnovalue\nb=2\n", "A", "novalue"), QByteArray("[A]\nb=2\n"));
}

TEST(ProfileWrite, ErrorsMapToTheSystemsCodes) {
    TempDir dir;
    EXPECT_EQ(profile::writeProfileString(dir.file("no/x.ini"), "S", "k", QStringLiteral("v")),
              profile::error::PathNotFound);
    EXPECT_EQ(profile::writeProfileString("", "S", "k", QStringLiteral("v")),
              profile::error::AccessDenied);
    EXPECT_EQ(profile::writeProfileString(dir.path(), "S", "k", QStringLiteral("v")),
              profile::error::AccessDenied);
    EXPECT_EQ(profile::writeProfileString(dir.file("x.ini"), "", "k", QStringLiteral("v")),
              profile::error::InvalidParameter);
    EXPECT_FALSE(QFile::exists(dir.file("x.ini")));
    EXPECT_EQ(profile::writeProfileString(dir.file("x.ini"), "S", "k", QStringLiteral("v")),
              profile::error::None);
}

TEST(ProfileWrite, ReadOnlyFileIsAccessDeniedAndKept) {
    TempDir dir;
    const QString file = dir.write("t.ini", "[S]\r\nk=1\r\n");
    QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    if (QFileInfo(file).isWritable())
        GTEST_SKIP() << "running with rights that ignore a read-only file";
    EXPECT_EQ(profile::writeProfileString(file, "S", "k", QStringLiteral("2")),
              profile::error::AccessDenied);
    EXPECT_EQ(readAll(file), QByteArray("[S]\r\nk=1\r\n"));
}

TEST(ProfileRead, HostileFilesNeverBreakTheReader) {
    TempDir dir;
    const QString longLine = dir.write("long.ini", "[S]\r\nk=" + QByteArray(100000, 'v') + "\r\n" +
                                                       QByteArray(100000, '[') + "\r\nj=2\r\n" +
                                                       QByteArray(100000, ']'));
    EXPECT_EQ(read(longLine, "S", "k"), QString(1023, u'v'));
    EXPECT_EQ(read(longLine, "S", "j"), QStringLiteral("2"));
    QByteArray noise;
    quint32 x = 12345;
    for (int i = 0; i < 200000; ++i) {
        x = x * 1103515245u + 12345u;
        noise.append(static_cast<char>(x >> 24));
    }
    const QString garbage = dir.write("garbage.ini", noise);
    EXPECT_EQ(read(garbage, "S", "k", "def"), QStringLiteral("def"));
    WriteINI(garbage, "S", "k", "v");
    EXPECT_EQ(read(garbage, "S", "k"), QStringLiteral("v"));
    EXPECT_TRUE(readAll(garbage).startsWith(noise));
    const QString noSections = dir.write("flat.ini", "a=1\nb=2\n");
    EXPECT_EQ(read(noSections, "a", "a", "def"), QStringLiteral("def"));
    const QString oddUtf16 =
        dir.write("odd.ini", QByteArray("\xFF\xFE[\0S\0]\0\n\0k\0=\0v\0x", 17));
    EXPECT_EQ(read(oddUtf16, "S", "k"), QStringLiteral("v"));
}
