#include "boxcolors.h"
#include "log/frmdebug.h"
#include "log/richtextbox.h"
#include "log/rtfhighlight.h"
#include "settings/language.h"
#include "support/tempdir.h"

#include <QCheckBox>
#include <QTest>
#include <gtest/gtest.h>

using namespace tavik;
using namespace tavik::test;

namespace {

// A viewer whose box holds `lines`, each ended by CR LF as the event log writes them.
struct Viewer {
    TempDir dir;
    frmDebug form{dir.path()};
    RichTextBox& box = *form.txtDebug();

    explicit Viewer(const QStringList& lines) {
        QString text;
        for (const QString& line : lines)
            text += line + QStringLiteral("\r\n");
        box.setText(text);
    }
};

} // namespace

TEST(frmDebug, AnMciErrorLineGetsRedTailGreyQuotesAndYellowErrorWords) {
    const QString line = QStringLiteral("!MCI ERROR 'x.wav' 'Unable to load file!'");
    Viewer v({QStringLiteral("READY"), line});
    v.form.Highlight();

    EXPECT_EQ(v.box.text(), QStringLiteral("READY\r\n") + line + QStringLiteral("\r\n"));
    for (int c = 0; c < line.size(); ++c)
        EXPECT_EQ(backColor(v.box, 1, c), kRed) << "column " << c;
    for (int c = 0; c < 5; ++c)
        EXPECT_FALSE(backColor(v.box, 0, c).isValid());
    // "MCI ERROR" and the "ERROR" in it: the error words come last and win.
    for (int c = 1; c < 10; ++c)
        EXPECT_EQ(textColor(v.box, 1, c), kYellow) << "column " << c;
    const int first = line.indexOf(u'\'');
    for (int c = first; c < first + 7; ++c)
        EXPECT_EQ(textColor(v.box, 1, c), kDarkGrey) << "column " << c;
    const int second = line.indexOf(QStringLiteral("'Unable"));
    for (int c = second; c < line.size(); ++c)
        EXPECT_EQ(textColor(v.box, 1, c), kDarkGrey) << "column " << c;
    EXPECT_EQ(textColor(v.box, 0, 0), kBlue);
    EXPECT_TRUE(v.box.isVisibleTo(&v.form));
}

TEST(frmDebug, WordsInsideQuotesTakeTheColourOfTheLaterWordPasses) {
    const QString line = QStringLiteral("\tPLAY '0001' 'ERROR READY now'");
    Viewer v({line});
    v.form.Highlight();
    const int error = line.indexOf(QStringLiteral("ERROR"));
    const int ready = line.indexOf(QStringLiteral("READY"));
    // The quote pass coloured the whole quoted part grey before the word passes ran.
    EXPECT_EQ(textColor(v.box, 0, error - 1), kDarkGrey);
    for (int c = error; c < error + 5; ++c)
        EXPECT_EQ(textColor(v.box, 0, c), kYellow) << "column " << c;
    EXPECT_EQ(textColor(v.box, 0, error + 5), kDarkGrey);
    for (int c = ready; c < ready + 5; ++c)
        EXPECT_EQ(textColor(v.box, 0, c), kBlue) << "column " << c;
    for (int c = ready + 5; c < line.size(); ++c)
        EXPECT_EQ(textColor(v.box, 0, c), kDarkGrey) << "column " << c;
    const int key = line.indexOf(QStringLiteral("'0001'"));
    for (int c = key; c < key + 6; ++c)
        EXPECT_EQ(textColor(v.box, 0, c), kDarkGrey) << "column " << c;
    for (int c = 1; c < 5; ++c)
        EXPECT_EQ(textColor(v.box, 0, c), kBlue) << "column " << c;
}

TEST(frmDebug, AnExclamationMarkInsideDoubleQuotesStartsNoHighlight) {
    Viewer v({QStringLiteral("a \"!\" b")});
    v.form.Highlight();
    for (int c = 0; c < 7; ++c)
        EXPECT_FALSE(backColor(v.box, 0, c).isValid()) << "column " << c;
}

