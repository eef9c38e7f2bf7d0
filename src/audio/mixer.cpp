#include "mixer.h"

#include <algorithm>
#include <cmath>

namespace tavik {

namespace {

// A second of frames ahead of the output is plenty for the decoder thread.
constexpr double kFeedSeconds = 1.0;

} // namespace

Mixer::Mixer(OutputFormat format, double latency, FeedStarter startFeed)
    : format_(format), latency_(latency), startFeed_(std::move(startFeed)) {
    pending_.reserve(64);
    due_.reserve(64);
    voices_.reserve(64);
}

void Mixer::start(int voice, std::shared_ptr<const PreparedSound> sound, qint64 fromFrame,
                  double at) {
    if (!sound)
        return;
    // Whatever the start needs is there before it is due: converting the first part now
    // happens only when the decoder thread has not reached this sound yet.
    sound->makeReady();
    std::shared_ptr<StreamFeed> feed;
    const qint64 streamFrom = std::max(fromFrame, sound->headFrames());
    if (!sound->complete()) {
        const auto capacity = static_cast<qint64>(kFeedSeconds * format_.sampleRate);
        feed = std::make_shared<StreamFeed>(sound, streamFrom, capacity);
        if (startFeed_)
            startFeed_(feed);
        else
            feed->finish();
    }
    const std::lock_guard lock(mutex_);
    pending_.push_back({true, voice, std::move(sound), std::move(feed), fromFrame, at});
    lastCommandAt_ = at;
    ++activeVoices_;
}

void Mixer::stop(int voice, double at) {
    const std::lock_guard lock(mutex_);
    pending_.push_back({false, voice, nullptr, nullptr, 0, at});
    lastCommandAt_ = at;
}

int Mixer::activeVoices() const {
    const std::lock_guard lock(mutex_);
    return activeVoices_;
}

double Mixer::lastCommandAt() const {
    const std::lock_guard lock(mutex_);
    return lastCommandAt_;
}

qint64 Mixer::starvedFrames() const {
    const std::lock_guard lock(mutex_);
    return starved_;
}

qint64 Mixer::frameOffset(double at, double heardAt) const {
    return std::llround((at + latency_ - heardAt) * format_.sampleRate);
}

void Mixer::apply(const Event& event) {
    auto it = std::find_if(voices_.begin(), voices_.end(),
                           [&](const Voice& v) { return v.voice == event.voice; });
    if (it != voices_.end()) {
        if (it->feed)
            it->feed->cancel();
        voices_.erase(it);
    }
    if (event.start)
        voices_.push_back({event.voice, event.sound, event.feed, event.fromFrame});
}

bool Mixer::play(Voice& voice, float* out, qint64 from, qint64 to) {
    const int channels = format_.channels;
    const PreparedSound& sound = *voice.sound;
    qint64 at = from;
    if (voice.position < sound.headFrames()) {
        const qint64 n = std::min(to - at, sound.headFrames() - voice.position);
        const float* src = sound.head() + voice.position * channels;
        float* dst = out + at * channels;
        for (qint64 k = 0; k < n * channels; ++k)
            dst[k] += src[k];
        voice.position += n;
        at += n;
    }
    if (at == to)
        return true;
    if (!voice.feed || voice.feed->drained())
        return false;
    const qint64 got = voice.feed->addTo(out + at * channels, to - at);
    voice.position += got;
    if (got < to - at) {
        if (voice.feed->drained())
            return false;
        const std::lock_guard lock(mutex_);
        starved_ += to - at - got;
    }
    return true;
}

void Mixer::render(float* out, qint64 frames, double heardAt) {
    std::fill(out, out + frames * format_.channels, 0.0f);
    {
        const std::lock_guard lock(mutex_);
        // Events keep their order; those due inside this buffer are taken now.
        auto it = pending_.begin();
        for (; it != pending_.end() && frameOffset(it->at, heardAt) < frames; ++it)
            due_.push_back(std::move(*it));
        pending_.erase(pending_.begin(), it);
    }
    qint64 cursor = 0;
    auto playUntil = [&](qint64 end) {
        if (end <= cursor)
            return;
        for (std::size_t i = 0; i < voices_.size();) {
            if (play(voices_[i], out, cursor, end)) {
                ++i;
            } else {
                voices_.erase(voices_.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        cursor = end;
    };
    for (const Event& event : due_) {
        // A command that came too late for its frame takes effect at once.
        playUntil(std::clamp<qint64>(frameOffset(event.at, heardAt), 0, frames));
        apply(event);
    }
    due_.clear();
    playUntil(frames);
    int sounding = static_cast<int>(voices_.size());
    const std::lock_guard lock(mutex_);
    for (const Event& event : pending_)
        sounding += event.start ? 1 : 0;
    activeVoices_ = sounding;
}

} // namespace tavik
