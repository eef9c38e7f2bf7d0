#include "boxcolors.h"
#include "log/colortable.h"
#include "log/richtextbox.h"
#include "log/rtfhighlight.h"

#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

TEST(RichTextBox, PlainTextHasCrLfLineEndsAndPositionsCountThem) {
    RichTextBox box;
    box.setText(QStringLiteral("ab\ncd\r\nef"));
    EXPECT_EQ(box.text(), QStringLiteral("ab\r\ncd\r\nef"));
    EXPECT_EQ(box.lineCount(), 3);
    EXPECT_EQ(box.find(QStringLiteral("CD"), 0), 4);
    EXPECT_EQ(box.selStart(), 4);
    EXPECT_EQ(box.selLength(), 2);
    EXPECT_EQ(box.selText(), QStringLiteral("cd"));
    EXPECT_EQ(box.find(QStringLiteral("ab"), 1), -1);
}

TEST(RichTextBox, SettingTheSelectionColourColoursThatRangeAndExtendsTheColourTable) {
    RichTextBox box;
    box.setText(QStringLiteral("one\r\ntwo"));
    EXPECT_EQ(ReadColorTable(box.textRTF()), QList<quint32>{0});
    box.setSelStart(5);
    box.setSelLength(3);
    box.setSelColor(0x0000FF);
    EXPECT_EQ(textColor(box, 1, 0), kRed);
    EXPECT_EQ(textColor(box, 1, 2), kRed);
    EXPECT_FALSE(textColor(box, 0, 2).isValid());
    EXPECT_EQ(box.selColor(), 0x0000FFu);
    EXPECT_EQ(ReadColorTable(box.textRTF()), (QList<quint32>{0, 0x0000FF}));
}

TEST(RichTextBox, SpanExtendsTheSelectionOverCharactersNotInTheSet) {
    RichTextBox box;
    box.setText(QStringLiteral("x 'abc' y"));
    box.setSelStart(3);
    box.span(QStringLiteral("'"), true, true);
    EXPECT_EQ(box.selText(), QStringLiteral("abc"));
    box.setSelStart(6);
    box.span(QStringLiteral("'"), false, true);
    EXPECT_EQ(box.selText(), QStringLiteral("abc"));
}

TEST(RichTextBox, ReplacingTheSelectionInsertsUncolouredText) {
    RichTextBox box;
    box.setText(QStringLiteral("a\r\n"));
    box.setSelStart(0);
    box.setSelLength(1);
    box.setSelColor(0x0000FF);
    box.setSelStart(box.textLength());
    box.setSelText(QStringLiteral("line\r\n"));
    EXPECT_EQ(box.text(), QStringLiteral("a\r\nline\r\n"));
    EXPECT_EQ(box.selStart(), 9);
    EXPECT_EQ(textColor(box, 0, 0), kRed);
    EXPECT_FALSE(textColor(box, 1, 0).isValid());
}

TEST(RichTextBox, SettingTheRtfTextShowsItsColoursAndHighlights) {
    RichTextBox box;
    box.setTextRTF(QStringLiteral("{\\rtf1{\\colortbl ;\\red255\\green0\\blue0;\\red0\\green0"
                                  "\\blue255;}\r\nok \\highlight1 !bad\\par\\highlight0 \r\n"
                                  "\\cf2 PLAY\\cf0  x}"));
    EXPECT_EQ(box.text(), QStringLiteral("ok !bad\r\nPLAY x"));
    EXPECT_FALSE(backColor(box, 0, 2).isValid());
    EXPECT_EQ(backColor(box, 0, 3), kRed);
    EXPECT_EQ(backColor(box, 0, 6), kRed);
    EXPECT_EQ(textColor(box, 1, 3), kBlue);
    EXPECT_FALSE(textColor(box, 1, 5).isValid());
    // Read back, the same text and colours come out.
    RichTextBox copy;
    copy.setTextRTF(box.textRTF());
    EXPECT_EQ(copy.text(), box.text());
    EXPECT_EQ(copy.textRTF(), box.textRTF());
}

TEST(RichTextBox, RecolouringTheSameTextKeepsTheTextAndChangesOnlyColours) {
    RichTextBox box;
    box.setText(QStringLiteral("a !b\r\nc"));
    QString rtf = box.textRTF();
    rtf.replace(QStringLiteral("{\\colortbl ;}"),
                QStringLiteral("{\\colortbl ;\\red255\\green0\\blue0;}"));
    rtf.replace(QStringLiteral("a !b"), QStringLiteral("a \\highlight1 !b\\highlight0 "));
    box.setTextRTF(rtf);
    EXPECT_EQ(box.text(), QStringLiteral("a !b\r\nc"));
    EXPECT_EQ(backColor(box, 0, 2), kRed);
    EXPECT_FALSE(backColor(box, 0, 1).isValid());
    EXPECT_FALSE(backColor(box, 1, 0).isValid());
}