TEST(frmDebug, AnApostropheWithoutPartnerOnItsLineColoursNothing) {
    Viewer v({QStringLiteral("it's open"), QStringLiteral("next 'one' here")});
    v.form.Highlight();
    for (int c = 0; c < 9; ++c)
        EXPECT_FALSE(textColor(v.box, 0, c).isValid()) << "column " << c;
    // The next line's own quotes are still found.
    EXPECT_FALSE(textColor(v.box, 1, 4).isValid());
    for (int c = 5; c < 10; ++c)
        EXPECT_EQ(textColor(v.box, 1, c), kDarkGrey) << "column " << c;
    EXPECT_FALSE(textColor(v.box, 1, 10).isValid());
}

TEST(frmDebug, PlayingIsNotColouredButPlayIs) {
    Viewer v({QStringLiteral("PLAYING"), QStringLiteral("\tPLAY 'A1' 'Gong'")});
    v.form.Highlight();
    for (int c = 0; c < 7; ++c)
        EXPECT_FALSE(textColor(v.box, 0, c).isValid()) << "column " << c;
    for (int c = 1; c < 5; ++c)
        EXPECT_EQ(textColor(v.box, 1, c), kBlue) << "column " << c;
    EXPECT_EQ(textColor(v.box, 1, 6), kDarkGrey);
}

TEST(frmDebug, LowerCaseAndLongerWordsFollowWholeWordCaseSensitiveMatching) {
    Viewer v({QStringLiteral("ERRORS error ANNOUNCE")});
    v.form.Highlight();
    for (int c = 0; c < 6; ++c)
        EXPECT_EQ(textColor(v.box, 0, c), kYellow) << "column " << c;
    for (int c = 7; c < 12; ++c)
        EXPECT_FALSE(textColor(v.box, 0, c).isValid()) << "column " << c;
    EXPECT_EQ(textColor(v.box, 0, 13), kBlue);
}

TEST(frmDebug, HighlightOnAnEmptyBoxChangesNothingAndShowsTheBox) {
    TempDir dir;
    frmDebug form(dir.path());
    RichTextBox& box = *form.txtDebug();
    const QString rtf = box.textRTF();
    EXPECT_FALSE(box.isVisibleTo(&form));
    form.Highlight();
    EXPECT_TRUE(box.isVisibleTo(&form));
    EXPECT_EQ(box.text(), QString());
    EXPECT_EQ(box.textRTF(), rtf);
}

TEST(frmDebug, HighlightingTwiceGivesTheSameColours) {
    Viewer v({QStringLiteral("!MCI ERROR '1' 'Unable to load file!'"), QStringLiteral("READY")});
    v.form.Highlight();
    const QColor back = backColor(v.box, 0, 5);
    v.form.Highlight();
    EXPECT_EQ(backColor(v.box, 0, 5), back);
    EXPECT_EQ(backColor(v.box, 0, 0), kRed);
    EXPECT_FALSE(backColor(v.box, 1, 0).isValid());
    EXPECT_EQ(textColor(v.box, 1, 0), kBlue);
}

TEST(frmDebug, TheLinePassKeepsTheFirstVisibleLine) {
    QStringList lines;
    for (int i = 0; i < 300; ++i)
        lines << (i % 3 == 0 ? QStringLiteral("!MCI ERROR '%1' 'Unable to load file!'").arg(i)
                             : QStringLiteral("READY"));
    Viewer v(lines);
    v.box.setVisible(true);
    v.form.resize(400, 300);
    v.form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&v.form));
    RTFHighlight::RestoreFirstLine(&v.form, &v.box, 120, true);
    ASSERT_EQ(v.box.firstVisibleLine(), 120);
    RTFHighlight::HighlightToLineEnd(&v.form, &v.box, 0x0000FF, QStringLiteral("!"), false);
    EXPECT_EQ(v.box.firstVisibleLine(), 120);
    EXPECT_EQ(backColor(v.box, 120, 0), kRed);
    EXPECT_TRUE(v.form.updatesEnabled());
}

