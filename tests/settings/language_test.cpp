#include "settings/language.h"

#include "support/tempdir.h"
#include "util/apppath.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

namespace {

Language languageWith(const TempDir& dir, const QByteArray& content) {
    Language lang;
    lang.LanguageFile = dir.write("Test.lng", content);
    return lang;
}

// Runs `f` with the program folder inside `root`, so paths built from it are predictable.
template <typename F> void withHome(const QString& root, F&& f) {
    qputenv("TAVIK_HOME", root.toLocal8Bit());
    f();
    qunsetenv("TAVIK_HOME");
}

} // namespace

TEST(GetLangString, TurnsLineBreakMarkAndFillsFirstArgument) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_String]\r\n10=Datei %1&_nicht gefunden\r\n");
    EXPECT_EQ(lang.GetLangString(10, "x.wav", "", "", "", ""),
              QStringLiteral("Datei x.wav\r\nnicht gefunden"));
}

TEST(GetLangString, UnknownNumberGivesEmptyText) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_String]\r\n10=Datei\r\n");
    EXPECT_EQ(lang.GetLangString(11, "a", "b", "c", "d", "e"), QString());
    EXPECT_EQ(lang.GetLangString(-1), QString());
}

TEST(GetLangString, FillsAllFivePlaceholdersEverywhere) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_String]\r\n1=%5%4%3%2%1 %1-%1\r\n");
    EXPECT_EQ(lang.GetLangString(1, "a", "b", "c", "d", "e"), QStringLiteral("edcba a-a"));
}

TEST(GetLangString, ArgumentHoldingALaterPlaceholderGetsThatArgument) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_String]\r\n1=<%1>\r\n");
    EXPECT_EQ(lang.GetLangString(1, "%2", "zwei", "", "", ""), QStringLiteral("<zwei>"));
    // An earlier placeholder brought in by a later argument stays as it is.
    EXPECT_EQ(lang.GetLangString(1, "%3", "", "%1", "", ""), QStringLiteral("<%1>"));
}

TEST(GetLangString, LineBreakMarkInAnArgumentStays) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_String]\r\n1=%1\r\n");
    EXPECT_EQ(lang.GetLangString(1, "a&_b"), QStringLiteral("a&_b"));
}

TEST(GetLangString, PlaceholdersAreCaseSensitiveAndUnusedOnesBecomeEmpty) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_String]\r\n1=%1|%2|%6|%%1\r\n");
    EXPECT_EQ(lang.GetLangString(1, "A"), QStringLiteral("A||%6|%A"));
}

TEST(GetLangString, ReadsTheFileAgainOnEveryCall) {
    TempDir dir;
    Language lang = languageWith(dir, "[_String]\r\n1=eins\r\n");
    EXPECT_EQ(lang.GetLangString(1), QStringLiteral("eins"));
    dir.write("Test.lng", "[_String]\r\n1=one\r\n");
    EXPECT_EQ(lang.GetLangString(1), QStringLiteral("one"));
    dir.write("Other.lng", "[_String]\r\n1=un\r\n");
    lang.LanguageFile = dir.file("Other.lng");
    EXPECT_EQ(lang.GetLangString(1), QStringLiteral("un"));
}

TEST(GetLangFile, BuildsPathBelowInstallationRoot) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_Files]\r\n6=doc\\readme.txt\r\n");
    withHome(dir.path(), [&] {
        const QString expected = QDir::cleanPath(dir.path() + "/bin") +
                                 NativePath(QStringLiteral("\\..\\doc\\readme.txt"));
        EXPECT_EQ(lang.GetLangFile(6), expected);
    });
}

TEST(GetLangFile, MissingOrEmptyNumberGivesEmptyText) {
    TempDir dir;
    const Language lang = languageWith(dir, "[_Files]\r\n2=\r\n");
    EXPECT_EQ(lang.GetLangFile(2), QString());
    EXPECT_EQ(lang.GetLangFile(3), QString());
}

TEST(LanguageFolder, IsResLangBesideProgramFolder) {
    TempDir dir;
    withHome(dir.path(), [&] {
        EXPECT_EQ(LanguageFolder(), QDir::cleanPath(dir.path() + "/bin") +
                                        NativePath(QStringLiteral("\\..\\res\\lang\\")));
    });
}

TEST(LanguageFile, MissingFileBehavesLikeFileWithoutKeys) {
    TempDir dir;
    Language lang;
    lang.LanguageFile = dir.file("Nowhere.lng");
    EXPECT_EQ(lang.GetLangString(6, "a"), QString());
    EXPECT_EQ(lang.GetLangFile(6), QString());
    Language none; // no language chosen yet
    EXPECT_EQ(none.GetLangString(6), QString());
    EXPECT_EQ(none.GetLangFile(6), QString());
}

TEST(ParseControlText, CaptionAndToolTip) {
    const ControlText t = ParseControlText("&OK|Confirms the choice");
    EXPECT_EQ(t.caption, QStringLiteral("&OK"));
    EXPECT_EQ(t.toolTip, QStringLiteral("Confirms the choice"));
    EXPECT_TRUE(t.hasToolTip);
}

TEST(ParseControlText, TrailingBarGivesEmptyToolTip) {
    const ControlText t = ParseControlText("&OK|");
    EXPECT_EQ(t.caption, QStringLiteral("&OK"));
    EXPECT_TRUE(t.hasToolTip);
    EXPECT_TRUE(t.toolTip.isEmpty());
}

TEST(ParseControlText, LeadingBarGivesEmptyCaption) {
    const ControlText t = ParseControlText("|x");
    EXPECT_TRUE(t.caption.isEmpty());
    EXPECT_EQ(t.toolTip, QStringLiteral("x"));
}

TEST(ParseControlText, WithoutBarKeepsToolTipAsDesigned) {
    const ControlText t = ParseControlText("&Abbruch");
    EXPECT_EQ(t.caption, QStringLiteral("&Abbruch"));
    EXPECT_FALSE(t.hasToolTip);
}

TEST(ParseControlText, TextAfterSecondBarIsIgnored) {
    const ControlText t = ParseControlText("a|b|c|d");
    EXPECT_EQ(t.caption, QStringLiteral("a"));
    EXPECT_EQ(t.toolTip, QStringLiteral("b"));
}
