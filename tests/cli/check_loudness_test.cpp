// "tavik check" measures every announcement's loudness and true peak: sounds made here at known
// levels, warnings for sounds far from the package's median or peaking too high, and the cache
// that keeps each measurement out of the package.
#include "audio/loudnesscache.h"
#include "package/clszeldb.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QThread>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;
using tavik::test::tool;
using tavik::test::ToolRun;
using tavik::test::writeLevelSine;

namespace {

// A package whose announcements are sines at the given peak levels (stereo: LUFS = dBFS).
class LevelPackage {
public:
    explicit LevelPackage(const QList<double>& peaks) {
        qunsetenv("TAVIK_HOME");
        QDir().mkpath(folder());
        store.SaveSetting("INFO", "Name", Variant::fromString("Pegel"));
        store.SaveSetting("INFO", "Autor", Variant::fromString("Test"));
        for (qsizetype i = 0; i < peaks.size(); ++i) {
            const QString key = QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0'));
            writeLevelSine(file(key + QStringLiteral(".wav")), peaks[i], 2, 3.0);
            store.SaveSetting("INDEX", QString::number(i + 1),
                              Variant::fromString(key + QStringLiteral("~Ansage ") + key));
        }
        store.SaveSetting("INDEX", "Count", Variant::fromLong(static_cast<qint32>(peaks.size())));
        store.SaveIOFile(file(QStringLiteral("Package.io")));
    }
    QString folder() const { return dir.file("pkg"); }
    QString file(const QString& name) const { return folder() + u'/' + name; }

    TempDir dir;
    clsZELDB store;
};

QJsonObject checkJson(const QString& folder, int expectedCode) {
    const ToolRun r = tool({"check", folder, "--json"});
    EXPECT_EQ(r.code, expectedCode) << r.out.toStdString() << r.err.toStdString();
    return r.json();
}

QList<QJsonObject> ofKind(const QJsonObject& report, const char* kind) {
    QList<QJsonObject> found;
    for (const QJsonValue& v : report["findings"].toArray()) {
        if (v["kind"].toString() == QLatin1String(kind))
            found << v.toObject();
    }
    return found;
}

QString cacheFile() {
    return LoudnessCache::defaultFile();
}

} // namespace

TEST(ToolCheckLoudness, EachAnnouncementsLoudnessAndTruePeakAreListedInTheJson) {
    LevelPackage package({-23.0, -23.0, -24.0});
    const QJsonObject report = checkJson(package.folder(), 0);
    const QJsonObject loudness = report["loudness"].toObject();
    EXPECT_NEAR(loudness["medianLufs"].toDouble(), -23.0, 0.1);
    const QJsonArray list = loudness["announcements"].toArray();
    ASSERT_EQ(list.size(), 3);
    const double expected[] = {-23.0, -23.0, -24.0};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(list[i]["key"].toString(), QStringLiteral("000%1").arg(i));
        EXPECT_EQ(list[i]["position"].toInt(), i + 1);
        EXPECT_EQ(list[i]["file"].toString(), QStringLiteral("000%1.wav").arg(i));
        EXPECT_NEAR(list[i]["integratedLufs"].toDouble(), expected[i], 0.1);
        EXPECT_NEAR(list[i]["truePeakDbtp"].toDouble(), expected[i], 0.2);
    }
    EXPECT_TRUE(report["findings"].toArray().isEmpty());
}

TEST(ToolCheckLoudness, ASoundMoreThanThreeLuFromTheMedianIsWarnedWithItsDistance) {
    LevelPackage package({-23.0, -23.0, -23.0, -18.0, -27.0, -21.0});
    const QJsonObject report = checkJson(package.folder(), 1);
    const QList<QJsonObject> off = ofKind(report, "loudness-off-median");
    ASSERT_EQ(off.size(), 2) << QJsonDocument(report).toJson().toStdString();
    EXPECT_EQ(off[0]["severity"].toString(), QStringLiteral("warning"));
    EXPECT_EQ(off[0]["key"].toString(), QStringLiteral("0003"));
    EXPECT_EQ(off[0]["position"].toInt(), 4);
    EXPECT_EQ(off[0]["file"].toString(), QStringLiteral("0003.wav"));
    EXPECT_EQ(off[0]["detail"].toString(),
              QStringLiteral("-18.0 LUFS, 5.0 LU above the median of -23.0 LUFS"));
    EXPECT_EQ(off[1]["key"].toString(), QStringLiteral("0004"));
    EXPECT_EQ(off[1]["detail"].toString(),
              QStringLiteral("-27.0 LUFS, 4.0 LU below the median of -23.0 LUFS"));
    // 2 LU from the median is within the spread.
    EXPECT_TRUE(ofKind(report, "true-peak-high").isEmpty());
    const ToolRun text = tool({"check", package.folder()});
    EXPECT_TRUE(text.out.contains(
        QStringLiteral("warning: 0003.wav: INDEX 4 / 0003: the loudness lies more than 3 LU")))
        << text.out.toStdString();
}