TEST(frmDebug, PassesWithoutNoLockReleaseTheWindowAtEveryExit) {
    Viewer v({QStringLiteral("no marker 'q' PLAY")});
    RTFHighlight::HighlightToLineEnd(&v.form, &v.box, 0x0000FF, QStringLiteral("!"), false);
    EXPECT_TRUE(v.form.updatesEnabled());
    RTFHighlight::ColorQuoted(&v.form, &v.box, 0x404040, false);
    EXPECT_TRUE(v.form.updatesEnabled());
    RTFHighlight::ColorWords(&v.form, &v.box, 0xFF0000, v.form.eventWords(), false);
    EXPECT_TRUE(v.form.updatesEnabled());
    EXPECT_EQ(textColor(v.box, 0, 10), kDarkGrey);
    EXPECT_EQ(textColor(v.box, 0, 14), kBlue);
}

TEST(frmDebug, KeywordListsAreBuiltOnLoad) {
    TempDir dir;
    frmDebug form(dir.path());
    EXPECT_EQ(form.errorWords(), (QStringList{QStringLiteral("ERROR"), QStringLiteral("MCI ERROR"),
                                              QStringLiteral("ERRORS")}));
    EXPECT_EQ(form.eventWords(),
              (QStringList{QStringLiteral("LOAD"), QStringLiteral("READY"), QStringLiteral("FOUND"),
                           QStringLiteral("ANNOUNCE"), QStringLiteral("PLAY")}));
    EXPECT_EQ(form.objectName(), QStringLiteral("frmDebug"));
    EXPECT_EQ(form.txtDebug()->objectName(), QStringLiteral("txtDebug"));
}

TEST(frmDebug, TheBoxFollowsTheWindowSizeLessTheMargin) {
    TempDir dir;
    frmDebug form(dir.path());
    form.resize(500, 400);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    const int row = form.chkLogToFile()->height();
    EXPECT_EQ(form.txtDebug()->width(), 500 - 7);
    EXPECT_EQ(form.txtDebug()->height(), 400 - row - 7);
    const QSize before = form.txtDebug()->size();
    form.resize(3, 3);
    EXPECT_EQ(form.txtDebug()->size(), before);
}

TEST(frmDebug, ClosingOnlyHidesTheViewer) {
    TempDir dir;
    frmDebug form(dir.path());
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    EXPECT_FALSE(form.close());
    EXPECT_TRUE(form.isHidden());
}

TEST(frmDebug, TheCheckBoxSwitchesFileLogging) {
    TempDir dir;
    frmDebug form(dir.path());
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    QCheckBox* check = form.chkLogToFile();
    EXPECT_EQ(check->text(), QStringLiteral("In Datei protokollieren"));
    EXPECT_FALSE(check->isChecked());
    QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(6, check->height() / 2));
    EXPECT_TRUE(readAll(dir.file(QStringLiteral("Tavik.ini"))).contains("ToFile=-1"));
    QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(6, check->height() / 2));
    EXPECT_TRUE(readAll(dir.file(QStringLiteral("Tavik.ini"))).contains("ToFile=0"));
}

TEST(frmDebug, TheTemporaryMarkerColourIsUndoneAfterTheLinePass) {
    Viewer v({QStringLiteral("READY"), QStringLiteral("READY"), QStringLiteral("!x")});
    RTFHighlight::HighlightToLineEnd(&v.form, &v.box, 0x0000FF, QStringLiteral("!"), true);
    EXPECT_EQ(backColor(v.box, 2, 0), kRed);
    EXPECT_EQ(backColor(v.box, 2, 1), kRed);
    // The marker coloured to put red into the colour table is black again.
    EXPECT_EQ(textColor(v.box, 2, 0), QColor(0, 0, 0));
    EXPECT_EQ(v.box.selStart(), 0);
}

TEST(frmDebug, LabelsItselfFromTheLanguageFileWhenItLoads) {
    TempDir dir;
    Language language;
    language.LanguageFile = dir.write("Deutsch.lng", "[frmDebug]\r\nCaption=Ereignisprotokoll\r\n"
                                                     "chkLogToFile=In &Datei|Auch in die Datei\r\n"
                                                     "txtDebug=never shown\r\n");
    frmDebug form(dir.path(), &language);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Ereignisprotokoll"));
    EXPECT_EQ(form.chkLogToFile()->text(), QStringLiteral("In &Datei"));
    EXPECT_EQ(form.chkLogToFile()->toolTip(), QStringLiteral("Auch in die Datei"));
    EXPECT_EQ(form.txtDebug()->text(), QString());
}
