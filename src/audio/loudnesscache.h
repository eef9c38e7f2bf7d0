#pragma once

#include "audio/loudness.h"

#include <QHash>
#include <QMutex>
#include <QString>
#include <atomic>

namespace tavik {

// Loudness measured once per sound and kept in the user's cache folder (never in a package),
// by the file's path, size and time: a sound that changes is measured again.
class LoudnessCache {
public:
    // The cache file in the user's cache folder.
    LoudnessCache();
    explicit LoudnessCache(QString file);
    ~LoudnessCache();

    // From the cache, or measured now; nothing when the file is no sound. Safe to call from
    // several threads at once: sounds are measured outside the lock.
    std::optional<Loudness> loudnessOf(const QString& path);
    // How many sounds were measured (not found in the cache) so far.
    int measured() const { return measured_; }
    // Writes what was measured; also done when the cache goes.
    void save();

    static QString defaultFile();

private:
    void load();

    QString file_;
    QMutex mutex_;
    QHash<QString, Loudness> entries_;
    bool loaded_ = false;
    bool dirty_ = false;
    std::atomic<int> measured_ = 0;
};

} // namespace tavik
