#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <memory>
#include <vector>

namespace tavik::test {

// Records what the sound server's null sink plays, from its monitor source, as 16-bit stereo
// at 44,100 Hz. The server is the one PULSE_SERVER names. The recorder is the host's parec; a
// Windows test program under Wine has it write to a file (monitorrecording_win.cpp).
class MonitorRecording {
public:
    static constexpr int kRate = 44100;

    // Starts recording and returns once the first data has come; false when it cannot.
    bool start(QString& problem);
    // Stops and keeps what was recorded.
    void stop();

    // The left channel, full scale 1.0.
    const std::vector<float>& left() const { return left_; }
    const std::vector<float>& right() const { return right_; }

private:
    // Keeps 16-bit stereo frames as the two channels.
    void keep(const QByteArray& data);

    QProcess process_; // the recorder, reading its output (Linux)
    QByteArray data_;
    QString dataFile_; // where the host's recorder writes, and its process number (Windows)
    QString pidFile_;
    std::vector<float> left_;
    std::vector<float> right_;
};

// Watches, on a thread of its own, how late the machine wakes a thread that sleeps a
// millisecond at a time: a machine too busy to wake the window's thread on time makes the
// player's waits late by the same, which says nothing about the player.
class StallWatch {
public:
    StallWatch();
    ~StallWatch();
    StallWatch(const StallWatch&) = delete;
    StallWatch& operator=(const StallWatch&) = delete;

    // The longest a wake-up came late so far, in milliseconds.
    double worstMs() const;
    // The processor time the watch itself took so far, in seconds.
    double cpuSeconds() const;

private:
    struct State;
    std::unique_ptr<State> d_;
};

// A stretch of the recording at one level.
struct Segment {
    qint64 onset = -1; // first frame at the level
    qint64 cut = -1;   // first frame after it
};

// A stretch counts as one level when it holds it within this for at least this many frames.
inline constexpr float kLevelTolerance = 0.004f;
inline constexpr qint64 kShortestSegment = 20;

// The stretches where the left channel holds `level` (within `tolerance`) for at least
// `minimum` frames, in order.
std::vector<Segment> segmentsAt(const std::vector<float>& samples, float level,
                                qint64 minimum = kShortestSegment,
                                float tolerance = kLevelTolerance);

// The first stretch at `level` that starts at or after `from`; onset -1 when none.
Segment segmentAfter(const std::vector<float>& samples, float level, qint64 from);

// For each level in order, where its stretch begins in `heard` less where it begins in
// `rendered`, in milliseconds (both at the recording's rate); shorter than `levels` when a level
// is missing from either.
std::vector<double> onsetDifferencesMs(const std::vector<float>& heard,
                                       const std::vector<float>& rendered,
                                       const std::vector<float>& levels);

// Where a sound of one level breaks off for less than 50 ms and goes on at the same level (a
// dropout of the output), as the frame where the break begins; -1 when none does. The sounds
// played here each have a level of their own, and overlapping ones sum to a higher one, so a
// level never comes back that soon by itself.
qint64 firstBreak(const std::vector<float>& samples);

// The middle value (the upper of the two middle ones); 0 for none.
double median(std::vector<double> values);

// Prints the median and the worst of `errors` (milliseconds, either sign) as "<output>, <what>
// error after the constant latency: p50 .., worst ..", for the run's figures.
void printErrors(const char* output, const char* what, std::vector<double> errors);

// Milliseconds of recording frames.
inline double framesToMs(qint64 frames) {
    return static_cast<double>(frames) * 1000.0 / MonitorRecording::kRate;
}

} // namespace tavik::test
