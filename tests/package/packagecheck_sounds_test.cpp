// The package check measures sounds through the package layer's own interface: these drive it
// with a stand-in that answers as the media layer would, and check the package layer leans on
// nothing above it.
#include "package/clszeldb.h"
#include "package/packagecheck.h"
#include "package/packagefolder.h"
#include "support/buildpaths.h"
#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

namespace {

class StandInSounds : public PackageSounds {
public:
    QString DeviceType(const QString& extension) override {
        calls << QStringLiteral("type ") + extension;
        return extension == QLatin1String("wav") ? QStringLiteral("waveaudio") : QString();
    }
    std::int16_t Open(const QString& path, const QString& alias, const QString& type) override {
        calls << QStringLiteral("open %1 %2 %3").arg(QDir(path).dirName(), alias, type);
        return path.endsWith(QLatin1String("0001.wav")) ? 296 : -1;
    }
    std::int32_t Length(const QString& alias) override {
        calls << QStringLiteral("length ") + alias;
        return 1234;
    }
    void Close(const QString& alias) override { calls << QStringLiteral("close ") + alias; }

    QStringList calls;
};

} // namespace

TEST(PackageCheckSounds, EachSoundIsOpenedMeasuredAndClosedThroughTheInterface) {
    TempDir dir;
    clsZELDB store;
    const QStringList keys = {"0000", "0001", "0002"};
    for (int i = 0; i < keys.size(); ++i)
        store.SaveSetting("INDEX", QString::number(i + 1),
                          Variant::fromString(JoinIndexEntry(keys[i], "T")));
    store.SaveSetting("INDEX", "Count", Variant::fromLong(3));
    store.SaveIOFile(dir.file("Package.io"));
    dir.write("0000.wav", "RIFF");
    dir.write("0001.wav", "RIFF");
    dir.write("0002.xyz", "data");

    StandInSounds sounds;
    const IndexCheck check = CheckPackageIndex(dir.path(), sounds);
    EXPECT_EQ(sounds.calls,
              QStringList({"type wav", "open 0000.wav tavik_check waveaudio", "length tavik_check",
                           "close tavik_check", "type wav", "open 0001.wav tavik_check waveaudio",
                           "close tavik_check", "type xyz"}));
    ASSERT_EQ(check.announcements.size(), 3);
    EXPECT_TRUE(check.announcements[0].Measured);
    EXPECT_EQ(check.announcements[0].Length, 1234);
    EXPECT_FALSE(check.announcements[1].Measured);
    QStringList kinds;
    for (const Finding& f : check.findings)
        kinds << QString::number(static_cast<int>(f.kind)) + QLatin1Char(' ') + f.key +
                     QLatin1Char(' ') + f.detail;
    EXPECT_TRUE(kinds.contains(QStringLiteral("%1 0001 media error 296")
                                   .arg(static_cast<int>(FindingKind::SoundUnreadable))))
        << kinds.join(u'\n').toStdString();
    EXPECT_TRUE(kinds.contains(
        QStringLiteral("%1 0002 \"xyz\"").arg(static_cast<int>(FindingKind::SoundFormatUnlisted))))
        << kinds.join(u'\n').toStdString();
}

TEST(PackageLayer, NoFileOfThePackageLayerIncludesTheAudioOrServiceLayer) {
    const QDir folder(tavik::test::CheckoutPath(QStringLiteral("/src/package")));
    const QStringList files = folder.entryList({"*.h", "*.cpp"}, QDir::Files);
    ASSERT_FALSE(files.isEmpty());
    for (const QString& name : files) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        for (const QByteArray& line : file.readAll().split('\n')) {
            const QByteArray trimmed = line.trimmed();
            EXPECT_FALSE(trimmed.startsWith("#include \"audio/") ||
                         trimmed.startsWith("#include \"service/"))
                << name.toStdString() << ": " << trimmed.toStdString();
        }
    }
}
