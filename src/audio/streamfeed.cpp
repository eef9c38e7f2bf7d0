#include "streamfeed.h"

#include <algorithm>

namespace tavik {

StreamFeed::StreamFeed(std::shared_ptr<const PreparedSound> sound, qint64 fromFrame,
                       qint64 capacity)
    : sound_(std::move(sound)), fromFrame_(fromFrame), channels_(sound_->format().channels),
      capacity_(capacity), // Left uninitialised: only written frames are read, and a play does not
                           // wait for a second
      // of sound to be cleared.
      ring_(new float[static_cast<std::size_t>(capacity * channels_)]) {}

qint64 StreamFeed::writable() const {
    return capacity_ -
           (written_.load(std::memory_order_relaxed) - read_.load(std::memory_order_acquire));
}

void StreamFeed::write(const float* frames, qint64 count) {
    qint64 at = written_.load(std::memory_order_relaxed);
    for (qint64 i = 0; i < count; ++i, ++at)
        std::copy_n(frames + i * channels_, channels_, ring_.get() + (at % capacity_) * channels_);
    written_.store(at, std::memory_order_release);
}

qint64 StreamFeed::readable() const {
    return written_.load(std::memory_order_acquire) - read_.load(std::memory_order_relaxed);
}

qint64 StreamFeed::addTo(float* out, qint64 count) {
    const qint64 n = std::min(count, readable());
    qint64 at = read_.load(std::memory_order_relaxed);
    for (qint64 i = 0; i < n; ++i, ++at) {
        const float* src = ring_.get() + (at % capacity_) * channels_;
        for (int c = 0; c < channels_; ++c)
            out[i * channels_ + c] += src[c];
    }
    read_.store(at, std::memory_order_release);
    return n;
}

bool StreamFeed::drained() const {
    return ended_.load(std::memory_order_acquire) && readable() == 0;
}

} // namespace tavik
