#include "log/rtfdocument.h"

#include <gtest/gtest.h>

using namespace tavik;

namespace {

QString textOf(const RtfParagraph& para) {
    QString text;
    for (const RtfRun& run : para)
        text += run.text;
    return text;
}

RtfDocument twoLines() {
    RtfDocument doc;
    doc.paragraphs = {{RtfRun{QStringLiteral("!MCI ERROR "), NoColor, 0x0000FF},
                       RtfRun{QStringLiteral("'x.wav'"), 0x404040, 0x0000FF}},
                      {RtfRun{QStringLiteral("\tPLAY 'A1' {a}\\b"), 0xFF0000, NoColor}},
                      {}};
    return doc;
}

} // namespace

TEST(RtfDocument, WritesOneLinePerParagraphWithColourTableAndEscapes) {
    const QString rtf = WriteRtf(twoLines());
    EXPECT_TRUE(rtf.startsWith(QStringLiteral("{\\rtf1")));
    EXPECT_TRUE(
        rtf.contains(QStringLiteral("{\\colortbl ;\\red255\\green0\\blue0;\\red64\\green64\\blue64;"
                                    "\\red0\\green0\\blue255;}")));
    EXPECT_TRUE(rtf.contains(QStringLiteral("\\highlight1 !MCI ERROR \\cf2 'x.wav'\\par\r\n")));
    EXPECT_TRUE(rtf.contains(
        QStringLiteral("\r\n\\cf3 \\highlight0 \\tab PLAY 'A1' \\{a\\}\\\\b\\par\r\n")));
    EXPECT_TRUE(rtf.endsWith(QStringLiteral("}\r\n")));
}

TEST(RtfDocument, ReadsBackWhatItWrites) {
    const RtfDocument doc = twoLines();
    EXPECT_EQ(ParseRtf(WriteRtf(doc)).paragraphs, doc.paragraphs);
}

TEST(RtfDocument, KeepsCodePage1252AndOtherCharacters) {
    RtfDocument doc;
    doc.paragraphs = {{RtfRun{QStringLiteral("Ansage \u00e4\u20ac \u03a9"), NoColor, NoColor}}};
    const QString rtf = WriteRtf(doc);
    EXPECT_TRUE(rtf.contains(QStringLiteral("\\'e4\\'80")));
    EXPECT_TRUE(rtf.contains(QStringLiteral("\\u937?")));
    EXPECT_EQ(ParseRtf(rtf).paragraphs, doc.paragraphs);
}

TEST(RtfDocument, AnEmptyDocumentHasOneEmptyParagraph) {
    const RtfDocument doc = ParseRtf(WriteRtf(RtfDocument{}));
    ASSERT_EQ(doc.paragraphs.size(), 1);
    EXPECT_TRUE(doc.paragraphs[0].isEmpty());
}

TEST(RtfDocument, AHighlightInsertedIntoALineRunsToItsEnd) {
    const QString rtf = QStringLiteral("{\\rtf1{\\colortbl ;\\red255\\green0\\blue0;}\r\n"
                                       "ok \\highlight1 !bad\\par\\highlight0 \r\nnext}");
    const RtfDocument doc = ParseRtf(rtf);
    ASSERT_EQ(doc.paragraphs.size(), 2);
    EXPECT_EQ(doc.paragraphs[0], (RtfParagraph{RtfRun{QStringLiteral("ok "), NoColor, NoColor},
                                               RtfRun{QStringLiteral("!bad"), NoColor, 0x0000FF}}));
    EXPECT_EQ(doc.paragraphs[1], (RtfParagraph{RtfRun{QStringLiteral("next"), NoColor, NoColor}}));
}

TEST(RtfDocument, SkipsOtherDestinationsAndUnknownWords) {
    const QString rtf = QStringLiteral("{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\*\\generator x;}"
                                       "\\foo12 a\\cf7 b\\plain c}");
    const RtfDocument doc = ParseRtf(rtf);
    ASSERT_EQ(doc.paragraphs.size(), 1);
    EXPECT_EQ(doc.paragraphs[0], (RtfParagraph{RtfRun{QStringLiteral("abc"), NoColor, NoColor}}));
}

TEST(RtfDocument, HostileInputEndsWithoutCrash) {
    QString deep(100000, u'{');
    deep += QStringLiteral("x\\'zz\\u-99999999999 \\cf99999999999999 y\\");
    const RtfDocument doc = ParseRtf(deep);
    ASSERT_EQ(doc.paragraphs.size(), 1);
    EXPECT_TRUE(textOf(doc.paragraphs[0]).startsWith(u'x'));
    EXPECT_EQ(ParseRtf(QString(50000, u'}')).paragraphs.size(), 1);
}
