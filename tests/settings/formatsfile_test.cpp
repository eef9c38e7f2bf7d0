#include "settings/formatsfile.h"
#include "settings/modini.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

namespace {

QString readINI(const QString& file, const QString& section) {
    return ReadINI(file, section, QStringLiteral("Format"), Variant::fromString(QString()))
        .stringValue();
}

} // namespace

TEST(FormatsFile, AnswersEveryFormatKeyAsTheProfileReaderDoes) {
    TempDir dir;
    const QString file = dir.write(
        "Formats.ini", "[Installed]\r\n1=wav\r\n[wav]\r\nFormat=waveaudio\r\n[MP3]\r\n"
                       "Format = \"mpegvideo\" \r\n[wav]\r\nFormat=second\r\n[ogg]\r\nFormat\r\n"
                       "[flac]\r\n;Format=x\r\n");
    FormatsFile formats(file);
    for (const char* key : {"wav", "WAV", "mp3", "ogg", "flac", "aiff", "", " wav "})
        EXPECT_EQ(formats.IndentifyFormat(QString::fromLatin1(key)), readINI(file, key)) << key;
    EXPECT_EQ(formats.IndentifyFormat("wav"), "waveaudio");
    EXPECT_EQ(formats.IndentifyFormat("mp3"), "mpegvideo");
}

TEST(FormatsFile, ReadsTheFileOnceWhenItIsMade) {
    TempDir dir;
    const QString file = dir.write("Formats.ini", "[wav]\r\nFormat=waveaudio\r\n");
    FormatsFile formats(file);
    dir.write("Formats.ini", "[wav]\r\nFormat=changed\r\n[mp3]\r\nFormat=mpegvideo\r\n");
    EXPECT_EQ(formats.IndentifyFormat("wav"), "waveaudio");
    EXPECT_EQ(formats.IndentifyFormat("mp3"), QString());
    EXPECT_EQ(FormatsFile(file).IndentifyFormat("wav"), "changed");
}

TEST(FormatsFile, AMissingFileListsNoFormat) {
    TempDir dir;
    FormatsFile formats(dir.file("none.ini"));
    EXPECT_EQ(formats.IndentifyFormat("wav"), QString());
}
