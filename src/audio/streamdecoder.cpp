#include "streamdecoder.h"

#include <chrono>

namespace tavik {

struct FeedJob {
    std::shared_ptr<StreamFeed> feed;
    std::unique_ptr<SoundReader> reader;
};

namespace {

constexpr qint64 kChunkFrames = 4096;

} // namespace

StreamDecoder::StreamDecoder() : thread_([this] { run(); }) {}

StreamDecoder::~StreamDecoder() {
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void StreamDecoder::prepare(std::shared_ptr<PreparedSound> sound) {
    {
        const std::lock_guard lock(mutex_);
        preparing_.push_back(sound);
    }
    wake_.notify_all();
}

void StreamDecoder::feed(std::shared_ptr<StreamFeed> feed) {
    {
        const std::lock_guard lock(mutex_);
        newFeeds_.push_back(std::move(feed));
    }
    wake_.notify_all();
}

void StreamDecoder::poke() {
    {
        const std::lock_guard lock(mutex_);
        poked_ = true;
    }
    wake_.notify_all();
}

// Returns whether the feed is still worth keeping.
bool StreamDecoder::fill(FeedJob& job) {
    StreamFeed& feed = *job.feed;
    if (feed.cancelled())
        return false;
    const PreparedSound& sound = *feed.sound();
    const int channels = sound.format().channels;
    if (!job.reader) {
        job.reader = std::make_unique<SoundReader>(sound.path(), sound.format());
        // The same converter from the start, so the streamed part joins the first part
        // without a seam.
        job.reader->skip(feed.fromFrame());
    }
    std::vector<float> chunk(static_cast<std::size_t>(kChunkFrames * channels));
    while (!feed.cancelled()) {
        const qint64 room = std::min(feed.writable(), kChunkFrames);
        if (room <= 0)
            return true;
        const qint64 got = job.reader->read(chunk.data(), room);
        feed.write(chunk.data(), got);
        if (got < room) {
            feed.finish();
            return false;
        }
    }
    return false;
}

void StreamDecoder::run() {
    std::vector<FeedJob> jobs;
    for (;;) {
        std::shared_ptr<PreparedSound> toPrepare;
        {
            std::unique_lock lock(mutex_);
            // A feed holds a second of sound: looking at them ten times a second keeps them full
            // and costs next to nothing while they are.
            wake_.wait_for(lock, std::chrono::milliseconds(100), [this] {
                return quit_ || poked_ || !newFeeds_.empty() || !preparing_.empty();
            });
            if (quit_)
                return;
            poked_ = false;
            for (auto& feed : newFeeds_)
                jobs.push_back({std::move(feed), nullptr});
            newFeeds_.clear();
            // One sound at a time, so a playing feed never waits behind a long load.
            while (!preparing_.empty() && !toPrepare) {
                toPrepare = preparing_.front().lock();
                preparing_.pop_front();
            }
        }
        std::erase_if(jobs, [this](FeedJob& job) { return !fill(job); });
        if (toPrepare)
            toPrepare->makeReady();
        std::unique_lock lock(mutex_);
        if (!preparing_.empty())
            poked_ = true;
    }
}

} // namespace tavik
