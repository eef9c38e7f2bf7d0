#pragma once

#include "audio/soundfile.h"
#include "audio/soundreader.h"

#include <QString>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace tavik {

// A sound made ready for a real output when it is opened: its first part converted to the
// output's format, so a start never waits for a decoder. The rest is streamed while it plays.
class PreparedSound {
public:
    PreparedSound(QString path, SoundInfo info, OutputFormat format, qint64 headFrames);

    const QString& path() const { return path_; }
    const SoundInfo& info() const { return info_; }
    OutputFormat format() const { return format_; }

    // Converts the first part unless another thread already did or is doing it; returns when
    // it is there. Safe from any thread; the conversion is done once, whoever asks first.
    void makeReady() const;
    bool isReady() const { return state_.load() == kReady; }

    // Valid once ready.
    const float* head() const { return head_.data(); }
    qint64 headFrames() const { return headFrames_; }
    // The whole sound fits the first part: nothing needs streaming.
    bool complete() const { return complete_; }

private:
    static constexpr int kPending = 0;
    static constexpr int kConverting = 1;
    static constexpr int kReady = 2;

    QString path_;
    SoundInfo info_;
    OutputFormat format_;
    qint64 wantedFrames_;
    mutable std::vector<float> head_;
    mutable qint64 headFrames_ = 0;
    mutable bool complete_ = false;
    mutable std::atomic<int> state_{kPending};
    mutable std::mutex mutex_;
    mutable std::condition_variable ready_;
};

} // namespace tavik
