#include "audio/soundfile.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sndfile.h>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::writeTone;

namespace {

// What libsndfile finds opening the file by its name; nothing when it cannot open it.
std::optional<SoundInfo> byName(const QString& path) {
    SF_INFO info{};
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (!file)
        return std::nullopt;
    sf_close(file);
    const int type = info.format & SF_FORMAT_TYPEMASK;
    return SoundInfo{info.frames, info.samplerate, info.channels,
                     type == SF_FORMAT_WAV || type == SF_FORMAT_WAVEX};
}

void expectSame(const std::optional<SoundInfo>& probed, const std::optional<SoundInfo>& named) {
    ASSERT_EQ(probed.has_value(), named.has_value());
    if (!named)
        return;
    EXPECT_EQ(probed->frames, named->frames);
    EXPECT_EQ(probed->sampleRate, named->sampleRate);
    EXPECT_EQ(probed->channels, named->channels);
    EXPECT_EQ(probed->wave, named->wave);
}

QByteArray bytesOf(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

TEST(ProbeSound, ALongSoundReadsAsByNameAcrossManyBuffers) {
    TempDir dir;
    // Seconds of stereo: megabytes of WAVE and an MP3 whose every frame is scanned.
    for (const char* name : {"long.wav", "long.mp3", "long.flac", "long.ogg"}) {
        const QString path = dir.file(QString::fromLatin1(name));
        if (!writeTone(path, 44100 * 8, 44100, 2))
            continue;
        SCOPED_TRACE(name);
        expectSame(probeSound(path), byName(path));
        ASSERT_TRUE(probeSound(path).has_value());
    }
}

TEST(ProbeSound, AnMp3BehindAnId3TagReadsAsByName) {
    TempDir dir;
    const QString plain = dir.file(QStringLiteral("plain.mp3"));
    if (!writeTone(plain, 22050, 22050, 1))
        GTEST_SKIP() << "libsndfile cannot write MP3 here";
    // An ID3v2.4 tag of 300 bytes of padding (its size in seven-bit bytes), then the sound.
    QByteArray tag("ID3\x04\x00\x00\x00\x00\x02\x2c", 10);
    tag += QByteArray(300, '\0');
    const QString tagged = dir.write(QStringLiteral("tagged.mp3"), tag + bytesOf(plain));
    ASSERT_TRUE(byName(tagged).has_value());
    expectSame(probeSound(tagged), byName(tagged));
}

TEST(ProbeSound, ASoundBesideAResourceForkFileReadsAsByName) {
    TempDir dir;
    // A copy from a Mac leaves "._" files beside the sounds, which libsndfile takes for a
    // resource fork when it cannot tell a file by its first bytes.
    for (const char* name : {"tone.mp3", "tone.wav", "tone.ogg"}) {
        const QString path = dir.file(QString::fromLatin1(name));
        if (!writeTone(path, 22050, 22050, 1))
            continue;
        dir.write(QStringLiteral("._") + QString::fromLatin1(name), QByteArray(4096, '\x01'));
        SCOPED_TRACE(name);
        expectSame(probeSound(path), byName(path));
    }
}

TEST(ProbeSound, AHeaderlessSoundKnownByItsExtensionReadsAsByName) {
    TempDir dir;
    // No header libsndfile knows: only the name tells it how to read the bytes.
    for (const char* name : {"speech.vox", "speech.gsm", "speech.au"}) {
        const QString path = dir.write(QString::fromLatin1(name), QByteArray(6600, '\x11'));
        SCOPED_TRACE(name);
        expectSame(probeSound(path), byName(path));
    }
}

TEST(ProbeSound, WhatIsNoSoundGivesNothing) {
    TempDir dir;
    EXPECT_FALSE(probeSound(dir.write(QStringLiteral("text.wav"), "no sound at all")).has_value());
    EXPECT_FALSE(probeSound(dir.write(QStringLiteral("empty.wav"), QByteArray())).has_value());
    EXPECT_FALSE(probeSound(dir.file(QStringLiteral("missing.wav"))).has_value());
    QDir(dir.path()).mkdir(QStringLiteral("folder.wav"));
    EXPECT_FALSE(probeSound(dir.file(QStringLiteral("folder.wav"))).has_value());
}
