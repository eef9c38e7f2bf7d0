#include "cli/tool.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::writeTone;

namespace {

int measure(const QStringList& files, QString& out, QString& err) {
    QTextStream o(&out);
    QTextStream e(&err);
    const int code = cli::runTool(QStringList{"measure"} + files, o, e);
    o.flush();
    e.flush();
    return code;
}

} // namespace

TEST(ToolMeasure, PrintsEachSoundsLengthInMilliseconds) {
    TempDir dir;
    qputenv("TAVIK_HOME", dir.path().toLocal8Bit());
    const QString wav = dir.file("Gong.wav");
    const QString mp3 = dir.file("Achtung an Gleis 1.mp3");
    ASSERT_TRUE(writeTone(wav, 33075, 22050)); // 1500 ms
    ASSERT_TRUE(writeTone(mp3, 22050, 22050));
    QString out, err;
    EXPECT_EQ(measure({wav, mp3}, out, err), 0) << err.toStdString();
    const QStringList lines = out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], "1500\t" + wav);
    EXPECT_TRUE(lines[1].endsWith("\t" + mp3));
    EXPECT_GE(lines[1].section('\t', 0, 0).toInt(), 1000);
    qunsetenv("TAVIK_HOME");
}

TEST(ToolMeasure, AFileThatCannotBeOpenedPrintsItsMciErrorAndExitsTwo) {
    TempDir dir;
    qputenv("TAVIK_HOME", dir.path().toLocal8Bit());
    const QString broken = dir.write("broken.wav", "not a sound");
    const QString missing = dir.file("missing.wav");
    QString out, err;
    EXPECT_EQ(measure({broken, missing}, out, err), 2);
    EXPECT_EQ(out, "error 296\t" + broken + "\nerror 292\t" + missing + "\n");
    EXPECT_EQ(err.count('\n'), 2);
    qunsetenv("TAVIK_HOME");
}
