#include "audio/mcicommand.h"
#include "audio/mcierrors.h"

#include <gtest/gtest.h>

using namespace tavik;

TEST(MciCommand, OpenIsReadFromTheRightSoPathsMayHoldBlanks) {
    const MciCommand c = parseMciCommand("open /a b/c d.wav type waveaudio alias 0007");
    EXPECT_EQ(c.verb, QStringLiteral("open"));
    EXPECT_EQ(c.path, QStringLiteral("/a b/c d.wav"));
    EXPECT_EQ(c.type, QStringLiteral("waveaudio"));
    EXPECT_EQ(c.device, QStringLiteral("0007"));
    EXPECT_EQ(c.error, 0);
}

TEST(MciCommand, OpenWithoutTypeLeavesTheTypeEmpty) {
    const MciCommand c = parseMciCommand("open /x/type alias.mp3 alias tavik_preview");
    EXPECT_EQ(c.path, QStringLiteral("/x/type alias.mp3"));
    EXPECT_EQ(c.type, QString());
    EXPECT_EQ(c.device, QStringLiteral("tavik_preview"));
}

TEST(MciCommand, OpenAcceptsAQuotedPath) {
    const MciCommand c = parseMciCommand("open \"/a b/c.wav\" alias x");
    EXPECT_EQ(c.path, QStringLiteral("/a b/c.wav"));
}

TEST(MciCommand, OpenWithAnEmptyPathIsMissingItsDevice) {
    EXPECT_EQ(parseMciCommand("open  alias 0001").error, mci::MissingDeviceName);
}

TEST(MciCommand, OtherCommandsAreVerbDeviceAndWords) {
    const MciCommand c = parseMciCommand("SET 0001 Time Format Milliseconds");
    EXPECT_EQ(c.verb, QStringLiteral("set"));
    EXPECT_EQ(c.device, QStringLiteral("0001"));
    EXPECT_EQ(c.words, (QStringList{"time", "format", "milliseconds"}));
    EXPECT_EQ(parseMciCommand("play").error, mci::MissingDeviceName);
    EXPECT_EQ(parseMciCommand("").error, mci::UnrecognizedCommand);
    EXPECT_EQ(parseMciCommand("status \"x length").error, mci::NoClosingQuote);
}

TEST(MciCommand, BlanksAroundAndBetweenWordsSeparateThemAndOnlyTheWordsGoToLowerCase) {
    const MciCommand c = parseMciCommand("  Status   MyAlias   LENGTH  ");
    EXPECT_EQ(c.verb, QStringLiteral("status"));
    EXPECT_EQ(c.device, QStringLiteral("MyAlias"));
    EXPECT_EQ(c.words, QStringList{"length"});
    EXPECT_EQ(c.error, 0);
    const MciCommand unknown = parseMciCommand("Frobnicate A1 Quux TO");
    EXPECT_EQ(unknown.verb, QStringLiteral("frobnicate"));
    EXPECT_EQ(unknown.device, QStringLiteral("A1"));
    EXPECT_EQ(unknown.words, (QStringList{"quux", "to"}));
    EXPECT_EQ(parseMciCommand("close All").device, QStringLiteral("All"));
    EXPECT_EQ(parseMciCommand("  stop  ").error, mci::MissingDeviceName);
}

TEST(MciCommand, TabsQuotesAndLettersBeyondAsciiAreReadTheSameWay) {
    // A tab separates the words after the device, but not the verb from the device.
    const MciCommand tab = parseMciCommand("set 0001\tTime Format\tMS");
    EXPECT_EQ(tab.device, QStringLiteral("0001"));
    EXPECT_EQ(tab.words, (QStringList{"time", "format", "ms"}));
    EXPECT_EQ(parseMciCommand("set\t0001 time").verb, QStringLiteral("set\t0001"));
    const MciCommand quoted = parseMciCommand("status \"A B\" Position");
    EXPECT_EQ(quoted.device, QStringLiteral("A B"));
    EXPECT_EQ(quoted.words, QStringList{"position"});
    const MciCommand umlaut = parseMciCommand("STATUS Gr\u00dc\u00dfe MODE \u00c4");
    EXPECT_EQ(umlaut.verb, QStringLiteral("status"));
    EXPECT_EQ(umlaut.device, QStringLiteral("Gr\u00dc\u00dfe"));
    EXPECT_EQ(umlaut.words, (QStringList{"mode", "\u00e4"}));
}
