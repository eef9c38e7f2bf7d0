#include "app/loudnessjob.h"

#include "audio/loudnessmeter.h"

#include <QMetaObject>
#include <chrono>

namespace tavik {

namespace {

LoudnessCache& sharedCache() {
    static LoudnessCache cache;
    return cache;
}

} // namespace

LoudnessJob::LoudnessJob(QObject* parent) : QObject(parent) {}

LoudnessJob::~LoudnessJob() {
    Stop();
}

void LoudnessJob::Stop() {
    stop_ = true;
    if (worker_.joinable())
        worker_.join();
    stop_ = false;
    running_ = false;
    // Signals the stopped run posted before it ended are dropped by their generation.
    ++generation_;
}

void LoudnessJob::Start(const QList<CheckedAnnouncement>& announcements) {
    Stop();
    running_ = true;
    const int generation = generation_;
    worker_ = std::thread([this, announcements, generation] {
        using Clock = std::chrono::steady_clock;
        CachedLoudnessMeter meter(sharedCache());
        meter.stop = &stop_;
        std::atomic<Clock::rep> lastPost = 0;
        // At most one progress signal every 100 ms: thousands of cached sounds take less.
        meter.progress = [this, generation, &lastPost](int done, int total) {
            const Clock::rep now = Clock::now().time_since_epoch().count();
            Clock::rep last = lastPost.load();
            const auto step =
                std::chrono::duration_cast<Clock::duration>(std::chrono::milliseconds(100)).count();
            if (now - last < step || !lastPost.compare_exchange_strong(last, now))
                return;
            QMetaObject::invokeMethod(
                this,
                [this, generation, done, total] {
                    if (generation == generation_)
                        Q_EMIT Progress(done, total);
                },
                Qt::QueuedConnection);
        };
        LoudnessCheck result = CheckLoudness(announcements, meter);
        if (stop_)
            return;
        QMetaObject::invokeMethod(
            this,
            [this, generation, result = std::move(result)] {
                if (generation != generation_)
                    return;
                running_ = false;
                if (worker_.joinable())
                    worker_.join();
                Q_EMIT Finished(result);
            },
            Qt::QueuedConnection);
    });
}

} // namespace tavik
