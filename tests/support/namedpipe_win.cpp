#include "support/namedpipe.h"

#include "support/winehost.h"

#include <QFile>
#include <chrono>

namespace tavik::test {

// Windows keeps its pipes apart from the folders, but a Windows program under Wine meets the
// host's pipes in its folders: the host makes one.
NamedPipe::NamedPipe(const QString& path) : path_(HostPath(path).toUtf8()) {
    if (path_.isEmpty())
        return;
    QFile::remove(path);
    const QString host = QString::fromUtf8(path_);
    made_ = RunOnHost(QStringLiteral("/usr/bin/mkfifo"), {host}) == 0;
    if (!made_)
        return;
    watchdog_ = std::thread([this, host] {
        using namespace std::chrono_literals;
        for (int tick = 0; !stop_.load(); ++tick) {
            std::this_thread::sleep_for(50ms);
            if (tick < 100 || tick % 20 != 0)
                continue;
            // A writer that opens and closes at once, given a second to find a reader.
            if (RunOnHost(QStringLiteral("/usr/bin/timeout"),
                          {QStringLiteral("1"), QStringLiteral("sh"), QStringLiteral("-c"),
                           QStringLiteral(": > \"$0\""), host},
                          5000) == 0)
                freed_.store(true);
        }
    });
}

NamedPipe::~NamedPipe() {
    stop_.store(true);
    if (watchdog_.joinable())
        watchdog_.join();
    // Wine cannot remove it; the host can.
    if (made_)
        RunOnHost(QStringLiteral("rm"), {QStringLiteral("-f"), QString::fromUtf8(path_)});
}

} // namespace tavik::test
