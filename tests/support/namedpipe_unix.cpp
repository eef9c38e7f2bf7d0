#include "support/namedpipe.h"

#include <QFile>
#include <chrono>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavik::test {

NamedPipe::NamedPipe(const QString& path) : path_(QFile::encodeName(path)) {
    QFile::remove(path);
    made_ = ::mkfifo(path_.constData(), 0644) == 0;
    if (!made_)
        return;
    watchdog_ = std::thread([this] {
        using namespace std::chrono_literals;
        // A reader that refuses the pipe holds it for microseconds; one still there after
        // seconds is waiting for a writer.
        for (int tick = 0; !stop_.load(); ++tick) {
            std::this_thread::sleep_for(50ms);
            if (tick < 100)
                continue;
            const int fd = ::open(path_.constData(), O_WRONLY | O_NONBLOCK);
            if (fd >= 0) {
                freed_.store(true);
                ::close(fd);
            }
        }
    });
}

NamedPipe::~NamedPipe() {
    stop_.store(true);
    if (watchdog_.joinable())
        watchdog_.join();
}

} // namespace tavik::test
