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
