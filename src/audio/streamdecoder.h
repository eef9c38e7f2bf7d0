#pragma once

#include "audio/preparedsound.h"
#include "audio/streamfeed.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tavik {

// The decoder thread of a real output: it converts the first part of every opened sound and
// keeps the feed of every playing sound filled ahead of the output.
class StreamDecoder {
public:
    StreamDecoder();
    ~StreamDecoder();
    StreamDecoder(const StreamDecoder&) = delete;
    StreamDecoder& operator=(const StreamDecoder&) = delete;

    void prepare(std::shared_ptr<PreparedSound> sound);
    void feed(std::shared_ptr<StreamFeed> feed);
    // Wakes the thread: a feed was read from.
    void poke();

private:
    void run();
    bool fill(struct FeedJob& job);

    std::mutex mutex_;
    std::condition_variable wake_;
    bool quit_ = false;
    bool poked_ = false;
    std::deque<std::weak_ptr<PreparedSound>> preparing_;
    std::vector<std::shared_ptr<StreamFeed>> newFeeds_;
    std::thread thread_;
};

} // namespace tavik
