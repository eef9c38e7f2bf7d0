#include "audio/emulatorbackend.h"
#include "audio/mcierrors.h"
#include "audio/modmci.h"
#include "audio/recordingbackend.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/cp1252.h"
#include "util/tickcount.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::writeLevels;
using tavik::test::writeTone;

namespace {

struct Opened {
    std::int16_t code = 0;
    std::int32_t length = 0;
    QString command;
    QString path; // the file as the caller named it
};

// Opens `file` below `folder` (made inside `dir`) as the editor opens a sound.
Opened openBelow(TempDir& dir, const QString& folder, const char* file, bool useFormat) {
    EXPECT_TRUE(QDir(dir.path()).mkpath(folder));
    const QString path = dir.path() + "/" + folder + "/" + file;
    EXPECT_TRUE(writeTone(path, 22050, 22050));
    EmulatorBackend emulator;
    RecordingBackend recorder(emulator, [] { return qint64(0); });
    QStringList log;
    modMCI mci(recorder, [&log](const QString& line) { log << line; });
    mci.UseFormat = useFormat;
    QString inOut = path;
    Opened result;
    result.path = path;
    result.code = mci.MciOpen(inOut, "0000", "waveaudio");
    result.length = mci.MciGetLength("0000");
    result.command = recorder.commands().value(0);
    return result;
}

} // namespace

TEST(EmulatorPaths, ASoundUnderAFolderWithLettersBeyondTheCodePageOpens) {
    TempDir dir;
    const Opened o = openBelow(dir, QStringLiteral("Łódź"), "0000.wav", true);
    EXPECT_EQ(o.code, -1);
    EXPECT_EQ(o.length, 1000);
    // The command holds the short form (where the system has one) in its 8-bit form, for the
    // log: "Łódź" becomes "?ód?" where the path is its own short form.
    const QString inCommand = fromCp1252(toCp1252(ShortPath(o.path)));
    EXPECT_EQ(o.command,
              QStringLiteral("open ") + inCommand + QStringLiteral(" type waveaudio alias 0000"));
    if (ShortPath(o.path) == o.path) {
        EXPECT_TRUE(o.command.contains(QStringLiteral("/?ód?/0000.wav")))
            << o.command.toStdString();
    }
}

TEST(EmulatorPaths, AFolderNamedLikeTheCommandsWordsIsNotMisread) {
    for (const bool useFormat : {true, false}) {
        TempDir dir;
        const Opened typed = openBelow(dir, "x type y", "0000.wav", useFormat);
        EXPECT_EQ(typed.code, -1) << useFormat;
        EXPECT_EQ(typed.length, 1000);
        const Opened aliased = openBelow(dir, "a alias b type c", "0000 alias 1.wav", useFormat);
        EXPECT_EQ(aliased.code, -1) << useFormat;
        EXPECT_EQ(aliased.length, 1000);
    }
}

TEST(EmulatorPaths, APathOf255CharactersAndMoreOpens) {
    TempDir dir;
    QString folder;
    while (dir.path().size() + folder.size() < 300)
        folder += QStringLiteral("Ordner mit Leerzeichen/");
    folder.chop(1);
    const Opened o = openBelow(dir, folder, "0000.wav", true);
    EXPECT_GT(o.path.size(), 300);
    // The command names the short form, which where there are no short names is the whole path.
    EXPECT_EQ(o.command, QStringLiteral("open ") + ShortPath(o.path) +
                             QStringLiteral(" type waveaudio alias 0000"));
    EXPECT_EQ(o.code, -1);
    EXPECT_EQ(o.length, 1000);
}

TEST(EmulatorPaths, AMissingFileStillHasNoShortFormAndFails) {
    TempDir dir;
    EmulatorBackend emulator;
    QStringList log;
    modMCI mci(emulator, [&log](const QString& line) { log << line; });
    QString path = dir.file("missing.wav");
    EXPECT_EQ(mci.MciOpen(path, "0000", "waveaudio"), mci::MissingDeviceName);
    EXPECT_EQ(path, QString());
    EXPECT_EQ(log, QStringList{"!MCI ERROR '292' 'Unable to load file!'"});
}

TEST(EmulatorPaths, AnExtensibleFormatWaveOpensOnTheWaveDevice) {
    TempDir dir;
    const QString path = dir.file("0000.wav");
    ASSERT_TRUE(writeLevels(path, 48000, 48000, {0.1f, 0.2f}, true));
    MciEmulator mci;
    EXPECT_EQ(mci.send("open " + path + " type waveaudio alias 0000").code, 0);
    EXPECT_EQ(mci.send("status 0000 length").text, QStringLiteral("1000"));
}
