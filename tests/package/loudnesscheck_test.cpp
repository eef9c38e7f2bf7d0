// The package's loudness check on figures a meter hands it: which announcements are measured,
// what the median is, and the warnings it writes.
#include "package/findingdetail.h"
#include "package/loudnesscheck.h"

#include <QHash>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

// Answers from a table by path, and remembers what it was asked.
class TableMeter : public LoudnessMeter {
public:
    QList<std::optional<Loudness>> Measure(const QStringList& paths) override {
        asked = paths;
        QList<std::optional<Loudness>> out;
        for (const QString& p : paths)
            out << table.value(p);
        return out;
    }
    QHash<QString, std::optional<Loudness>> table;
    QStringList asked;
};

Loudness at(std::optional<double> lufs, double peak) {
    Loudness l;
    l.integratedLufs = lufs;
    l.truePeakDbtp = peak;
    return l;
}

CheckedAnnouncement measured(const QString& key, int position, const QString& path) {
    CheckedAnnouncement a;
    a.Key = key;
    a.Position = position;
    a.Length = 1000;
    a.Measured = true;
    a.SoundPath = path;
    return a;
}

} // namespace

TEST(LoudnessCheck, OnlySoundsTheCheckOpenedAreMeasuredEachKeyOnceAtItsFirstPlace) {
    TableMeter meter;
    meter.table.insert("/p/0001.wav", at(-23.0, -9.0));
    meter.table.insert("/p/0002.mp3", at(-16.0, -0.2));
    meter.table.insert("/p/0003.wav", std::nullopt); // no sound after all
    CheckedAnnouncement missing;
    missing.Key = "0009";
    missing.Position = 2;
    const QList<CheckedAnnouncement> list{
        measured("0001", 1, "/p/0001.wav"), missing, measured("0002", 3, "/p/0002.mp3"),
        measured("0001", 4, "/p/0001.wav"), measured("0003", 5, "/p/0003.wav")};
    const LoudnessCheck check = CheckLoudness(list, meter);
    EXPECT_EQ(meter.asked, (QStringList{"/p/0001.wav", "/p/0002.mp3", "/p/0003.wav"}));
    ASSERT_EQ(check.announcements.size(), 2);
    EXPECT_EQ(check.announcements[0].key, QStringLiteral("0001"));
    EXPECT_EQ(check.announcements[0].position, 1);
    EXPECT_EQ(check.announcements[1].file, QStringLiteral("0002.mp3"));
    ASSERT_TRUE(check.medianLufs);
    EXPECT_DOUBLE_EQ(*check.medianLufs, -19.5);
    // 3.5 LU each way, and one peak too high.
    ASSERT_EQ(check.findings.size(), 3);
    EXPECT_EQ(check.findings[0].kind, FindingKind::LoudnessOffMedian);
    EXPECT_EQ(check.findings[0].detail,
              detailText(DetailText::QuieterThanMedian, {"-23.0", "3.5", "-19.5"}));
    EXPECT_EQ(check.findings[1].kind, FindingKind::LoudnessOffMedian);
    EXPECT_EQ(check.findings[1].key, QStringLiteral("0002"));
    EXPECT_EQ(check.findings[1].position, 3);
    EXPECT_EQ(check.findings[2].kind, FindingKind::TruePeakHigh);
    EXPECT_EQ(check.findings[2].detail, QStringLiteral("true peak -0.2 dBTP"));
    EXPECT_EQ(check.findings[2].severity, Severity::Warning);
}

TEST(LoudnessCheck, APackageWithoutMeasurableSoundsHasNoMedianAndNoWarnings) {
    TableMeter meter;
    meter.table.insert("/p/0001.wav", at(std::nullopt, -200.0));
    const LoudnessCheck check = CheckLoudness({measured("0001", 1, "/p/0001.wav")}, meter);
    EXPECT_FALSE(check.medianLufs);
    EXPECT_TRUE(check.findings.isEmpty());
    EXPECT_TRUE(CheckLoudness({}, meter).announcements.isEmpty());
}

TEST(LoudnessFigure, OneDecimalWithAPointAndNoMinusZero) {
    EXPECT_EQ(LoudnessFigure(-23.04), QStringLiteral("-23.0"));
    EXPECT_EQ(LoudnessFigure(-0.04), QStringLiteral("0.0"));
    EXPECT_EQ(LoudnessFigure(5.96), QStringLiteral("6.0"));
    EXPECT_EQ(LoudnessFigure(-200.0), QStringLiteral("-inf"));
}