TEST(RestoreFirstLine, ScrollsBackToTheGivenFirstVisibleLine) {
    QWidget form;
    auto* box = new RichTextBox(&form);
    QStringList lines;
    for (int i = 0; i < 200; ++i)
        lines << QStringLiteral("line %1").arg(i);
    box->setText(lines.join(QStringLiteral("\r\n")));
    box->setGeometry(0, 0, 300, 200);
    form.resize(300, 200);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    EXPECT_EQ(box->firstVisibleLine(), 0);
    RTFHighlight::RestoreFirstLine(&form, box, 57, true);
    EXPECT_EQ(box->firstVisibleLine(), 57);
    RTFHighlight::RestoreFirstLine(&form, box, 12, false);
    EXPECT_EQ(box->firstVisibleLine(), 12);
    EXPECT_TRUE(form.updatesEnabled());
}

TEST(RestoreFirstLine, AnUnscrollableBoxEndsWithoutHanging) {
    QWidget form;
    auto* box = new RichTextBox(&form);
    box->setText(QStringLiteral("a\r\nb\r\nc"));
    box->setGeometry(0, 0, 0, 0);
    RTFHighlight::RestoreFirstLine(&form, box, 2, true);
    RTFHighlight::RestoreFirstLine(&form, box, 0, true);
    EXPECT_EQ(box->firstVisibleLine(), 0);
}

TEST(RichTextBox, EveryKindOfLineBreakEndsALineAndKeepsPositionsInStep) {
    RichTextBox box;
    box.setText(QStringLiteral("a\u2029b\rc"));
    box.setSelStart(box.textLength());
    box.setSelText(QStringLiteral("d\ne\u2029"));
    EXPECT_EQ(box.text(), QStringLiteral("a\r\nb\r\ncd\r\ne\r\n"));
    EXPECT_EQ(box.lineCount(), 5);
    EXPECT_EQ(box.find(QStringLiteral("e"), 0), 10);
    box.setSelColor(0x0000FF);
    EXPECT_EQ(textColor(box, 3, 0), kRed);
    box.setTextRTF(QStringLiteral("{\\rtf1 x\\u8233?y}"));
    EXPECT_EQ(box.text(), QStringLiteral("x\r\ny"));
}

TEST(RichTextBox, LinesAppendedToAHiddenBoxReadAsLinesInsertedOneByOne) {
    QWidget window;
    RichTextBox gathered(&window);
    RichTextBox direct(&window);
    gathered.hide();
    direct.setText(QStringLiteral("Start"));
    gathered.setText(QStringLiteral("Start"));
    QString all = QStringLiteral("Start");
    for (int i = 0; i < 40; ++i) {
        const QString line = QStringLiteral("\r\nPLAY 'A%1' 'Gleis %1'").arg(i);
        all += line;
        gathered.setSelStart(gathered.textLength());
        gathered.setSelText(line);
        EXPECT_EQ(gathered.selStart(), all.size());
        EXPECT_EQ(gathered.text(), all);
    }
    direct.setText(all);
    EXPECT_EQ(gathered.lineCount(), 41);
    EXPECT_EQ(gathered.textRTF(), direct.textRTF());
    EXPECT_EQ(gathered.find(QStringLiteral("'a39'"), 0), all.indexOf(QStringLiteral("'A39'")));
    // Colouring a gathered line colours the characters the text names.
    gathered.setSelLength(5);
    gathered.setSelColor(0x0000FF);
    EXPECT_EQ(textColor(gathered, 40, 5), kRed);
    EXPECT_FALSE(textColor(gathered, 40, 4).isValid());
    // Lines appended after that go on gathering, and a shown box holds every one.
    gathered.setSelStart(gathered.textLength());
    gathered.setSelText(QStringLiteral("\r\nREADY"));
    window.show();
    gathered.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(gathered.document()->blockCount(), 42);
    EXPECT_EQ(gathered.document()->lastBlock().text(), QStringLiteral("READY"));
    EXPECT_EQ(gathered.text(), all + QStringLiteral("\r\nREADY"));
}