TEST(ToolCheckLoudness, APeakAboveMinusOneDbtpIsWarned) {
    LevelPackage package({-0.5, -0.5, -2.0});
    const QJsonObject report = checkJson(package.folder(), 1);
    const QList<QJsonObject> peaks = ofKind(report, "true-peak-high");
    ASSERT_EQ(peaks.size(), 2);
    EXPECT_EQ(peaks[0]["key"].toString(), QStringLiteral("0000"));
    EXPECT_EQ(peaks[1]["key"].toString(), QStringLiteral("0001"));
    EXPECT_TRUE(peaks[0]["detail"].toString().startsWith(QStringLiteral("true peak -0.")))
        << peaks[0]["detail"].toString().toStdString();
    EXPECT_TRUE(ofKind(report, "loudness-off-median").isEmpty());
}

TEST(ToolCheckLoudness, SilenceHasNoLoudnessAndIsNotJudged) {
    LevelPackage package({-23.0, -300.0, -23.0});
    const QJsonObject report = checkJson(package.folder(), 0);
    const QJsonArray list = report["loudness"].toObject()["announcements"].toArray();
    ASSERT_EQ(list.size(), 3);
    EXPECT_TRUE(list[1]["integratedLufs"].isNull());
    EXPECT_TRUE(list[1]["truePeakDbtp"].isNull());
    EXPECT_NEAR(report["loudness"].toObject()["medianLufs"].toDouble(), -23.0, 0.1);
}

TEST(ToolCheckLoudness, NoLoudnessLeavesTheMeasurementOut) {
    LevelPackage package({-23.0, -10.0, -23.0});
    const ToolRun r = tool({"check", package.folder(), "--json", "--no-loudness"});
    EXPECT_EQ(r.code, 0) << r.out.toStdString();
    EXPECT_FALSE(r.json().contains(QStringLiteral("loudness")));
    EXPECT_TRUE(r.json()["findings"].toArray().isEmpty());
    EXPECT_EQ(checkJson(package.folder(), 1)["findings"].toArray().size(), 1);
}

TEST(ToolCheckLoudness,
     FiguresAreKeptInTheUserCacheNotInThePackageAndAChangedSoundIsMeasuredAgain) {
    LevelPackage package({-23.0, -23.0, -23.0});
    QFile::remove(cacheFile());
    QStringList before;
    for (QDirIterator it(package.folder()); it.hasNext();)
        before << it.next();
    checkJson(package.folder(), 0);
    QStringList after;
    for (QDirIterator it(package.folder()); it.hasNext();)
        after << it.next();
    EXPECT_EQ(after, before); // nothing was written into the package

    // The cache holds the measurement: a figure planted there is what the next check reports.
    QFile cache(cacheFile());
    ASSERT_TRUE(cache.open(QIODevice::ReadOnly));
    QByteArray lines = cache.readAll();
    cache.close();
    const QByteArray path = QFileInfo(package.file("0001.wav")).absoluteFilePath().toUtf8();
    ASSERT_TRUE(lines.contains(path)) << lines.toStdString();
    QList<QByteArray> rows = lines.split('\n');
    for (QByteArray& row : rows) {
        if (row.startsWith(path + '\t')) {
            QList<QByteArray> fields = row.split('\t');
            fields[3] = "-40";
            row = fields.join('\t');
        }
    }
    ASSERT_TRUE(cache.open(QIODevice::WriteOnly | QIODevice::Truncate));
    cache.write(rows.join('\n'));
    cache.close();
    const QJsonArray planted =
        checkJson(package.folder(), 1)["loudness"].toObject()["announcements"].toArray();
    EXPECT_NEAR(planted[1]["integratedLufs"].toDouble(), -40.0, 0.01);

    // The sound changes: it is measured again, not taken from the cache.
    QThread::msleep(20);
    writeLevelSine(package.file("0001.wav"), -25.0, 2, 2.0);
    const QJsonArray again =
        checkJson(package.folder(), 0)["loudness"].toObject()["announcements"].toArray();
    EXPECT_NEAR(again[1]["integratedLufs"].toDouble(), -25.0, 0.1);
}

TEST(ToolCheckLoudness, AnUnwritableCacheOnlyCostsMeasuringAgain) {
    LevelPackage package({-23.0, -19.0});
    QFile::remove(cacheFile());
    // A file where the cache folder belongs: the cache cannot be written.
    const QString folder = QFileInfo(cacheFile()).absolutePath();
    QDir(folder).removeRecursively();
    QFile blocker(folder);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const QJsonArray list =
        checkJson(package.folder(), 0)["loudness"].toObject()["announcements"].toArray();
    ASSERT_EQ(list.size(), 2);
    EXPECT_NEAR(list[1]["integratedLufs"].toDouble(), -19.0, 0.1);
    QFile::remove(folder);
}
