#include "log/colortable.h"
#include "log/linehighlight.h"
#include "log/rtfdocument.h"
#include "log/wordmatch.h"

#include <gtest/gtest.h>

using namespace tavik;

TEST(ColorTable, ReadsEveryEntryAfterTheAutoColour) {
    const QString rtf = QStringLiteral("{\\rtf1{\\colortbl ;\\red255\\green0\\blue0;"
                                       "\\red64\\green64\\blue64;\\red0\\green0\\blue255;}x}");
    EXPECT_EQ(ReadColorTable(rtf), (QList<quint32>{0, 0x0000FF, 0x404040, 0xFF0000}));
}

TEST(ColorTable, WithoutTableOnlyTheAutoEntryIsThere) {
    EXPECT_EQ(ReadColorTable(QStringLiteral("{\\rtf1 plain}")), QList<quint32>{0});
    EXPECT_EQ(ReadColorTable(QStringLiteral("{\\colortbl ;\\red1")), QList<quint32>{0});
    EXPECT_EQ(ReadColorTable(QString()), QList<quint32>{0});
}

TEST(ColorTable, ReadsTheTableTheWriterProduces) {
    RtfDocument doc;
    doc.paragraphs = {{RtfRun{QStringLiteral("a"), 0x00FFFF, 0x0000FF}}};
    EXPECT_EQ(ReadColorTable(WriteRtf(doc)), (QList<quint32>{0, 0x00FFFF, 0x0000FF}));
}

TEST(ColorTable, MalformedEntriesGiveZeroComponentsInsteadOfFailing) {
    EXPECT_EQ(ReadColorTable(QStringLiteral("{\\colortbl ;\\red300;junk;}")),
              (QList<quint32>{0, 0x0000FF, 0}));
}

TEST(ColorTable, TheAutoColourNeverCountsAsAnIndex) {
    const QList<quint32> table{0, 0x0000FF};
    EXPECT_EQ(ColorIndex(table, 0x0000FF), 1);
    EXPECT_EQ(ColorIndex(table, 0), -1);
    EXPECT_EQ(ColorIndex(table, 0x404040), -1);
}

TEST(LineHighlight, HighlightRunsFromTheMarkerToTheLineEnd) {
    const QString rtf = QStringLiteral("{\\rtf1\r\nok\\par\r\n!MCI ERROR 'x'\\par\r\n}");
    const LineHighlightResult r = HighlightLines(rtf, QStringLiteral("!"), 2);
    EXPECT_EQ(r.rtf, QStringLiteral("{\\rtf1\r\nok\\par\r\n\\highlight2 !MCI ERROR "
                                    "'x'\\par\\highlight0 \r\n}"));
    EXPECT_EQ(r.linesWalked, 4);
}

TEST(LineHighlight, AMarkerInsideDoubleQuotesStartsNoHighlight) {
    const QString rtf = QStringLiteral("a \"!\" b\\par\r\n");
    EXPECT_EQ(HighlightLines(rtf, QStringLiteral("!"), 1).rtf, rtf);
    EXPECT_TRUE(MarkerInsideQuotes(QStringLiteral("a \"!\" b"), 3));
    EXPECT_FALSE(MarkerInsideQuotes(QStringLiteral("a \"x\" !"), 6));
    EXPECT_FALSE(MarkerInsideQuotes(QStringLiteral("!\" b"), 0));
}

TEST(LineHighlight, LinesWithoutMarkerAndParagraphTailsStayAsTheyAre) {
    const QString rtf = QStringLiteral("\\par \\'af !\r\nnothing here");
    EXPECT_EQ(HighlightLines(rtf, QStringLiteral("!"), 1).rtf, rtf);
    EXPECT_EQ(HighlightLines(QString(), QStringLiteral("!"), 1).linesWalked, 0);
}

TEST(WordMatch, WholeWordsOnly) {
    const QString text = QStringLiteral("PLAYING\r\n\tPLAY 'A1'\r\nPLAY");
    EXPECT_EQ(FindWholeWords(text, QStringLiteral("PLAY")), (QList<WordMatch>{{10, 4}, {21, 4}}));
}

TEST(WordMatch, CaseSensitiveAndErrorsIsAWordOfItsOwn) {
    const QString text = QStringLiteral("ERRORS error ERROR");
    EXPECT_EQ(FindWholeWords(text, QStringLiteral("ERROR")), (QList<WordMatch>{{13, 5}}));
    EXPECT_EQ(FindWholeWords(text, QStringLiteral("ERRORS")), (QList<WordMatch>{{0, 6}}));
}

TEST(WordMatch, AWordWithABlankMatchesAcrossIt) {
    EXPECT_EQ(FindWholeWords(QStringLiteral("!MCI ERROR '1'"), QStringLiteral("MCI ERROR")),
              (QList<WordMatch>{{1, 9}}));
}

TEST(WordMatch, ABlankWordOrABrokenPatternMatchesNothing) {
    EXPECT_TRUE(FindWholeWords(QStringLiteral("a b"), QStringLiteral("  ")).isEmpty());
    EXPECT_TRUE(FindWholeWords(QStringLiteral("a (b"), QStringLiteral("(")).isEmpty());
}
