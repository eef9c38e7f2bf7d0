#include "preparedsound.h"

namespace tavik {

PreparedSound::PreparedSound(QString path, SoundInfo info, OutputFormat format, qint64 headFrames)
    : path_(std::move(path)), info_(info), format_(format), wantedFrames_(headFrames) {}

void PreparedSound::makeReady() const {
    int expected = kPending;
    if (!state_.compare_exchange_strong(expected, kConverting)) {
        std::unique_lock lock(mutex_);
        ready_.wait(lock, [this] { return state_.load() == kReady; });
        return;
    }
    SoundReader reader(path_, format_);
    head_.resize(static_cast<std::size_t>(wantedFrames_ * format_.channels));
    headFrames_ = reader.read(head_.data(), wantedFrames_);
    head_.resize(static_cast<std::size_t>(headFrames_ * format_.channels));
    head_.shrink_to_fit();
    std::vector<float> probe(static_cast<std::size_t>(format_.channels));
    complete_ = headFrames_ < wantedFrames_ || reader.read(probe.data(), 1) == 0;
    {
        const std::lock_guard lock(mutex_);
        state_.store(kReady);
    }
    ready_.notify_all();
}

} // namespace tavik
