#pragma once

#include "audio/preparedsound.h"

#include <atomic>
#include <memory>
#include <vector>

namespace tavik {

// The rest of one playing sound, from the decoder thread to the output's thread: a ring of
// converted frames with one writer and one reader and no lock.
class StreamFeed {
public:
    StreamFeed(std::shared_ptr<const PreparedSound> sound, qint64 fromFrame, qint64 capacity);

    const std::shared_ptr<const PreparedSound>& sound() const { return sound_; }
    qint64 fromFrame() const { return fromFrame_; }

    // Writer side.
    qint64 writable() const;
    void write(const float* frames, qint64 count);
    void finish() { ended_.store(true, std::memory_order_release); }

    // Reader side: copies up to `count` frames, adding them to `out`.
    qint64 readable() const;
    qint64 addTo(float* out, qint64 count);
    // No more frames will come and all that came were read.
    bool drained() const;

    // The reader is done with it; the writer stops filling it.
    void cancel() { cancelled_.store(true, std::memory_order_release); }
    bool cancelled() const { return cancelled_.load(std::memory_order_acquire); }

private:
    std::shared_ptr<const PreparedSound> sound_;
    qint64 fromFrame_;
    int channels_;
    qint64 capacity_;
    std::unique_ptr<float[]> ring_;
    std::atomic<qint64> written_{0};
    std::atomic<qint64> read_{0};
    std::atomic<bool> ended_{false};
    std::atomic<bool> cancelled_{false};
};

} // namespace tavik
