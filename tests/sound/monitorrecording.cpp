#include "monitorrecording.h"

#include <QElapsedTimer>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <thread>

namespace tavik::test {

void MonitorRecording::keep(const QByteArray& data) {
    const qsizetype frames = data.size() / 4;
    left_.resize(static_cast<std::size_t>(frames));
    right_.resize(static_cast<std::size_t>(frames));
    for (qsizetype i = 0; i < frames; ++i) {
        qint16 l = 0;
        qint16 r = 0;
        std::memcpy(&l, data.constData() + i * 4, 2);
        std::memcpy(&r, data.constData() + i * 4 + 2, 2);
        left_[static_cast<std::size_t>(i)] = static_cast<float>(l) / 32768.0f;
        right_[static_cast<std::size_t>(i)] = static_cast<float>(r) / 32768.0f;
    }
}

struct StallWatch::State {
    std::atomic<bool> quit{false};
    std::atomic<double> worst{0};
    std::atomic<double> cpu{0};
    std::thread thread;
};

StallWatch::StallWatch() : d_(std::make_unique<State>()) {
    d_->thread = std::thread([state = d_.get()] {
        using Clock = std::chrono::steady_clock;
        while (!state->quit.load()) {
            const auto due = Clock::now() + std::chrono::milliseconds(1);
            std::this_thread::sleep_until(due);
            const double late =
                std::chrono::duration<double, std::milli>(Clock::now() - due).count();
            if (late > state->worst.load())
                state->worst.store(late);
            timespec t{};
            clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
            state->cpu.store(static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9);
        }
    });
}

StallWatch::~StallWatch() {
    d_->quit.store(true);
    d_->thread.join();
}

double StallWatch::worstMs() const {
    return d_->worst.load();
}

double StallWatch::cpuSeconds() const {
    return d_->cpu.load();
}

std::vector<Segment> segmentsAt(const std::vector<float>& samples, float level, qint64 minimum,
                                float tolerance) {
    std::vector<Segment> found;
    qint64 start = -1;
    const auto n = static_cast<qint64>(samples.size());
    for (qint64 i = 0; i <= n; ++i) {
        const bool at =
            i < n && std::fabs(samples[static_cast<std::size_t>(i)] - level) <= tolerance;
        if (at && start < 0)
            start = i;
        if (!at && start >= 0) {
            if (i - start >= minimum)
                found.push_back({start, i});
            start = -1;
        }
    }
    return found;
}

qint64 firstBreak(const std::vector<float>& samples) {
    const qint64 kLongestBreak = MonitorRecording::kRate / 20;
    const auto n = static_cast<qint64>(samples.size());
    float lastLevel = 0;
    qint64 lastCut = -1;
    qint64 start = 0;
    for (qint64 i = 1; i <= n; ++i) {
        const float level = samples[static_cast<std::size_t>(start)];
        if (i < n && std::fabs(samples[static_cast<std::size_t>(i)] - level) <= kLevelTolerance)
            continue;
        if (i - start >= kShortestSegment && std::fabs(level) > 0.01f) {
            if (lastCut >= 0 && std::fabs(level - lastLevel) <= kLevelTolerance &&
                start - lastCut < kLongestBreak)
                return lastCut;
            lastLevel = level;
            lastCut = i;
        }
        start = i;
    }
    return -1;
}

Segment segmentAfter(const std::vector<float>& samples, float level, qint64 from) {
    for (const Segment& s : segmentsAt(samples, level))
        if (s.onset >= from)
            return s;
    return {};
}

std::vector<double> onsetDifferencesMs(const std::vector<float>& heard,
                                       const std::vector<float>& rendered,
                                       const std::vector<float>& levels) {
    std::vector<double> differences;
    qint64 fromHeard = 0;
    qint64 fromRendered = 0;
    for (const float level : levels) {
        const Segment h = segmentAfter(heard, level, fromHeard);
        const Segment r = segmentAfter(rendered, level, fromRendered);
        if (h.onset < 0 || r.onset < 0)
            break;
        fromHeard = h.onset + 1;
        fromRendered = r.onset + 1;
        differences.push_back(framesToMs(h.onset - r.onset));
    }
    return differences;
}

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void printErrors(const char* output, const char* what, std::vector<double> errors) {
    if (errors.empty())
        return;
    for (double& e : errors)
        e = std::fabs(e);
    std::sort(errors.begin(), errors.end());
    std::printf("%s, %s error after the constant latency: p50 %.1f ms, worst %.1f ms (%zu "
                "entries)\n",
                output, what, errors[errors.size() / 2], errors.back(), errors.size());
}

} // namespace tavik::test
