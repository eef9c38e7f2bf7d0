#pragma once

#include <QString>
#include <atomic>
#include <thread>

namespace tavik::test {

// A named pipe put where a file is expected. Nobody ever writes to it; if a reader is still
// blocked on it after a grace period, the pipe is opened for writing once so that reader gets
// an end of file, and `hadToFreeAReader` says so: a regression fails instead of hanging.
class NamedPipe {
public:
    // Replaces whatever `path` names with a pipe; `made` is false when the system has none.
    explicit NamedPipe(const QString& path);
    ~NamedPipe();
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    bool made() const { return made_; }
    bool hadToFreeAReader() const { return freed_.load(); }

private:
    QByteArray path_;
    bool made_ = false;
    std::atomic<bool> stop_{false};
    std::atomic<bool> freed_{false};
    std::thread watchdog_;
};

} // namespace tavik::test
