#pragma once

#include "audio/preparedsound.h"
#include "audio/streamfeed.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace tavik {

// Mixes every started voice into one interleaved float stream. Starts and stops carry the
// time of their command (seconds of the tick count's clock) and take effect at the output frame
// that is heard one fixed latency after that time, so the intervals between commands are kept
// to the frame. Starts and stops come from one thread, `render` runs on the output's.
class Mixer {
public:
    // Gives a started sound its feed for what follows the first part (the decoder fills it).
    using FeedStarter = std::function<void(std::shared_ptr<StreamFeed>)>;

    Mixer(OutputFormat format, double latency, FeedStarter startFeed = {});

    OutputFormat format() const { return format_; }
    double latency() const { return latency_; }

    void start(int voice, std::shared_ptr<const PreparedSound> sound, qint64 fromFrame, double at);
    void stop(int voice, double at);

    // Fills `frames` frames; the first of them is heard at `heardAt` (output clock).
    void render(float* out, qint64 frames, double heardAt);

    // Voices sounding or waiting for their start, as of the last render.
    int activeVoices() const;
    // The time of the last start or stop given, or a negative value before any.
    double lastCommandAt() const;
    // Frames a voice had to wait for the decoder (silence in the middle of a sound).
    qint64 starvedFrames() const;

private:
    struct Event {
        bool start = false;
        int voice = 0;
        std::shared_ptr<const PreparedSound> sound;
        std::shared_ptr<StreamFeed> feed;
        qint64 fromFrame = 0;
        double at = 0;
    };
    struct Voice {
        int voice = 0;
        std::shared_ptr<const PreparedSound> sound;
        std::shared_ptr<StreamFeed> feed;
        qint64 position = 0; // output frames from the sound's start
    };

    qint64 frameOffset(double at, double heardAt) const;
    void apply(const Event& event);
    // Adds frames [from, to) of the buffer from the voice; false once the voice has ended.
    bool play(Voice& voice, float* out, qint64 from, qint64 to);

    OutputFormat format_;
    double latency_;
    FeedStarter startFeed_;

    mutable std::mutex mutex_; // guards the fields up to `voices_`
    std::vector<Event> pending_;
    double lastCommandAt_ = -1;
    int activeVoices_ = 0;
    qint64 starved_ = 0;

    // Only the output's thread touches these.
    std::vector<Event> due_;
    std::vector<Voice> voices_;
};

} // namespace tavik
