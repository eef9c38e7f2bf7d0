#pragma once

#include "package/loudnesscheck.h"

#include <QObject>
#include <atomic>
#include <thread>

namespace tavik {

// Measures announcements' loudness away from the window's thread, so that a big package's
// first measurement does not freeze the window: progress and the result arrive as signals in
// the owner's thread. Measurements go through the user's loudness cache, shared by every job.
class LoudnessJob : public QObject {
    Q_OBJECT
public:
    explicit LoudnessJob(QObject* parent = nullptr);
    ~LoudnessJob() override;

    // Starts measuring; a measurement still running is stopped first and reports nothing.
    void Start(const QList<CheckedAnnouncement>& announcements);
    // Stops measuring (waits for the sounds being decoded); nothing more is reported.
    void Stop();
    bool Running() const { return running_; }

Q_SIGNALS:
    void Progress(int done, int total);
    void Finished(const tavik::LoudnessCheck& result);

private:
    std::thread worker_;
    std::atomic<bool> stop_ = false;
    bool running_ = false;
    int generation_ = 0;
};

} // namespace tavik
