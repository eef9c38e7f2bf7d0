#include "support/buildmachine.h"
#include "support/buildpaths.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/platformnames.h"

#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <gtest/gtest.h>

using tavik::ProgramFileName;
using tavik::test::TempDir;
using tavik::test::writeTone;

namespace {

struct ProgramRun {
    int code = -1;
    QString out;
};

ProgramRun run(const QString& program, const QStringList& args) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("TAVIK_HOME"));
    p.setProcessEnvironment(env);
    p.start(program, args);
    p.waitForFinished(120000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromLocal8Bit(p.readAllStandardOutput())};
}

} // namespace

TEST(Installation, InstallingMakesARootTheProgramsFindAsTheirOwn) {
    TempDir dir;
    const QString root = dir.file("root");
    ASSERT_EQ(tavik::test::RunBuildMachineProgram(tavik::test::CMakeCommand(),
                                                  {"--install", tavik::test::BuildDir(), "--prefix",
                                                   tavik::test::BuildMachinePath(root)}),
              0);
    const QString tool = QStringLiteral("bin/") + ProgramFileName(QStringLiteral("tavik"));
    for (const QString& path :
         {tool, QStringLiteral("bin/") + ProgramFileName(QStringLiteral("tavik-editor")),
          QStringLiteral("bin/Formats.ini"), QStringLiteral("res/lang/Deutsch.lng"),
          QStringLiteral("res/lang/English.lng")})
        EXPECT_TRUE(QFileInfo::exists(root + "/" + path)) << path.toStdString();
    EXPECT_TRUE(QFileInfo(root + "/Data").isDir());
    EXPECT_TRUE(QFileInfo(root + "/bin/res/log").isDir());
    EXPECT_FALSE(QFileInfo::exists(root + "/bin/Tavik.ini"));

    // The installed tool takes the switch and the device type from the settings and formats
    // files of its own root; an Ogg sound opens either way, by its type or by its extension.
    const QString sound = dir.file("ansage.ogg");
    ASSERT_TRUE(writeTone(sound, 22050, 22050));
    for (const char* useFormat : {"1", "0"}) {
        dir.write("root/bin/Tavik.ini", QByteArray("[SOUND]\r\nUseFormat=") + useFormat + "\r\n");
        const ProgramRun r = run(root + "/" + tool, {"measure", sound});
        EXPECT_EQ(r.code, 0) << useFormat;
        EXPECT_EQ(r.out, "1000\t" + sound + "\n") << useFormat;
    }
    dir.write("root/bin/Formats.ini", "[wav]\r\nFormat=waveaudio\r\n");
    dir.write("root/bin/Tavik.ini", "[SOUND]\r\nUseFormat=1\r\n");
    const ProgramRun unlisted = run(root + "/" + tool, {"measure", sound});
    EXPECT_EQ(unlisted.code, 2);
}
